#include "project/VelConditions.h"

#include <gtest/gtest.h>

#include "ConditionTexts.h"

using TKL::Thrown;
using namespace VELMORA;

namespace {

const char* const CONDITIONS_READ = "[VelConditions::read]";

VelConditions readConditions(const std::string& text) {
  return readRecord<VelConditions>(text);
}

std::vector<SectionText> explode(VelConditions::conditionType_t type, const std::string& text) {
  std::vector<SectionText> blocks;
  VelConditions::explodeList(type, SectionText(text), blocks);
  return blocks;
}

const std::string ALL_LISTS =
    "[WALLS]\n[WALL_DATA]\nNAME = w1\n[WALL_DATA]\nNAME = w2\n"
    "[CLIMATE_CONDITIONS]\n[CLIMATE_COND]\nNAME = c1\n"
    "[BOUNDARY_CONDITIONS]\n[BOUND_COND]\nNAME = b1\n"
    "[INITIAL_CONDITIONS]\n[INIT_COND]\nNAME = i1\n"
    "[FIELD_CONDITIONS]\n[FIELD_COND]\nTYPE = WATSOURCE\nNAME = f1\n"
    "[CONTACT_CONDITIONS]\n[CONTACT_COND]\nNAME = k1\n"
    "[SOLUTION_DEFINITIONS]\n[SOLUTION_DEFINITION]\nNAME = s1\n"
    "[DEFAULT_CONDITIONS]\nDEFAULT_TEMPERATURE = 5 C\nDEFAULT_RELHUM = 50 %\n";

}  // namespace

TEST(VelConditions, everyList_isRead) {
  const VelConditions conditions = readConditions(ALL_LISTS);
  ASSERT_EQ(conditions.wallData.size(), 2u);
  EXPECT_EQ(conditions.wallData[0].name, "w1");
  EXPECT_EQ(conditions.wallData[1].name, "w2");
  ASSERT_EQ(conditions.climateConds.size(), 1u);
  EXPECT_EQ(conditions.climateConds[0].name, "c1");
  ASSERT_EQ(conditions.boundaryConds.size(), 1u);
  EXPECT_EQ(conditions.boundaryConds[0].name, "b1");
  ASSERT_EQ(conditions.initialConds.size(), 1u);
  EXPECT_EQ(conditions.initialConds[0].name, "i1");
  ASSERT_EQ(conditions.fieldConds.size(), 1u);
  EXPECT_EQ(conditions.fieldConds[0].name, "f1");
  ASSERT_EQ(conditions.contactConds.size(), 1u);
  EXPECT_EQ(conditions.contactConds[0].name, "k1");
  ASSERT_EQ(conditions.solutionDefinitions.size(), 1u);
  EXPECT_EQ(conditions.solutionDefinitions[0].name, "s1");
  EXPECT_DOUBLE_EQ(conditions.defaultTemperature.value, 278.15);
  EXPECT_DOUBLE_EQ(conditions.defaultRelHum.value, 0.5);
}

TEST(VelConditions, defaults_areTwentyDegreesAndEightyPercent) {
  const VelConditions conditions = readConditions("");
  EXPECT_DOUBLE_EQ(conditions.defaultTemperature.value, 293.15);
  EXPECT_EQ(conditions.defaultTemperature.IO_unit.name(), "C");
  EXPECT_DOUBLE_EQ(conditions.defaultRelHum.value, 0.8);
  EXPECT_EQ(conditions.defaultRelHum.IO_unit.name(), "%");
}

TEST(VelConditions, headersWithoutBrackets_areKnown) {
  const VelConditions conditions = readConditions("WALLS\nWALL_DATA\nNAME = w");
  ASSERT_EQ(conditions.wallData.size(), 1u);
  EXPECT_EQ(conditions.wallData[0].name, "w");
}

TEST(VelConditions, repeatedList_goesOnWithTheSameList) {
  const VelConditions conditions =
      readConditions("[WALLS]\n[WALL_DATA]\nNAME = w1\n[DEFAULT_CONDITIONS]\n[WALLS]\nWALLAREA = 2 m2");
  ASSERT_EQ(conditions.wallData.size(), 1u);
  EXPECT_EQ(conditions.wallData[0].para[VelWallData::P_WALLAREA].value, 2.0);
}

TEST(VelConditions, lineBeforeTheFirstList_fails) {
  EXPECT_EQ(thrownByReading<VelConditions>("[WALL_DATA]"),
            (Thrown{"Expected keyword indicating a new condition list, got 'WALL_DATA'!", CONDITIONS_READ}));
}

TEST(VelConditions, mixedCaseListName_isNoList) {
  EXPECT_EQ(thrownByReading<VelConditions>("ClimateConditions"),
            (Thrown{"Expected keyword indicating a new condition list, got 'ClimateConditions'!",
                    CONDITIONS_READ}));
}

TEST(VelConditions, emptyLines_areSkipped) {
  EXPECT_EQ(readConditions("\n[WALLS]\n\n[WALL_DATA]\n\nNAME = w\n\n[]\n").wallData.size(), 1u);
}

TEST(VelConditions, blockOfAnotherList_fails) {
  EXPECT_EQ(
      thrownByReading<VelConditions>("[WALLS]\n[BOUND_COND]\nNAME = b"),
      (Thrown{"Expected condition 'WALL_DATA' but got 'BOUND_COND'!", "[VelConditions::explodeList]  "}));
}

TEST(VelConditions, recordFailure_knowsItsLine) {
  try {
    readConditions("[WALLS]\n[WALL_DATA]\n\nNAME = w\nloose words");
    FAIL() << "nothing thrown";
  } catch (const TKL::Exception& exception) {
    EXPECT_EQ(exception.inputLine(), 5);
    EXPECT_EQ(exception.location(), "[VelWallData::read]");
  }
}

TEST(VelConditions, unreadableDefault_fails) {
  EXPECT_EQ(thrownByReading<VelConditions>("DEFAULT_CONDITIONS\nDEFAULT_TEMPERATURE = warm"),
            (Thrown{"Invalid parameter value 'warm' for keyword 'DEFAULT_TEMPERATURE'!", CONDITIONS_READ}));
  EXPECT_EQ(thrownByReading<VelConditions>("DEFAULT_CONDITIONS\nDEFAULT_RELHUM = 50"),
            (Thrown{"Invalid parameter value '50' for keyword 'DEFAULT_RELHUM'!", CONDITIONS_READ}));
}

TEST(VelConditions, defaultLineWithoutEqualSign_fails) {
  EXPECT_EQ(thrownByReading<VelConditions>("DEFAULT_CONDITIONS\nloose words"),
            (Thrown{"Expected keyword, got 'loose words'!", CONDITIONS_READ}));
}

TEST(VelConditions, emptyDefault_fails) {
  EXPECT_EQ(thrownByReading<VelConditions>("DEFAULT_CONDITIONS\nDEFAULT_RELHUM ="),
            (Thrown{"Missing value for keyword 'DEFAULT_RELHUM'!", CONDITIONS_READ}));
}

TEST(VelConditions, unknownDefault_isWarnedAbout) {
  TKL::MessageCapture capture;
  readConditions("DEFAULT_CONDITIONS\nCOLOUR = red");
  EXPECT_TRUE(capture.has(UNKNOWN_KEYWORD, TKL::MSG_WARNING, CONDITIONS_READ, 3));
}

TEST(VelConditionsExplodeList, blocks_holdTheLinesBetweenHeaders) {
  const std::vector<SectionText> blocks = explode(
      VelConditions::T_INIT_COND, "[INIT_COND]\nNAME = a\nVALUE = 1 m\nINIT_COND\nINIT_COND=\nNAME = b");
  ASSERT_EQ(blocks.size(), 3u);
  ASSERT_EQ(blocks[0].size(), 2u);
  EXPECT_EQ(blocks[0].begin()->text, "NAME = a");
  EXPECT_TRUE(blocks[1].empty());
  EXPECT_EQ(blocks[2].size(), 1u);
}

TEST(VelConditionsExplodeList, dataLines_stayAsTheyAre) {
  const std::vector<SectionText> blocks =
      explode(VelConditions::T_FIELD_COND, "[FIELD_COND]\nNAME = [in brackets]");
  EXPECT_EQ(blocks.at(0).begin()->text, "NAME = [in brackets]");
}

TEST(VelConditionsExplodeList, everyType_hasItsHeader) {
  const std::vector<std::string> headers = {"WALL_DATA",  "CLIMATE_COND", "BOUND_COND",         "INIT_COND",
                                            "FIELD_COND", "CONTACT_COND", "SOLUTION_DEFINITION"};
  ASSERT_EQ(headers.size(), static_cast<std::size_t>(VelConditions::NUM_T));
  for (std::size_t k = 0; k < headers.size(); ++k) {
    EXPECT_EQ(explode(static_cast<VelConditions::conditionType_t>(k), headers[k]).size(), 1u) << headers[k];
  }
}

TEST(VelConditionsExplodeList, lineBeforeTheFirstHeader_fails) {
  EXPECT_EQ(
      TKL::thrownBy([] { explode(VelConditions::T_BOUND_COND, "\nNAME = a"); }),
      (Thrown{"Expected condition 'BOUND_COND' but got 'NAME = a'!", "[VelConditions::explodeList]  "}));
}

TEST(VelConditionsExplodeList, earlierBlocks_areReplaced) {
  std::vector<SectionText> blocks(5);
  VelConditions::explodeList(VelConditions::T_BOUND_COND, SectionText("BOUND_COND\nNAME = a"), blocks);
  EXPECT_EQ(blocks.size(), 1u);
}

TEST(VelConditionsSize, everyRecordIsMadeOnce_whateverTheNumber) {
  const int COUNT = 300;
  const auto recordsOf = [](int count) {
    std::string text = "[BOUNDARY_CONDITIONS]\n";
    for (int k = 0; k < count; ++k) text += "[BOUND_COND]\nNAME = b" + std::to_string(k) + "\nCOLOUR = red\n";
    return text;
  };
  for (const int count : {COUNT, 10 * COUNT}) {
    TKL::MessageCapture capture;
    const VelConditions conditions = readConditions(recordsOf(count));
    ASSERT_EQ(conditions.boundaryConds.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(conditions.boundaryConds.back().name, "b" + std::to_string(count - 1));
    // one line of each record speaks once: no line is visited again
    EXPECT_EQ(capture.count(UNKNOWN_KEYWORD), count);
  }
}

TEST(VelConditionsSize, blocksHoldEachLineOnce_whateverTheNumber) {
  for (const std::size_t count : {1000u, 10000u}) {
    std::string text;
    for (std::size_t k = 0; k < count; ++k) text += "FIELD_COND\nTYPE = WATSOURCE\nNAME = f\n";
    std::size_t lines = 0;
    for (const SectionText& block : explode(VelConditions::T_FIELD_COND, text)) lines += block.size();
    EXPECT_EQ(lines, 2 * count);
  }
}
