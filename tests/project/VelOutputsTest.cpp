#include "project/VelOutputs.h"

#include <gtest/gtest.h>

#include "support/MessageCapture.h"
#include "support/Thrown.h"

using TKL::Thrown;
using TKL::thrownBy;
using VELMORA::SectionText;
using VELMORA::VelOutputs;

namespace {

VelOutputs outputsFrom(const std::string& text) {
  VelOutputs outputs;
  outputs.read(SectionText(text));
  return outputs;
}

}  // namespace

TEST(VelOutputs, defaults) {
  const VelOutputs outputs;
  EXPECT_DOUBLE_EQ(outputs.maxHygRelHum.value, 0.95);
  EXPECT_EQ(outputs.maxHygRelHum.IO_unit.name(), "%");
  EXPECT_DOUBLE_EQ(outputs.expRefTemper.value, 273.15);
  EXPECT_DOUBLE_EQ(outputs.expRefRelHum.value, 0.6);
  EXPECT_DOUBLE_EQ(outputs.freezeBegin.value, 0.01);
  EXPECT_EQ(outputs.freezeBegin.IO_unit.name(), "---");
  EXPECT_EQ(outputs.thawBegin, 0);
  EXPECT_FALSE(outputs.outputFolder.isValid());
  EXPECT_TRUE(outputs.outputGrids.empty());
  EXPECT_TRUE(outputs.outputFormats.empty());
  EXPECT_TRUE(outputs.outputFiles.empty());
}

TEST(VelOutputs, defaultGrid_isHourlyToTheEnd) {
  VelOutputs outputs;
  outputs.defaultGrid.prepareCalculation(1e6);
  EXPECT_EQ(outputs.defaultGrid.intervalEnds, (std::vector<double>{0.0, 1e6}));
  EXPECT_DOUBLE_EQ(outputs.defaultGrid.nextOutputTime(0.0), 3600.0);
}

TEST(VelOutputs, section_isReadWhole) {
  const VelOutputs outputs = outputsFrom(
      "[GENERAL]\nOUTPUT_FOLDER = results\nMAX_HYG_RELHUM = 90 %\nEXP_REF_TEMPER = 20 C\n"
      "EXP_REF_RELHUM = 50 %\nFREEZE_BEGIN = 0.2 ---\nTHAW_BEGIN = 1\n"
      "[GRIDS]\n[OUTPUT_GRID]\nNAME = g\nINTERVAL = 0 d 1 h\n[OUTPUT_GRID]\nNAME = g2\n"
      "[FORMATS]\n[OUTPUT_FORMAT]\nNAME = f\n"
      "[FILES]\n[OUTPUT_FILE]\nNAME = t.out\nOUTPUT_GRID = g\nOUTPUT_FORMAT = f\nSPECIES = Formaldehyde");
  EXPECT_EQ(outputs.outputFolder.str(), "results");
  EXPECT_DOUBLE_EQ(outputs.maxHygRelHum.value, 0.9);
  EXPECT_DOUBLE_EQ(outputs.expRefTemper.value, 293.15);
  EXPECT_DOUBLE_EQ(outputs.expRefRelHum.value, 0.5);
  EXPECT_DOUBLE_EQ(outputs.freezeBegin.value, 0.2);
  EXPECT_EQ(outputs.thawBegin, VelOutputs::TB_ICEVOLUMERATE);
  ASSERT_EQ(outputs.outputGrids.size(), 2u);
  EXPECT_EQ(outputs.outputGrids[1].name, "g2");
  EXPECT_EQ(outputs.outputFormats.at(0).name, "f");
  EXPECT_EQ(outputs.outputFiles.at(0).name, "t.out");
  EXPECT_EQ(outputs.outputFiles.at(0).gridName, "g");
  EXPECT_EQ(outputs.outputFiles.at(0).formatName, "f");
  EXPECT_EQ(outputs.outputFiles.at(0).species, "Formaldehyde");
}

TEST(VelOutputs, repeatedSubsections_addUp) {
  EXPECT_EQ(
      outputsFrom("GRIDS\nOUTPUT_GRID\nNAME = a\nFILES\nGRIDS\nOUTPUT_GRID\nNAME = b").outputGrids.size(),
      2u);
}

TEST(VelOutputs, lineBeforeTheFirstSubsection_fails) {
  EXPECT_EQ(thrownBy([] { outputsFrom("OUTPUT_FOLDER = x"); }),
            (Thrown{"Expected keyword, got 'OUTPUT_FOLDER = x'!", "[VelOutputs::read]"}));
}

TEST(VelOutputs, linesBeforeTheFirstBlock_failWithTheTagOfTheList) {
  EXPECT_EQ(thrownBy([] { outputsFrom("GRIDS\nNAME = x"); }),
            (Thrown{"Expected keyword, got 'NAME = x'!", "[VelOutputs::readOutputGrids]"}));
  EXPECT_EQ(thrownBy([] { outputsFrom("FORMATS\nNAME = x"); }),
            (Thrown{"Expected keyword, got 'NAME = x'!", "[VelOutputs::readOutputFormats]"}));
  EXPECT_EQ(thrownBy([] { outputsFrom("FILES\nNAME = x"); }),
            (Thrown{"Expected keyword, got 'NAME = x'!", "[VelOutputs::readOutputFiles]"}));
}

TEST(VelOutputs, thawBeginOfTwo_fails) {
  EXPECT_EQ(thrownBy([] { outputsFrom("GENERAL\nTHAW_BEGIN = 2"); }),
            (Thrown{"Invalid parameter value '2' for keyword 'THAW_BEGIN'!",
                    "[VelOutputs::readOutputParameters]"}));
}

TEST(VelOutputs, negativeThawBegin_fails) {
  EXPECT_EQ(thrownBy([] { outputsFrom("GENERAL\nTHAW_BEGIN = -1"); }).text,
            "Invalid parameter value '-1' for keyword 'THAW_BEGIN'!");
}

TEST(VelOutputs, parameterWithoutUnit_fails) {
  EXPECT_EQ(thrownBy([] { outputsFrom("GENERAL\nMAX_HYG_RELHUM = 0.95"); }),
            (Thrown{"Invalid parameter value '0.95' for keyword 'MAX_HYG_RELHUM'!",
                    "[VelOutputs::readOutputParameters]"}));
}

TEST(VelOutputs, unknownKeywords_areWarnedAbout) {
  TKL::MessageCapture capture;
  outputsFrom("GENERAL\nFOLDER = x\nFILES\nOUTPUT_FILE\nTITLE = y");
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'FOLDER' in this section!", TKL::MSG_WARNING,
                          "[VelOutputs::readOutputParameters]", 3));
  EXPECT_TRUE(capture.has("Invalid or deprecated keyword 'TITLE' in this section!", TKL::MSG_WARNING,
                          "[VelOutputFile::read]", 3));
}

TEST(VelOutputs, defaultFolder_standsBesideTheProject) {
  VelOutputs outputs;
  outputs.setDefaultFolder("/home/me/wall.v2.proj");
  EXPECT_EQ(outputs.outputFolder.str(), "$(PROJECT_DIR)/wall.v2.results");
}

TEST(VelOutputs, givenFolder_isNotReplacedByTheDefault) {
  VelOutputs outputs = outputsFrom("GENERAL\nOUTPUT_FOLDER = mine");
  outputs.setDefaultFolder("/home/me/wall.proj");
  EXPECT_EQ(outputs.outputFolder.str(), "mine");
}
