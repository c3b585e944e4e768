#include "solver/WallBench.h"

#include <limits>

using namespace VELMORA_SOLVER;

TEST(WallBench, agreeRejectsOneValueBeyondTheTolerance) {
  EXPECT_TRUE(agree({1.0, 2.0}, {1.0, 2.09}, 0.1));
  EXPECT_FALSE(agree({1.0, 2.0}, {1.0, 2.11}, 0.1));
}

TEST(WallBench, agreeRejectsMissingValuesAndWhatIsNoNumber) {
  EXPECT_FALSE(agree({1.0}, {1.0, 2.0}, 10.0));
  EXPECT_FALSE(agree({std::numeric_limits<double>::quiet_NaN()}, {1.0}, 10.0));
}

TEST(WallBench, runRefusesATimeThatTheIntegratorHasPassed) {
  WallProblem problem(uniform(4, 0.1));
  problem.material(problem.all(), "Stone", {1.4, 2e6});
  problem.initial(problem.all(), 20.0);
  WallRun run(problem);
  run.advance(86400.0);
  EXPECT_THROW(run.advance(3600.0), std::logic_error);
}
