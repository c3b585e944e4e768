#include <random>

#include "airflow/AirBench.h"

namespace VELMORA {

using PressureFieldTest = AirBench;

// ---- one dimension

TEST_F(PressureFieldTest, layers_areInSeries) {
  const MM::Material loose = airMaterialOf(2e-6), dense = airMaterialOf(5e-8);
  grid({0.01, 0.03, 0.02, 0.05}, {2.0});
  fill(loose);
  at(2).material = at(3).material = &dense;
  exchange(at(0).sideLeft, 1e-4, 10.0);
  exchange(at(3).sideRight, 2e-4, -5.0);
  start();
  update();
  // from centre to centre, the films at the centres of the outermost cells
  const double R = 1 / 1e-4 + (0.005 + 0.03) / 2e-6 + (0.02 + 0.025) / 5e-8 + 1 / 2e-4;
  const double m = 15.0 / R * 2.0;  // over 2 m2
  for (const Side* side :
       {at(0).sideLeft, at(0).sideRight, at(1).sideRight, at(2).sideRight, at(3).sideRight})
    EXPECT_NEAR(through(side), m, 1e-12 * m);
  EXPECT_NEAR(dp(0), 10.0 - m / 2.0 / 1e-4, 1e-9);
  EXPECT_NEAR(dp(1), dp(0) - m / 2.0 * (0.005 + 0.015) / 2e-6, 1e-9);
  EXPECT_NEAR(dp(2), dp(1) - m / 2.0 * (0.015 / 2e-6 + 0.01 / 5e-8), 1e-9);
  EXPECT_NEAR(dp(3), -5.0 + m / 2.0 / 2e-4, 1e-9);
}

TEST_F(PressureFieldTest, flowTurnsWithThePressures) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-4, -10.0);
  exchange(at(1).sideRight, 1e-4, 0.0);
  start();
  update();
  const double m = -10.0 / (2 / 1e-4 + 0.1 / 2e-6);
  EXPECT_NEAR(through(at(0).sideRight), m, 1e-12 * std::fabs(m));
}

TEST_F(PressureFieldTest, uniformOutsidePressure_isThatOfAllOpenElements) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.2, 0.1}, {0.3, 0.1});
  fill(loose);
  exchange(at(0, 0).sideLeft, 1e-4, 37.0);
  exchange(at(2, 1).sideRight, 3e-4, 37.0);
  start();
  update();
  for (const double p : pAir) EXPECT_NEAR(p, P_NORMAL + 37.0, 1e-9);
  for (const double m : flow) EXPECT_NEAR(m, 0.0, 1e-18);
}

TEST_F(PressureFieldTest, wetPores_passLessAir) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  Theta = {0.25, 0.25};  // half of the pores
  exchange(at(0).sideLeft, 1e-4, 10.0);
  exchange(at(1).sideRight, 1e-4, 0.0);
  start();
  update();
  const double m = 10.0 / (2 / 1e-4 + 0.1 / 1e-6);
  EXPECT_NEAR(through(at(0).sideRight), m, 1e-12 * m);
}

TEST_F(PressureFieldTest, fullPores_passNoAir) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  Theta = {0.0, 0.5};
  exchange(at(0).sideLeft, 1e-4, 10.0);
  exchange(at(1).sideRight, 1e-4, 0.0);
  start();
  update();
  EXPECT_EQ(through(at(0).sideRight), 0.0);
  EXPECT_NEAR(dp(0), 10.0, 1e-9);
  EXPECT_NEAR(dp(1), 0.0, 1e-9);
}

// ---- closed materials and contacts

TEST_F(PressureFieldTest, openAndClosedElement_haveNoFlowBetweenThem) {
  const MM::Material loose = airMaterialOf(2e-6), tight = airMaterialOf(2e-6, "AIR_TIGHT");
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  at(1).material = &tight;
  exchange(at(0).sideLeft, 1e-4, 10.0);
  exchange(at(1).sideRight, 1e-4, 0.0);
  start();
  update();
  EXPECT_EQ(through(at(0).sideRight), 0.0);
  EXPECT_EQ(through(at(1).sideRight), 0.0);
  EXPECT_NEAR(dp(0), 10.0, 1e-9);
}

TEST_F(PressureFieldTest, foil_stopsTheFlow) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.1}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-4, 10.0);
  exchange(at(1).sideRight, 1e-4, 0.0);
  start();
  air.sideResistance[static_cast<std::size_t>(at(0).sideRight->number)] = 1e50;
  update();
  EXPECT_LT(air.kGSide[static_cast<std::size_t>(at(0).sideRight->number)], 1e-50);
  EXPECT_NEAR(through(at(0).sideRight), 0.0, 1e-45);
  EXPECT_NEAR(dp(0), 10.0, 1e-9);
  EXPECT_NEAR(dp(1), 0.0, 1e-9);
}

TEST_F(PressureFieldTest, contactResistance_isInSeries) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.3}, {1.0});
  fill(loose);
  exchange(at(0).sideLeft, 1e-4, 10.0);
  exchange(at(1).sideRight, 1e-4, 0.0);
  start();
  air.sideResistance[static_cast<std::size_t>(at(0).sideRight->number)] = 3e5;
  update();
  const double m = 10.0 / (2 / 1e-4 + 0.2 / 2e-6 + 3e5);
  EXPECT_NEAR(through(at(0).sideRight), m, 1e-12 * m);
}

TEST_F(PressureFieldTest, airGoesAroundAFoil) {
  const MM::Material loose = airMaterialOf(2e-6);
  grid({0.1, 0.1}, {0.2, 0.2});
  fill(loose);
  for (const int j : {0, 1}) {
    exchange(at(0, j).sideLeft, 1e-4, 10.0);
    exchange(at(1, j).sideRight, 1e-4, 0.0);
  }
  start();
  air.sideResistance[static_cast<std::size_t>(at(0, 0).sideRight->number)] = 1e50;
  update();
  const double film = 1e-4 * 0.2, across = 2e-6 * 0.2 / 0.1, down = 2e-6 * 0.1 / 0.2;  // conductances
  const double halfWay = film + film * down / (film + down);
  const double m = 10.0 / (2 / halfWay + 1 / across);
  EXPECT_NEAR(through(at(0, 1).sideRight), m, 1e-12 * m);
  EXPECT_NEAR(through(at(0, 0).sideRight), 0.0, 1e-45);
  EXPECT_NEAR(through(at(0, 0).sideBottom), through(at(0, 0).sideLeft), 1e-12 * m);
  EXPECT_NEAR(through(at(1, 0).sideBottom), -through(at(1, 0).sideRight), 1e-12 * m);
}

// ---- balance of every element

TEST_F(PressureFieldTest, everyElement_getsAsMuchAirAsItLoses) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> exponent(-3.0, 0.0), size(0.01, 0.1);
  std::deque<MM::Material> materials;
  for (int k = 0; k < 8; ++k) materials.push_back(airMaterialOf(1e-5 * std::pow(10.0, exponent(random))));
  std::vector<double> w(12), h(9);
  for (double& x : w) x = size(random);
  for (double& x : h) x = size(random);
  grid(w, h);
  for (Element& e : elements) e.material = &materials[random() % 8];
  for (int j = 0; j < ny; ++j) {
    exchange(at(0, j).sideLeft, 1e-4, 8.0);
    exchange(at(nx - 1, j).sideRight, 1e-4, -4.0);
  }
  start();
  update();
  double total = 0.0;
  for (int j = 0; j < ny; ++j) total += through(at(0, j).sideLeft);
  EXPECT_GT(total, 0.0);
  EXPECT_LT(largestGain(), 1e-12 * total);
}

TEST_F(PressureFieldTest, balanceHoldsWithBuoyancy_ifTheCellsHaveOneHeight) {
  const MM::Material loose = airMaterialOf(2e-5);
  grid({0.1, 0.05, 0.2}, std::vector<double>(10, 0.25));
  fill(loose);
  for (int j = 0; j < ny; ++j)
    for (int i = 0; i < nx; ++i) temperature(i, j) = 263.15 + 15.0 * i + 2.0 * j;
  for (int j = 0; j < ny; ++j) exchange(at(0, j).sideLeft, 1e-4, 2.0);
  for (int j = 0; j < ny; ++j) exchange(at(2, j).sideRight, 1e-4, 0.0);
  start(true);
  update();
  double total = 0.0;
  for (int j = 0; j < ny; ++j) total += std::fabs(through(at(0, j).sideLeft));
  EXPECT_LT(largestGain(), 1e-12 * total);
}

TEST_F(PressureFieldTest, unequalHeights_weighTheDensityOtherwiseInBalanceAndFlow) {
  const MM::Material loose = airMaterialOf(2e-5);
  grid({1.0}, {0.1, 0.3});
  fill(loose);
  temperature(0, 0) = 273.15;
  temperature(0, 1) = 293.15;
  exchange(at(0, 0).sideTop, 1e-4, 0.0);
  exchange(at(0, 1).sideBottom, 1e-4, 0.0);
  start(true);
  update();
  const double kG = air.kGSide[static_cast<std::size_t>(at(0, 0).sideBottom->number)];
  const double wL = 0.25, wR = 0.75;
  // of the upper element's balance against that of the flow
  const double error = kG * G_AIR * ((rho(0, 0) * wR + rho(0, 1) * wL) - (rho(0, 0) * wL + rho(0, 1) * wR));
  EXPECT_NEAR(gain(at(0, 0)), error, 1e-12 * kG);
  EXPECT_NEAR(gain(at(0, 1)), 0.0, 1e-12 * kG);
  // of the flow that the weight of the air drives through this side
  EXPECT_NEAR(error / (kG * G_AIR * rho(0, 1)), 0.5 * 20.0 / 273.15, 1e-4);
}

// ---- weight of air

TEST_F(PressureFieldTest, columnAtRest_hasTheWeightOfItsAir) {
  const MM::Material loose = airMaterialOf(2e-5);
  grid({1.0}, std::vector<double>(20, 0.5));
  fill(loose);
  exchange(at(0, 19).sideBottom, 1e-3, 0.0);
  start(true);
  update();
  const double density = P_NORMAL / (287.1 * 293.15);
  for (int j = 0; j < 20; ++j) EXPECT_NEAR(dp(0, j), -density * 9.807 * 0.5 * (19 - j), 1e-9) << j;
  for (const double m : flow) EXPECT_NEAR(m, 0.0, 1e-15);
}

TEST_F(PressureFieldTest, heavyAirFallsThroughAShaftWithOnePressureAroundIt) {
  const MM::Material loose = airMaterialOf(2e-5);
  grid({1.0}, std::vector<double>(8, 0.5));
  fill(loose);
  exchange(at(0, 0).sideTop, 1e-3, 0.0);
  exchange(at(0, 7).sideBottom, 1e-3, 0.0);
  start(true);
  update();
  const double m = rho(0) * G_AIR * 3.5 / (2 / 1e-3 + 3.5 / 2e-5);  // positive downwards
  EXPECT_NEAR(through(at(0, 3).sideBottom), m, 1e-12 * m);
}

TEST_F(PressureFieldTest, withoutBuoyancy_nothingFallsThroughIt) {
  const MM::Material loose = airMaterialOf(2e-5);
  grid({1.0}, std::vector<double>(8, 0.5));
  fill(loose);
  exchange(at(0, 0).sideTop, 1e-3, 0.0);
  exchange(at(0, 7).sideBottom, 1e-3, 0.0);
  start(false);
  update();
  for (const double m : flow) EXPECT_EQ(m, 0.0);
}

TEST_F(PressureFieldTest, warmAndColdShaft_makeTheAirCircle) {
  const MM::Material loose = airMaterialOf(2e-5), tight = airMaterialOf(1e-5, "AIR_TIGHT");
  grid({0.5, 0.5, 0.5}, std::vector<double>(6, 0.5));
  fill(loose);
  for (int j = 1; j < 5; ++j) at(1, j).material = &tight;
  for (int j = 0; j < 6; ++j) temperature(0, j) = 273.15;
  exchange(at(0, 0).sideLeft, 1e-3, 0.0);
  start(true);
  update();
  const double drive = (P_NORMAL / (287.1 * 273.15) - P_NORMAL / (287.1 * 293.15)) * 9.807 * 2.5;
  const double R = (2 * 2.5 + 4 * 0.5) / (2e-5 * 0.5);  // both shafts and both ways across
  EXPECT_NEAR(through(at(0, 2).sideBottom), drive / R, 1e-12 * drive / R);
  EXPECT_NEAR(through(at(2, 2).sideBottom), -drive / R, 1e-12 * drive / R);
}

}  // namespace VELMORA
