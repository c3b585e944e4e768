// Whole runs with the models of field conditions, from the text of a project.

#include <gtest/gtest.h>

#include <stdexcept>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

/// A wall of 0.2 m in ten columns, cold outside at the left, with a leak along x.
WallProblem leakyWall(const std::string& leakLines) {
  WallProblem problem(uniform(10, 0.2));
  problem.balances = "ENERGY MOISTURE";
  problem.duration = 86400.0;
  problem.maxStep = 1800.0;
  PorousMaterial wool;
  wool.flags = "WATER_TIGHT";
  problem.materialText(problem.all(), "Wool", wool.text("Wool"));
  problem.film("Outside", 25.0, -5.0, problem.column(0), "LEFT");
  problem.film("Inside", 8.0, 20.0, problem.column(-1), "RIGHT");
  problem.constantClimate("Humidity", "RELHUM", "60 %");
  problem.initial(problem.all(), 5.0);
  problem.initial(problem.all(), "RELHUM", "60 %");
  problem.field("Leak", "CONVECTIVE_SOURCE",
                "FLAGS = CONVECTION_X\nCMC_INDOOR_TEMPER = Inside climate\nCMC_OUTDOOR_TEMPER = Outside "
                "climate\nCMC_INDOOR_RELHUM = Humidity\n" +
                    leakLines);
  problem.assign("FIELDCOND", problem.all(), "Leak", "ELEMENT");
  return problem;
}

const char* const LEAK_LINES = "CMP_Q50 = 3 m3/m2h\nCMP_HEIGHT = 8 m\nCMP_DIFFPRESSURE_MECH = 0 Pa\n";

}  // namespace

TEST(ModelRun, leak_wetsTheWallByWhatCondenses) {
  WallRun run(leakyWall(LEAK_LINES));
  run.solver.initStep();
  const double before = run.water();
  run.solver.runStep(86400.0, false);
  const double source = run.solver.records().convectiveMoistureSource[0];  // [kg/m3s] at the end
  EXPECT_GT(source, 0.0);
  // the wall cools on the first day, so less condenses at its beginning
  EXPECT_GT(run.water() - before, 0.5 * source * 0.2 * 86400.0);
  EXPECT_LT(run.water() - before, source * 0.2 * 86400.0);
}

TEST(ModelRun, endedLeak_wetsNoMore) {
  WallRun run(leakyWall(std::string(LEAK_LINES) + "END_TIME = 6 h\n"));
  run.solver.initStep();
  run.solver.runStep(7 * 3600.0, false);
  const double wet = run.water();
  run.solver.runStep(86400.0, false);
  EXPECT_NEAR(run.water(), wet, 1e-6 * wet);  // of the tolerances
}

TEST(ModelRun, leakWithoutItsHeight_endsTheSetUp) {
  EXPECT_THROW(WallRun(leakyWall("CMP_Q50 = 3 m3/m2h\nCMP_DIFFPRESSURE_MECH = 0 Pa\n")), std::runtime_error);
}

TEST(ModelRun, surfaceBehindAnAirLayer_coolsBelowTheAirUnderAClearSky) {
  WallProblem problem({0.05, 0.01, 0.1});
  problem.material(problem.all(), "Board", {0.2, 1e5});
  problem.material({0, 0, 0, 0}, "Layer", {0.5, 1.2e3, "AIR"});
  problem.film("Outside", 10.0, 0.0, problem.column(0), "LEFT");
  problem.film("Inside", 8.0, 0.0, problem.column(-1), "RIGHT");
  problem.constantClimate("Sky", "LOWRAD", "230 W/m2");
  problem.field("Radiation", "AMBIENTRADIATION", "LEFT_EMISS_COEFF = 0.9 -\nLOWRAD = Sky\n");
  problem.assign("FIELDCOND", problem.column(1), "Radiation", "ELEMENT");
  problem.duration = 1e7;
  WallRun run(problem);
  run.advance(9e6);
  const double T = run.celsius(1) + KELVIN;
  const double loss = 0.9 * (5.67e-08 * T * T * T * T - 230.0);
  EXPECT_LT(run.celsius(1), -1.0);
  // what the face radiates comes from both airs
  EXPECT_NEAR(run.flowLeft(0) - run.flowRight(2), loss, 1e-4 * loss);
}

}  // namespace VELMORA_SOLVER
