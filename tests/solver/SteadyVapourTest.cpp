// Steady vapour diffusion through three layers and a foil against the series of resistances (H. Glaser,
// Kältetechnik 10, 1958), at one temperature.

#include <gtest/gtest.h>

#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double BETA_OUT = 1e-7, BETA_IN = 3e-8;  // [s/m]
constexpr double LG_KV[] = {-11.0, -11.7, -10.2};  // vapour conductivity [s] of the layers
constexpr double THICKNESS[] = {0.1, 0.02, 0.08};  // [m]
constexpr double FOIL_SD = 0.5;                    // [m]
constexpr double RH_OUT = 0.4, RH_IN = 0.7;

/// Density of the vapour flow [kg/m2s] from the inside out.
double seriesFlow() {
  const double metre = TKL::R_V * 293.15 / 2.662e-05;  // [m/s] resistance of one metre of air
  double resistance = 1.0 / BETA_OUT + 1.0 / BETA_IN + FOIL_SD * metre;
  for (int i = 0; i < 3; ++i) resistance += THICKNESS[i] / std::pow(10.0, LG_KV[i]);
  return TKL::pSat(293.15) * (RH_IN - RH_OUT) / resistance;
}

/// The same from a calculation with this number of cells per layer.
double calculatedFlow(int cells) {
  std::vector<double> dx;
  for (const double length : THICKNESS) dx = joined(dx, uniform(cells, length));
  WallProblem problem(dx);
  problem.balances = "MOISTURE";
  problem.relTol = 1e-8;
  problem.duration = 1e10;
  problem.maxStep = 1e9;
  for (int i = 0; i < 3; ++i) {
    PorousMaterial material;
    material.lgKv = LG_KV[i];
    material.flags = "AIR_TIGHT WATER_TIGHT";
    const std::string name = "Layer " + std::to_string(i);
    problem.materialText({i * cells, 0, (i + 1) * cells - 1, 0}, name, material.text(name));
  }
  problem.contact("Foil", "FOIL", "FOIL_NAME = Foil\nVAPDIFFRES = " + number(FOIL_SD) + " m\n");
  problem.assign("CONTACTCOND", {cells - 1, 0, cells - 1, 0}, "Foil", "RIGHT");
  problem.constantClimate("T", "TEMPER", "20 C");
  problem.constantClimate("Outside", "RELHUM", number(100.0 * RH_OUT) + " %");
  problem.constantClimate("Inside", "RELHUM", number(100.0 * RH_IN) + " %");
  problem.boundary("VAPDIFF", "Out", "EXCHANGE",
                   "EXCOEFF = " + number(BETA_OUT) + " s/m\nTEMPER = T\nRELHUM = Outside\n");
  problem.boundary("VAPDIFF", "In", "EXCHANGE",
                   "EXCOEFF = " + number(BETA_IN) + " s/m\nTEMPER = T\nRELHUM = Inside\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Out", "LEFT");
  problem.assign("BOUNDARYCOND", problem.column(-1), "In", "RIGHT");
  WallRun run(problem);
  run.advance(9e9);
  const auto side = static_cast<std::size_t>(run.element(cells).sideLeft->number);
  return -run.solver.records().moistureFlux[side][VELMORA::MF_VAPOUR_DIFFUSION];
}

}  // namespace

TEST(SteadyVapour, flowThroughLayersAndFoil_convergesToTheSeriesOfResistances) {
  const double exact = seriesFlow();
  const double coarse = std::fabs(calculatedFlow(10) / exact - 1.0);
  const double medium = std::fabs(calculatedFlow(20) / exact - 1.0);
  const double fine = std::fabs(calculatedFlow(40) / exact - 1.0);
  // The exchange acts on centres and the mean at an interface is arithmetic: both errors are of first order.
  EXPECT_LT(fine, 0.02);
  EXPECT_GT(coarse / medium, 1.8);
  EXPECT_GT(medium / fine, 1.8);
}

}  // namespace VELMORA_SOLVER
