// Pollutant that air carries through a layer, against the exponential between two given densities.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "solver/PollutantBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double VOC_LAYER = 0.1;      // [m] between the outermost centres
constexpr double VOC_LAYER_KG = 1e-4;  // [s]
constexpr double VOC_OPENING = 1e4;    // [s/m] no resistance at the surfaces
constexpr double VOC_FRONT = 1e-4;     // [kg/m3]
constexpr double VOC_BACK = 3e-4;      // [kg/m3]
constexpr double NORMAL_PRESSURE = 101325.0;
constexpr double LAYER_T = 293.15;  // [K]

/// Diffusivity of the density in the pores [m2/s].
double layerDiffusivity(double Theta) {
  return vocPermeability(BOARD_MU, LAYER_T, Theta) * VOC_RV * LAYER_T;
}

/// A layer through which air moves with a Peclet number, between two densities that strong films impose.
PollutantProblem blownBoard(int cells, double Pe, const std::string& balances) {
  const double h = VOC_LAYER / (cells - 1);
  PollutantProblem problem(std::vector<double>(static_cast<std::size_t>(cells), h), {1.0}, balances);
  const double density = NORMAL_PRESSURE / (287.1 * LAYER_T);
  const double m = Pe * layerDiffusivity(0.0) * density / VOC_LAYER;
  const double dp = m * (VOC_LAYER / VOC_LAYER_KG + 2.0 / VOC_OPENING);
  problem.board(problem.all(), "KG = " + number(VOC_LAYER_KG) + " s\n");
  problem.constantClimate("Front pressure", "GASPRESS", number(NORMAL_PRESSURE + dp) + " Pa");
  problem.constantClimate("Back pressure", "GASPRESS", number(NORMAL_PRESSURE) + " Pa");
  problem.constantClimate("Front foulness", "VOCDENSG", number(VOC_FRONT) + " kg/m3");
  problem.constantClimate("Back foulness", "VOCDENSG", number(VOC_BACK) + " kg/m3");
  problem.constantClimate("Even", "RELHUM", "50 %");
  problem.initial(problem.all(), LAYER_T - KELVIN);
  if (problem.hasMoisture()) problem.initial(problem.all(), "RELHUM", "50 %");
  const auto side = [&](const std::string& name, const WallProblem::Range& range, const char* location) {
    problem.surface(name, LAYER_T - KELVIN, range, location);
    problem.boundary("VOCDIFF", name + " film", "EXCHANGE",
                     "EXCOEFF = 10 m/s\nVOCDENSG = " + name + " foulness\n");
    problem.boundary("AIRPRESS", name + " air", "EXCHANGE",
                     "EXCOEFF = " + number(VOC_OPENING) + " s/m\nTEMPER = " + name +
                         " climate\nRELHUM = Even\nVOCDENSG = " + name + " foulness\nGASPRESS = " + name +
                         " pressure\n");
    for (const char* const what : {" film", " air"})
      problem.assign("BOUNDARYCOND", range, name + what, location);
  };
  side("Front", problem.column(0), "LEFT");
  side("Back", problem.column(-1), "RIGHT");
  problem.settings = "ABS_TOL_POLLUTANT = 1e-12\nABS_TOL_MOISTURE = 1e-9\n";
  problem.duration = 1e12;
  problem.maxStep = 1e8;
  return problem;
}

/// Largest difference of the profile to the one of upwind differences, and to the exponential, in shares of
/// the step between the surfaces.
struct VocProfile {
  double discrete = 0.0;
  double exact = 0.0;
};

VocProfile vocProfile(int cells, double Pe, const std::string& balances) {
  WallRun run(blownBoard(cells, Pe, balances));
  run.advance(1e11);
  const auto& state = run.solver.state();
  const auto& side = *run.element(1).sideLeft;
  const double m = run.solver.records().airMassFlux[static_cast<std::size_t>(side.number)];
  const double reached = m * 287.1 * LAYER_T / NORMAL_PRESSURE * VOC_LAYER / layerDiffusivity(state.Theta[0]);
  VocProfile error;
  const double n = cells - 1;
  for (int i = 0; i < cells; ++i) {
    const double u = (state.rhoVOC[static_cast<std::size_t>(i)] - VOC_FRONT) / (VOC_BACK - VOC_FRONT);
    const double ratio = 1.0 + reached / n;
    error.discrete =
        std::max(error.discrete, std::fabs(u - (std::pow(ratio, i) - 1.0) / (std::pow(ratio, n) - 1.0)));
    error.exact = std::max(error.exact, std::fabs(u - std::expm1(reached * i / n) / std::expm1(reached)));
  }
  EXPECT_GT(reached, 0.5 * Pe);
  return error;
}

constexpr double VOC_PECLET[] = {0.2, 1.0, 5.0};

}  // namespace

TEST(PollutantAdvection, profile_isThatOfDifferencesUpwind) {
  for (const char* balances : {"ENERGY AIR POLLUTANT", "ENERGY MOISTURE AIR POLLUTANT"})
    for (const double Pe : VOC_PECLET)
      EXPECT_LT(vocProfile(11, Pe, balances).discrete, 2e-4) << balances << Pe;
}

TEST(PollutantAdvection, profile_convergesToTheExponential) {
  for (const double Pe : VOC_PECLET)
    EXPECT_LT(vocProfile(21, Pe, "ENERGY AIR POLLUTANT").exact,
              0.6 * vocProfile(11, Pe, "ENERGY AIR POLLUTANT").exact)
        << Pe;
}

TEST(PollutantAdvection, airThatBlowsThrough_bringsAsMuchAsItTakes) {
  // without films: at rest the flow is that of the density which enters
  PollutantProblem problem({0.05, 0.05, 0.05}, {1.0}, "ENERGY AIR POLLUTANT");
  problem.board(problem.all(), "KG = 1e-4 s\n");
  problem.initial(problem.all(), 20.0);
  problem.constantClimate("Mild", "TEMPER", "20 C");
  problem.constantClimate("Foul", "VOCDENSG", "2e-4 kg/m3");
  problem.constantClimate("High", "GASPRESS", "101326 Pa");
  problem.constantClimate("Low", "GASPRESS", "101325 Pa");
  for (const char* name : {"High", "Low"})
    problem.boundary(
        "AIRPRESS", std::string(name) + " side", "EXCHANGE",
        std::string("EXCOEFF = 1 s/m\nTEMPER = Mild\nVOCDENSG = Foul\nGASPRESS = ") + name + "\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "High side", "LEFT");
  problem.assign("BOUNDARYCOND", problem.column(-1), "Low side", "RIGHT");
  WallRun run(problem);
  run.advance(1e7);
  const auto& records = run.solver.records();
  const auto flow = [&](const VELMORA::Side* side) {
    return records.vocFlux[static_cast<std::size_t>(side->number)][VELMORA::VF_SUM];
  };
  const double m = records.airMassFlux[static_cast<std::size_t>(run.element(0).sideLeft->number)];
  EXPECT_GT(m, 0.0);
  const double entering = m * 2e-4 * 287.1 * LAYER_T / 101326.0;
  for (const VELMORA::Side* side :
       {run.element(0).sideLeft, run.element(1).sideLeft, run.element(2).sideLeft, run.element(2).sideRight})
    EXPECT_NEAR(flow(side) / entering, 1.0, 1e-6);
}

}  // namespace VELMORA_SOLVER
