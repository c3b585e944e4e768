#include "ConditionTexts.h"

#include <array>

using VELMORA::areClimateNames;
using VELMORA::areNumbered;

TEST(ConditionTexts, areNumbered_findsWrongValueNameUnitAndCount) {
  std::array<TKL::Parameter, 1> parameters{TKL::Parameter("A", 1.5, "m")};
  EXPECT_TRUE(areNumbered(parameters, {"A"}, "m"));
  EXPECT_FALSE(areNumbered(parameters, {"B"}, "m"));
  EXPECT_FALSE(areNumbered(parameters, {"A"}, "s"));
  EXPECT_FALSE(areNumbered(parameters, {"A", "B"}, "m"));
  parameters[0].value = 2.5;
  EXPECT_FALSE(areNumbered(parameters, {"A"}, "m"));
}

TEST(ConditionTexts, areClimateNames_findsWrongName) {
  EXPECT_TRUE(areClimateNames(std::array<std::string, 1>{"climate TEMPER"}));
  EXPECT_FALSE(areClimateNames(std::array<std::string, 1>{"climate RELHUM"}));
}
