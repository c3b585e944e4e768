#include "output/OutputFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "output/OutputBench.h"
#include "support/MessageCapture.h"
#include "support/Thrown.h"

namespace VELMORA {
namespace {

using Format = VelOutputFormat;

const char* const INIT_ID = "[VelOutputs::initOutputFiles]";

class OutputFiles : public ::testing::Test {
 protected:
  std::string header(const VelOutputFile& file) {
    std::ostringstream stream;
    writeHeader(stream, file, bench.construction);
    return withoutCreationTime(stream.str());
  }
  void init(const VelOutputFile& file, bool restart = false) {
    initOutputFiles({file}, bench.construction, streams, restart);
  }
  std::string absolutePath() { return TKL::Path(bench.folder.file("result.out")).absolutePath().str(); }

  OutputBench bench;
  OutputStreams streams;
};

Format formatOf(Format::type_t type, int quantity) {
  Format format = OutputBench::temperature();
  format.type = type;
  format.quantity = quantity;
  return format;
}

TEST_F(OutputFiles, fieldHeader_holdsTheWholeConstruction) {
  const Format format = OutputBench::temperature();
  EXPECT_EQ(
      "# Velmora 5 Output file\n"
      "# TYPE          = FIELD\n"
      "# PROJECT_FILE  = somewhere/wall.vel\n"
      "# CREATED       = \n"
      "# QUANTITY      = Temperature\n"
      "# SPACE_TYPE    = SINGLE\n"
      "# TIME_TYPE     = NONE\n"
      "# VALUE_UNIT    = C\n"
      "# TIME_UNIT     = h\n"
      "\n"
      "TABLE  MATERIALS\n"
      "1          197121     Brick\n"
      "2          255        Wool\n"
      "\n"
      "TABLE  GRID\n"
      "0.1 0.3 \n"
      "0.2 0.4 \n"
      "2\n"
      "\n"
      "TABLE  ELEMENT_GEOMETRY\n"
      "0        0.05      0.5       \t 0     0     1\n"
      "1        0.25      0.5       \t 1     0     2\n"
      "2        0.05      0.2       \t 0     1     1\n"
      "3        0.25      0.2       \t 1     1     2\n"
      "\n"
      "TABLE  SIDES_GEOMETRY\n"
      "0        0.05      0.6       \t 0      0      0    \n"
      "1        0.25      0.6       \t 1      0      0    \n"
      "2        0.05      0.4       \t 0      1      0    \n"
      "3        0.25      0.4       \t 1      1      0    \n"
      "4        0.05      0         \t 0      2      0    \n"
      "5        0.25      0         \t 1      2      0    \n"
      "6        0         0.5       \t 0      0      1    \n"
      "7        0.1       0.5       \t 1      0      1    \n"
      "8        0.4       0.5       \t 2      0      1    \n"
      "9        0         0.2       \t 0      1      1    \n"
      "10       0.1       0.2       \t 1      1      1    \n"
      "11       0.4       0.2       \t 2      1      1    \n"
      "\n"
      "ELEMENTS = 1 2 \n"
      "\n",
      header(bench.field(format, {1, 2})));
}

TEST_F(OutputFiles, fluxHeader_listsItsSides) {
  const Format format = OutputBench::heatFlux();
  const std::string text = header(bench.flux(format, {6, 9}));
  EXPECT_NE(std::string::npos, text.find("# TYPE          = FLUX\n"));
  EXPECT_NE(std::string::npos, text.find("# QUANTITY      = Heat flux (conduction)\n"));
  EXPECT_NE(std::string::npos, text.find("\n\nSIDES = 6 9 \n\n"));
}

TEST_F(OutputFiles, singleEntry_hasNoGeometry) {
  const Format format = OutputBench::temperature();
  const std::string text = header(bench.field(format, {1}));
  EXPECT_EQ(std::string::npos, text.find("TABLE"));
  EXPECT_NE(std::string::npos, text.find("\n\nELEMENTS = 0\n\n\n"));
}

TEST_F(OutputFiles, meanFile_hasNoGeometry) {
  const Format format = OutputBench::temperature(Format::S_MEAN);
  EXPECT_EQ(std::string::npos, header(bench.field(format, {0, 1, 2})).find("TABLE"));
}

TEST_F(OutputFiles, rotationallySymmetricConstruction_hasThicknessZero) {
  bench.disc.geometry = VelDisc::G_RSYM;
  const Format format = OutputBench::temperature();
  EXPECT_NE(std::string::npos, header(bench.field(format, {0, 1})).find("\n0.2 0.4 \n0\n\n"));
}

TEST_F(OutputFiles, planeConstructionWithoutThickness_isOneMetreThick) {
  bench.disc.dz.data.clear();
  const Format format = OutputBench::temperature();
  EXPECT_NE(std::string::npos, header(bench.field(format, {0, 1})).find("\n0.2 0.4 \n1\n\n"));
}

TEST_F(OutputFiles, unitsThatAreNotSet_areUndefined) {
  Format format = OutputBench::temperature();
  format.valueUnit = {};
  format.timeUnit = {};
  const std::string text = header(bench.field(format, {0}));
  EXPECT_NE(std::string::npos, text.find("# VALUE_UNIT    = undefined\n# TIME_UNIT     = undefined\n"));
}

TEST_F(OutputFiles, materialThatIsNotInTheList_throws) {
  const MM::Material foreign;
  bench.elements[3].material = &foreign;
  const Format format = OutputBench::temperature();
  const VelOutputFile file = bench.field(format, {0, 1});
  EXPECT_EQ(
      (TKL::Thrown{"Error while writing element definitions, maybe wrong or uninitialised materials vector?",
                   "[VelOutputs::writeHeader]"}),
      TKL::thrownBy([&] { header(file); }));
}

TEST_F(OutputFiles, materialNumberAboveAThousand_throws) {
  std::vector<const MM::Material*> many(999, &bench.brick);
  many.push_back(&bench.wool);  // number 1000
  bench.construction.materials = many;
  const Format format = OutputBench::temperature();
  const VelOutputFile file = bench.field(format, {0, 1});
  EXPECT_EQ("nothing thrown", TKL::thrownBy([&] { header(file); }).text);
  many.insert(many.begin(), &bench.brick);
  bench.construction.materials = many;
  EXPECT_EQ("Error while writing element definitions, maybe wrong or uninitialised materials vector?",
            TKL::thrownBy([&] { header(file); }).text);
}

TEST_F(OutputFiles, binaryHeader_needsSingleValuesOfTwoEntries) {
  Format format = OutputBench::temperature();
  format.binary = true;
  EXPECT_TRUE(writesBinary(bench.field(format, {0, 1})));
  EXPECT_FALSE(writesBinary(bench.field(format, {0})));
  Format mean = OutputBench::temperature(Format::S_MEAN);
  mean.binary = true;
  EXPECT_FALSE(writesBinary(bench.field(mean, {0, 1})));
  format.binary = false;
  EXPECT_FALSE(writesBinary(bench.field(format, {0, 1})));
}

TEST_F(OutputFiles, newFile_isAnnouncedAndCreated) {
  const Format format = OutputBench::temperature();
  TKL::MessageCapture capture;
  init(bench.field(format, {0, 1}));
  ASSERT_EQ(3u, capture.messages.size());
  EXPECT_EQ((TKL::MessageCapture::Message{"Creating output files\n", 0, INIT_ID, 1, 0}), capture.messages[0]);
  EXPECT_EQ((TKL::MessageCapture::Message{"Creating file: result.out (ASCII mode)\n", 0, INIT_ID, 2, 1}),
            capture.messages[1]);
  EXPECT_EQ((TKL::MessageCapture::Message{"      .Created output file '" + absolutePath() + "'.\n", 0,
                                          INIT_ID, 2, 1}),
            capture.messages[2]);
  EXPECT_EQ(0, capture.indentation);
  EXPECT_EQ(header(bench.field(format, {0, 1})), withoutCreationTime(bench.folder.read("result.out")));
}

TEST_F(OutputFiles, newFile_replacesAnOldOne) {
  bench.folder.write("result.out", std::string(100000, 'x'));
  const Format format = OutputBench::temperature();
  TKL::MessageCapture capture;
  init(bench.field(format, {0}));
  EXPECT_EQ(0u, bench.folder.read("result.out").find("# Velmora 5 Output file\n# TYPE"));
  EXPECT_EQ(std::string::npos, bench.folder.read("result.out").find('x', 200));
}

TEST_F(OutputFiles, binaryFile_isAnnouncedAsBinary) {
  Format format = OutputBench::temperature();
  format.binary = true;
  TKL::MessageCapture capture;
  init(bench.field(format, {0, 1}));
  EXPECT_TRUE(capture.has("Creating file: result.out (binary mode)\n", 0, INIT_ID, 2));
  EXPECT_EQ(0u, bench.folder.read("result.out").find("# Velmora 5 Output file - binary 5.0"));
}

TEST_F(OutputFiles, binaryFormatWithOneEntry_opensBinaryWithTheTextHeader) {
  Format format = OutputBench::temperature();
  format.binary = true;
  format.precision = 3;
  TKL::MessageCapture capture;
  init(bench.field(format, {0}));
  EXPECT_TRUE(capture.has("Creating file: result.out (binary mode)\n", 0, INIT_ID, 2));
  EXPECT_EQ(0u, bench.folder.read("result.out").find("# Velmora 5 Output file\n"));
  EXPECT_EQ(6, streams.front()->precision()) << "the precision of the format is for text files only";
}

TEST_F(OutputFiles, textStream_takesPrecisionAndFloatFormat) {
  Format format = OutputBench::temperature();
  format.precision = 3;
  TKL::MessageCapture capture;
  const std::pair<int, std::ios::fmtflags> CASES[] = {{Format::N_SCIENTIFIC, std::ios::scientific},
                                                      {Format::N_FIXED, std::ios::fixed},
                                                      {Format::N_DEFAULT, std::ios::fmtflags{}},
                                                      {0, std::ios::fmtflags{}}};
  for (const auto& [numberFormat, flags] : CASES) {
    format.numberFormat = numberFormat;
    init(bench.field(format, {0}));
    EXPECT_EQ(3, streams.front()->precision());
    EXPECT_EQ(flags, streams.front()->flags() & std::ios::floatfield) << numberFormat;
  }
}

TEST_F(OutputFiles, fileOfAnotherBalance_isSkippedWithAWarning) {
  const std::pair<Format, std::string> CASES[] = {
      {formatOf(Format::T_FIELD, Format::Q_RELHUM), "MOISTURE balance equation"},
      {formatOf(Format::T_FIELD, Format::Q_GASPRESS), "AIR balance equation"},
      {formatOf(Format::T_FIELD, Format::Q_SALT), "SALT balance equation"},
      {formatOf(Format::T_FIELD, Format::Q_VOCG), "POLLUTANT balance equation"},
      {formatOf(Format::T_FIELD, Format::Q_FREEZE_THAW), "ICE calculation"},
      {formatOf(Format::T_FLUX, Format::X_AIRENTH), "AIR balance equation"}};
  for (const auto& [format, name] : CASES) {
    TKL::MessageCapture capture;
    init(bench.field(format, {0}));
    EXPECT_TRUE(capture.has(
        "      .Skipped output file '" + absolutePath() + "' because required " + name + " is not enabled.",
        TKL::MSG_WARNING, INIT_ID, -1))
        << name;
    EXPECT_EQ(nullptr, streams.at(0));
    EXPECT_FALSE(std::filesystem::exists(bench.folder.file("result.out")));
  }
}

TEST_F(OutputFiles, temperatureWithoutEnergy_isSkipped) {
  bench.construction.balanceEquations.reset();
  const Format format = OutputBench::temperature();
  TKL::MessageCapture capture;
  init(bench.field(format, {0}));
  EXPECT_TRUE(capture.contains("because required ENERGY balance equation is not enabled."));
}

TEST_F(OutputFiles, totalExpansionAndLocalErrors_areLeftOutWithoutAWord) {
  bench.construction.balanceEquations.set();
  for (const int quantity : {25, 29, 30, 48, -1}) {
    const Format format = formatOf(Format::T_FIELD, quantity);
    TKL::MessageCapture capture;
    init(bench.field(format, {0}));
    EXPECT_EQ(1u, capture.messages.size()) << "the heading alone";
    EXPECT_EQ(nullptr, streams.at(0));
  }
}

TEST_F(OutputFiles, restart_appendsWithoutHeader) {
  bench.folder.write("result.out", "old text\n");
  const Format format = OutputBench::temperature();
  TKL::MessageCapture capture;
  init(bench.field(format, {0, 1}), true);
  *streams.front() << "new text\n" << std::flush;
  EXPECT_EQ("old text\nnew text\n", bench.folder.read("result.out"));
  EXPECT_FALSE(capture.contains("Creating file"));
  EXPECT_TRUE(capture.has("      .Created output file '" + absolutePath() + "'.\n", 0, INIT_ID, 2));
  EXPECT_EQ(9, streams.front()->precision()) << "the number format holds for continued files too";
}

TEST_F(OutputFiles, restartWithoutTheFile_createsItWithAMessage) {
  const Format format = OutputBench::temperature();
  TKL::MessageCapture capture;
  init(bench.field(format, {0, 1}), true);
  EXPECT_TRUE(capture.has("Output file '" + absolutePath() + "' does not exist. Creating new file...\n", 0,
                          INIT_ID, 2));
  EXPECT_EQ("", bench.folder.read("result.out")) << "no header";
}

TEST_F(OutputFiles, folderThatIsNotThere_throws) {
  const Format format = OutputBench::temperature();
  VelOutputFile file = bench.field(format, {0, 1});
  file.path = bench.folder.file("nowhere/result.out");
  TKL::MessageCapture capture;
  for (const bool restart : {false, true}) {
    EXPECT_EQ((TKL::Thrown{"Error creating output file '" + file.path.absolutePath().str() + "'!", INIT_ID}),
              TKL::thrownBy([&] { init(file, restart); }));
  }
  EXPECT_EQ(0, capture.indentation) << "restored when an exception passes";
}

TEST_F(OutputFiles, fullDisk_stopsTheHeader) {
  std::filesystem::create_symlink("/dev/full", bench.folder.file("result.out"));
  const Format format = OutputBench::temperature();
  TKL::MessageCapture capture;
  EXPECT_EQ(0u, TKL::thrownBy([&] {
                  init(bench.field(format, {0, 1}));
                }).text.find("Error creating output file '"));
}

TEST_F(OutputFiles, formatWithoutSpaceOrTimeType_isWarnedAbout) {
  for (const bool space : {false, true}) {
    Format format = OutputBench::temperature();
    if (space) {
      format.spaceType = Format::NUM_S;
    } else {
      format.timeType = Format::NUM_M;
    }
    TKL::MessageCapture capture;
    init(bench.field(format, {0}));
    EXPECT_TRUE(
        capture.has("Output format 'temperature' lacks SPACE_TYPE or TIME_TYPE, its output files will "
                    "have no values.\n",
                    TKL::MSG_WARNING, INIT_ID, -1));
  }
}

TEST_F(OutputFiles, materialBoundaries_areTheOuterSidesAndTheJoints) {
  TKL::MessageCapture capture;
  initOutputFiles({}, bench.construction, streams, false);
  EXPECT_EQ(
      "0 0.1 0.6 0\n"    // top
      "0.1 0.4 0.6 0\n"  //
      "0 0.1 0 0\n"      // bottom
      "0.1 0.4 0 0\n"    //
      "0.6 0.4 0 1\n"    // left edge, brick against wool, right edge: upper row
      "0.6 0.4 0.1 1\n"
      "0.6 0.4 0.4 1\n"
      "0.4 0 0 1\n"  // lower row
      "0.4 0 0.1 1\n"
      "0.4 0 0.4 1\n",
      bench.folder.read("constr.txt"));
}

TEST_F(OutputFiles, lowestRowEdge_isExactlyZero) {
  bench.disc.dy.data = {0.1, 0.2};  // 0.30000000000000004 - 0.1 - 0.2 is not 0 in every order
  TKL::MessageCapture capture;
  initOutputFiles({}, bench.construction, streams, false);
  EXPECT_NE(std::string::npos, bench.folder.read("constr.txt").find("\n0.2 0 0.4 1\n"));
}

TEST_F(OutputFiles, outputFolderThatIsNotThere_getsNoBoundariesFile) {
  bench.construction.outputDir = bench.folder.file("nowhere");
  TKL::MessageCapture capture;
  EXPECT_NO_THROW(initOutputFiles({}, bench.construction, streams, false));
  EXPECT_FALSE(std::filesystem::exists(bench.folder.file("nowhere")));
}

TEST_F(OutputFiles, boundariesFileThatCannotBeWritten_throwsWithItsPath) {
  std::filesystem::create_directory(bench.folder.file("constr.txt"));
  TKL::MessageCapture capture;
  const std::string text =
      TKL::thrownBy([&] { initOutputFiles({}, bench.construction, streams, false); }).text;
  EXPECT_NE(std::string::npos, text.find(bench.folder.file("constr.txt"))) << text;
}

TEST_F(OutputFiles, boundariesOnAFullDisk_throw) {
  std::filesystem::create_symlink("/dev/full", bench.folder.file("constr.txt"));
  TKL::MessageCapture capture;
  const std::string text =
      TKL::thrownBy([&] { initOutputFiles({}, bench.construction, streams, false); }).text;
  EXPECT_NE(std::string::npos, text.find("No space left on device")) << text;
}

std::string unitAfter(Format::type_t type, Format::space_type_t space, Format::time_type_t time,
                      const std::string& unit) {
  Format format;
  format.type = type;
  format.spaceType = space;
  format.timeType = time;
  return integratedUnit(format, unit);
}

TEST(ValueUnit, fieldIntegratedInSpace_losesItsVolume) {
  const std::pair<const char*, const char*> CASES[] = {{"kg/m3", "kg"},    {"m3/m3", "m3"},
                                                       {"J/m3", "J"},      {"mol/m3", "mol"},
                                                       {"kg/m3s", "kg/s"}, {"m3/m2s", "m3/s"}};
  for (const auto& [before, after] : CASES) {
    EXPECT_EQ(after, unitAfter(Format::T_FIELD, Format::S_INTEGRAL, Format::M_NONE, before));
    EXPECT_EQ(before, unitAfter(Format::T_FIELD, Format::S_MEAN, Format::M_NONE, before));
    EXPECT_EQ(before, unitAfter(Format::T_FIELD, Format::S_SINGLE, Format::M_NONE, before));
  }
}

TEST(ValueUnit, fluxIntegratedInSpace_losesItsArea) {
  const std::pair<const char*, const char*> CASES[] = {
      {"kg/m2s", "kg/s"}, {"J/m2s", "J/s"}, {"W/m2", "W"}, {"mol/m2s", "mol/s"}, {"m3/m2s", "m3/s"}};
  for (const auto& [before, after] : CASES) {
    EXPECT_EQ(after, unitAfter(Format::T_FLUX, Format::S_INTEGRAL, Format::M_NONE, before));
    EXPECT_EQ(before, unitAfter(Format::T_FLUX, Format::S_MEAN, Format::M_MEAN, before));
  }
}

TEST(ValueUnit, fluxIntegratedInTime_losesItsTime) {
  const std::pair<const char*, const char*> CASES[] = {
      {"kg/m2s", "kg/m2"}, {"J/m2s", "J/m2"}, {"W/m2", "J/m2"}, {"mol/m2s", "mol/m3"},
      {"kg/s", "kg"},      {"J/s", "J"},      {"W", "J"},       {"mol/s", "mol"}};
  for (const auto& [before, after] : CASES) {
    EXPECT_EQ(after, unitAfter(Format::T_FLUX, Format::S_SINGLE, Format::M_INTEGRAL, before));
  }
}

TEST(ValueUnit, timeRule_seesTheResultOfTheSpaceRule) {
  EXPECT_EQ("J", unitAfter(Format::T_FLUX, Format::S_INTEGRAL, Format::M_INTEGRAL, "W/m2"));
  EXPECT_EQ("kg", unitAfter(Format::T_FLUX, Format::S_INTEGRAL, Format::M_INTEGRAL, "kg/m2s"));
  EXPECT_EQ("mol", unitAfter(Format::T_FLUX, Format::S_INTEGRAL, Format::M_INTEGRAL, "mol/m2s"));
  EXPECT_EQ("m3/s", unitAfter(Format::T_FLUX, Format::S_INTEGRAL, Format::M_INTEGRAL, "m3/m2s"));
  EXPECT_EQ("kg", unitAfter(Format::T_FIELD, Format::S_INTEGRAL, Format::M_INTEGRAL, "kg/m3s"));
  EXPECT_EQ("m3", unitAfter(Format::T_FIELD, Format::S_INTEGRAL, Format::M_INTEGRAL, "m3/m2s"));
}

TEST(ValueUnit, unitThatIsNotListed_stays) {
  EXPECT_EQ("kW/m2", unitAfter(Format::T_FLUX, Format::S_INTEGRAL, Format::M_INTEGRAL, "kW/m2"));
  EXPECT_EQ("C", unitAfter(Format::T_FIELD, Format::S_INTEGRAL, Format::M_NONE, "C"));
}

}  // namespace
}  // namespace VELMORA
