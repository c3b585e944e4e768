#include <gtest/gtest.h>

#include <cmath>

#include "solver/MoistSurface.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

const char* const VAPOUR_TAG = "[VelmoraCvodeSolver::boundaryFluxVapourDiffusion]";
constexpr double OUTER_PV = 1500.0;                                       // [Pa]
constexpr double BETA = 2e-8;                                             // [s/m]
constexpr double INWARD = (OUTER_PV - SURFACE_PV) * BETA * SURFACE_AREA;  // [kg/s]
constexpr double INWARD_ENTHALPY = (2050.0 * CLIMATE_T + 3080000.0) * INWARD;

/// Vapour diffusion between an element and air of 295 K and 1500 Pa.
class BoundaryVapourTest : public MoistSurface {
 protected:
  BoundaryVapourTest() {
    condition.condition = VelBoundaryCond::C_VAPDIFF;
    condition.kind = VelBoundaryCond::K_EXCHANGE;
    set(VelBoundaryCond::P_EXCOEFF, BETA);
    attach(VelClimateCond::C_TEMPER, CLIMATE_T);
    attach(VelClimateCond::C_VAPPRESS, OUTER_PV);
  }
  double vapour() const { return moisture(VELMORA::MF_VAPOUR_DIFFUSION); }
  double enthalpy() const { return heat(VELMORA::HF_VAPOUR_DIFFUSION); }
  void inWind(double velocity, double slope) {
    condition.kind = VelBoundaryCond::K_EXCHANGE_VEL;
    attach(VelClimateCond::C_WINDVEL, velocity);
    set(VelBoundaryCond::P_EXCH_SLOPE, slope);
  }
  TKL::Thrown failure() {
    return TKL::thrownBy([&] { calculate(); });
  }
  TKL::Thrown missing(const std::string& quantity) {
    return {"Error in boundary condition 'Weather' with type 'VAPDIFF'.\nClimate condition of type '" +
                quantity + "' needs to be specified!",
            VAPOUR_TAG};
  }
};

void expectFlow(double actual, double expected) {
  EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
}

}  // namespace

TEST_F(BoundaryVapourTest, inflow_isPositiveAtLeftAndTopAndNegativeAtRightAndBottom) {
  for (const auto location : {LEFT, TOP}) {
    calculate(location);
    expectFlow(vapour(), INWARD);
    expectFlow(enthalpy(), INWARD_ENTHALPY);
  }
  for (const auto location : {RIGHT, BOTTOM}) {
    calculate(location);
    expectFlow(vapour(), -INWARD);
    expectFlow(enthalpy(), -INWARD_ENTHALPY);
  }
}

TEST_F(BoundaryVapourTest, sums_areThoseOfTheOnlyContribution) {
  calculate();
  EXPECT_EQ(moisture(VELMORA::MF_SUM), vapour());
  EXPECT_EQ(heat(VELMORA::HF_SUM), enthalpy());
}

TEST_F(BoundaryVapourTest, outflow_carriesTheEnthalpyOfTheElement) {
  attach(VelClimateCond::C_VAPPRESS, 300.0);
  calculate();
  expectFlow(vapour(), (300.0 - SURFACE_PV) * BETA * SURFACE_AREA);
  expectFlow(enthalpy(), (2050.0 * SURFACE_T + 3080000.0) * vapour());
}

TEST_F(BoundaryVapourTest, humidity_givesThePressureWithTheTemperatureOfTheAir) {
  detach(VelClimateCond::C_VAPPRESS);
  attach(VelClimateCond::C_RELHUM, 0.5);
  calculate();
  const double pressure = 0.5 * 288.68 * std::pow(1.098 + (CLIMATE_T - 273.15) / 100.0, 8.02);
  expectFlow(vapour(), (pressure - SURFACE_PV) * BETA * SURFACE_AREA);
}

TEST_F(BoundaryVapourTest, coating_addsItsResistance) {
  set(VelBoundaryCond::P_SD_VALUE, 0.2);
  calculate();
  const double air = 2.662e-05 / (461.89 * 293.15);  // [s]
  EXPECT_NEAR(vapour(), (OUTER_PV - SURFACE_PV) * SURFACE_AREA / (0.2 / air + 1.0 / BETA), 1e-12 * INWARD);
}

TEST_F(BoundaryVapourTest, wind_raisesTheCoefficientInProportion) {
  inWind(4.0, 3e-9);
  calculate();
  expectFlow(vapour(), INWARD / BETA * (BETA + 3e-9 * 4.0));
  set(VelBoundaryCond::P_EXCH_EXP, 1.0);
  calculate();
  expectFlow(vapour(), INWARD / BETA * (BETA + 3e-9 * 4.0));
}

TEST_F(BoundaryVapourTest, wind_raisesTheCoefficientByAPower) {
  inWind(4.0, 3e-9);
  set(VelBoundaryCond::P_EXCH_EXP, 0.5);
  calculate();
  expectFlow(vapour(), INWARD / BETA * (BETA + 3e-9 * 2.0));
}

TEST_F(BoundaryVapourTest, exchangeWithoutWind_doesNotReadTheSlope) {
  set(VelBoundaryCond::P_EXCH_SLOPE, -1.0);
  calculate();
  expectFlow(vapour(), INWARD);
}

TEST_F(BoundaryVapourTest, slopeZero_leavesTheCoefficientOfStillAir) {
  inWind(4.0, 0.0);
  calculate();
  expectFlow(vapour(), INWARD);
}

TEST_F(BoundaryVapourTest, negativeWind_isToldAsClippedAndTakenAsItIs) {
  inWind(-2.0, 3e-9);
  calculate();
  expectFlow(vapour(), INWARD / BETA * (BETA - 6e-9));
  EXPECT_TRUE(capture.has("Wind velocity < 0 m/s. Value is clipped to 0.", TKL::MSG_WARNING, VAPOUR_TAG, 3));
}

TEST_F(BoundaryVapourTest, noWind_isNoCauseForAMessage) {
  inWind(0.0, 3e-9);
  calculate();
  EXPECT_TRUE(capture.messages.empty());
}

TEST_F(BoundaryVapourTest, negativeSlope_isRefused) {
  inWind(4.0, -3e-9);
  EXPECT_EQ(failure(), (TKL::Thrown{"Invalid beta slope (=-3e-09) for vapor diffusion boundary condition.",
                                    VAPOUR_TAG}));
}

TEST_F(BoundaryVapourTest, coefficientThatIsNotPositive_isRefused) {
  set(VelBoundaryCond::P_EXCOEFF, 0.0);
  EXPECT_EQ(failure(),
            (TKL::Thrown{"Invalid beta value (=0) for vapor diffusion boundary condition.", VAPOUR_TAG}));
  set(VelBoundaryCond::P_EXCOEFF, -1.5);
  inWind(4.0, 3e-9);
  EXPECT_EQ(failure(),
            (TKL::Thrown{"Invalid beta value (=-1.5) for vapor diffusion boundary condition.", VAPOUR_TAG}));
}

TEST_F(BoundaryVapourTest, otherKinds_areRefused) {
  for (const auto kind :
       {VelBoundaryCond::K_SURFVAL, VelBoundaryCond::K_IMPFLUX, VelBoundaryCond::K_HYDROSTATIC}) {
    condition.kind = kind;
    EXPECT_EQ(failure(), (TKL::Thrown{"Invalid kind type for vapour diffusion boundary condition 'Weather'.",
                                      VAPOUR_TAG}));
  }
}

TEST_F(BoundaryVapourTest, pressureAndHumidityTogether_areRefused) {
  attach(VelClimateCond::C_RELHUM, 0.5);
  EXPECT_EQ(failure(), (TKL::Thrown{"Vapor pressure and relative humidity simultaneously assigned in "
                                    "boundary condition 'Weather'.",
                                    VAPOUR_TAG}));
}

TEST_F(BoundaryVapourTest, neitherPressureNorHumidity_asksForHumidity) {
  detach(VelClimateCond::C_VAPPRESS);
  EXPECT_EQ(failure(), missing("RELHUM"));
}

TEST_F(BoundaryVapourTest, temperature_isNeededWithAPressureAsWell) {
  detach(VelClimateCond::C_TEMPER);
  EXPECT_EQ(failure(), missing("TEMPER"));
}

TEST_F(BoundaryVapourTest, windVelocity_isNeededWhateverTheSlope) {
  inWind(1.0, 0.0);
  detach(VelClimateCond::C_WINDVEL);
  EXPECT_EQ(failure(), missing("WINDVEL"));
}

TEST_F(BoundaryVapourTest, vapourTightSurface_needsNothingAndPassesNothing) {
  const MM::Material tight = moistMaterial(moistText("VAPOR_TIGHT"));
  useMaterial(tight);
  detach(VelClimateCond::C_TEMPER);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_EQ(enthalpy(), 0.0);
}

TEST_F(BoundaryVapourTest, almostFullElement_takesHalf) {
  s.mw = {200.0 - 0.04};
  for (const auto location : {LEFT, RIGHT, TOP, BOTTOM}) {
    calculate(location);
    EXPECT_NEAR(std::fabs(vapour()), 0.5 * INWARD, 1e-9 * INWARD);
    EXPECT_NEAR(std::fabs(enthalpy()), 0.5 * INWARD_ENTHALPY, 1e-9 * INWARD_ENTHALPY);
    EXPECT_EQ(moisture(VELMORA::MF_SUM), vapour());
    EXPECT_EQ(heat(VELMORA::HF_SUM), enthalpy());
  }
}

TEST_F(BoundaryVapourTest, fullElement_dries) {
  s.mw = {200.0};
  attach(VelClimateCond::C_VAPPRESS, 300.0);
  for (const auto location : {LEFT, RIGHT, TOP, BOTTOM}) {
    calculate(location);
    EXPECT_NEAR(std::fabs(vapour()), 600.0 * BETA * SURFACE_AREA, 1e-12 * INWARD);
  }
}

TEST_F(BoundaryVapourTest, throttling_canBeSwitchedOff) {
  settings.preventOverfilling = false;
  s.mw = {200.0};
  calculate();
  expectFlow(vapour(), INWARD);
}

TEST_F(BoundaryVapourTest, heatAlone_ignoresVapour) {
  settings = moistSettings(BE_ENERGY);
  detach(VelClimateCond::C_TEMPER);
  calculate();
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_EQ(heat(VELMORA::HF_SUM), 0.0);
}

TEST_F(BoundaryVapourTest, moistureAlone_takesVapour) {
  settings = moistSettings(BE_MOISTURE);
  calculate();
  expectFlow(moisture(VELMORA::MF_SUM), INWARD);
}

TEST_F(BoundaryVapourTest, moistureAlone_ignoresHeatConduction) {
  settings = moistSettings(BE_MOISTURE);
  condition.condition = VelBoundaryCond::C_HEATCOND;
  calculate();
  EXPECT_EQ(heat(VELMORA::HF_CONDUCTION), 0.0);
}

TEST_F(BoundaryVapourTest, idleCondition_leavesAnEmptyRecord) {
  condition.endTime.set("END_TIME", 10.0, "s");
  calculate(LEFT, 5.0);
  expectFlow(vapour(), INWARD);
  calculate(LEFT, 11.0);
  EXPECT_EQ(vapour(), 0.0);
  EXPECT_EQ(enthalpy(), 0.0);
  EXPECT_EQ(moisture(VELMORA::MF_SUM), 0.0);
}

TEST_F(BoundaryVapourTest, calculation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  inWind(4.0, 3e-9);
  calculate();
  data.boundaryConds.clear();
  BoundaryFluxes fluxes(data, settings, arrays.traits, s, arrays.records);
  const std::size_t before = allocationCount();
  fluxes.calculate(1.0);
  EXPECT_EQ(allocationCount(), before);
  EXPECT_NE(vapour(), 0.0);
}

}  // namespace VELMORA_SOLVER
