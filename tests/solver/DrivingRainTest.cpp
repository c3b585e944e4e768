#include <gtest/gtest.h>

#include <cmath>

#include "solver/MoistSurface.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;
using VELMORA::VelWallData;

const char* const RAIN_TAG = "[VelmoraCvodeSolver::boundaryFluxRain]";
constexpr double RAIN_PI = 3.141592653589793;
constexpr double RAIN_C_W = 4180.0;          // [J/kgK]
constexpr double LIGHT_RAIN = 1e-5;          // [kg/m2s] less than the surface can take in
constexpr double HEAVY_RAIN = 1e-3;          // [kg/m2s] more than that
constexpr double RAIN_AIR_T = 283.15;        // [K]
constexpr double RAIN_RH = 0.8;              // [-]
constexpr double SNOW_T = 271.15;            // [K]
constexpr double SMALLEST_RAIN = 1e-7;       // [kg/m2s]
constexpr double HORIZONTAL_RAIN = 3.0e-4;   // [kg/m2s] about 1 mm/h
constexpr double RAIN_WIND = 4.0;            // [m/s]
constexpr double WEST_WALL = 1.5 * RAIN_PI;  // [Rad]
constexpr double RAIN_TIME = 1000.0;         // [s]

/// What the surface of the bench takes in at most: the potential over half an element [kg/m2s].
const double CAPACITY = (4e-6 - 4e-6 * SURFACE_THETA / MOIST_EFF) * SURFACE_G * 2.0;
const double RAIN_T = std::pow(RAIN_RH, 0.1247) * (RAIN_AIR_T + 109.8) - 109.8;  // [K]

/// Rain of a given strength normal to the surface; nothing is lost at the surface.
class DrivingRainTest : public MoistSurface {
 protected:
  DrivingRainTest() {
    condition.condition = VelBoundaryCond::C_RAIN;
    condition.kind = VelBoundaryCond::K_IMPFLUX;
    set(VelBoundaryCond::P_MINRTEMP, SNOW_T);
    set(VelBoundaryCond::P_MINRFLUX, SMALLEST_RAIN);
    set(VelBoundaryCond::P_EXPCOEFF, 1.0);
    attach(VelClimateCond::C_TEMPER, RAIN_AIR_T);
    attach(VelClimateCond::C_RELHUM, RAIN_RH);
    attach(VelClimateCond::C_NORRAIN, LIGHT_RAIN);
  }
  /// Rain normal to the surface after a calculation [kg/s], and the part that runs off.
  double fallen() const { return arrays.records.additionalFlux[at_][VELMORA::AF_RAIN]; }
  double runOff() const { return arrays.records.additionalFlux[at_][VELMORA::AF_RUNOFF]; }
  double absorbed() const { return moisture(VELMORA::MF_LIQUID); }
  void rainAt(location_t location) {
    at_ = location;
    calculate(location, RAIN_TIME);
  }
  /// Rain that reaches the surface [kg/m2s].
  double density() {
    rainAt(LEFT);
    return fallen() / SURFACE_AREA;
  }
  void imposeRain(double r) { attach(VelClimateCond::C_NORRAIN, r); }
  TKL::Thrown failure() {
    return TKL::thrownBy([&] { calculate(); });
  }
  TKL::Thrown missing(const std::string& what) {
    return {"Error in boundary condition 'Weather' with type 'RAIN'.\n" + what + " needs to be specified!",
            RAIN_TAG};
  }
  static std::string climateOf(const std::string& quantity) {
    return "Climate condition of type '" + quantity + "'";
  }
  /// Rain and a water contact on the left side, in either order.
  void withWaterContact(bool rainLast) {
    VelBoundaryCond contact;
    VelClimateCond temperature, flux;
    contact.condition = VelBoundaryCond::C_WATCONTC;
    contact.kind = VelBoundaryCond::K_IMPFLUX;
    temperature.currentValue = CLIMATE_T;
    flux.currentValue = 2e-4;
    contact.climate[VelClimateCond::C_TEMPER] = &temperature;
    contact.climate[VelClimateCond::C_WATFLUXDENS] = &flux;
    data.sides[LEFT].boundaryConds.assign({&contact, &condition});
    if (!rainLast) data.sides[LEFT].boundaryConds.assign({&condition, &contact});
    BoundaryFluxes(data, settings, arrays.traits, s, arrays.records).calculate(RAIN_TIME);
    data.sides[LEFT].boundaryConds.clear();
  }

  static void expectRain(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
  }
  void expectDry() const {
    EXPECT_EQ(fallen(), 0.0);
    EXPECT_EQ(runOff(), 0.0);
    EXPECT_EQ(absorbed(), 0.0);
    EXPECT_EQ(moisture(VELMORA::MF_SUM), 0.0);
    EXPECT_EQ(heat(VELMORA::HF_SUM), 0.0);
  }

 private:
  std::size_t at_ = LEFT;
};

/// Rain by the strength on the horizontal plane and the wind, on a wall to the west in west wind.
class StdRain : public DrivingRainTest {
 protected:
  StdRain() {
    condition.kind = VelBoundaryCond::K_STDRAIN;
    wind(RAIN_WIND, WEST_WALL);
    attach(VelClimateCond::C_HORRAIN, HORIZONTAL_RAIN);
    set(VelBoundaryCond::P_MINRFLUX, 0.0);
    turn(0.5 * RAIN_PI, WEST_WALL);
    condition.wallData = &wall;
  }
  void wind(double velocity, double direction) {
    attach(VelClimateCond::C_WINDVEL, velocity);
    attach(VelClimateCond::C_WINDDIR, direction);
  }
  void turn(double inclination, double orientation) {
    wall.para[VelWallData::P_INCLINATION].setBaseValue("INCLINATION", inclination, TKL::Unit());
    wall.para[VelWallData::P_ORIENTATION].setBaseValue("ORIENTATION", orientation, TKL::Unit());
  }
  /// Rain on a wall that faces the wind but for an angle.
  static double expected(double rain, double velocity, double angle) {
    const double mmPerHour = 3600.0 * rain;
    const double slant = std::sqrt(1.0 + 1142.0 * std::sqrt(mmPerHour) / std::pow(velocity, 4.0));
    return rain * std::cos(angle) / slant * std::exp(-12.0 / (5.0 * velocity * std::pow(mmPerHour, 0.25)));
  }

  VelWallData wall;
};

}  // namespace

TEST_F(DrivingRainTest, lightRain_isAbsorbedAsAWhole) {
  rainAt(LEFT);
  expectRain(absorbed(), LIGHT_RAIN * SURFACE_AREA);
  expectRain(fallen(), LIGHT_RAIN * SURFACE_AREA);
  EXPECT_EQ(runOff(), 0.0);
  expectRain(heat(VELMORA::HF_LIQUID), LIGHT_RAIN * SURFACE_AREA * RAIN_C_W * RAIN_T);
  EXPECT_NEAR(heat(VELMORA::HF_RUNOFF), 0.0, 1e-12);
}

TEST_F(DrivingRainTest, heavyRain_isAbsorbedUpToTheCapacityAndRunsOff) {
  imposeRain(HEAVY_RAIN);
  rainAt(LEFT);
  EXPECT_NEAR(absorbed(), CAPACITY * SURFACE_AREA, 1e-10 * CAPACITY);
  EXPECT_NEAR(runOff(), (HEAVY_RAIN - CAPACITY) * SURFACE_AREA, 1e-10 * HEAVY_RAIN);
  expectRain(fallen(), HEAVY_RAIN * SURFACE_AREA);
}

TEST_F(DrivingRainTest, rainThatRunsOff_leavesWithTheTemperatureOfTheSurface) {
  imposeRain(HEAVY_RAIN);
  rainAt(LEFT);
  expectRain(heat(VELMORA::HF_LIQUID), absorbed() * RAIN_C_W * RAIN_T);
  const double balance = runOff() * RAIN_C_W * (RAIN_T - SURFACE_T);
  EXPECT_NEAR(heat(VELMORA::HF_RUNOFF), balance, 1e-9 * std::fabs(balance));
}

TEST_F(DrivingRainTest, rainTemperature_fallsWithTheHumidityOfTheAir) {
  ASSERT_NEAR(RAIN_T, 272.4, 0.05);
  attach(VelClimateCond::C_RELHUM, 1.0);
  rainAt(LEFT);
  expectRain(heat(VELMORA::HF_LIQUID), absorbed() * RAIN_C_W * RAIN_AIR_T);
}

TEST_F(DrivingRainTest, inflow_isSignedByTheSideAndTheRecordsOfRainAreNot) {
  imposeRain(HEAVY_RAIN);
  rainAt(LEFT);
  const double liquid = absorbed(), enthalpy = heat(VELMORA::HF_LIQUID), off = heat(VELMORA::HF_RUNOFF);
  ASSERT_GT(liquid, 0.0);
  for (const auto location : {RIGHT, BOTTOM}) {
    rainAt(location);
    EXPECT_EQ(absorbed(), -liquid);
    EXPECT_EQ(heat(VELMORA::HF_LIQUID), -enthalpy);
    EXPECT_EQ(heat(VELMORA::HF_RUNOFF), -off);
    expectRain(fallen(), HEAVY_RAIN * SURFACE_AREA);
    expectRain(runOff(), HEAVY_RAIN * SURFACE_AREA - liquid);
  }
}

TEST_F(DrivingRainTest, sums_holdBothPartsOfTheEnthalpy) {
  imposeRain(HEAVY_RAIN);
  rainAt(LEFT);
  EXPECT_EQ(moisture(VELMORA::MF_SUM), absorbed());
  EXPECT_EQ(heat(VELMORA::HF_SUM), heat(VELMORA::HF_LIQUID) + heat(VELMORA::HF_RUNOFF));
}

TEST_F(DrivingRainTest, precipitationAtTheLimitOfTemperature_isSnow) {
  attach(VelClimateCond::C_TEMPER, SNOW_T);
  rainAt(LEFT);
  expectDry();
  attach(VelClimateCond::C_TEMPER, SNOW_T - 5.0);
  rainAt(LEFT);
  expectDry();
}

TEST_F(DrivingRainTest, precipitationAboveTheLimitOfTemperature_isRain) {
  attach(VelClimateCond::C_TEMPER, SNOW_T + 1e-6);
  expectRain(density(), LIGHT_RAIN);
}

TEST_F(DrivingRainTest, snow_needsNoOtherClimate) {
  attach(VelClimateCond::C_TEMPER, SNOW_T);
  detach(VelClimateCond::C_NORRAIN);
  detach(VelClimateCond::C_RELHUM);
  condition.kind = VelBoundaryCond::K_EXCHANGE;
  rainAt(LEFT);
  expectDry();
}

TEST_F(DrivingRainTest, rainUpToTheSmallestFlux_isDropped) {
  for (const double r : {0.5 * SMALLEST_RAIN, SMALLEST_RAIN}) {
    imposeRain(r);
    rainAt(LEFT);
    expectDry();
  }
  imposeRain(1.001 * SMALLEST_RAIN);
  expectRain(density(), 1.001 * SMALLEST_RAIN);
}

TEST_F(DrivingRainTest, smallestFlux_appliesBeforeTheExposure) {
  set(VelBoundaryCond::P_EXPCOEFF, 0.01);
  imposeRain(2.0 * SMALLEST_RAIN);
  expectRain(density(), 0.02 * SMALLEST_RAIN);
  set(VelBoundaryCond::P_EXPCOEFF, 10.0);
  imposeRain(0.5 * SMALLEST_RAIN);
  rainAt(LEFT);
  expectDry();
}

TEST_F(DrivingRainTest, negativeRain_isDroppedWithoutALimitToo) {
  set(VelBoundaryCond::P_MINRFLUX, -1.0);
  for (const double r : {-LIGHT_RAIN, 0.0}) {
    imposeRain(r);
    rainAt(LEFT);
    expectDry();
  }
}

TEST_F(DrivingRainTest, halfTheExposure_halvesTheRain) {
  rainAt(LEFT);
  const double rain = fallen(), liquid = absorbed(), enthalpy = heat(VELMORA::HF_SUM);
  set(VelBoundaryCond::P_EXPCOEFF, 0.5);
  rainAt(LEFT);
  expectRain(fallen(), 0.5 * rain);
  expectRain(absorbed(), 0.5 * liquid);
  expectRain(heat(VELMORA::HF_SUM), 0.5 * enthalpy);
}

TEST_F(DrivingRainTest, halfTheExposure_halvesTheSumOfAbsorbedAndRunOff) {
  imposeRain(HEAVY_RAIN);
  set(VelBoundaryCond::P_EXPCOEFF, 0.5);
  rainAt(LEFT);
  ASSERT_GT(runOff(), 0.0);
  expectRain(absorbed() + runOff(), 0.5 * HEAVY_RAIN * SURFACE_AREA);
  EXPECT_NEAR(absorbed(), CAPACITY * SURFACE_AREA, 1e-10 * CAPACITY) << "the surface takes in as much";
}

TEST_F(DrivingRainTest, capacity_isThatOfTheContentAndNotOfThePotentialWithGravity) {
  s.Kirchhoff = {4e-6};
  imposeRain(HEAVY_RAIN);
  rainAt(LEFT);
  EXPECT_NEAR(absorbed(), CAPACITY * SURFACE_AREA, 1e-10 * CAPACITY);
}

TEST_F(DrivingRainTest, surfaceAtSaturation_absorbsNothing) {
  for (const double content : {MOIST_EFF, MOIST_EFF + 0.1}) {
    s.Theta = {content};
    rainAt(LEFT);
    EXPECT_EQ(absorbed(), 0.0);
    expectRain(runOff(), LIGHT_RAIN * SURFACE_AREA);
  }
}

TEST_F(DrivingRainTest, withoutPotential_meanConductivityAndSuctionSetTheCapacity) {
  settings.useKirchhoff = false;
  s.pCTotal = {-400.0};
  const double mean = 0.5 * (std::pow(10.0, -20.0 + 12.0 * SURFACE_THETA / MOIST_EFF) + 1e-8);
  const double capacity = mean * 400.0 * SURFACE_G / 0.5;
  imposeRain(HEAVY_RAIN);
  rainAt(LEFT);
  EXPECT_NEAR(absorbed(), capacity * SURFACE_AREA, 1e-10 * capacity);
  EXPECT_NEAR(runOff(), (HEAVY_RAIN - capacity) * SURFACE_AREA, 1e-10 * HEAVY_RAIN);
}

TEST_F(DrivingRainTest, withoutPotential_pressedWaterIsNotDriven) {
  settings.useKirchhoff = false;
  s.pCTotal = {400.0};
  rainAt(LEFT);
  EXPECT_EQ(absorbed(), 0.0);
  expectRain(runOff(), LIGHT_RAIN * SURFACE_AREA);
}

TEST_F(DrivingRainTest, withoutPotential_diffusivityIsNotEnough) {
  settings.useKirchhoff = false;
  const MM::Material other = moistMaterial(moistText("", MOIST_STORAGE, MOIST_DL));
  useMaterial(other);
  EXPECT_EQ(failure(), (TKL::Thrown{"Kl(Thetal) function not available!", RAIN_TAG}));
}

TEST_F(DrivingRainTest, waterTightSurface_letsAllRunOff) {
  const MM::Material tight = moistMaterial(moistText("WATER_TIGHT", MOIST_STORAGE, ""));
  const MM::Material air = airMaterial();
  for (const MM::Material* material : {&tight, &air})
    for (const bool useKirchhoff : {true, false}) {
      settings.useKirchhoff = useKirchhoff;
      useMaterial(*material);
      rainAt(LEFT);
      EXPECT_EQ(absorbed(), 0.0);
      EXPECT_EQ(heat(VELMORA::HF_LIQUID), 0.0);
      expectRain(runOff(), LIGHT_RAIN * SURFACE_AREA);
      const double balance = runOff() * RAIN_C_W * (RAIN_T - SURFACE_T);
      EXPECT_NEAR(heat(VELMORA::HF_RUNOFF), balance, 1e-9 * std::fabs(balance));
    }
}

TEST_F(DrivingRainTest, dryWeather_wipesTheWaterOfAnEarlierContact) {
  attach(VelClimateCond::C_TEMPER, SNOW_T);
  withWaterContact(true);
  expectDry();
}

TEST_F(DrivingRainTest, rain_replacesTheWaterOfAnEarlierContact) {
  withWaterContact(true);
  expectRain(absorbed(), LIGHT_RAIN * SURFACE_AREA);
}

TEST_F(DrivingRainTest, laterContact_replacesTheRain) {
  attach(VelClimateCond::C_TEMPER, SNOW_T);
  withWaterContact(false);
  expectRain(absorbed(), 2e-4 * SURFACE_AREA);
  expectRain(heat(VELMORA::HF_LIQUID), 2e-4 * SURFACE_AREA * RAIN_C_W * CLIMATE_T);
}

TEST_F(DrivingRainTest, runWithoutMoisture_ignoresTheRain) {
  settings = moistSettings(BE_ENERGY);
  detach(VelClimateCond::C_TEMPER);
  rainAt(LEFT);
  expectDry();
}

TEST_F(DrivingRainTest, climate_isAskedFor) {
  detach(VelClimateCond::C_RELHUM);
  EXPECT_EQ(failure(), missing(climateOf("RELHUM")));
  detach(VelClimateCond::C_NORRAIN);
  EXPECT_EQ(failure(), missing(climateOf("NORRAIN")));
  detach(VelClimateCond::C_TEMPER);
  EXPECT_EQ(failure(), missing(climateOf("TEMPER")));
}

TEST_F(DrivingRainTest, humidity_isNeededOnlyInRain) {
  imposeRain(0.0);
  detach(VelClimateCond::C_RELHUM);
  rainAt(LEFT);
  expectDry();
}

TEST_F(DrivingRainTest, otherKinds_areRefused) {
  for (const auto kind : {VelBoundaryCond::K_EXCHANGE, VelBoundaryCond::K_SURFVAL, VelBoundaryCond::NUM_K}) {
    condition.kind = kind;
    EXPECT_EQ(failure(), (TKL::Thrown{"Invalid kind type for wind driven rain boundary condition 'Weather'.",
                                      RAIN_TAG}));
  }
}

TEST_F(StdRain, wallInTheWind_getsTheShareThatTheWindDrives) {
  expectRain(density(), expected(HORIZONTAL_RAIN, RAIN_WIND, 0.0));
}

TEST_F(StdRain, strongerWind_drivesMoreOfTheRain) {
  double last = 0.0;
  for (const double velocity : {1.0, 2.0, 4.0, 8.0, 16.0}) {
    wind(velocity, WEST_WALL);
    const double now = density();
    expectRain(now, expected(HORIZONTAL_RAIN, velocity, 0.0));
    EXPECT_GT(now, last);
    EXPECT_LT(now, HORIZONTAL_RAIN);
    last = now;
  }
}

TEST_F(StdRain, windAtAnAngle_givesItsCosine) {
  for (const double angle : {0.25 * RAIN_PI, -0.25 * RAIN_PI, 0.49 * RAIN_PI}) {
    wind(RAIN_WIND, WEST_WALL + angle);
    EXPECT_NEAR(density(), expected(HORIZONTAL_RAIN, RAIN_WIND, angle), 1e-12 * HORIZONTAL_RAIN);
  }
}

TEST_F(StdRain, windFromTheOtherSideOfNorth_isNear) {
  turn(0.5 * RAIN_PI, 350.0 * RAIN_PI / 180.0);
  wind(RAIN_WIND, 10.0 * RAIN_PI / 180.0);
  const double angle = 20.0 * RAIN_PI / 180.0;
  EXPECT_NEAR(density(), expected(HORIZONTAL_RAIN, RAIN_WIND, angle), 1e-12 * HORIZONTAL_RAIN);
  turn(0.5 * RAIN_PI, 10.0 * RAIN_PI / 180.0);
  wind(RAIN_WIND, 350.0 * RAIN_PI / 180.0);
  EXPECT_NEAR(density(), expected(HORIZONTAL_RAIN, RAIN_WIND, angle), 1e-12 * HORIZONTAL_RAIN);
}

TEST_F(StdRain, windFromBack_givesNoRain) {
  for (const double angle : {RAIN_PI / 2.0, 0.75 * RAIN_PI, RAIN_PI, 1.25 * RAIN_PI}) {
    wind(RAIN_WIND, WEST_WALL - angle);
    rainAt(LEFT);
    expectDry();
  }
}

TEST_F(StdRain, calm_givesNoRain) {
  for (const double velocity : {-1.0, 0.0, 1e-10}) {
    wind(velocity, WEST_WALL);
    rainAt(LEFT);
    expectDry();
  }
}

TEST_F(StdRain, dryWeather_givesNoRain) {
  for (const double rain : {-1e-4, 0.0, 1e-10}) {
    attach(VelClimateCond::C_HORRAIN, rain);
    rainAt(LEFT);
    expectDry();
  }
}

TEST_F(StdRain, almostCalmAir_givesNoRain) {
  wind(0.0033, WEST_WALL);  // the exponent is -713
  rainAt(LEFT);
  expectDry();
}

TEST_F(StdRain, surfaceFlatterThanHalfARightAngle_getsTheHorizontalRainInAnyWind) {
  for (const double inclination : {0.0, 0.5, std::nextafter(0.7853981633974483, 0.0)}) {
    turn(inclination, WEST_WALL);
    for (const double velocity : {0.0, RAIN_WIND}) {
      wind(velocity, WEST_WALL + RAIN_PI);
      expectRain(density(), HORIZONTAL_RAIN);
    }
  }
}

TEST_F(StdRain, surfaceOfHalfARightAngle_isAWall) {
  turn(0.7853981633974483, WEST_WALL);
  expectRain(density(), expected(HORIZONTAL_RAIN, RAIN_WIND, 0.0));
}

TEST_F(StdRain, exposureAndLimit_applyToTheRainOnTheWall) {
  const double onWall = expected(HORIZONTAL_RAIN, RAIN_WIND, 0.0);
  set(VelBoundaryCond::P_EXPCOEFF, 0.5);
  set(VelBoundaryCond::P_MINRFLUX, 0.9 * onWall);
  expectRain(density(), 0.5 * onWall);
  set(VelBoundaryCond::P_MINRFLUX, 1.1 * onWall);
  rainAt(LEFT);
  expectDry();
}

TEST_F(StdRain, climateAndWall_areAskedFor) {
  condition.wallData = nullptr;
  EXPECT_EQ(failure(), missing("Wall definition"));
  detach(VelClimateCond::C_WINDDIR);
  EXPECT_EQ(failure(), missing(climateOf("WINDDIR")));
  detach(VelClimateCond::C_WINDVEL);
  EXPECT_EQ(failure(), missing(climateOf("WINDVEL")));
  detach(VelClimateCond::C_HORRAIN);
  EXPECT_EQ(failure(), missing(climateOf("HORRAIN")));
}

}  // namespace VELMORA_SOLVER
