#include <gtest/gtest.h>

#include <ctime>
#include <random>

#include "climate/ClimateTestSupport.h"

using namespace VELMORA;
using Doubles = std::vector<double>;

namespace {

const std::string HEADER = "TEMPER C\n";

#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__)
constexpr double TIME_LIMIT = 1.0;  // [s]
#else
constexpr double TIME_LIMIT = 20.0;  // builds with checks are many times slower
#endif

/// Time that this process has computed [s]; does not depend on what else the machine does.
double processorTime() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

TEST(ReadClimateFile, withoutExtension_isAnError) {
  const ClimateSeries s = readSeries("dir.ccd/file");
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText,
            "[read_climate_file]  File extension required to determine type of climate data file!");
}

TEST(ReadClimateFile, emptyPath_hasNoExtension) {
  EXPECT_EQ(readSeries("").errorText,
            "[read_climate_file]  File extension required to determine type of climate data file!");
}

TEST(ReadClimateFile, otherExtension_isNamedInLowerCase) {
  const ClimateSeries s = readSeries("a/b.EPW");
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText,
            "[read_climate_file]  File extension 'epw' not recognized (only CCD and CLI supported)");
}

TEST(ReadClimateFile, onlyTheTextBehindTheLastPointCounts) {
  EXPECT_EQ(readSeries("a.ccd.txt").errorText,
            "[read_climate_file]  File extension 'txt' not recognized (only CCD and CLI supported)");
}

TEST(ReadClimateFile, upperCaseExtension_isReadAsCcd) {
  const ClimateSeries s = readSeries(testFile("climate.CCD", HEADER + "0 00:00:00 1\n"));
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.values, Doubles{1});
}

TEST(ReadClimateFile, upperCaseExtension_isReadAsCli) {
  const ClimateSeries s = readSeries(
      testFile("climate.CLI", "ClimaCond = TEMPER\nIO_Unit = C\nTimeFormat = SEC\nUsage = x\nData=\n0 1\n"));
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.values, Doubles{1});
}

TEST(ReadClimateFile, vectorsAreEmptiedOnEntryEvenIfNothingIsRead) {
  ClimateSeries s;
  s.times = s.values = {1, 2};
  EXPECT_FALSE(
      read_climate_file("none.ccd", s.times, s.values, s.typeName, s.unitName, s.comment, s.errorText));
  EXPECT_TRUE(s.times.empty());
  EXPECT_TRUE(s.values.empty());
}

TEST(ReadCcd, missingFile_isNamed) {
  EXPECT_EQ(readSeries("/no/such/file.ccd").errorText, "Could not open CCD file '/no/such/file.ccd'!");
}

TEST(ReadCcd, directory_isNoFile) {
  const TKL::Path path = ::testing::TempDir() + "climate_directory.ccd";
  TKL::Path::makePath(path);
  EXPECT_EQ(readSeries(path).errorText, "Could not open CCD file '" + path.str() + "'!");
  TKL::Path::remove(path);
}

TEST(ReadCcd, usualFile_givesAllParts) {
  const ClimateSeries s =
      parseCcd("# first\n#second\n\nRELHUM %\n\n0 00:00:00 80\n12 06:00:00 3.5\n13 01:02:03 -4e-1\n");
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.typeName, "RELHUM");
  EXPECT_EQ(s.unitName, "%");
  EXPECT_EQ(s.comment, "first\nsecond");
  EXPECT_EQ(s.times, (Doubles{0, 12 * 86400 + 6 * 3600, 13 * 86400 + 3600 + 2 * 60 + 3}));
  EXPECT_EQ(s.values, (Doubles{80, 3.5, -0.4}));
}

TEST(ReadCcd, dosLineEndsAndByteOrderMark_areIgnored) {
  const ClimateSeries s = parseCcd("\xEF\xBB\xBF# note\r\nTEMPER C\r\n\r\n1 00:00:00 2\r\n");
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.comment, "note");
  EXPECT_EQ(s.unitName, "C");
  EXPECT_EQ(s.times, Doubles{86400});
}

TEST(ReadCcd, onlyABlankInTheSecondColumnIsCutFromTheComment) {
  EXPECT_EQ(parseCcd("# a\n#  b\n # c\n" + HEADER).comment, "a\n b\n c");
}

TEST(ReadCcd, indentedCommentKeepsItsFirstCharacter) {
  EXPECT_EQ(parseCcd("  #ab\n" + HEADER).comment, "ab");
}

TEST(ReadCcd, commentLinesBehindTheTypeLine_areNoComment) {
  const ClimateSeries s = parseCcd("# a\n" + HEADER + "# b\n  # c\n0 0:0:0 1\n");
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.comment, "a");
}

TEST(ReadCcd, missingUnit_namesTheLine) {
  const ClimateSeries s = parseCcd("# a\n\nTEMPER\n0 00:00:00 1\n");
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText,
            "Could not read climate component type and unit in line #3, line data was 'TEMPER'!");
}

TEST(ReadCcd, emptyFile_hasNoTypeLine) {
  const ClimateSeries s = parseCcd("");
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText, "Could not read climate component type and unit in line #0, line data was ''!");
}

TEST(ReadCcd, withoutDataLines_isAnEmptySeries) {
  const ClimateSeries s = parseCcd(HEADER);
  EXPECT_TRUE(s.ok);
  EXPECT_TRUE(s.times.empty());
}

TEST(ReadCcd, wordBehindTheValue_isAnError) {
  const ClimateSeries s = parseCcd(HEADER + "\n1 00:00:00 12.5 extra\n");
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText, "Error reading data entry in line #3, line data was '1 00:00:00 12.5 extra'!");
}

TEST(ReadCcd, textGluedToTheValue_isAnError) {
  EXPECT_FALSE(parseCcd(HEADER + "1 00:00:00 12.5x\n").ok);
  EXPECT_FALSE(parseCcd(HEADER + "1 00:00:00 1,5\n").ok);
}

TEST(ReadCcd, commentInADataLine_isCut) {
  const ClimateSeries s = parseCcd(HEADER + "1 00:00:00 12.5 # note\n");
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.values, Doubles{12.5});
}

TEST(ReadCcd, missingValue_isAnError) {
  EXPECT_EQ(parseCcd(HEADER + "1 00:00:00\n").errorText,
            "Error reading data entry in line #2, line data was '1 00:00:00'!");
}

TEST(ReadCcd, fractionalDay_isAnError) {
  EXPECT_FALSE(parseCcd(HEADER + "1.5 00:00:00 1\n").ok);
}

TEST(ReadCcd, integersTooLarge_areAnError) {
  EXPECT_FALSE(parseCcd(HEADER + "99999999999 00:00:00 1\n").ok);
}

TEST(ReadCcd, largestDay_doesNotOverflow) {
  const ClimateSeries s = parseCcd(HEADER + "2147483647 00:00:00 1\n");
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.times, Doubles{2147483647.0 * 86400.0});
}

TEST(ReadCcd, notANumber_isAnError) {
  EXPECT_FALSE(parseCcd(HEADER + "1 00:00:00 nan\n").ok);
  EXPECT_FALSE(parseCcd(HEADER + "1 00:00:00 inf\n").ok);
  EXPECT_FALSE(parseCcd(HEADER + "1 00:00:00 1e999\n").ok);
}

TEST(ReadCcd, colonsAreBlanksAnywhere) {
  const ClimateSeries s = parseCcd(HEADER + "1:2 3:4 :5\n");
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.times, Doubles{86400 + 2 * 3600 + 3 * 60 + 4});
  EXPECT_EQ(s.values, Doubles{5});
}

TEST(ReadCcd, colonBehindTheValue_isAnError) {
  EXPECT_FALSE(parseCcd(HEADER + "1 00:00:00 5:\n").ok);
}

TEST(ReadCcd, signs_areRead) {
  const ClimateSeries s = parseCcd(HEADER + "+1 00:00:00 +2.5\n2 00:00:00 -.5\n");
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.values, (Doubles{2.5, -0.5}));
  EXPECT_FALSE(parseCcd(HEADER + "+-1 00:00:00 2.5\n").ok);
}

TEST(ReadCcd, decreasingTime_namesTheLine) {
  const ClimateSeries s = parseCcd(HEADER + "1 01:00:00 1\n1 00:59:59 2\n");
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText,
            "Time point in line #3 lies before the previous time point, line data was '1 00:59:59 2'!");
}

TEST(ReadCcd, equalTimes_pass) {
  const ClimateSeries s = parseCcd(HEADER + "1 00:00:00 1\n1 00:00:00 2\n");
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.times, (Doubles{86400, 86400}));
}

TEST(ReadCcd, timeZero_passes) {
  const ClimateSeries s = parseCcd(HEADER + "0 00:00:00 1\n");
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.times, Doubles{0});
}

TEST(ReadCcd, firstTimeMayBeMinusOneSecond_notLess) {
  EXPECT_TRUE(parseCcd(HEADER + "0 00:00:-1 1\n").ok);
  EXPECT_FALSE(parseCcd(HEADER + "0 00:00:-2 1\n").ok);
}

TEST(ReadCcd, veryLongBadLine_isCutInTheMessage) {
  const ClimateSeries s = parseCcd(HEADER + std::string(1000000, 'x'));
  EXPECT_FALSE(s.ok);
  EXPECT_LT(s.errorText.size(), 1000u);
}

TEST(ReadCcd, millionLines_takeAboutASecondAtMost) {
  std::string content = HEADER;
  content.reserve(24000000);
  for (int i = 0; i < 1000000; ++i)
    content +=
        std::to_string(i / 24) + " " + std::to_string(i % 24) + ":00:00 " + std::to_string(i % 40) + ".25\n";
  const double start = processorTime();
  const ClimateSeries s = parseCcd(content);
  EXPECT_LT(processorTime() - start, TIME_LIMIT);
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.values.size(), 1000000u);
}

TEST(ReadClimateFile, randomBytes_areRefusedQuickly) {
  std::mt19937 random(7);
  std::string bytes(10000000, '\0');
  for (char& c : bytes) c = static_cast<char>(random());
  const double start = processorTime();
  EXPECT_FALSE(parseCcd(bytes).ok);
  EXPECT_FALSE(parseCcd(HEADER + bytes).ok);
  EXPECT_FALSE(parseCli(bytes).ok);
  EXPECT_LT(processorTime() - start, TIME_LIMIT);
}
