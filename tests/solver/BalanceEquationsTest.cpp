#include "solver/BalanceEquations.h"

#include <gtest/gtest.h>

#include <set>

#include "project/VelInit.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelInit;
using Selection = std::bitset<VelInit::NUM_B>;

Selection selection(std::initializer_list<VelInit::balance_equations_t> equations) {
  Selection result;
  for (const auto equation : equations) result.set(equation);
  return result;
}

/// Calls `check` with each of the 64 selections.
template <class Check>
void forAllSelections(Check check) {
  for (unsigned long bits = 0; bits < 64; ++bits) {
    SCOPED_TRACE(bits);
    check(Selection(bits));
  }
}

}  // namespace

TEST(BalanceEquations, code_isTheSumOfTheBitValues) {
  forAllSelections([](const Selection& s) {
    const int expected = 1 * s[VelInit::B_ENERGY] + 2 * s[VelInit::B_MOISTURE] + 4 * s[VelInit::B_AIR] +
                         8 * s[VelInit::B_SALT] + 16 * s[VelInit::B_POLLUTANT] +
                         32 * (s[VelInit::B_ICE] && s[VelInit::B_MOISTURE]);
    EXPECT_EQ(BalanceEquations::fromSelection(s).code, expected);
  });
}

TEST(BalanceEquations, onlyEnergyMoistureAndPollutantHaveStates) {
  forAllSelections([](const Selection& s) {
    EXPECT_EQ(BalanceEquations::fromSelection(s).nEquationsPerElement,
              s[VelInit::B_ENERGY] + s[VelInit::B_MOISTURE] + 2 * s[VelInit::B_POLLUTANT]);
  });
}

TEST(BalanceEquations, tenCodesAreAccepted) {
  const std::set<int> accepted = {1, 2, 3, 5, 7, 17, 19, 21, 23, 35};
  forAllSelections([&](const Selection& s) {
    const BalanceEquations equations = BalanceEquations::fromSelection(s);
    EXPECT_EQ(equations.isValid(), accepted.count(equations.code) == 1);
  });
}

TEST(BalanceEquations, iceWithoutMoisture_hasNoEffect) {
  const auto equations = BalanceEquations::fromSelection(selection({VelInit::B_ENERGY, VelInit::B_ICE}));
  EXPECT_EQ(equations.code, BE_ENERGY);
  EXPECT_TRUE(equations.isValid());
}

TEST(BalanceEquations, moistureAndIceWithoutEnergy_isRefused) {
  const auto equations = BalanceEquations::fromSelection(selection({VelInit::B_MOISTURE, VelInit::B_ICE}));
  EXPECT_EQ(equations.code, 34);
  EXPECT_FALSE(equations.isValid());
}

TEST(BalanceEquations, salt_isNeverAccepted) {
  forAllSelections([](const Selection& s) {
    if (s[VelInit::B_SALT]) {
      EXPECT_FALSE(BalanceEquations::fromSelection(s).isValid());
    }
  });
}

TEST(BalanceEquations, has_asksForOneEquation) {
  const auto equations = BalanceEquations::fromSelection(selection({VelInit::B_ENERGY, VelInit::B_AIR}));
  EXPECT_TRUE(equations.has(BE_ENERGY));
  EXPECT_TRUE(equations.has(BE_AIR));
  EXPECT_FALSE(equations.has(BE_MOISTURE));
  EXPECT_FALSE(equations.has(BE_ICE));
}

}  // namespace VELMORA_SOLVER
