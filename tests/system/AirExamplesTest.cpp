// Examples in which air moves: a roof with a leak and a glazed gap.

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "system/ExampleRun.h"
#include "system/SteadyReference.h"

namespace VELMORA_TEST {

namespace {

// ---- leaky roof ----

constexpr double WOOL_KG = 2.4e-4;     // [s] mineral wool
constexpr double ROOM_PRESSURE = 3.0;  // [Pa] above outdoors
constexpr double SLIT = 0.01;          // [m] width of leak and joint
constexpr double OPEN_SURFACE = 1.0;   // [s/m]
const ExampleRun::Changes TWENTY_DAYS{{"DURATION = 60 d", "DURATION = 20 d"}};

double length(const std::vector<double>& steps) {
  return std::accumulate(steps.begin(), steps.end(), 0.0);
}

/// Air that flows through the wool from the leak to the joint [kg/h], by a calculation of its own: a steady
/// flow through a body with the air conductivity for its heat conductivity.
double airThroughWool(const ExampleRun& run) {
  const std::vector<double> dx = run.steps("X_STEPS"), dy = run.steps("Y_STEPS");
  const double width = length(dx), height = length(dy);
  const auto conductivity = [=](double x, double y) {
    const bool boards = y<0.024, lining = y> height - 0.0125;
    if (boards) return x > width - SLIT ? WOOL_KG : 0.0;
    return lining && x > SLIT ? 0.0 : WOOL_KG;
  };
  const auto outside = [](double, double y) { return y < 1e-9; };
  const auto room = [height](double, double y) { return y > height - 1e-9; };
  const SteadyReference reference({dx, dy, false, conductivity},
                                  {{OPEN_SURFACE, 0.0, outside}, {OPEN_SURFACE, ROOM_PRESSURE, room}},
                                  Links::SERIES);
  // The surfaces of the program act on the centres of the outermost cells.
  const double halfCells = (dy.front() + dy.back()) / 2 / WOOL_KG / SLIT;
  return 3600.0 * ROOM_PRESSURE / (ROOM_PRESSURE / reference.heatFrom(1) - halfCells);
}

double meanOf(const ExampleRun& run, const std::string& file) {
  double sum = 0.0;
  const auto records = run.records(file);
  for (std::size_t i = 1; i < records.size(); ++i) sum += (records[i][1] + records[i - 1][1]) / 2;
  return sum / static_cast<double>(records.size() - 1);
}

}  // namespace

TEST(LeakyRoofExample, airThatEntersThroughTheLeak_leavesThroughTheJoint) {
  const ExampleRun run("leaky_roof", {{"DURATION = 60 d", "DURATION = 2 d"}});
  const double entering = run.lastValue("air_through_leak.out");
  EXPECT_NEAR(run.lastValue("air_through_joint.out"), entering, 1e-5 * entering);
  EXPECT_NEAR(entering, airThroughWool(run), 1e-3 * entering);
}

TEST(LeakyRoofExample, leak_bringsTheVapourOfTheRoom) {
  const ExampleRun run("leaky_roof", {{"DURATION = 60 d", "DURATION = 2 d"}});
  const double share = 0.5 * 288.68 * std::pow(1.298, 8.02) / 101328.0 * 287.1 / 461.89;
  const double vapour = 24000.0 * run.lastValue("air_through_leak.out") * share;  // [g/d]
  EXPECT_NEAR(run.lastValue("vapour_through_leak.out"), vapour, 1e-4 * vapour);
}

TEST(LeakyRoofExample, roofKeepsMostOfTheWaterThatTheAirLoses) {
  const auto roofWater = [](const ExampleRun& run) {
    return run.lastValue("water_in_wool.out") + run.lastValue("water_in_boards.out");
  };
  double lost = 0.0, kept = 0.0;  // [kg]
  {
    const ExampleRun run("leaky_roof", TWENTY_DAYS);
    lost = 20e-3 * (meanOf(run, "vapour_through_leak.out") - meanOf(run, "vapour_through_joint.out"));
    kept = roofWater(run);
  }
  ExampleRun::Changes still = TWENTY_DAYS;
  still.emplace_back("CONSTVALUE = 101328 Pa", "CONSTVALUE = 101325 Pa");
  const ExampleRun run("leaky_roof", still);
  EXPECT_EQ(run.lastValue("air_through_leak.out"), 0.0);
  kept -= roofWater(run);
  EXPECT_GT(lost, 0.5);
  EXPECT_GT(kept, 0.6 * lost);
  EXPECT_LT(kept, lost);
}

// ---- glazed gap ----

namespace {

/// Heat [W/m2] through the glazing, and the temperatures [K] of its faces to the gas, by iteration by hand.
struct Glazing {
  double heat = 0.0;
  double outer = 272.0;
  double inner = 288.0;

  Glazing() {
    for (int i = 0; i < 50; ++i) {
      const double Tm = (outer + inner) / 2;
      const double Gr = 9.807 * std::pow(0.016, 3) * std::fabs(inner - outer) * RHO * RHO / (Tm * ETA * ETA);
      const double Nu = std::fmax(1.0, 0.035 * std::pow(Gr * C * ETA / LAMBDA, 0.38));
      const double h = Nu * LAMBDA / 0.016 + 4 * 5.67e-8 * std::pow(Tm, 3) / (1 / 0.837 + 1 / 0.03 - 1);
      heat = 25.0 / (0.04 + 0.004 + 1 / h + 0.004 + 0.13);
      outer = 268.15 + heat * (0.04 + 0.004);
      inner = 293.15 - heat * (0.13 + 0.004);
    }
  }

  // 90 % argon, 10 % air
  static constexpr double LAMBDA = 0.9 * 0.01772 + 0.1 * 0.02496, ETA = 0.9 * 2.28e-5 + 0.1 * 1.761e-5;
  static constexpr double RHO = 0.9 * 1.784 + 0.1 * 1.232, C = 0.9 * 522 + 0.1 * 1008;
};

}  // namespace

TEST(GlazedGapExample, heatLoss_isThatOfTheGlazingByHand) {
  const ExampleRun run("glazed_gap");
  const Glazing byHand;
  // half of the outermost cells and the faces of the gas have less than their resistance
  EXPECT_NEAR(-run.lastValue("heat_flux_inside.out"), byHand.heat, 0.01 * byHand.heat);
  EXPECT_NEAR(run.lastValue("inner_pane.out"), byHand.inner - 273.15 + 0.004 * byHand.heat, 0.15);
}

TEST(GlazedGapExample, airInPlaceOfArgon_losesMoreHeat) {
  const ExampleRun run("glazed_gap", {{"GC_GASTYPE = 1 -", "GC_GASTYPE = 0 -"}});
  EXPECT_GT(-run.lastValue("heat_flux_inside.out"), 1.1 * Glazing().heat);
}

TEST(GlazedGapExample, plainGlass_radiatesAcrossTheGap) {
  const ExampleRun run("glazed_gap", {{"RIGHT_EMISS_COEFF = 0.03", "RIGHT_EMISS_COEFF = 0.837"}});
  EXPECT_GT(-run.lastValue("heat_flux_inside.out"), 1.7 * Glazing().heat);
}

}  // namespace VELMORA_TEST
