// The linear solvers in whole runs: each gives the answers of the band matrix.

#include <gtest/gtest.h>

#include <cmath>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

std::vector<double> equalWidths(std::size_t count, double width) {
  return std::vector<double>(count, width);
}

/// A brick wall that dries to the left and is heated at the right; with more than one row its lower half is a
/// material that conducts heat well.
WallProblem jointProblem(std::size_t rows, const std::string& balances, const std::string& solver) {
  WallProblem problem(equalWidths(12, 0.01), equalWidths(rows, 0.02));
  problem.balances = balances;
  problem.relTol = 1e-6;
  problem.duration = 5 * 86400.0;
  problem.maxStep = 3600.0;
  problem.settings = "LINEAR_SOLVER = " + solver + "\n";
  PorousMaterial material;
  material.liquid = PorousMaterial::conductivity(-16.0, -8.5, material.thetaEff);
  problem.materialText(problem.all(), "Brick", material.text("Brick"));
  if (rows > 1) {
    material.liquid = PorousMaterial::conductivity(-16.0, -9.5, material.thetaEff);
    problem.materialText(problem.row(-1), "Slab", material.text("Slab"));
  }
  problem.initial(problem.all(), 10.0);
  problem.film("Outside", 20.0, 0.0, problem.column(0), "LEFT");
  problem.film("Inside", 8.0, 20.0, problem.column(-1), "RIGHT");
  if (balances.find("MOISTURE") != std::string::npos) {
    problem.initial(problem.all(), "RELHUM", "95 %");
    problem.constantClimate("Outside air", "RELHUM", "60 %");
    problem.boundary("VAPDIFF", "Drying", "EXCHANGE",
                     "EXCOEFF = 5e-8 s/m\nTEMPER = Outside climate\nRELHUM = Outside air\n");
    problem.assign("BOUNDARYCOND", problem.column(0), "Drying", "LEFT");
  }
  return problem;
}

/// Runs a problem by the band matrix and by another solver and compares state and steps.
void expectAnswersOfTheBand(std::size_t rows, const std::string& balances, const std::string& method) {
  WallRun band(jointProblem(rows, balances, "BAND"));
  WallRun other(jointProblem(rows, balances, method));
  for (WallRun* run : {&band, &other}) {
    run->solver.initStep();
    run->solver.runStep(-1.0, false);
  }
  const SolverState& expected = band.solver.state();
  const SolverState& found = other.solver.state();
  for (std::size_t e = 0; e < expected.T.size(); ++e) {
    EXPECT_NEAR(found.T[e], expected.T[e], 5e-3) << e;
    EXPECT_NEAR(found.mw[e], expected.mw[e], 5e-4 * (1.0 + expected.mw[e])) << e;
  }
  const auto steps = static_cast<double>(band.solver.statistics().steps);
  EXPECT_NEAR(static_cast<double>(other.solver.statistics().steps), steps, 0.1 * steps);
  EXPECT_GT(
      std::fabs(expected.T.front() - expected.T.back()) + std::fabs(expected.mw.front() - expected.mw.back()),
      1.0);  // something has happened
}

std::string linearSolverMessage(std::size_t rows, const std::string& method) {
  const WallRun run(jointProblem(rows, "ENERGY MOISTURE", method));
  for (const auto& message : run.capture.messages)
    if (message.text.rfind("Linear solver: ", 0) == 0) {
      EXPECT_EQ(message.level, 2);
      EXPECT_EQ(message.type, TKL::MSG_STANDARD);
      return message.text;
    }
  return "";
}

}  // namespace

TEST(LinearSolver, blocksOfAChain_giveTheAnswersOfTheBand) {
  expectAnswersOfTheBand(1, "ENERGY MOISTURE", "BLOCK");
  expectAnswersOfTheBand(1, "ENERGY", "BLOCK");
}

TEST(LinearSolver, blocksOfAGrid_giveTheAnswersOfTheBand) {
  expectAnswersOfTheBand(5, "ENERGY MOISTURE", "BLOCK");
  expectAnswersOfTheBand(5, "ENERGY", "BLOCK");
}

TEST(LinearSolver, iterationOnAGrid_givesTheAnswersOfTheBand) {
  expectAnswersOfTheBand(5, "ENERGY MOISTURE", "GMRES");
  expectAnswersOfTheBand(5, "ENERGY", "GMRES");
}

TEST(LinearSolver, sparseMatrix_givesTheAnswersOfTheBand) {
  expectAnswersOfTheBand(1, "ENERGY MOISTURE", "KLU");
  expectAnswersOfTheBand(5, "ENERGY MOISTURE", "KLU");
}

TEST(LinearSolver, automaticChoice_givesTheAnswersOfTheBand) {
  expectAnswersOfTheBand(1, "MOISTURE", "AUTO");
  expectAnswersOfTheBand(5, "ENERGY MOISTURE", "AUTO");
}

TEST(LinearSolver, choice_isTold) {
  EXPECT_EQ(linearSolverMessage(1, "AUTO"), "Linear solver: block factors of 12 elements.\n");
  EXPECT_EQ(linearSolverMessage(5, "AUTO"), "Linear solver: block factors of 60 elements.\n");
  EXPECT_EQ(linearSolverMessage(5, "BLOCK"), "Linear solver: block factors of 60 elements.\n");
  EXPECT_EQ(linearSolverMessage(5, "GMRES"),
            "Linear solver: iteration with incomplete block factors of 60 elements.\n");
  EXPECT_EQ(linearSolverMessage(5, "KLU"), "Linear solver: sparse matrix of 60 elements.\n");
  EXPECT_EQ(linearSolverMessage(1, "BAND"), "Linear solver: band matrix with half bandwidth 3.\n");
}

}  // namespace VELMORA_SOLVER
