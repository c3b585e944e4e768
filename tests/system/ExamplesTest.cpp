#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <numbers>
#include <numeric>
#include <sstream>

#include "system/ExampleRun.h"
#include "system/SteadyReference.h"

namespace VELMORA_TEST {

namespace {

using std::numbers::pi;

constexpr double OUTDOORS = -5.0;  // [C]
constexpr double INDOORS = 20.0;   // [C]
constexpr double DT = INDOORS - OUTDOORS;

// Conductivities of the shipped materials [W/mK].
constexpr double EPS = 0.04;
constexpr double BRICK = 0.81;
constexpr double PLASTER = 0.8;
constexpr double CONCRETE = 1.65;
constexpr double STEEL = 50.0;

double sum(const std::vector<double>& values) {
  return std::accumulate(values.begin(), values.end(), 0.0);
}

// ---- a wall in the reference solver ----

ReferenceGrid layers(bool cylindrical) {
  return {
      {0.01, 0.02}, {0.1, 0.05, 0.05}, cylindrical, [](double, double y) { return y < 0.1 ? EPS : BRICK; }};
}

std::vector<ReferenceAir> aboveAndBelow(double height, double hOutside, double hInside) {
  return {{hOutside, OUTDOORS, [](double, double y) { return y < 1e-9; }},
          {hInside, INDOORS, [height](double, double y) { return std::abs(y - height) < 1e-9; }}};
}

}  // namespace

TEST(SteadyReference, plainWall_hasItsUValue) {
  const double U = 1 / (0.04 + 0.1 / EPS + 0.1 / BRICK + 0.13);
  // 30 mm wide
  const SteadyReference plane(layers(false), aboveAndBelow(0.2, 25, 1 / 0.13), Links::SERIES);
  EXPECT_NEAR(plane.heatFrom(1), U * 0.03 * DT, 1e-12);
  EXPECT_NEAR(plane.heatFrom(0), -U * 0.03 * DT, 1e-12);
  const SteadyReference disc(layers(true), aboveAndBelow(0.2, 25, 1 / 0.13), Links::SERIES);
  EXPECT_NEAR(disc.heatFrom(1), U * pi * 0.03 * 0.03 * DT, 1e-12);
}

TEST(SteadyReference, pipe_hasItsLogarithmicResistance) {
  // A void in the middle, so the inner face is a film on the pipe.
  const ReferenceGrid pipe{
      {0.02, 0.01, 0.03}, {1.0}, true, [](double x, double) { return x < 0.02 ? 0 : EPS; }};
  const std::vector<ReferenceAir> airs = {
      {10, INDOORS, [](double x, double) { return std::abs(x - 0.02) < 1e-9; }},
      {25, OUTDOORS, [](double x, double) { return x > 0.059; }}};
  const double R = 1 / (10 * 2 * pi * 0.02) + std::log(3.0) / (2 * pi * EPS) + 1 / (25 * 2 * pi * 0.06);
  EXPECT_NEAR(SteadyReference(pipe, airs, Links::SERIES).heatFrom(0), DT / R, 1e-9);
}

TEST(SteadyReference, cellMeans_missTheHalfCellsAndTheInterface) {
  // Films act on the centres; between 50 mm of EPS and 25 mm of brick the mean conductivity holds.
  const double interface = 0.075 / ((EPS * 0.1 + BRICK * 0.05) / 0.15);
  const double R = 0.04 + interface + 0.05 / BRICK + 0.13;
  const SteadyReference wall(layers(false), aboveAndBelow(0.2, 25, 1 / 0.13), Links::CELL_MEAN);
  EXPECT_NEAR(wall.heatFrom(1), 0.03 * DT / R, 1e-12);
  EXPECT_NEAR(wall.temperature(0, 2), INDOORS - 0.13 * DT / R, 1e-12);
}

// ---- corner ----

namespace {

ReferenceGrid cornerGrid(const std::vector<double>& steps) {
  return {steps, steps, false, [](double x, double y) {
            const double depth = std::min(x, y);
            if (depth < 0.14) return EPS;
            if (depth < 0.38) return BRICK;
            return depth < 0.395 ? PLASTER : 0.0;
          }};
}

SteadyReference corner(const ExampleRun& run, double hInside, Links links) {
  const auto inside = [](double x, double y) {
    return std::abs(std::min(x, y) - 0.395) < 1e-6 && std::max(x, y) > 0.395;
  };
  return {
      cornerGrid(run.steps("X_STEPS")),
      {{25, OUTDOORS, [](double x, double y) { return std::min(x, y) < 1e-9; }}, {hInside, INDOORS, inside}},
      links};
}

/// Heat from the room and to the outside [W/m]; flows to the right and upwards are positive.
double cornerHeatInside(const ExampleRun& run) {
  return run.lastValue("heat_flow_inside_bottom.out") - run.lastValue("heat_flow_inside_right.out");
}
double cornerHeatOutside(const ExampleRun& run) {
  return run.lastValue("heat_flow_outside_top.out") - run.lastValue("heat_flow_outside_left.out");
}

/// Resistance [m2K/W] that is missing where a film acts on the centre of the outermost cell.
double filmGap(double width, double lambda) {
  return width / 2 / lambda;
}

/// Resistance [m2K/W] that is missing where two cells have their mean conductivity between the centres.
double interfaceGap(double widthA, double lambdaA, double widthB, double lambdaB) {
  const double width = widthA + widthB;
  return widthA / 2 / lambdaA + widthB / 2 / lambdaB -
         width * width / 2 / (widthA * lambdaA + widthB * lambdaB);
}

// A relative tolerance of 1e-7 on the energy density from 0 K is 3e-5 K; a temperature drop of 0.26 K at the
// outer film makes 1e-4 of it, and the drops inside are larger.
constexpr double SOLVER_ACCURACY = 1e-4;

}  // namespace

TEST(CornerExample, heatIn_isHeatOut) {
  const ExampleRun run("corner");
  const double in = cornerHeatInside(run);
  EXPECT_NEAR(cornerHeatOutside(run), in, 1e-3 * in);
}

TEST(CornerExample, heatFlow_isThatOfTheReference) {
  const ExampleRun run("corner");
  const double heat = cornerHeatInside(run);
  const double cellMean = corner(run, 4, Links::CELL_MEAN).heatFrom(1);
  EXPECT_NEAR(heat, cellMean, SOLVER_ACCURACY * cellMean);
  // With every resistance in full less heat flows. The lines of flow differ in length, so twice the share.
  const double series = corner(run, 4, Links::SERIES).heatFrom(1);
  const auto d = run.steps("X_STEPS");
  const double resistance = 0.04 + 0.14 / EPS + 0.24 / BRICK + 0.015 / PLASTER + 0.25;
  const double share =
      (filmGap(d[0], EPS) + interfaceGap(d[17], EPS, d[18], BRICK) + filmGap(d[37], PLASTER)) / resistance;
  EXPECT_LT(share, 0.002);
  EXPECT_GT(heat, series);
  EXPECT_LT(heat, series * (1 + 2 * share));
}

TEST(CornerExample, innerCornerTemperature_isThatOfTheReference) {
  const ExampleRun run("corner");
  const double T = run.lastValue("inner_corner_temperature.out");
  EXPECT_NEAR(T, corner(run, 4, Links::CELL_MEAN).temperature(37, 37), 1e-3);
  // Room and corner differ by 3.1 K and outdoors by 21.9 K: a change of the resistances by up to 0.3 % moves
  // the temperature by less than 0.003 * 3.1 K * 21.9 / 25.
  EXPECT_NEAR(T, corner(run, 4, Links::SERIES).temperature(37, 37), 0.009);
}

TEST(CornerExample, filmForHeatLoss_givesMoreThanTheFlatWallsInside) {
  const ExampleRun run("corner", {{"EXCOEFF = 4 W/m2K", "EXCOEFF = 7.692307692307692 W/m2K"}});
  const double heat = cornerHeatInside(run);
  const double cellMean = corner(run, 1 / 0.13, Links::CELL_MEAN).heatFrom(1);
  EXPECT_NEAR(heat, cellMean, SOLVER_ACCURACY * cellMean);
  // The walls lose 2 * U * 1 m by inner and 2 * U * 1.395 m by outer dimensions; the corner lies between.
  const double U = 1 / (0.04 + 0.14 / EPS + 0.24 / BRICK + 0.015 / PLASTER + 0.13);
  EXPECT_GT(heat, 2 * U * 1.0 * DT);
  EXPECT_LT(heat, 2 * U * 1.395 * DT);
}

// ---- insulation anchor ----

namespace {

constexpr double RADIUS = 0.3;  // [m]
constexpr double SHAFT = 0.004;

SteadyReference anchor(const ExampleRun& run, Links links) {
  const ReferenceGrid grid{run.steps("X_STEPS"), run.steps("Y_STEPS"), true, [](double x, double y) {
                             if (x < SHAFT && y > 0.01 && y < 0.21) return STEEL;
                             if (y < 0.01) return PLASTER;
                             return y < 0.15 ? EPS : CONCRETE;
                           }};
  std::vector<ReferenceAir> airs = {{25, OUTDOORS, [](double, double y) { return y < 1e-9; }},
                                    {1 / 0.13, INDOORS, [](double, double y) { return y > 0.35 - 1e-6; }}};
  return {grid, airs, links};
}

double disc(double radius) {
  return pi * radius * radius;
}

/// Heat flow of the wall without anchor [W].
double undisturbed(const ExampleRun& run) {
  const double U = 1 / (0.04 + 0.01 / PLASTER + 0.14 / EPS + 0.2 / CONCRETE + 0.13);
  const double radius = sum(run.steps("X_STEPS"));
  EXPECT_NEAR(radius, RADIUS, 1e-7);
  return U * disc(radius) * DT;
}

}  // namespace

TEST(AnchorExample, heatIn_isHeatOut) {
  const ExampleRun run("insulation_anchor");
  const double in = run.lastValue("heat_flow_inside.out");
  EXPECT_NEAR(run.lastValue("heat_flow_outside.out"), in, 1e-3 * in);
}

TEST(AnchorExample, heatFlow_liesBetweenParallelPathsAndIsothermalPlanes) {
  const ExampleRun run("insulation_anchor");
  const double heat = run.lastValue("heat_flow_inside.out");
  const double steel = disc(SHAFT);
  const double rest = disc(RADIUS) - steel;
  const double all = disc(RADIUS);
  // An adiabatic cylinder around the shaft can only lower the flow.
  const double throughShaft = steel / (0.04 + 0.01 / PLASTER + 0.2 / STEEL + 0.14 / CONCRETE + 0.13);
  const double around = rest / (0.04 + 0.01 / PLASTER + 0.14 / EPS + 0.2 / CONCRETE + 0.13);
  EXPECT_GT(heat, DT * (throughShaft + around));
  // Planes that conduct without resistance can only raise it.
  const double planes = 0.04 / all + 0.01 / PLASTER / all + 0.14 / (EPS * rest + STEEL * steel) +
                        0.06 / (CONCRETE * rest + STEEL * steel) + 0.14 / CONCRETE / all + 0.13 / all;
  EXPECT_LT(heat, DT / planes);
}

TEST(AnchorExample, pointTransmittance_isThatOfTheReference) {
  const ExampleRun run("insulation_anchor");
  const double plain = undisturbed(run);
  const double heat = run.lastValue("heat_flow_inside.out");
  const double chi = (heat - plain) / DT;
  EXPECT_GT(chi, 0.0);
  const double cellMean = anchor(run, Links::CELL_MEAN).heatFrom(1);
  EXPECT_NEAR(heat, cellMean, SOLVER_ACCURACY * cellMean);
  const double series = (anchor(run, Links::SERIES).heatFrom(1) - plain) / DT;
  // The wall lacks 0.06 % of its resistance, 0.7 % of chi. The spreading in the render under the head of the
  // anchor, worth pi/4 * 4 mm, lacks half a cell of 0.08 mm: 2.6 % of about half of the anchor's resistance.
  // Around the shaft half a cell of 0.05 mm is missing of more than 10 mm: 0.5 %. Together less than 3 %.
  EXPECT_NEAR(chi, series, 0.03 * series);
}

// ---- outer wall ----

TEST(OuterWallExample, meanFluxes_followTheUValue) {
  const ExampleRun run("outer_wall");
  std::ifstream climate(VELMORA_SOURCE_DIR "/database/DB_climate_data/germany_temperature.ccd");
  double total = 0;
  int hours = 0;
  for (std::string line; std::getline(climate, line);) {
    std::istringstream words(line);
    int day = 0;
    std::string clock;
    double T = 0;
    // The last value, 365 days, is the first one of the next year.
    if (words >> day >> clock >> T && day < 365) {
      total += T;
      ++hours;
    }
  }
  ASSERT_EQ(hours, 8760);
  const double U = 1 / (0.04 + 0.14 / EPS + 0.24 / BRICK + 0.015 / PLASTER + 0.13);
  const double expected = U * (INDOORS - total / hours) * 8.76;  // [kWh/m2]
  // Half a percent: the masonry may end 0.3 K warmer than it began, 432 kJ/m2K * 0.3 K = 0.04 kWh/m2, and the
  // thin cells at the surfaces and interfaces lack 0.1 % of the resistance.
  for (const char* file : {"heat_inside.out", "heat_outside.out"}) {
    const std::vector<double> record = run.lastRecord(file);
    EXPECT_DOUBLE_EQ(record[0], 365.0);
    EXPECT_NEAR(-record[1], expected, 0.005 * expected) << file;
  }
}

}  // namespace VELMORA_TEST
