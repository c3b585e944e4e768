#include <array>
#include <cmath>
#include <numbers>

#include "solver/WallBench.h"

// EN ISO 10211, annex A (validation of calculation methods), case 1: half of a square column, a rectangle of
// width l and height 2 l, 20 C on top, 0 C at the other outer edges, the edge of symmetry sealed. The printed
// temperatures are at the points of a lattice of l/4; they must be met within 0.1 K.

using namespace VELMORA_SOLVER;

namespace {

constexpr double L = 1.0;  // [m]
constexpr double T_TOP = 20.0;
constexpr int LATTICE_ROWS = 7, LATTICE_COLUMNS = 4;

/// Printed figures [C]; rows from top to bottom, the last column lies on the edge of symmetry.
constexpr std::array<std::array<double, LATTICE_COLUMNS>, LATTICE_ROWS> PRINTED = {{
    {9.7, 13.4, 14.7, 15.1},
    {5.3, 8.6, 10.3, 10.8},
    {3.2, 5.6, 7.0, 7.5},
    {2.0, 3.6, 4.7, 5.0},
    {1.3, 2.3, 3.0, 3.2},
    {0.7, 1.4, 1.8, 1.9},
    {0.3, 0.6, 0.8, 0.9},
}};

/// Series of the exact solution over the full width 2 l.
double exact(double x, double depth) {
  double sum = 0.0;
  for (int n = 1; n < 60; n += 2) {
    const double k = n * std::numbers::pi / (2.0 * L);
    // sinh(k (2l - depth)) / sinh(2 k l), without large numbers
    const double fall =
        (std::exp(-k * depth) - std::exp(-k * (4.0 * L - depth))) / (1.0 - std::exp(-4.0 * k * L));
    sum += 4.0 / (n * std::numbers::pi) * std::sin(k * x) * fall;
  }
  return T_TOP * sum;
}

/// Twenty cells for l; the outermost one is split, as the surface temperature acts on its centre.
constexpr int CELLS = 20;
constexpr double WIDTH = L / CELLS, THIN = 0.002 * L;

std::vector<double> columns() {
  return joined({THIN, WIDTH - THIN}, uniform(CELLS - 1, L - WIDTH));
}
std::vector<double> rows() {
  return joined(joined({THIN, WIDTH - THIN}, uniform(2 * CELLS - 2, 2.0 * L - 2.0 * WIDTH)),
                {WIDTH - THIN, THIN});
}

/// Temperature at a corner of cells: linear between the four centres around it; across the edge of symmetry
/// the profile is a parabola with its vertex there.
double atCorner(const WallRun& run, int i, int j) {
  const std::vector<double> heights = rows();
  const auto above = heights[static_cast<std::size_t>(j - 1)];
  const auto below = heights[static_cast<std::size_t>(j)];
  const auto between = [&](double upper, double lower) {
    return (upper * below + lower * above) / (above + below);
  };
  const auto column = [&](int c) { return between(run.celsius(c, j - 1), run.celsius(c, j)); };
  if (i == CELLS + 1) return column(i - 1) + (column(i - 1) - column(i - 2)) / 8.0;
  return 0.5 * (column(i - 1) + column(i));
}

std::vector<double> latticeTemperatures() {
  WallProblem problem(columns(), rows());
  problem.material(problem.all(), "Stone", {1.0, 1e5});
  problem.initial(problem.all(), 5.0);
  problem.surface("Cold", 0.0, problem.column(0), "LEFT");
  problem.surface("Cold foot", 0.0, problem.row(-1), "BOTTOM");
  problem.surface("Warm", T_TOP, problem.row(0), "TOP");
  problem.maxStep = 1e6;
  problem.relTol = 1e-7;
  WallRun run(problem);
  run.advance(1e7);
  std::vector<double> result;
  for (int row = 1; row <= LATTICE_ROWS; ++row)
    for (int column = 1; column <= LATTICE_COLUMNS; ++column)
      result.push_back(atCorner(run, column * CELLS / 4 + 1, row * CELLS / 4 + 1));
  return result;
}

}  // namespace

TEST(ThermalBridge, seriesRoundsToThePrintedFigures) {
  for (int row = 0; row < LATTICE_ROWS; ++row)
    for (int column = 0; column < LATTICE_COLUMNS; ++column)
      EXPECT_NEAR(exact((column + 1) * L / 4.0, (row + 1) * L / 4.0),
                  PRINTED[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)], 0.0501);
}

TEST(ThermalBridge, meetsTheTwentyEightTemperaturesOfTheStandard) {
  std::vector<double> printed, series;
  for (std::size_t row = 0; row < LATTICE_ROWS; ++row)
    for (std::size_t column = 0; column < LATTICE_COLUMNS; ++column) {
      printed.push_back(PRINTED[row][column]);
      series.push_back(
          exact(static_cast<double>(column + 1) * L / 4.0, static_cast<double>(row + 1) * L / 4.0));
    }
  const std::vector<double> calculated = latticeTemperatures();
  EXPECT_TRUE(agree(calculated, printed, 0.1));
  EXPECT_TRUE(agree(calculated, series, 0.05));
}
