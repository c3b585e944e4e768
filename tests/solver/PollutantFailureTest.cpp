// What is told when the balance of a pollutant fails.

#include <gtest/gtest.h>

#include "solver/PollutedBlock.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

using PollutantFailure = PollutedBlock;

TEST_F(PollutantFailure, stepThatIsTooLong_namesThePollutantBalance) {
  start("VOCMASS", "1 kg/m3", "0 0 0 0");  // which the solid takes up within milliseconds
  text.settings = "MIN_DT = 1 s\nINITIAL_DT = 1 s\nUSE_AUTO_RECOVER = no\n";
  ASSERT_TRUE(init());
  EXPECT_EQ(TKL::thrownBy([&] { solver.run(); }).text, "Simulation stopped!");
  EXPECT_TRUE(
      capture.contains(" times the tolerance: pollutant balance of element 0 at x = 0.05 m, "
                       "y = 0.5 m, material 'Block'\n"));
  EXPECT_FALSE(capture.contains("moisture balance"));
}

TEST_F(PollutantFailure, negativeSource_endsTheRunWithItsReason) {
  text.climate = SolverProject::constantClimate("Sink", "VOCSOURCE", "-1e-9 kg/m3s");
  text.field = "[FIELD_COND]\nNAME = Eater\nTYPE = VOCSOURCE\nVOCSOURCE = Sink\n";
  text.assignments += SolverProject::assign("FIELDCOND", "0 0 0 0", "Eater", "ELEMENT");
  ASSERT_TRUE(init());
  EXPECT_EQ(TKL::thrownBy([&] { solver.run(); }).text, "Simulation stopped!");
  EXPECT_TRUE(capture.contains("Negative VOC sources are currently not supported."));
}

TEST_F(PollutantFailure, surfaceOfAnotherKind_endsTheRunWithItsReason) {
  text.climate = SolverProject::constantClimate("Foul", "VOCDENSG", "1e-4 kg/m3");
  text.boundary = "[BOUND_COND]\nNAME = Skin\nTYPE = VOCDIFF\nKIND = SURFVAL\nVOCDENSG = Foul\n";
  text.assignments += SolverProject::assign("BOUNDARYCOND", "0 0 0 0", "Skin", "LEFT");
  ASSERT_TRUE(init());
  EXPECT_EQ(TKL::thrownBy([&] { solver.run(); }).text, "Simulation stopped!");
  EXPECT_TRUE(
      capture.contains("[VelmoraCvodeSolver::boundaryFluxVOCDiffusion]  Invalid kind type for VOC diffusion "
                       "boundary condition 'Skin'"));
}

TEST_F(PollutantFailure, restrictedMass_isToldInARun) {
  restartFrom(
      "10.000\n300000000.00 290000000.00 \n0.00000000 0.00000000 \n-0.00010000 0.00020000 \n"
      "0.00300000 0.00400000 \n");
  ASSERT_TRUE(init());
  solver.initStep();
  EXPECT_TRUE(capture.has("mVOC = -0.0001 < 0 in element 0 at t = 10, limiting mVOC to 0 mg/m3",
                          TKL::MSG_WARNING, "[VelmoraCvodeSolver::restrictVOCRange]", 1));
}

}  // namespace VELMORA_SOLVER
