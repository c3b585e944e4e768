// Restart files of runs with a pollutant.

#include <gtest/gtest.h>

#include "solver/MoistBench.h"
#include "solver/PollutedBlock.h"
#include "solver/RestartFile.h"
#include "support/TempFolder.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using Densities = std::vector<double>;

RestartState pollutedState() {
  RestartState state;
  state.t = 60.0;
  state.U = {3e8, 2.9e8};
  state.mw = {0.0, 5.0};
  state.mVOC1 = {1e-4, 0.0};
  state.mVOC2 = {0.123456789, 2.0};
  return state;
}

const char* const POLLUTED_LINES =
    "60.000\n300000000.00 290000000.00 \n0.00000000 5.00000000 \n0.00010000 0.00000000 \n"
    "0.12345679 2.00000000 \n";

TKL::Thrown readPolluted(const TKL::TempFolder& folder, const std::string& content) {
  folder.write("restart.txt", content);
  return TKL::thrownBy([&] { RestartFile(TKL::Path(folder.path().string())).read(2, true); });
}

}  // namespace

TEST(PollutantRestart, gasAndSolid_areLinesFourAndFive) {
  const TKL::TempFolder folder;
  RestartFile(TKL::Path(folder.path().string())).write(pollutedState());
  EXPECT_EQ(folder.read("restart.txt"), POLLUTED_LINES);
}

TEST(PollutantRestart, freezeThawCycles_followBehindThePollutant) {
  const TKL::TempFolder folder;
  RestartFile file{TKL::Path(folder.path().string())};
  RestartState state = pollutedState();
  state.freezeThawCycles = {3, 0};
  state.frozen = {1, 0};
  file.write(state);
  EXPECT_EQ(folder.read("restart.txt"), POLLUTED_LINES + std::string("3 0 \n1 0 \n"));
  const RestartState read = file.read(2, true);
  EXPECT_EQ(read.mVOC2, (Densities{0.12345679, 2.0}));
  EXPECT_EQ(read.freezeThawCycles, (std::vector<std::uint32_t>{3, 0}));
  EXPECT_EQ(read.frozen, (std::vector<std::uint8_t>{1, 0}));
}

TEST(PollutantRestart, missingOrBrokenLines_areRefused) {
  const TKL::TempFolder folder;
  const std::string tag = "[VelmoraCvodeSolver::setRestartFields]";
  const TKL::Thrown refused{tag + "  Error reading restart file!", tag};
  const std::string start = "5\n1 2 \n0 0 \n";
  for (const char* lines : {"", "1e-4 0 \n", "1e-4 \n0 0 \n", "1e-4 0 \n0 \n", "1e-4 x \n0 0 \n"})
    EXPECT_EQ(readPolluted(folder, start + lines), refused) << lines;
  EXPECT_EQ(readPolluted(folder, start + "1e-4 0 \n0 0 \n").text, "nothing thrown");
}

using PollutantRestartRun = PollutedBlock;

TEST_F(PollutantRestartRun, fileOfARun_hasFiveLines) {
  start("VOCMASS", "1 kg/m3", "0 0 0 0");
  ASSERT_TRUE(run());
  EXPECT_EQ(restartLines().size(), 5U);
  const RestartState last = RestartFile(solver.resultsDirectory).read(2, true);
  EXPECT_LT(last.mVOC1[0], 0.1);  // most of it has gone into the solid
  EXPECT_GT(last.mVOC2[0], 0.9);
  EXPECT_GT(last.mVOC1[1], 0.0);
  EXPECT_NEAR(last.mVOC1[0] + last.mVOC1[1] + last.mVOC2[0] + last.mVOC2[1], 1.0, 4e-8);
}

TEST_F(PollutantRestartRun, withIce_twoMoreLinesFollow) {
  text.balances = "BALANCE_EQUATIONS = ENERGY POLLUTANT ICE\n";
  ASSERT_TRUE(run());
  EXPECT_EQ(restartLines().size(), 7U);
  EXPECT_EQ(restartLines()[5], "0 0 ");
}

TEST_F(PollutantRestartRun, allFiveLines_areTakenOver) {
  restartFrom(
      "1234.500\n300000000.00 290000000.00 \n0.00000000 0.00000000 \n0.00010000 0.00020000 \n"
      "0.00300000 0.00400000 \n");
  ASSERT_TRUE(init());
  EXPECT_EQ(solver.t, 1234.5);
  solver.initStep();
  EXPECT_NEAR(solver.state().T[1], 290.0, 1e-9);
  EXPECT_EQ(solver.state().mVOC1, (Densities{1e-4, 2e-4}));
  EXPECT_EQ(solver.state().mVOC2, (Densities{3e-3, 4e-3}));
  EXPECT_DOUBLE_EQ(solver.state().rhoVOC[1], 2e-4 / VOC_POROSITY);
}

TEST_F(PollutantRestartRun, withMoisture_eachLineIsTheQuantityItWas) {
  const std::string lines = moistText();
  text.material = lines.substr(lines.find("[STORAGE_BASE"));
  text.balances = "BALANCE_EQUATIONS = ENERGY MOISTURE POLLUTANT\n";
  const double U = (MOIST_RHO_C + 4180.0 * 40.0) * 290.0;
  restartFrom("600.000\n" + number(U) + " " + number(U) +
              " \n40.00000000 50.00000000 \n0.10000000 0.20000000 \n0.30000000 0.40000000 \n");
  ASSERT_TRUE(init());
  solver.initStep();
  const SolverState& s = solver.state();
  EXPECT_NEAR(s.T[0], 290.0, 1e-9);
  EXPECT_EQ(s.mw, (Densities{40.0, 50.0}));
  EXPECT_EQ(s.mVOC1, (Densities{0.1, 0.2}));
  EXPECT_EQ(s.mVOC2, (Densities{0.3, 0.4}));
  solver.run();
  const RestartState last = RestartFile(solver.resultsDirectory).read(2, true);
  EXPECT_GE(last.t, 3600.0);
  EXPECT_NEAR(last.U[0] + last.U[1], 2.0 * U, 1e-6 * U);
  EXPECT_NEAR(last.mw[0] + last.mw[1], 90.0, 1e-7);
  EXPECT_NEAR(last.mVOC1[0] + last.mVOC1[1] + last.mVOC2[0] + last.mVOC2[1], 1.0, 4e-8);
  EXPECT_LT(last.mVOC1[1], 0.1);  // the solid has taken its share
}

TEST_F(PollutantRestartRun, fileOfARunWithoutPollutant_isRefused) {
  restartFrom("1234.500\n300000000.00 290000000.00 \n0.00000000 0.00000000 \n");
  EXPECT_FALSE(init());
  EXPECT_TRUE(capture.contains("[VelmoraCvodeSolver::setRestartFields]  Error reading restart file!"));
}

TEST_F(PollutantRestartRun, continuedRun_endsLikeAnUninterruptedOne) {
  start("VOCMASS", "1 kg/m3", "0 0 0 0");
  last("20 h");
  ASSERT_TRUE(run());
  const Densities gas = solver.state().mVOC1, solid = solver.state().mVOC2;
  last("10 h");
  ASSERT_TRUE(run());
  last("20 h");
  restart = true;
  ASSERT_TRUE(run());
  for (int i = 0; i < 2; ++i) {
    const auto e = static_cast<std::size_t>(i);
    EXPECT_NEAR(solver.state().mVOC1[e], gas[e], 2e-6);
    EXPECT_NEAR(solver.state().mVOC2[e], solid[e], 2e-5);
  }
  EXPECT_GT(solid[1], 1e-3);  // some has reached the other cell
}

}  // namespace VELMORA_SOLVER
