// Conditions at surfaces that do not belong to the balances of a run: they neither act nor ask for anything.

#include <gtest/gtest.h>

#include <algorithm>

#include "solver/MoistSurface.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;

class IgnoredCondition : public MoistSurface {
 protected:
  /// Whether a condition without climate, parameters and kind acts or asks for what it lacks.
  bool acts(VelBoundaryCond::condition_t type, int equations) {
    settings = moistSettings(equations);
    condition.condition = type;
    set(VelBoundaryCond::P_SUREMISS, 0.9);
    useMaterial(plaster);
    try {
      calculate();
    } catch (const std::exception&) {
      return true;
    }
    const auto isFlow = [](double value) { return value != 0.0; };
    const auto heat = arrays.records.heatFlux.values(), moisture = arrays.records.moistureFlux.values();
    return std::any_of(heat.begin(), heat.end(), isFlow) ||
           std::any_of(moisture.begin(), moisture.end(), isFlow);
  }
};

}  // namespace

TEST_F(IgnoredCondition, heatRun_heedsHeatAndRadiation) {
  for (const auto type : {VelBoundaryCond::C_HEATCOND, VelBoundaryCond::C_SHWRAD, VelBoundaryCond::C_LOWRAD})
    EXPECT_TRUE(acts(type, BE_ENERGY)) << type;
  for (const auto type : {VelBoundaryCond::C_VAPDIFF, VelBoundaryCond::C_RAIN, VelBoundaryCond::C_WATCONTC,
                          VelBoundaryCond::C_AIRPRESS, VelBoundaryCond::C_VOCDIFF})
    EXPECT_FALSE(acts(type, BE_ENERGY)) << type;
}

TEST_F(IgnoredCondition, moistureRun_heedsVapourRainAndWater) {
  for (const auto type : {VelBoundaryCond::C_VAPDIFF, VelBoundaryCond::C_RAIN, VelBoundaryCond::C_WATCONTC})
    EXPECT_TRUE(acts(type, BE_MOISTURE)) << type;
  for (const auto type : {VelBoundaryCond::C_HEATCOND, VelBoundaryCond::C_SHWRAD, VelBoundaryCond::C_LOWRAD,
                          VelBoundaryCond::C_AIRPRESS, VelBoundaryCond::C_VOCDIFF})
    EXPECT_FALSE(acts(type, BE_MOISTURE)) << type;
}

TEST_F(IgnoredCondition, coupledRun_heedsAllOfThem) {
  for (const auto type : {VelBoundaryCond::C_HEATCOND, VelBoundaryCond::C_SHWRAD, VelBoundaryCond::C_LOWRAD,
                          VelBoundaryCond::C_VAPDIFF, VelBoundaryCond::C_RAIN, VelBoundaryCond::C_WATCONTC})
    EXPECT_TRUE(acts(type, BE_ENERGY | BE_MOISTURE)) << type;
}

TEST_F(IgnoredCondition, solutionContactAndMissingRoom_areIgnoredInEveryRun) {
  for (const auto type : {VelBoundaryCond::C_SOLCONTC, VelBoundaryCond::C_ROOM})
    for (const int equations : {int(BE_ENERGY), int(BE_MOISTURE), int(BE_ENERGY | BE_MOISTURE)})
      EXPECT_FALSE(acts(type, equations)) << type << ' ' << equations;
}

}  // namespace VELMORA_SOLVER
