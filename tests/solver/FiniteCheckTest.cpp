#include "solver/FiniteCheck.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

#include "project/VelInit.h"

namespace VELMORA_SOLVER {
namespace {

constexpr double NO_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double TOO_LARGE = std::numeric_limits<double>::infinity();

class FiniteCheckTest : public ::testing::Test {
 protected:
  FiniteCheckTest() { state.resize(3); }
  std::string found(const std::vector<double>& y, const std::vector<double>& ydot) {
    const auto result = findNotFinite(y, ydot, state, equations);
    return result ? result->quantity + " of " + std::to_string(result->element) : "nothing";
  }
  SolverState state;
  BalanceEquations equations = BalanceEquations::fromSelection(std::bitset<VELMORA::VelInit::NUM_B>()
                                                                   .set(VELMORA::VelInit::B_ENERGY)
                                                                   .set(VELMORA::VelInit::B_MOISTURE));
  std::vector<double> fine = std::vector<double>(6, 1.0);
};

TEST(AllFinite, tellsNumbersFromOthers) {
  std::vector<double> values{0.0, -1e308, 1e-320, 5.0};
  EXPECT_TRUE(allFinite(values));
  EXPECT_TRUE(allFinite({}));
  for (double bad : {NO_NUMBER, -NO_NUMBER, TOO_LARGE, -TOO_LARGE}) {
    for (double& value : values) {
      const double good = std::exchange(value, bad);
      EXPECT_FALSE(allFinite(values));
      value = good;
    }
  }
}

TEST_F(FiniteCheckTest, numbers_areNotReported) {
  EXPECT_EQ(found(fine, fine), "nothing");
  EXPECT_EQ(found(fine, {}), "nothing");
}

TEST_F(FiniteCheckTest, conservedQuantity_isNamedFirst) {
  std::vector<double> y = fine;
  state.T[0] = NO_NUMBER;
  y[4] = TOO_LARGE;
  EXPECT_EQ(found(y, fine), "energy density of 2");
  y[3] = NO_NUMBER;
  EXPECT_EQ(found(y, fine), "moisture density of 1");
}

TEST_F(FiniteCheckTest, decomposedQuantity_isNamedBeforeTheDerivative) {
  std::vector<double> ydot = fine;
  ydot[0] = NO_NUMBER;
  EXPECT_EQ(found(fine, ydot), "change of the energy density of 0");
  state.Kl[2] = NO_NUMBER;
  EXPECT_EQ(found(fine, ydot), "liquid conductivity of 2");
  state.RH[1] = NO_NUMBER;
  EXPECT_EQ(found(fine, ydot), "relative humidity of 1");
}

TEST_F(FiniteCheckTest, moistureAlone_hasItsOwnPosition) {
  equations = BalanceEquations::fromSelection(
      std::bitset<VELMORA::VelInit::NUM_B>().set(VELMORA::VelInit::B_MOISTURE));
  std::vector<double> y(3, 1.0);
  y[1] = NO_NUMBER;
  EXPECT_EQ(found(y, {}), "moisture density of 1");
}

TEST_F(FiniteCheckTest, pollutant_standsBehindTheOtherBalances) {
  equations = BalanceEquations{BE_ENERGY | BE_POLLUTANT, 3};
  std::vector<double> y(9, 1.0);
  y[7] = NO_NUMBER;
  EXPECT_EQ(found(y, {}), "pollutant mass in the pore gas of 2");
  y[5] = NO_NUMBER;
  EXPECT_EQ(found(y, {}), "pollutant mass in the solid of 1");
  equations = BalanceEquations{BE_ENERGY | BE_MOISTURE | BE_POLLUTANT, 4};
  y.assign(12, 1.0);
  y[11] = NO_NUMBER;
  EXPECT_EQ(found(y, {}), "pollutant mass in the solid of 2");
  y[6] = NO_NUMBER;
  EXPECT_EQ(found(y, {}), "pollutant mass in the pore gas of 1");
}

TEST_F(FiniteCheckTest, quantitiesOfAPollutant_areNamed) {
  std::vector<double> ydot = fine;
  ydot[0] = NO_NUMBER;
  state.resizePollutant(3);
  state.DVOC[1] = NO_NUMBER;
  EXPECT_EQ(found(fine, ydot), "pollutant conductivity of 1");
  state.pVOC[1] = NO_NUMBER;
  EXPECT_EQ(found(fine, ydot), "pollutant pressure of 1");
  state.rhoVOC[2] = TOO_LARGE;
  EXPECT_EQ(found(fine, ydot), "pollutant density in the pore gas of 2");
}

}  // namespace
}  // namespace VELMORA_SOLVER
