#include <gtest/gtest.h>

#include "climate/ClimateTestSupport.h"

using namespace VELMORA;
using Doubles = std::vector<double>;

namespace {

std::string cliFile(const std::string& format, const std::string& data) {
  return "[Climate]\nClimaCond  = TEMPER\nIO_Unit    = C\nTimeFormat = " + format +
         "\nUsage      = all\nComment    = a note\nData=\n" + data;
}

}  // namespace

TEST(ReadCli, missingFile_isNamed) {
  EXPECT_EQ(readSeries("/no/such/file.cli").errorText,
            "[read_CLI]  Could not open CLI file '/no/such/file.cli'!");
}

TEST(ReadCli, usualFile_givesAllParts) {
  const ClimateSeries s = parseCli(cliFile("SEC", "0 1.5\n10 2\n"));
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.typeName, "TEMPER");
  EXPECT_EQ(s.unitName, "C");
  EXPECT_EQ(s.comment, "a note");
  EXPECT_EQ(s.times, (Doubles{0, 10}));
  EXPECT_EQ(s.values, (Doubles{1.5, 2}));
}

TEST(ReadCli, fileOnDisk_isRead) {
  const ClimateSeries s = readSeries(testFile("a.cli", cliFile("SEC", "0 1.5\n")));
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.values, Doubles{1.5});
}

TEST(ReadCli, equalsSignMayBeLeftOutOrGlued) {
  const ClimateSeries s = parseCli("ClimaCond TEMPER\nIO_Unit=C\nTimeFormat =SEC\nUsage\nData  =\n0 1\n");
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.typeName, "TEMPER");
  EXPECT_EQ(s.unitName, "C");
  EXPECT_EQ(s.comment, "");
  EXPECT_EQ(s.values, Doubles{1});
}

TEST(ReadCli, formatFull_countsYearsOf365Days) {
  const ClimateSeries s = parseCli(cliFile("FULL", "0 0 0 0 0 7\n2 3 4 5 6 8.5\n"));
  EXPECT_EQ(s.times, (Doubles{0, 2 * 31536000.0 + 3 * 86400 + (4 * 60 + 5) * 60 + 6}));
  EXPECT_EQ(s.values, (Doubles{7, 8.5}));
}

TEST(ReadCli, formatFull_takesIntegersOnly) {
  EXPECT_TRUE(parseCli(cliFile("FULL", "0 0.5 0 0 0 7\n")).times.empty());
}

TEST(ReadCli, formatSec_isSeconds) {
  EXPECT_EQ(parseCli(cliFile("SEC", "1.5 0\n")).times, Doubles{1.5});
}

TEST(ReadCli, formatMin_isMinutes) {
  EXPECT_EQ(parseCli(cliFile("MIN", "1.5 0\n")).times, Doubles{90});
}

TEST(ReadCli, formatHours_isHours) {
  EXPECT_EQ(parseCli(cliFile("HOURS", "1.5 0\n")).times, Doubles{5400});
}

TEST(ReadCli, formatDays_isDays) {
  EXPECT_EQ(parseCli(cliFile("DAYS", "1.5 0\n")).times, Doubles{129600});
}

TEST(ReadCli, otherFormat_isAnError) {
  const ClimateSeries s = parseCli(cliFile("WEEKS", "1 0\n"));
  EXPECT_FALSE(s.ok);
  EXPECT_EQ(s.errorText, "[read_CLI]  Time format 'WEEKS' not supported (yet)!");
}

TEST(ReadCli, formatInLowerCase_isAnError) {
  EXPECT_EQ(parseCli(cliFile("sec", "1 0\n")).errorText,
            "[read_CLI]  Time format 'sec' not supported (yet)!");
}

TEST(ReadCli, withoutClimaCond_isAnError) {
  EXPECT_EQ(parseCli("IO_Unit = C\n").errorText,
            "[read_CLI]  Keyword 'ClimaCond' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, withoutUnit_isAnError) {
  EXPECT_EQ(parseCli("ClimaCond = TEMPER\n").errorText,
            "[read_CLI]  Keyword 'IO_Unit' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, withoutTimeFormat_isAnError) {
  EXPECT_EQ(parseCli("ClimaCond = TEMPER\nIO_Unit = C\n").errorText,
            "[read_CLI]  Keyword 'TimeFormat' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, withoutUsage_isAnError) {
  EXPECT_EQ(parseCli("ClimaCond = TEMPER\nIO_Unit = C\nTimeFormat = SEC\n").errorText,
            "[read_CLI]  Keyword 'Usage' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, withoutData_isAnError) {
  EXPECT_EQ(parseCli("ClimaCond = TEMPER\nIO_Unit = C\nTimeFormat = SEC\nUsage = x\nComment = x\n").errorText,
            "[read_CLI]  Keyword 'Data' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, missingDataIsReportedBeforeABadTimeFormat) {
  EXPECT_EQ(parseCli("ClimaCond = TEMPER\nIO_Unit = C\nTimeFormat = WEEKS\nUsage = x\n").errorText,
            "[read_CLI]  Keyword 'Data' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, keywordAboveTheOneBeforeIt_isNotFound) {
  EXPECT_EQ(parseCli("IO_Unit = C\nClimaCond = TEMPER\nTimeFormat = SEC\nUsage = x\nData=\n0 1\n").errorText,
            "[read_CLI]  Keyword 'IO_Unit' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, twoKeywordsInOneLine_countOnce) {
  EXPECT_EQ(parseCli("ClimaCond IO_Unit\nTimeFormat = SEC\nUsage = x\nData=\n").errorText,
            "[read_CLI]  Keyword 'IO_Unit' not found in CLI-file 'x.cli'!");
}

TEST(ReadCli, commentOfSeveralLines_endsAtTheData) {
  const ClimateSeries s = parseCli(
      "ClimaCond = TEMPER\nIO_Unit = C\nTimeFormat = SEC\nUsage = x\nComment = one\r\n two\r\n\r\nData=\r\n0 "
      "1\r\n");
  EXPECT_TRUE(s.ok) << s.errorText;
  EXPECT_EQ(s.comment, "one\n two");
  EXPECT_EQ(s.values, Doubles{1});
}

TEST(ReadCli, dataWithoutEqualsSign_hasNoSeries) {
  const ClimateSeries s =
      parseCli("ClimaCond = TEMPER\nIO_Unit = C\nTimeFormat = SEC\nUsage = x\nData\n0 1\n");
  EXPECT_TRUE(s.ok);
  EXPECT_TRUE(s.values.empty());
}

TEST(ReadCli, badLine_endsTheDataSilently) {
  const ClimateSeries s = parseCli(cliFile("SEC", "0 1\n1 2\nx\n3 4\n"));
  EXPECT_TRUE(s.ok);
  EXPECT_EQ(s.values, (Doubles{1, 2}));
}

TEST(ReadCli, lineWithoutValue_endsTheDataSilently) {
  EXPECT_EQ(parseCli(cliFile("SEC", "0 1\n1\n2 3\n")).values, Doubles{1});
}

TEST(ReadCli, blankLines_areSkipped) {
  EXPECT_EQ(parseCli(cliFile("SEC", "\n0 1\n \t\r\n1 2\n\n")).values, (Doubles{1, 2}));
}

TEST(ReadCli, wordsBehindTheValue_areIgnored) {
  EXPECT_EQ(parseCli(cliFile("SEC", "0 1 x\n1 2\n")).values, (Doubles{1, 2}));
}

TEST(ReadCli, emptyFile_hasNoKeyword) {
  EXPECT_EQ(parseCli("").errorText, "[read_CLI]  Keyword 'ClimaCond' not found in CLI-file 'x.cli'!");
}
