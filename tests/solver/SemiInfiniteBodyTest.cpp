#include <cmath>
#include <numbers>

#include "solver/WallBench.h"

// Half space at 20 C at the start. Solutions: Carslaw, Jaeger: Conduction of heat in solids, 2nd edition,
// 2.5 (surface temperature), 2.7 (film), 2.9 (flux).

using namespace VELMORA_SOLVER;

namespace {

constexpr double BODY_LAMBDA = 1.4;  // [W/mK]
constexpr double BODY_RHO_C = 2e6;   // [J/m3K]
constexpr double BODY_DIFFUSIVITY = BODY_LAMBDA / BODY_RHO_C;
constexpr double START = 20.0;         // [C]
constexpr double SURFVAL_H = 10000.0;  // [W/m2K] coefficient that stands for a given surface temperature
constexpr double BODY_HOUR = 3600.0;
constexpr double HOURS[] = {1.0, 6.0, 24.0, 168.0};

/// exp(x^2) erfc(x), by its asymptotic series where the factors leave the range of numbers.
double scaledErfc(double x) {
  if (x < 20.0) return std::exp(x * x) * std::erfc(x);
  const double s = 1.0 / (2.0 * x * x);
  return (1.0 - s + 3.0 * s * s - 15.0 * s * s * s) / (x * std::sqrt(std::numbers::pi));
}

/// The surface is at 0 C.
double step(double x, double t) {
  return START * std::erf(x / std::sqrt(4.0 * BODY_DIFFUSIVITY * t));
}

/// The surface meets 0 C over a film.
double film(double x, double t, double h) {
  const double u = x / std::sqrt(4.0 * BODY_DIFFUSIVITY * t);
  const double v = h / BODY_LAMBDA * std::sqrt(BODY_DIFFUSIVITY * t);
  return START * (std::erf(u) + std::exp(-u * u) * scaledErfc(u + v));
}

/// BODY_DIFFUSIVITY heat flux density q enters.
double flux(double x, double t, double q) {
  const double root = std::sqrt(4.0 * BODY_DIFFUSIVITY * t);
  const double u = x / root;
  return START + q / BODY_LAMBDA * (root / std::sqrt(std::numbers::pi) * std::exp(-u * u) - x * std::erfc(u));
}

/// Thin cells at the surface, where the condition acts on a centre, and so deep that the end stays cold.
WallProblem body() {
  WallProblem problem(growing(2e-5, 1.04, 6.0));
  problem.material(problem.all(), "Stone", {BODY_LAMBDA, BODY_RHO_C});
  problem.initial(problem.all(), START);
  problem.maxStep = BODY_HOUR;
  return problem;
}

/// The profile down to 2 m against an exact solution.
template <class Exact>
testing::AssertionResult profileAgrees(const WallRun& run, Exact exact, double tolerance) {
  std::vector<double> actual;
  std::vector<double> expected;
  const std::vector<double> T = run.rowCelsius();
  const std::vector<double> x = run.centres();
  for (std::size_t i = 0; x[i] < 2.0; ++i) {
    actual.push_back(T[i]);
    expected.push_back(exact(x[i]));
  }
  return agree(actual, expected, tolerance);
}

}  // namespace

TEST(SemiInfiniteBody, closedFormsGiveTabulatedFigures) {
  EXPECT_NEAR(step(0.01, BODY_HOUR), 2.24037402, 1e-8);
  EXPECT_NEAR(step(0.5, 168 * BODY_HOUR), 8.26257491, 1e-8);
  EXPECT_NEAR(film(0.0, BODY_HOUR, 10.0), 13.92140464, 1e-8);
  EXPECT_NEAR(film(0.1, 24 * BODY_HOUR, 10.0), 9.51032826, 1e-8);
  EXPECT_NEAR(flux(0.0, BODY_HOUR, 50.0), 22.02300659, 1e-8);
  EXPECT_NEAR(flux(0.2, 168 * BODY_HOUR, 50.0), 39.69523692, 1e-8);
}

TEST(SemiInfiniteBody, stepOfSurfaceTemperatureGivesErrorFunction) {
  WallProblem problem = body();
  problem.surface("Cold", 0.0, problem.column(0), "LEFT");
  WallRun run(problem);
  for (const double hours : HOURS) {
    const double t = hours * BODY_HOUR;
    run.advance(t);
    EXPECT_TRUE(profileAgrees(
        run, [&](double x) { return film(x, t, SURFVAL_H); }, 0.005))
        << hours;
    // what the coefficient holds back: flux density over coefficient
    const double lag = BODY_LAMBDA * START / std::sqrt(std::numbers::pi * BODY_DIFFUSIVITY * t) / SURFVAL_H;
    EXPECT_TRUE(profileAgrees(
        run, [&](double x) { return step(x, t); }, lag + 0.005))
        << hours;
  }
}

TEST(SemiInfiniteBody, heatFlowOutFallsWithTheRootOfTime) {
  WallProblem problem = body();
  problem.surface("Cold", 0.0, problem.column(0), "LEFT");
  WallRun run(problem);
  for (const double hours : HOURS) {
    run.advance(hours * BODY_HOUR);
    const double exact =
        BODY_LAMBDA * START / std::sqrt(std::numbers::pi * BODY_DIFFUSIVITY * hours * BODY_HOUR);
    EXPECT_NEAR(run.flowLeft(0), -exact, 0.002 * exact) << hours;
  }
}

TEST(SemiInfiniteBody, filmGivesProductOfExponentialAndErrorFunction) {
  WallProblem problem = body();
  problem.film("Air", 10.0, 0.0, problem.column(0), "LEFT");
  WallRun run(problem);
  for (const double hours : HOURS) {
    run.advance(hours * BODY_HOUR);
    EXPECT_TRUE(profileAgrees(
        run, [&](double x) { return film(x, hours * BODY_HOUR, 10.0); }, 0.003))
        << hours;
  }
}

TEST(SemiInfiniteBody, constantFluxHeatsTheSurfaceWithTheRootOfTime) {
  WallProblem problem = body();
  problem.constantClimate("Heat", "HEATFLUXDENS", "50 W/m2");
  problem.boundary("Heater", "IMPFLUX", "HEATFLUXDENS = Heat\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Heater", "LEFT");
  WallRun run(problem);
  for (const double hours : HOURS) {
    run.advance(hours * BODY_HOUR);
    EXPECT_TRUE(profileAgrees(
        run, [&](double x) { return flux(x, hours * BODY_HOUR, 50.0); }, 0.005))
        << hours;
    EXPECT_NEAR(run.flowLeft(0), 50.0, 1e-12);
  }
}
