// Heat and vapour of the air that passes a surface.

#include "solver/MoistSurface.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

constexpr double GUST = 2e-4;                // [kg/s]
constexpr double OUTER_PRESSURE = 101500.0;  // [Pa]
constexpr double INNER_PRESSURE = 101200.0;  // [Pa]
const char* const AIR_TAG = "[VelmoraCvodeSolver::boundaryFluxAirInfiltration]";

class AirInfiltrationTest : public MoistSurface {
 protected:
  AirInfiltrationTest() {
    const std::string open = moistText();
    const std::string base = "LAMBDA = 0.8 W/mK\n";
    plaster = moistMaterial(open.substr(0, open.find(base)) + base + "KG = 1e-6 s\n" +
                            open.substr(open.find(base) + base.size()));
    settings = moistSettings(BE_ENERGY | BE_MOISTURE | BE_AIR);
    useMaterial(plaster);
    s.pAir = {INNER_PRESSURE};
    condition.condition = VelBoundaryCond::C_AIRPRESS;
    condition.kind = VelBoundaryCond::K_EXCHANGE;
    attach(VelClimateCond::C_GASPRESS, OUTER_PRESSURE);
  }
  void blow(double m, location_t location = LEFT) {
    arrays.records.airMassFlux[location] = m;
    calculate(location);
  }
  TKL::Thrown failureOf(double m) {
    return TKL::thrownBy([&] { blow(m); });
  }
  void attachAll() {
    attach(VelClimateCond::C_TEMPER, CLIMATE_T);
    attach(VelClimateCond::C_RELHUM, 0.6);
  }
  static TKL::Thrown lacking(const std::string& quantity) {
    return {"Error in boundary condition 'Weather' with type 'AIRPRESS'.\nClimate condition of type '" +
                quantity + "' needs to be specified!",
            AIR_TAG};
  }
  static double share(double pV, double p) { return pV / 461.89 * 287.1 / p; }
  static void expectSame(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
  }
  const double pVOutside = 0.6 * 288.68 * std::pow(1.098 + (CLIMATE_T - 273.15) / 100.0, 8.02);
};

double enthalpyOfVapour(double T) {
  return 2050.0 * T + 3080000.0;
}

}  // namespace

TEST_F(AirInfiltrationTest, enteringAir_hasTheEnthalpyOfTheClimate) {
  attachAll();
  blow(GUST);
  expectSame(heat(VELMORA::HF_AIR), CLIMATE_T * 1006.0 * GUST);
}

TEST_F(AirInfiltrationTest, enteringAir_bringsItsVapour) {
  attachAll();
  blow(GUST);
  const double vapour = share(pVOutside, OUTER_PRESSURE) * GUST;
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), vapour);
  expectSame(heat(VELMORA::HF_INFILTRATION_SHORTWAVE), enthalpyOfVapour(CLIMATE_T) * vapour);
  expectSame(moisture(VELMORA::MF_SUM), vapour);
  expectSame(heat(VELMORA::HF_SUM), CLIMATE_T * 1006.0 * GUST + enthalpyOfVapour(CLIMATE_T) * vapour);
}

TEST_F(AirInfiltrationTest, leavingAir_takesVapourAndEnthalpyOfTheElement) {
  blow(-GUST);  // without any climate but the pressure
  const double vapour = -share(SURFACE_PV, INNER_PRESSURE) * GUST;
  expectSame(heat(VELMORA::HF_AIR), -SURFACE_T * 1006.0 * GUST);
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), vapour);
  expectSame(heat(VELMORA::HF_INFILTRATION_SHORTWAVE), enthalpyOfVapour(SURFACE_T) * vapour);
}

TEST_F(AirInfiltrationTest, airThatEnters_isToldByTheSideOfTheElement) {
  attachAll();
  for (const auto& [location, entering] :
       {std::pair{LEFT, GUST}, {RIGHT, -GUST}, {TOP, GUST}, {BOTTOM, -GUST}}) {
    blow(entering, location);
    expectSame(heat(VELMORA::HF_AIR), CLIMATE_T * 1006.0 * entering);
    blow(-entering, location);
    expectSame(heat(VELMORA::HF_AIR), -SURFACE_T * 1006.0 * entering);
  }
}

TEST_F(AirInfiltrationTest, noFlow_countsAsLeavingAndNeedsNoClimate) {
  EXPECT_EQ(failureOf(0.0), (TKL::Thrown{"nothing thrown", ""}));
  EXPECT_EQ(heat(VELMORA::HF_AIR), 0.0);
}

TEST_F(AirInfiltrationTest, humidity_comesBeforeVapourPressure) {
  attachAll();
  attach(VelClimateCond::C_VAPPRESS, 1.0);
  blow(GUST);
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), share(pVOutside, OUTER_PRESSURE) * GUST);
  detach(VelClimateCond::C_RELHUM);
  attach(VelClimateCond::C_VAPPRESS, 700.0);
  blow(GUST);
  expectSame(moisture(VELMORA::MF_VAPOUR_CONVECTION), share(700.0, OUTER_PRESSURE) * GUST);
}

TEST_F(AirInfiltrationTest, missingClimate_isNamed) {
  EXPECT_EQ(failureOf(GUST), lacking("TEMPER"));
  attach(VelClimateCond::C_TEMPER, CLIMATE_T);
  EXPECT_EQ(failureOf(GUST), lacking("VAPPRESS"));
  detach(VelClimateCond::C_GASPRESS);
  EXPECT_EQ(failureOf(-GUST), lacking("GASPRESS"));
}

TEST_F(AirInfiltrationTest, airTightMaterial_takesNothingAndNeedsNoClimate) {
  MM::Material tight = moistMaterial();  // without KG
  ASSERT_TRUE(tight.isAirTight());
  useMaterial(tight);
  detach(VelClimateCond::C_GASPRESS);
  blow(GUST);
  EXPECT_EQ(heat(VELMORA::HF_SUM), 0.0);
  EXPECT_EQ(moisture(VELMORA::MF_SUM), 0.0);
}

TEST_F(AirInfiltrationTest, withoutMoisture_onlyHeatEnters) {
  settings = moistSettings(BE_ENERGY | BE_AIR);
  attach(VelClimateCond::C_TEMPER, CLIMATE_T);
  blow(GUST);
  expectSame(heat(VELMORA::HF_SUM), CLIMATE_T * 1006.0 * GUST);
  EXPECT_EQ(moisture(VELMORA::MF_VAPOUR_CONVECTION), 0.0);
}

TEST_F(AirInfiltrationTest, withoutAnAirBalance_theConditionIsIgnored) {
  settings = moistSettings();
  blow(GUST);
  EXPECT_EQ(heat(VELMORA::HF_SUM), 0.0);
}

TEST_F(AirInfiltrationTest, conditionOutOfItsWindow_doesNotAct) {
  attachAll();
  condition.endTime.setBaseValue("END_TIME", 999.0, TKL::Unit());
  blow(GUST);
  EXPECT_EQ(heat(VELMORA::HF_SUM), 0.0);
}

}  // namespace VELMORA_SOLVER
