#include "solver/ModelSettings.h"

#include <gtest/gtest.h>

#include "solver/Integrator.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

TEST(ModelSettings, hydrostaticProfile_leavesRoomAboveTheEffectiveSaturation) {
  VELMORA::VelInit init;
  EXPECT_EQ(ModelSettings::of(init, {}).overfillMargin, 0.0);
  init.useHydrostatic = true;
  EXPECT_EQ(ModelSettings::of(init, {}).overfillMargin, 0.02);
}

TEST(ModelSettings, gravityAlone_leavesNoRoom) {
  VELMORA::VelInit init;
  init.useGravity = true;
  EXPECT_TRUE(ModelSettings::of(init, {}).useGravity);
  EXPECT_EQ(ModelSettings::of(init, {}).overfillMargin, 0.0);
}

TEST(ModelSettings, switches_followTheProject) {
  VELMORA::VelInit init;
  for (const bool on : {false, true}) {
    init.useKirchhoff = on;
    init.solverSettings.cvodeSettings.preventOverfilling = !on;
    init.solverSettings.cvodeSettings.useStrictRangeChecking = on;
    const ModelSettings settings = ModelSettings::of(init, {});
    EXPECT_EQ(settings.useKirchhoff, on);
    EXPECT_EQ(settings.preventOverfilling, !on);
    EXPECT_EQ(settings.useStrictRangeChecking, on);
  }
}

TEST(ModelSettings, placeAndTime_followTheProject) {
  VELMORA::VelInit init;
  init.startTime = 7200;
  VELMORA::VelDisc disc;
  disc.thetaZ = 45.0;
  disc.height = 2.5;
  const ModelSettings settings = ModelSettings::of(init, disc);
  EXPECT_EQ(settings.startTimeOffset, 7200.0);
  EXPECT_EQ(settings.thetaZ, 45.0);
  EXPECT_EQ(settings.height, 2.5);
}

TEST(SolverState, freshState_isZeroButForTheGasPressure) {
  SolverState state;
  state.resize(3);
  EXPECT_EQ(state.pAir, std::vector<double>(3, 101325.0));
  for (const auto* quantity :
       {&state.U, &state.mw, &state.T, &state.Theta, &state.ThetaAir, &state.rhoVapour, &state.rhoLiquid,
        &state.rhoIce, &state.pC, &state.pCTotal, &state.RH, &state.pV, &state.rhoCDry, &state.lambda,
        &state.Kv, &state.Kirchhoff, &state.Kl, &state.Dl})
    EXPECT_EQ(*quantity, std::vector<double>(3, 0.0));
}

TEST(IntegratorSettings, stabilityLimit_isWatched) {
  EXPECT_TRUE(IntegratorSettings().stabilityLimitDetection);
}

}  // namespace VELMORA_SOLVER
