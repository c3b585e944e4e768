#include "solver/PollutantMassFile.h"

#include <gtest/gtest.h>

#include <numeric>

#include "solver/PollutedBlock.h"
#include "support/TempFolder.h"

namespace VELMORA_SOLVER {

namespace {

using Masses = std::vector<double>;

const Masses THIN_GAS{1.23456789012345e-9, 0.0};
const Masses THIN_SOLID{4.4444444444e-5, 7.000000001};
const Masses ROUNDED_GAS{0.0, 0.0};  // as the restart file has them
const Masses ROUNDED_SOLID{4.444e-5, 7.0};

class PollutantMassFileTest : public ::testing::Test {
 protected:
  bool read(double t, Masses shownGas = ROUNDED_GAS, Masses shownSolid = ROUNDED_SOLID) {
    gas = std::move(shownGas);
    solid = std::move(shownSolid);
    return file.read(t, gas, solid);
  }
  TKL::TempFolder folder;
  PollutantMassFile file{TKL::Path(folder.path().string())};
  Masses gas, solid;
};

}  // namespace

TEST_F(PollutantMassFileTest, masses_getTheirDigitsBack) {
  file.write(3600.1234, THIN_GAS, THIN_SOLID);
  ASSERT_TRUE(read(3600.123));
  EXPECT_EQ(gas, THIN_GAS);
  EXPECT_EQ(solid, THIN_SOLID);
}

TEST_F(PollutantMassFileTest, massesOfAnotherTime_areNotTaken) {
  file.write(3600.0, THIN_GAS, THIN_SOLID);
  EXPECT_FALSE(read(3600.001));
  EXPECT_EQ(gas, ROUNDED_GAS);
  EXPECT_EQ(solid, ROUNDED_SOLID);
}

TEST_F(PollutantMassFileTest, massesThatTheRestartFileHasNot_areNotTaken) {
  // someone has edited the restart file
  file.write(3600.0, THIN_GAS, THIN_SOLID);
  EXPECT_FALSE(read(3600.0, {1e-8, 0.0}));
  EXPECT_EQ(gas, (Masses{1e-8, 0.0}));
  EXPECT_FALSE(read(3600.0, ROUNDED_GAS, {4.446e-5, 7.0}));
  EXPECT_FALSE(read(3600.0, ROUNDED_GAS, {4.445e-5, 7.0}));
  EXPECT_TRUE(read(3600.0));
}

TEST_F(PollutantMassFileTest, backup_isTakenIfItFitsTheRestartFile) {
  file.write(3600.0, THIN_GAS, THIN_SOLID);
  file.write(7200.0, {1.0, 1.0}, {1.0, 1.0});
  EXPECT_TRUE(read(3600.0));
  EXPECT_EQ(gas, THIN_GAS);
}

TEST_F(PollutantMassFileTest, otherElements_areNotTaken) {
  file.write(3600.0, {THIN_GAS[0]}, {THIN_SOLID[0]});
  EXPECT_FALSE(read(3600.0));
}

TEST_F(PollutantMassFileTest, missingOrDamagedFile_isNotTaken) {
  EXPECT_FALSE(read(3600.0));
  file.write(3600.0, THIN_GAS, THIN_SOLID);
  const std::string whole = folder.read("restart.pollutant");
  for (std::size_t size = 0; size + 1 < whole.size(); ++size) {
    folder.write("restart.pollutant", whole.substr(0, size));
    EXPECT_FALSE(read(3600.0)) << size;
  }
  for (const char* rows : {"0 1e-9\n1 0 7\n", "0 x 1\n1 0 7\n", "0 nan 4e-5\n1 0 7\n"}) {
    folder.write("restart.pollutant", std::string("3600.000\n") + rows + "END\n");
    EXPECT_FALSE(read(3600.0)) << rows;
  }
  folder.write("restart.pollutant", whole);
  EXPECT_TRUE(read(3600.0));
}

using ThinPollutant = PollutedBlock;

constexpr char ROUNDED[] =
    "The pollutant begins with the masses of the restart file, rounded to 1e-8 kg/m3.\n";

TEST_F(ThinPollutant, continuedRun_losesNothing) {
  start("VOCMASS", "2e-8 kg/m3", "0 0 0 0");
  text.settings = "ABS_TOL_POLLUTANT = 1e-19\nREL_TOL = 1e-7\n";
  last("10 h");
  ASSERT_TRUE(run());
  const Masses gas = solver.state().mVOC1;
  last("20 h");
  restart = true;
  ASSERT_TRUE(init());
  solver.initStep();
  const auto total = [&] {
    const SolverState& s = solver.state();
    return std::accumulate(s.mVOC1.begin(), s.mVOC1.end(), 0.0) +
           std::accumulate(s.mVOC2.begin(), s.mVOC2.end(), 0.0);
  };
  EXPECT_NEAR(total() / 2e-8, 1.0, 1e-10);
  EXPECT_NEAR(solver.state().mVOC1[0] / gas[0], 1.0, 1e-3);  // the restart state lies behind the last output
  solver.runStep(72000.0, false);
  EXPECT_NEAR(total() / 2e-8, 1.0, 1e-10);
  EXPECT_FALSE(capture.contains(ROUNDED));
}

TEST_F(ThinPollutant, runThatIsContinuedWithoutTheFile_isToldOf) {
  start("VOCMASS", "2e-8 kg/m3", "0 0 0 0");
  text.settings = "ABS_TOL_POLLUTANT = 1e-19\n";
  ASSERT_TRUE(run());
  for (const char* name : {"restart.pollutant", "restart.pollutant.backup"})
    std::filesystem::remove(text.folder.file(text.resultFile(name)));
  restart = true;
  ASSERT_TRUE(init());
  EXPECT_TRUE(capture.has(ROUNDED, TKL::MSG_WARNING, "[VelmoraCvodeSolver::init]", -1));
  EXPECT_EQ(solver.state().mVOC1[0], 0.0);
}

}  // namespace VELMORA_SOLVER
