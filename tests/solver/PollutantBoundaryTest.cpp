// Pollutant that a surface gives to the ambient air, and that comes and goes with air through it.

#include <stdexcept>

#include "solver/MoistSurface.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

constexpr double FILM = 0.003;              // [m/s]
constexpr double PORE_DENSITY = 4e-4;       // [kg/m3]
constexpr double AMBIENT_DENSITY = 1e-4;    // [kg/m3]
constexpr double VOC_DRAUGHT = 2e-4;        // [kg/s]
constexpr double WIND_PRESSURE = 101500.0;  // [Pa]
constexpr double CELL_PRESSURE = 101200.0;  // [Pa]

class PollutantBoundaryTest : public MoistSurface {
 protected:
  PollutantBoundaryTest() {
    condition.condition = VelBoundaryCond::C_VOCDIFF;
    condition.kind = VelBoundaryCond::K_EXCHANGE;
    set(VelBoundaryCond::P_EXCOEFF, FILM);
    attach(VelClimateCond::C_VOCDENSG, AMBIENT_DENSITY);
    use(BE_ENERGY | BE_POLLUTANT);
  }
  void use(int equations) {
    settings = moistSettings(equations);
    useMaterial(open);
    s.resizePollutant(1);
    s.rhoVOC = {PORE_DENSITY};
    s.pAir = {CELL_PRESSURE};
  }
  /// Lets the condition be an opening that air passes.
  void blow(double m, location_t location = LEFT) {
    condition.condition = VelBoundaryCond::C_AIRPRESS;
    attach(VelClimateCond::C_GASPRESS, WIND_PRESSURE);
    attach(VelClimateCond::C_TEMPER, CLIMATE_T);
    attach(VelClimateCond::C_RELHUM, 0.5);
    arrays.records.airMassFlux[location] = m;
    calculate(location);
  }
  double voc(location_t location, VELMORA::vocFluxSlot_t slot) const {
    return arrays.records.vocFlux[location][slot];
  }
  static void expectSame(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
  }
  static MM::Material openMaterial() {
    std::string text = moistText();
    const std::string base = "LAMBDA = 0.8 W/mK\n";
    return moistMaterial(text.insert(text.find(base) + base.size(), "KG = 1e-6 s\n"));
  }
  MM::Material open = openMaterial();
};

constexpr double SURFACE_LOSS = (AMBIENT_DENSITY - PORE_DENSITY) * FILM * SURFACE_AREA;  // [kg/s] inwards

}  // namespace

TEST_F(PollutantBoundaryTest, exchange_isDrivenByTheDensityInThePores) {
  for (const int more : {0, int(BE_MOISTURE)}) {
    use(BE_ENERGY | BE_POLLUTANT | more);
    calculate(LEFT);
    expectSame(voc(LEFT, VELMORA::VF_DIFFUSION), SURFACE_LOSS);
    EXPECT_EQ(voc(LEFT, VELMORA::VF_SUM), voc(LEFT, VELMORA::VF_DIFFUSION));
  }
}

TEST_F(PollutantBoundaryTest, exchange_hasTheSignOfItsSide) {
  for (const location_t location : {LEFT, RIGHT, TOP, BOTTOM}) {
    calculate(location);
    expectSame(voc(location, VELMORA::VF_DIFFUSION),
               location == LEFT || location == TOP ? SURFACE_LOSS : -SURFACE_LOSS);
  }
}

TEST_F(PollutantBoundaryTest, exchange_writesNoOtherFlow) {
  use(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  calculate(LEFT);
  EXPECT_EQ(moisture(VELMORA::MF_SUM), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_SUM), 0.0);
}

TEST_F(PollutantBoundaryTest, exchange_endsWithItsCondition) {
  condition.endTime.set("END_TIME", 1000.0, "s");
  calculate(LEFT, 1000.0);
  EXPECT_NE(voc(LEFT, VELMORA::VF_SUM), 0.0);
  calculate(LEFT, 1001.0);
  EXPECT_EQ(voc(LEFT, VELMORA::VF_DIFFUSION), 0.0);
  EXPECT_EQ(voc(LEFT, VELMORA::VF_SUM), 0.0);
}

TEST_F(PollutantBoundaryTest, otherKinds_areRefused) {
  condition.kind = VelBoundaryCond::K_SURFVAL;
  try {
    calculate();
    FAIL();
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(error.what(),
                 "[VelmoraCvodeSolver::boundaryFluxVOCDiffusion]  Invalid kind type for VOC diffusion "
                 "boundary condition 'Weather'");
  }
}

TEST_F(PollutantBoundaryTest, missingAmbientDensity_isNamed) {
  detach(VelClimateCond::C_VOCDENSG);
  EXPECT_EQ(TKL::thrownBy([&] { calculate(); }),
            (TKL::Thrown{"Error in boundary condition 'Weather' with type 'VOCDIFF'.\nClimate condition of "
                         "type 'VOCDENSG' needs to be specified!",
                         "[VelmoraCvodeSolver::boundaryFluxVOCDiffusion]"}));
}

TEST_F(PollutantBoundaryTest, withoutPollutantBalance_nothingIsExchanged) {
  detach(VelClimateCond::C_VOCDENSG);
  for (const int equations : {int(BE_ENERGY), int(BE_MOISTURE), int(BE_ENERGY | BE_MOISTURE | BE_AIR)}) {
    use(equations);
    calculate();
    EXPECT_EQ(voc(LEFT, VELMORA::VF_SUM), 0.0);
  }
}

TEST_F(PollutantBoundaryTest, conditionsOfWater_areIgnoredWithoutMoisture) {
  for (const auto type : {VelBoundaryCond::C_VAPDIFF, VelBoundaryCond::C_RAIN, VelBoundaryCond::C_WATCONTC}) {
    condition.condition = type;
    EXPECT_EQ(TKL::thrownBy([&] { calculate(); }).text, "nothing thrown") << type;
  }
}

TEST_F(PollutantBoundaryTest, enteringAir_bringsTheShareOfTheClimate) {
  for (const int more : {0, int(BE_MOISTURE)}) {
    use(BE_ENERGY | BE_AIR | BE_POLLUTANT | more);
    blow(VOC_DRAUGHT, LEFT);
    expectSame(voc(LEFT, VELMORA::VF_CONVECTION),
               AMBIENT_DENSITY / (WIND_PRESSURE / (CLIMATE_T * 287.1)) * VOC_DRAUGHT);
    EXPECT_EQ(voc(LEFT, VELMORA::VF_SUM), voc(LEFT, VELMORA::VF_CONVECTION));
    EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION) != 0.0, more != 0);
  }
}

TEST_F(PollutantBoundaryTest, leavingAir_takesTheShareOfTheElement) {
  use(BE_ENERGY | BE_AIR | BE_POLLUTANT);
  const double share = PORE_DENSITY / (CELL_PRESSURE / (SURFACE_T * 287.1));
  blow(-VOC_DRAUGHT, LEFT);
  expectSame(voc(LEFT, VELMORA::VF_CONVECTION), -share * VOC_DRAUGHT);
  blow(VOC_DRAUGHT, RIGHT);  // the flow has its sign already
  expectSame(voc(RIGHT, VELMORA::VF_CONVECTION), share * VOC_DRAUGHT);
}

TEST_F(PollutantBoundaryTest, leavingAir_needsNoClimateOfThePollutant) {
  use(BE_ENERGY | BE_AIR | BE_POLLUTANT);
  detach(VelClimateCond::C_VOCDENSG);
  EXPECT_EQ(TKL::thrownBy([&] { blow(-VOC_DRAUGHT); }).text, "nothing thrown");
  EXPECT_EQ(TKL::thrownBy([&] { blow(VOC_DRAUGHT); }),
            (TKL::Thrown{"Error in boundary condition 'Weather' with type 'AIRPRESS'.\nClimate condition of "
                         "type 'VOCDENSG' needs to be specified!",
                         "[VelmoraCvodeSolver::boundaryFluxAirInfiltration]"}));
}

TEST_F(PollutantBoundaryTest, enteringAir_isAskedForItsVapourFirst) {
  use(BE_ENERGY | BE_MOISTURE | BE_AIR | BE_POLLUTANT);
  blow(VOC_DRAUGHT);
  detach(VelClimateCond::C_VOCDENSG);
  EXPECT_NE(TKL::thrownBy([&] { calculate(LEFT); }).text.find("'VOCDENSG'"), std::string::npos);
  detach(VelClimateCond::C_RELHUM);
  EXPECT_NE(TKL::thrownBy([&] { calculate(LEFT); }).text.find("'VAPPRESS'"), std::string::npos);
}

TEST_F(PollutantBoundaryTest, airTightSurface_letsNoPollutantPassWithAir) {
  use(BE_ENERGY | BE_AIR | BE_POLLUTANT);
  useMaterial(plaster);
  blow(VOC_DRAUGHT);
  EXPECT_EQ(voc(LEFT, VELMORA::VF_CONVECTION), 0.0);
}

}  // namespace VELMORA_SOLVER
