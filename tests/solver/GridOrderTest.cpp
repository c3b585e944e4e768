#include <cmath>
#include <numbers>

#include "solver/WallBench.h"

// How fast the error falls with the width of the cells. GRID_DIFFUSIVITY condition at a surface acts on the
// centre of the outermost cell, and two materials meet with the mean of their conductivities by widths: these
// two errors are of first order in the widths of the cells concerned. All the rest is of second order.

using namespace VELMORA_SOLVER;

namespace {

constexpr double GRID_LAMBDA = 1.4, GRID_RHO_C = 2e6, GRID_DIFFUSIVITY = GRID_LAMBDA / GRID_RHO_C;
constexpr double LENGTH = 0.3;  // [m]
constexpr double H = 10.0;      // [W/m2K] film on both sides
constexpr double LONG_TIME = 200.0 * 86400.0;

/// Order from the errors of two grids, the second with half the widths.
double order(double coarse, double fine) {
  return std::log2(std::fabs(coarse / fine));
}

/// Error of the amplitude of a cosine over a sealed slab when it has decayed to exp(-1).
double decayError(const std::vector<double>& widths) {
  WallProblem problem(widths);
  problem.material(problem.all(), "Stone", {GRID_LAMBDA, GRID_RHO_C});
  const std::vector<double> x = centresOf(widths);
  const double k = std::numbers::pi / LENGTH;
  std::vector<double> start;
  for (const double centre : x) start.push_back(10.0 + 10.0 * std::cos(k * centre));
  problem.profile(start);
  problem.relTol = 1e-9;
  WallRun run(problem);
  run.advance(1.0 / (GRID_DIFFUSIVITY * k * k));
  const std::vector<double> T = run.rowCelsius();
  double sum = 0.0;
  for (std::size_t i = 0; i < x.size(); ++i) {
    const double error = T[i] - 10.0 - 10.0 * std::exp(-1.0) * std::cos(k * x[i]);
    sum += error * error * widths[i];
  }
  return std::sqrt(sum / LENGTH);
}

/// Cells that are wide and narrow by turns.
std::vector<double> alternating(int pairs) {
  std::vector<double> widths;
  for (int i = 0; i < pairs; ++i) widths = joined(widths, {2.0 * LENGTH / pairs / 3.0, LENGTH / pairs / 3.0});
  return widths;
}

/// The first root of the Bessel function J1: no heat flows through the surface of a cylinder in this mode.
constexpr double FIRST_ROOT_OF_J1 = 3.8317059702075125;

/// The same as `decayError` for the first mode of a sealed solid cylinder.
double cylinderDecayError(int n) {
  const std::vector<double> widths = uniform(n, LENGTH);
  WallProblem problem(widths);
  problem.rotational = true;
  problem.material(problem.all(), "Stone", {GRID_LAMBDA, GRID_RHO_C});
  const std::vector<double> r = centresOf(widths);
  const double k = FIRST_ROOT_OF_J1 / LENGTH;
  std::vector<double> start;
  for (const double centre : r) start.push_back(10.0 + 10.0 * std::cyl_bessel_j(0.0, k * centre));
  problem.profile(start);
  problem.relTol = 1e-9;
  WallRun run(problem);
  run.advance(1.0 / (GRID_DIFFUSIVITY * k * k));
  const std::vector<double> T = run.rowCelsius();
  double sum = 0.0;
  for (std::size_t i = 0; i < r.size(); ++i) {
    const double error = T[i] - 10.0 - 10.0 * std::exp(-1.0) * std::cyl_bessel_j(0.0, k * r[i]);
    sum += error * error * widths[i] * r[i];
  }
  return std::sqrt(sum);
}

/// Steady flow density through two halves of different conductivity between two films.
double steadyFlow(const std::vector<double>& half, double lambdaLeft, double lambdaRight) {
  const std::vector<double> widths = joined(half, reversed(half));
  const int n = static_cast<int>(half.size());
  WallProblem problem(widths);
  problem.material({0, 0, n - 1, 0}, "Left", {lambdaLeft, 1e4});
  problem.material({n, 0, 2 * n - 1, 0}, "Right", {lambdaRight, 1e4});
  problem.initial(problem.all(), 10.0);
  problem.film("Warm", H, 20.0, problem.column(0), "LEFT");
  problem.film("Cold", H, 0.0, problem.column(-1), "RIGHT");
  problem.relTol = 1e-10;
  WallRun run(problem);
  run.advance(LONG_TIME);
  return run.flowLeft(0);
}

/// Half of the slab with one cell of a given width at the surface and one at the middle.
std::vector<double> half(double surface, double middle) {
  return joined(joined({surface}, uniform(10, LENGTH / 2.0 - surface - middle)), {middle});
}

}  // namespace

TEST(GridOrder, uniformGridIsOfSecondOrder) {
  const double coarse = decayError(uniform(10, LENGTH));
  const double middle = decayError(uniform(20, LENGTH));
  const double fine = decayError(uniform(40, LENGTH));
  EXPECT_NEAR(order(coarse, middle), 2.0, 0.05);
  EXPECT_NEAR(order(middle, fine), 2.0, 0.05);
}

TEST(GridOrder, unevenGridIsOfSecondOrder) {
  const double coarse = decayError(alternating(10));
  const double fine = decayError(alternating(20));
  EXPECT_NEAR(order(coarse, fine), 2.0, 0.15);
}

TEST(GridOrder, ringsOfACylinderAreOfSecondOrder) {
  EXPECT_NEAR(order(cylinderDecayError(10), cylinderDecayError(20)), 2.0, 0.15);
}

TEST(GridOrder, surfaceFilmIsOfFirstOrderInTheOutermostCell) {
  const double exact = 20.0 / (2.0 / H + LENGTH / GRID_LAMBDA);
  const double wide = steadyFlow(half(0.02, 0.01), GRID_LAMBDA, GRID_LAMBDA) - exact;
  const double middle = steadyFlow(half(0.01, 0.01), GRID_LAMBDA, GRID_LAMBDA) - exact;
  const double narrow = steadyFlow(half(0.005, 0.01), GRID_LAMBDA, GRID_LAMBDA) - exact;
  EXPECT_NEAR(order(wide, middle), 1.0, 0.1);
  EXPECT_NEAR(order(middle, narrow), 1.0, 0.1);
}

TEST(GridOrder, materialJointIsOfFirstOrderInTheCellsBesideIt) {
  constexpr double SURFACE = 0.01;  // the half cells at the surfaces are left out of the exact flow
  const double left = 0.2, right = 2.0;
  const double exact = 20.0 / (2.0 / H + (LENGTH - SURFACE) / 2.0 * (1.0 / left + 1.0 / right));
  const double wide = steadyFlow(half(SURFACE, 0.02), left, right) - exact;
  const double middle = steadyFlow(half(SURFACE, 0.01), left, right) - exact;
  const double narrow = steadyFlow(half(SURFACE, 0.005), left, right) - exact;
  EXPECT_NEAR(order(wide, middle), 1.0, 0.1);
  EXPECT_NEAR(order(middle, narrow), 1.0, 0.1);
}

TEST(GridOrder, innerCellsOfASteadyLayerHaveNoError) {
  const double coarse = steadyFlow(joined({0.01}, uniform(3, LENGTH / 2.0 - 0.01)), GRID_LAMBDA, GRID_LAMBDA);
  const double fine = steadyFlow(joined({0.01}, uniform(12, LENGTH / 2.0 - 0.01)), GRID_LAMBDA, GRID_LAMBDA);
  EXPECT_NEAR(coarse, fine, 1e-6);
  EXPECT_NEAR(coarse, 20.0 / (2.0 / H + (LENGTH - 0.01) / GRID_LAMBDA), 1e-6);
}
