// Steady heat and vapour in a layer that air flows through, against the exact exponential
//
//     (u - u0) / (u1 - u0) = (exp(Pe x/L) - 1) / (exp(Pe) - 1)
//
// and against the discrete one of differences upwind, where exp(Pe h/L) becomes 1 + Pe h/L.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double BLOWN_LAYER = 0.1;    // [m]
constexpr double LAYER_KG = 1e-2;      // [s]
constexpr double OPEN_AREA = 1e3;      // [s/m] no resistance at the surfaces
constexpr double LAYER_LAMBDA = 0.04;  // [W/mK]
constexpr double LAYER_LG_KV = -10.0;  // [s]
constexpr double AIR_SHARE = 287.1 / 461.89;

/// Errors of the profile, in shares of the step between the surfaces.
struct ProfileError {
  double exact = 0.0;     ///< largest difference to the exponential
  double discrete = 0.0;  ///< to the difference scheme
};

/// Compares values at the centres of n cells, the first and the last of which are given.
ProfileError compare(const std::vector<double>& values, double Pe) {
  const std::size_t n = values.size();
  const double cells = static_cast<double>(n - 1);
  ProfileError error;
  for (std::size_t i = 0; i < n; ++i) {
    const double k = static_cast<double>(i);
    const double u = (values[i] - values.front()) / (values.back() - values.front());
    const double ratio = 1.0 + Pe / cells;
    error.exact = std::max(error.exact, std::fabs(u - std::expm1(Pe * k / cells) / std::expm1(Pe)));
    error.discrete =
        std::max(error.discrete, std::fabs(u - (std::pow(ratio, k) - 1.0) / (std::pow(ratio, cells) - 1.0)));
  }
  return error;
}

/// A layer whose outermost centres lie `BLOWN_LAYER` apart, with the pressure that drives `m` [kg/s] through
/// it.
WallProblem blownLayer(int cells, double m, const std::string& balances) {
  const double h = BLOWN_LAYER / (cells - 1);
  WallProblem problem(std::vector<double>(static_cast<std::size_t>(cells), h));
  problem.balances = balances;
  problem.relTol = 1e-9;
  problem.duration = 1e12;
  problem.maxStep = 1e8;
  const double dp = m * (BLOWN_LAYER / LAYER_KG + 2.0 / OPEN_AREA);
  problem.constantClimate("Front pressure", "GASPRESS", number(101325.0 + dp) + " Pa");
  problem.constantClimate("Back pressure", "GASPRESS", "101325 Pa");
  return problem;
}

double flowOfAir(const WallRun& run) {
  return run.solver.records().airMassFlux[static_cast<std::size_t>(run.element(1).sideLeft->number)];
}

ProfileError heatProfile(double Pe, int cells) {
  const double m = Pe * LAYER_LAMBDA / (TKL::C_A * BLOWN_LAYER);
  WallProblem problem = blownLayer(cells, m, "ENERGY AIR");
  problem.materialText(problem.all(), "Wool",
                       "RHO = 50 kg/m3\nCE = 1000 J/kgK\nLAMBDA = " + number(LAYER_LAMBDA) +
                           " W/mK\nTHETA_POR = 0.95 m3/m3\nKG = " + number(LAYER_KG) + " s\n");
  problem.surface("Front", 20.0, problem.column(0), "LEFT");
  problem.surface("Back", -5.0, problem.column(-1), "RIGHT");
  problem.boundary(
      "AIRPRESS", "Wind", "EXCHANGE",
      "EXCOEFF = " + number(OPEN_AREA) + " s/m\nTEMPER = Front climate\nGASPRESS = Front pressure\n");
  problem.boundary(
      "AIRPRESS", "Lee", "EXCHANGE",
      "EXCOEFF = " + number(OPEN_AREA) + " s/m\nTEMPER = Back climate\nGASPRESS = Back pressure\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Wind", "LEFT");
  problem.assign("BOUNDARYCOND", problem.column(-1), "Lee", "RIGHT");
  WallRun run(problem);
  run.advance(1e8);
  EXPECT_NEAR(flowOfAir(run) / m, 1.0, 1e-6);
  return compare(run.rowCelsius(), Pe);
}

ProfileError vapourProfile(double Pe, int cells) {
  const double m = Pe * std::pow(10.0, LAYER_LG_KV) * 101325.0 / (AIR_SHARE * BLOWN_LAYER);
  WallProblem problem = blownLayer(cells, m, "ENERGY MOISTURE AIR");
  problem.settings = "ABS_TOL_MOISTURE = 1e-9\n";
  PorousMaterial wool;
  wool.lgKv = LAYER_LG_KV;
  wool.flags = "WATER_TIGHT";
  problem.materialText(problem.all(), "Wool", "KG = " + number(LAYER_KG) + " s\n" + wool.text("Wool"));
  problem.initial(problem.all(), "RELHUM", "50 %");
  problem.surface("Front", 20.0, problem.column(0), "LEFT");
  problem.surface("Back", 20.0, problem.column(-1), "RIGHT");
  problem.constantClimate("Damp", "RELHUM", "70 %");
  problem.constantClimate("Dry", "RELHUM", "40 %");
  const auto side = [&](const std::string& name, const std::string& humidity, const std::string& location,
                        const WallProblem::Range& range) {
    problem.boundary("VAPDIFF", name + " vapour", "EXCHANGE",
                     "EXCOEFF = 1 s/m\nTEMPER = " + name + " climate\nRELHUM = " + humidity + "\n");
    problem.boundary("AIRPRESS", name + " air", "EXCHANGE",
                     "EXCOEFF = " + number(OPEN_AREA) + " s/m\nTEMPER = " + name +
                         " climate\nRELHUM = " + humidity + "\nGASPRESS = " + name + " pressure\n");
    for (const char* const what : {" vapour", " air"})
      problem.assign("BOUNDARYCOND", range, name + what, location);
  };
  side("Front", "Damp", "LEFT", problem.column(0));
  side("Back", "Dry", "RIGHT", problem.column(-1));
  WallRun run(problem);
  run.advance(1e11);
  // the little water in the pores hinders the air a little
  return compare(run.solver.state().pV, Pe * flowOfAir(run) / m);
}

constexpr double PECLET[] = {0.1, 1.0, 10.0};

}  // namespace

TEST(AirAdvection, heatProfile_isThatOfDifferencesUpwind) {
  for (const double Pe : PECLET) EXPECT_LT(heatProfile(Pe, 21).discrete, 1e-4) << Pe;
}

TEST(AirAdvection, heatProfile_convergesToTheExponentialInFirstOrder) {
  for (const double Pe : PECLET) {
    const double coarse = heatProfile(Pe, 21).exact, fine = heatProfile(Pe, 41).exact;
    EXPECT_LT(fine, 0.6 * coarse) << Pe;
  }
}

TEST(AirAdvection, vapourProfile_isThatOfDifferencesUpwind) {
  for (const double Pe : PECLET) EXPECT_LT(vapourProfile(Pe, 21).discrete, 5e-4) << Pe;
}

TEST(AirAdvection, vapourProfile_convergesToTheExponentialInFirstOrder) {
  for (const double Pe : PECLET) {
    const double coarse = vapourProfile(Pe, 21).exact, fine = vapourProfile(Pe, 41).exact;
    EXPECT_LT(fine, 0.6 * coarse) << Pe;
  }
}

}  // namespace VELMORA_SOLVER
