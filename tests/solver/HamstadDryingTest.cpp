// Isothermal drying of a layer of 200 mm, benchmark 2 of C.-E. Hagentoft, HAMSTAD WP2 modeling, report
// 8, Chalmers University of Technology, 2002. With constant liquid diffusivity, practically no vapour
// diffusion and fixed humidities at both surfaces the water content follows a Fourier series, which is exact.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double LAYER = 0.2;                // [m]
constexpr double LAYER_DIFFUSIVITY = 6e-10;  // [m2/s]
constexpr double HOUR = 3600.0;

/// Sorption isotherm [kg/m3].
double dryingContent(double RH) {
  return 116.0 / std::pow(1.0 - std::log(RH) / 0.118, 0.869);
}

/// Water content [kg/m3] of a layer with fixed contents at its faces: Fourier series (H.S. Carslaw, J.C.
/// Jaeger, Conduction of Heat in Solids, 1959, section 3.4).
double exactContent(double x, double t) {
  const double left = dryingContent(0.45), right = dryingContent(0.65), start = dryingContent(0.95);
  double w = left + (right - left) * x / LAYER;
  for (int n = 1; n < 400; ++n) {
    const double k = n * M_PI / LAYER;
    const double sign = n % 2 == 0 ? 1.0 : -1.0;
    const double amplitude = 2.0 / (n * M_PI) * (right * sign - left + start * (1.0 - sign));
    w += amplitude * std::sin(k * x) * std::exp(-LAYER_DIFFUSIVITY * k * k * t);
  }
  return w;
}

/// Cells of `width` [m], but for the surfaces: the exchange acts on the centre of an element, so the
/// outermost cells are thin.
std::vector<double> dryingGrid(double width) {
  std::vector<double> half;
  double thickness = 0.0;
  for (double dx = width / 40.0; dx < width; dx *= 1.3) {
    half.push_back(dx);
    thickness += dx;
  }
  const int inner = static_cast<int>(std::lround((LAYER / 2.0 - thickness) / width));
  return joined(joined(half, uniform(2 * inner, LAYER - 2.0 * thickness)), reversed(half));
}

WallProblem drying(double width) {
  WallProblem problem(dryingGrid(width));
  problem.balances = "MOISTURE";
  problem.general = "ISOTHERMAL_T_REF = 20 C\n";
  problem.relTol = 1e-7;
  problem.duration = 1001 * HOUR;
  problem.maxStep = HOUR;
  problem.materialFile(problem.all(), "Layer", shippedMaterial("HamstadDrying_3002.m6"));
  problem.initial(problem.all(), "RELHUM", "95 %");
  problem.constantClimate("T", "TEMPER", "20 C");
  problem.constantClimate("Left RH", "RELHUM", "45 %");
  problem.constantClimate("Right RH", "RELHUM", "65 %");
  const std::string film = "EXCOEFF = 1e-3 s/m\nTEMPER = T\nRELHUM = ";
  problem.boundary("VAPDIFF", "Left film", "EXCHANGE", film + "Left RH\n");
  problem.boundary("VAPDIFF", "Right film", "EXCHANGE", film + "Right RH\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Left film", "LEFT");
  problem.assign("BOUNDARYCOND", problem.column(-1), "Right film", "RIGHT");
  return problem;
}

/// Largest error [kg/m3] at every 10 mm after 100, 300 and 1000 h.
double largestError(double width) {
  WallRun run(drying(width));
  double error = 0.0;
  for (const double hours : {100.0, 300.0, 1000.0}) {
    run.advance(hours * HOUR);
    for (int i = 1; i < 20; ++i) {
      const double x = 0.01 * i;
      error = std::max(error, std::fabs(run.at(x, run.solver.state().mw) - exactContent(x, hours * HOUR)));
    }
  }
  return error;
}

}  // namespace

TEST(HamstadDrying, seriesGivesThePublishedColumn) {
  // published water contents [kg/m3] at 10, 100 and 190 mm
  EXPECT_NEAR(exactContent(0.01, 100 * HOUR), 43.6440, 1e-4);
  EXPECT_NEAR(exactContent(0.1, 300 * HOUR), 84.1147, 1e-4);
  EXPECT_NEAR(exactContent(0.19, 1000 * HOUR), 36.9083, 1e-4);
}

TEST(HamstadDrying, followsTheExactSolutionAndConverges) {
  const double coarse = largestError(0.002), medium = largestError(0.001), fine = largestError(0.0005);

  EXPECT_LT(medium, 0.1);
  EXPECT_LT(medium, coarse / 1.5);
  EXPECT_LT(fine, medium / 1.5);
}

}  // namespace VELMORA_SOLVER
