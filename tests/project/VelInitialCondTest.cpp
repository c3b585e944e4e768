#include "project/VelInitialCond.h"

#include <gtest/gtest.h>

#include "ConditionTexts.h"

using TKL::Thrown;
using namespace VELMORA;

TEST(VelInitialCond, everyKeyword_isRead) {
  const VelInitialCond condition =
      readRecord<VelInitialCond>("TYPE = TEMPER\nNAME = warm\nREFERENCED_NAME = cold\nVALUE = 25 C");
  EXPECT_EQ(condition.condition, VelInitialCond::C_TEMPER);
  EXPECT_EQ(condition.name, "warm");
  EXPECT_EQ(condition.referencedName, "cold");
  EXPECT_EQ(condition.value.name, "VALUE");
  EXPECT_DOUBLE_EQ(condition.value.value, 298.15);
}

TEST(VelInitialCond, everyType_hasItsIndex) {
  const std::vector<std::string> types = {"TEMPER",   "MSTCONT", "MSTMASS", "RELHUM",  "CAPPRESS",
                                          "GASPRESS", "VOCMASS", "SOLMASS", "SOLCONT", "SALTMASS"};
  ASSERT_EQ(types.size(), static_cast<std::size_t>(VelInitialCond::NUM_C));
  for (std::size_t k = 0; k < types.size(); ++k) {
    EXPECT_EQ(readRecord<VelInitialCond>("TYPE = " + types[k]).condition, static_cast<int>(k)) << types[k];
  }
}

TEST(VelInitialCond, isUnsetByDefault) {
  const VelInitialCond condition;
  EXPECT_EQ(condition.condition, 10);
  EXPECT_FALSE(condition.value.isSet());
  EXPECT_FALSE(condition.used);
}

TEST(VelInitialCond, unitOfTheValue_isNotTested) {
  const VelInitialCond condition = readRecord<VelInitialCond>("TYPE = RELHUM\nVALUE = 80 C");
  EXPECT_DOUBLE_EQ(condition.value.value, 353.15);
}

TEST(VelInitialCond, unreadableValue_fails) {
  EXPECT_EQ(thrownByReading<VelInitialCond>("VALUE = warm"),
            (Thrown{"Invalid parameter value 'warm' for keyword 'VALUE'!", "[VelInitialCond::read]"}));
}

TEST(VelInitialCond, unknownType_fails) {
  EXPECT_EQ(
      thrownByReading<VelInitialCond>("TYPE = MAGIC"),
      (Thrown{"Cannot determine enumeration value for enumeration type 'VelInitialCond::condition_t' and "
              "keyword 'MAGIC'.",
              "[KeywordList::Enumeration]"}));
}
