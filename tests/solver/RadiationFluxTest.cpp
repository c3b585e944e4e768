#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

#include "solver/MoistSurface.h"
#include "solver/SolarGeometry.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;
using VELMORA::VelWallData;

const char* const SHORT_WAVE_TAG = "[VelmoraCvodeSolver::boundaryFluxShWRad]";
const char* const LONG_WAVE_TAG = "[VelmoraCvodeSolver::boundaryFluxLoWRad]";
const char* const GLOBAL_TAG = "[VelmoraCvodeSolver::calculateGlobalRad]";
constexpr double RAY_PI = 3.141592653589793;
constexpr double RAY_DEGREE = RAY_PI / 180.0;
constexpr double RAY_LATITUDE = 51.0;            // [Deg]
constexpr double SOLSTICE_NOON = 172.5 * 86400;  // [s] declination of 23.5 degrees
constexpr double DIRECT = 400.0;                 // [W/m2] on a horizontal plane
constexpr double DIFFUSE = 150.0;                // [W/m2]
constexpr double ABSORPTION = 0.6;
constexpr double REFLECTION = 0.2;
constexpr double EMISSIVITY = 0.9;
constexpr double GROUND_EMISSIVITY = 0.8;
constexpr double STEFAN_BOLTZMANN = 5.67e-8;  // [W/m2K4]

double black(double T) {
  return STEFAN_BOLTZMANN * std::pow(T, 4.0);
}

/// Text of a plain runtime error that a call throws, empty for anything else.
template <typename Call>
std::string plainErrorOf(Call call) {
  try {
    call();
  } catch (const TKL::Exception&) {
    return "";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "";
}

/// A surface with a vertical wall to the south.
class RadiationBench : public MoistSurface {
 protected:
  RadiationBench() {
    place(VelWallData::P_INCLINATION, 0.5 * RAY_PI);
    place(VelWallData::P_ORIENTATION, RAY_PI);
    place(VelWallData::P_LATITUDE, RAY_LATITUDE * RAY_DEGREE);
    condition.wallData = &wall;
  }
  void place(VelWallData::para_t index, double value) {
    wall.para[index].setBaseValue("X", value, TKL::Unit());
  }
  TKL::Thrown failure() {
    return TKL::thrownBy([&] { calculate(); });
  }
  std::string missing(const std::string& type, const std::string& what) {
    return "Error in boundary condition 'Weather' with type '" + type + "'.\n" + what +
           " needs to be specified!";
  }
  static std::string climateOf(const std::string& quantity) {
    return "Climate condition of type '" + quantity + "'";
  }
  static void expectFlux(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-9 * std::fabs(expected));
  }

  VelWallData wall;
};

class ShortWave : public RadiationBench {
 protected:
  ShortWave() {
    condition.condition = VelBoundaryCond::C_SHWRAD;
    use(VelBoundaryCond::K_SUNRADM);
    set(VelBoundaryCond::P_SURABSOR, 1.0);
    attach(VelClimateCond::C_DIRRAD, DIRECT);
    attach(VelClimateCond::C_DIFRAD, DIFFUSE);
  }
  void use(VelBoundaryCond::kind_t kind) { condition.kind = kind; }
  void detachAll() {
    condition.climate.fill(nullptr);
    condition.wallData = nullptr;
  }
  /// Radiation into the surface [W/m2] at a time [s].
  double gain(double t = SOLSTICE_NOON) {
    calculate(LEFT, t);
    return heat(VELMORA::HF_INFILTRATION_SHORTWAVE) / SURFACE_AREA;
  }
};

/// Gains of a solar collector.
class SolarCollector : public ShortWave {
 protected:
  SolarCollector() {
    use(VelBoundaryCond::K_SOLARCOLL);
    place(VelWallData::P_INCLINATION, 0.0);
    set(VelBoundaryCond::P_SURABSOR, 0.0);
    set(VelBoundaryCond::P_SOLAR_ETA0, 0.75);
    set(VelBoundaryCond::P_SOLAR_K0, 3.5);
    set(VelBoundaryCond::P_SOLAR_K1, 0.015);
    attach(VelClimateCond::C_TEMPER, SURFACE_T - 20.0);
  }
};

class LongWave : public RadiationBench {
 protected:
  LongWave() {
    condition.condition = VelBoundaryCond::C_LOWRAD;
    condition.kind = VelBoundaryCond::K_LRADCOMP;
    set(VelBoundaryCond::P_SUREMISS, EMISSIVITY);
    set(VelBoundaryCond::P_GRDEMISS, GROUND_EMISSIVITY);
    attach(VelClimateCond::C_SKYEMISS, 280.0);
    attach(VelClimateCond::C_GRNDEMISS, 350.0);
    attach(VelClimateCond::C_SKYTEMP, 265.0);
    attach(VelClimateCond::C_GRNDTEMP, 280.0);
    attach(VelClimateCond::C_TEMPER, 283.0);
    attach(VelClimateCond::C_RELHUM, 0.7);
    attach(VelClimateCond::C_CLOUDCOV, 0.5);
    attach(VelClimateCond::C_LOWRAD, -60.0);
  }
  double gain() {
    calculate();
    return heat(VELMORA::HF_LONGWAVE) / SURFACE_AREA;
  }
};

/// Emissivity of the exchange between two parallel planes, and the view of a wall to sky and ground.
const double EXCHANGE_EMISSIVITY = 1.0 / (1.0 / EMISSIVITY + 1.0 / GROUND_EMISSIVITY - 1.0);
constexpr double HALF_VIEW = 0.5;
const double SKY_LOSS = 280.0 - black(SURFACE_T);     // [W/m2]
const double GROUND_LOSS = 350.0 - black(SURFACE_T);  // [W/m2]

}  // namespace

TEST_F(ShortWave, imposedRadiation_isAbsorbedInPart) {
  use(VelBoundaryCond::K_IMPFLUX);
  set(VelBoundaryCond::P_SURABSOR, ABSORPTION);
  attach(VelClimateCond::C_SHWRAD, 300.0);
  condition.wallData = nullptr;
  expectFlux(gain(), ABSORPTION * 300.0);
}

TEST_F(ShortWave, inflow_isNegativeAtTheRightAndAtTheBottom) {
  const double inward = gain() * SURFACE_AREA;
  ASSERT_GT(inward, 0.0);
  for (const auto location : {RIGHT, BOTTOM}) {
    calculate(location, SOLSTICE_NOON);
    EXPECT_EQ(heat(VELMORA::HF_INFILTRATION_SHORTWAVE), -inward);
    EXPECT_EQ(heat(VELMORA::HF_SUM), -inward);
  }
}

TEST_F(ShortWave, sunOnAWallAtNoon_isTheDirectRadiationByTheTangentAndHalfTheDiffuse) {
  const double zenith = (RAY_LATITUDE - 23.5) * RAY_DEGREE;
  EXPECT_NEAR(gain(), DIRECT * std::tan(zenith) + 0.5 * DIFFUSE, 1e-3);
}

TEST_F(ShortWave, ground_reflectsAllThatFallsOnIt) {
  const double without = gain();
  set(VelBoundaryCond::P_GRDREFLE, REFLECTION);
  EXPECT_NEAR(gain() - without, REFLECTION * 0.5 * (DIRECT + DIFFUSE), 1e-9);
}

TEST_F(ShortWave, slope_seesSkyAndGroundByItsInclination) {
  constexpr double slope = 30.0 * RAY_DEGREE;
  place(VelWallData::P_INCLINATION, slope);
  set(VelBoundaryCond::P_GRDREFLE, REFLECTION);
  const double zenith = (RAY_LATITUDE - 23.5) * RAY_DEGREE;
  const double expected = DIRECT * std::cos(zenith - slope) / std::cos(zenith) +
                          DIFFUSE * (1.0 + std::cos(slope)) / 2.0 +
                          REFLECTION * (DIRECT + DIFFUSE) * (1.0 - std::cos(slope)) / 2.0;
  EXPECT_NEAR(gain(), expected, 1e-3);
}

TEST_F(ShortWave, night_leavesDiffuseAndReflectedRadiation) {
  set(VelBoundaryCond::P_GRDREFLE, REFLECTION);
  expectFlux(gain(172.0 * 86400.0), 0.5 * DIFFUSE + REFLECTION * 0.5 * (DIRECT + DIFFUSE));
}

TEST_F(ShortWave, absorption_scalesTheSun) {
  const double all = gain();
  set(VelBoundaryCond::P_SURABSOR, ABSORPTION);
  expectFlux(gain(), ABSORPTION * all);
}

TEST_F(ShortWave, horizontalSurface_getsTheSumAtAnyTimeAndNeedsNoPlace) {
  VelWallData flat;
  flat.para[VelWallData::P_INCLINATION].setBaseValue("INCLINATION", 0.0, TKL::Unit());
  condition.wallData = &flat;
  set(VelBoundaryCond::P_GRDREFLE, REFLECTION);
  for (const double t : {0.0, SOLSTICE_NOON}) EXPECT_EQ(gain(t), DIRECT + DIFFUSE);
}

TEST_F(ShortWave, start_isCountedFromTheStartOfTheYear) {
  const double noon = gain();
  settings.startTimeOffset = SOLSTICE_NOON - 3600.0;
  EXPECT_EQ(gain(3600.0), noon);
}

TEST_F(ShortWave, secondYear_isTheSameAsTheFirst) {
  const double noon = gain();
  EXPECT_NEAR(gain(SOLSTICE_NOON + 365.0 * 86400.0), noon, 1e-6);
}

TEST_F(ShortWave, longitudeOrZoneAlone_leaveTheClock) {
  const double noon = gain();
  place(VelWallData::P_LONGITUDE, 40.0 * RAY_DEGREE);
  EXPECT_EQ(gain(), noon);
  wall.para[VelWallData::P_LONGITUDE].clear();
  wall.para[VelWallData::P_TIMEZONE].set("TIMEZONE", 1.0, "h");
  EXPECT_EQ(gain(), noon);
}

TEST_F(ShortWave, longitudeAndZone_turnTheClockToTheSun) {
  place(VelWallData::P_LONGITUDE, 7.0 * RAY_DEGREE);
  const double ts = trueSolarTime(SOLSTICE_NOON, 7.0 * RAY_DEGREE, 3600.0);
  const double ratio = directRadiationRatio(0.5 * RAY_PI, RAY_PI, RAY_LATITUDE * RAY_DEGREE, dayOfYear(ts));
  for (const char* unit : {"h", "-"}) {
    wall.para[VelWallData::P_TIMEZONE].set("TIMEZONE", 1.0, unit);
    expectFlux(gain(), ratio * DIRECT + 0.5 * DIFFUSE);
  }
  const double zenith = (RAY_LATITUDE - 23.5) * RAY_DEGREE;
  EXPECT_LT(gain(), DIRECT * std::tan(zenith) + 0.5 * DIFFUSE - 1.0) << "the sun is half an hour late";
}

TEST_F(ShortWave, withoutAbsorption_needsNoClimate) {
  detachAll();
  set(VelBoundaryCond::P_SURABSOR, 0.0);
  for (const auto kind : {VelBoundaryCond::K_IMPFLUX, VelBoundaryCond::K_SUNRADM}) {
    use(kind);
    EXPECT_EQ(gain(), 0.0);
  }
}

TEST_F(ShortWave, withoutAbsorption_replacesAnEarlierCondition) {
  VelBoundaryCond shaded = condition;
  shaded.para[VelBoundaryCond::P_SURABSOR].setBaseValue("SURABSOR", 0.0, TKL::Unit());
  data.sides[LEFT].boundaryConds = {&condition, &shaded};
  BoundaryFluxes(data, settings, arrays.traits, s, arrays.records).calculate(SOLSTICE_NOON);
  EXPECT_EQ(arrays.records.heatFlux[LEFT][VELMORA::HF_SUM], 0.0);
}

TEST_F(ShortWave, climateAndWall_areAskedFor) {
  set(VelBoundaryCond::P_SURABSOR, ABSORPTION);
  condition.wallData = nullptr;
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", "Wall definition"), GLOBAL_TAG}));
  detach(VelClimateCond::C_DIFRAD);
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", climateOf("DIFRAD")), GLOBAL_TAG}));
  detach(VelClimateCond::C_DIRRAD);
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", climateOf("DIRRAD")), GLOBAL_TAG}));
  use(VelBoundaryCond::K_IMPFLUX);
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", climateOf("SHWRAD")), SHORT_WAVE_TAG}));
}

TEST_F(ShortWave, horizontalSurface_needsItsWallAllTheSame) {
  place(VelWallData::P_INCLINATION, 0.0);
  condition.wallData = nullptr;
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", "Wall definition"), GLOBAL_TAG}));
}

TEST_F(ShortWave, otherKinds_areRefusedWithAndWithoutAbsorption) {
  for (const double absorption : {0.0, ABSORPTION}) {
    set(VelBoundaryCond::P_SURABSOR, absorption);
    use(VelBoundaryCond::K_BOLTZMAN);
    EXPECT_EQ(plainErrorOf([&] { calculate(); }),
              "[VelmoraCvodeSolver::boundaryFluxShWRad]  Invalid kind type of the boundary condition "
              "'Weather'");
  }
}

TEST_F(ShortWave, runWithoutEnergy_ignoresTheSun) {
  settings = moistSettings(BE_MOISTURE);
  detachAll();
  EXPECT_EQ(gain(), 0.0);
}

TEST_F(SolarCollector, yield_isTheGainLessTheLossToTheAir) {
  const double loss = 3.5 * 20.0 + 0.015 * 20.0 * 20.0;
  expectFlux(gain(), 0.75 * (DIRECT + DIFFUSE) - loss);
}

TEST_F(SolarCollector, colderThanTheAir_gainsLinearlyAndLosesBySquare) {
  attach(VelClimateCond::C_TEMPER, SURFACE_T + 20.0);
  expectFlux(gain(), 0.75 * (DIRECT + DIFFUSE) + 3.5 * 20.0 - 0.015 * 20.0 * 20.0);
}

TEST_F(SolarCollector, temperatureAndRadiation_areAskedFor) {
  detach(VelClimateCond::C_DIRRAD);
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", climateOf("DIRRAD")), GLOBAL_TAG}));
  detach(VelClimateCond::C_TEMPER);
  EXPECT_EQ(failure(), (TKL::Thrown{missing("SHWRAD", climateOf("TEMPER")), SHORT_WAVE_TAG}));
}

TEST_F(LongWave, imposedRadiation_isTimesTheEmissivityAndNeedsNoWall) {
  condition.kind = VelBoundaryCond::K_IMPFLUX;
  condition.wallData = nullptr;
  expectFlux(gain(), EMISSIVITY * -60.0);
}

TEST_F(LongWave, inflow_isNegativeAtTheRightAndAtTheBottom) {
  const double inward = gain() * SURFACE_AREA;
  for (const auto location : {RIGHT, BOTTOM}) {
    calculate(location);
    EXPECT_EQ(heat(VELMORA::HF_LONGWAVE), -inward);
    EXPECT_EQ(heat(VELMORA::HF_SUM), -inward);
  }
}

TEST_F(LongWave, sky_actsOnAWallByHalf) {
  expectFlux(gain(), HALF_VIEW * EMISSIVITY * SKY_LOSS);
}

TEST_F(LongWave, roof_seesTheSkyOnly) {
  place(VelWallData::P_INCLINATION, 0.0);
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  expectFlux(gain(), EMISSIVITY * SKY_LOSS);
}

TEST_F(LongWave, slope_seesTheGroundByTheSineOfHalfItsInclination) {
  constexpr double slope = RAY_PI / 3.0;
  place(VelWallData::P_INCLINATION, slope);
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  expectFlux(gain(), 0.75 * EMISSIVITY * SKY_LOSS + 0.25 * EXCHANGE_EMISSIVITY * GROUND_LOSS);
}

TEST_F(LongWave, ground_exchangesLikeAParallelPlane) {
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  expectFlux(gain(), HALF_VIEW * (EMISSIVITY * SKY_LOSS + EXCHANGE_EMISSIVITY * GROUND_LOSS));
}

TEST_F(LongWave, groundWithoutEmissivity_doesNotAct) {
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  set(VelBoundaryCond::P_GRDEMISS, 0.0);
  expectFlux(gain(), HALF_VIEW * EMISSIVITY * SKY_LOSS);
}

TEST_F(LongWave, radiationOfSkyAndGround_countsWithEitherSign) {
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  const double positive = gain();
  attach(VelClimateCond::C_SKYEMISS, -280.0);
  attach(VelClimateCond::C_GRNDEMISS, -350.0);
  EXPECT_EQ(gain(), positive);
}

TEST_F(LongWave, temperatureOfTheSky_actsByItsFourthPower) {
  condition.kind = VelBoundaryCond::K_BOLTZMAN;
  expectFlux(gain(), HALF_VIEW * EMISSIVITY * (black(265.0) - black(SURFACE_T)));
}

TEST_F(LongWave, temperatureOfTheGround_actsByItsFourthPower) {
  condition.kind = VelBoundaryCond::K_BOLTZMAN;
  const double sky = gain();
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  expectFlux(gain() - sky, HALF_VIEW * EXCHANGE_EMISSIVITY * (black(280.0) - black(SURFACE_T)));
}

TEST_F(LongWave, humidityAndClouds_setTheEmissivityOfTheSky) {
  condition.kind = VelBoundaryCond::K_BOLTZMAN;
  condition.flags.set(VelBoundaryCond::F_INCLUDE_RH_CLOUD);
  // 7.5006e-4 of the vapour pressure in the exponent
  const double pressure = 288.68 * std::pow(1.098 + (283.0 - 273.15) / 100.0, 8.02) * 0.7;
  const double emissivity = 0.82 - 0.25 * std::exp(-7.5006e-4 * pressure);
  const double clouds = 1.0 + 0.2 * 0.25;
  expectFlux(gain(), HALF_VIEW * EMISSIVITY * (black(265.0) * emissivity * clouds - black(SURFACE_T)));
}

TEST_F(LongWave, surfaceInBalanceWithTheSky_exchangesNothing) {
  condition.kind = VelBoundaryCond::K_BOLTZMAN;
  attach(VelClimateCond::C_SKYTEMP, SURFACE_T);
  attach(VelClimateCond::C_GRNDTEMP, SURFACE_T);
  condition.flags.set(VelBoundaryCond::F_INCLUDE_GROUND);
  EXPECT_EQ(gain(), 0.0);
}

TEST_F(LongWave, withoutEmissivity_needsNothing) {
  set(VelBoundaryCond::P_SUREMISS, 0.0);
  condition.wallData = nullptr;
  condition.climate.fill(nullptr);
  for (const auto kind : {VelBoundaryCond::K_IMPFLUX, VelBoundaryCond::K_LRADCOMP,
                          VelBoundaryCond::K_BOLTZMAN, VelBoundaryCond::K_SURFVAL}) {
    condition.kind = kind;
    EXPECT_EQ(gain(), 0.0);
  }
}

TEST_F(LongWave, flags_decideWhichClimateIsNeeded) {
  condition.kind = VelBoundaryCond::K_BOLTZMAN;
  for (const auto quantity : {VelClimateCond::C_TEMPER, VelClimateCond::C_RELHUM, VelClimateCond::C_CLOUDCOV,
                              VelClimateCond::C_GRNDTEMP})
    detach(quantity);
  expectFlux(gain(), HALF_VIEW * EMISSIVITY * (black(265.0) - black(SURFACE_T)));
}

TEST_F(LongWave, climate_isAskedFor) {
  const auto expectMissing = [&](VelClimateCond::condition_t quantity, const std::string& keyword) {
    detach(quantity);
    EXPECT_EQ(failure(), (TKL::Thrown{missing("LOWRAD", climateOf(keyword)), LONG_WAVE_TAG}));
    condition.climate[quantity] = &climate[quantity];
  };
  condition.flags.set();
  condition.kind = VelBoundaryCond::K_IMPFLUX;
  expectMissing(VelClimateCond::C_LOWRAD, "LOWRAD");
  condition.kind = VelBoundaryCond::K_LRADCOMP;
  expectMissing(VelClimateCond::C_SKYEMISS, "SKYEMISS");
  expectMissing(VelClimateCond::C_GRNDEMISS, "GRNDEMISS");
  condition.kind = VelBoundaryCond::K_BOLTZMAN;
  expectMissing(VelClimateCond::C_TEMPER, "TEMPER");
  expectMissing(VelClimateCond::C_RELHUM, "RELHUM");
  expectMissing(VelClimateCond::C_CLOUDCOV, "CLOUDCOV");
  expectMissing(VelClimateCond::C_SKYTEMP, "SKYTEMP");
  expectMissing(VelClimateCond::C_GRNDTEMP, "GRNDTEMP");
}

TEST_F(LongWave, wall_isAskedFor) {
  condition.wallData = nullptr;
  for (const auto kind : {VelBoundaryCond::K_LRADCOMP, VelBoundaryCond::K_BOLTZMAN}) {
    condition.kind = kind;
    EXPECT_EQ(failure(), (TKL::Thrown{missing("LOWRAD", "Wall definition"), LONG_WAVE_TAG}));
  }
}

TEST_F(LongWave, otherKinds_areReportedUnderTheShortWaveNeighbour) {
  condition.kind = VelBoundaryCond::K_SUNRADM;
  EXPECT_EQ(
      plainErrorOf([&] { calculate(); }),
      "[VelmoraCvodeSolver::boundaryFluxShWRad]  Invalid kind type of the boundary condition 'Weather'");
}

TEST_F(LongWave, runWithoutEnergy_ignoresTheSky) {
  settings = moistSettings(BE_MOISTURE);
  condition.climate.fill(nullptr);
  EXPECT_EQ(gain(), 0.0);
}

}  // namespace VELMORA_SOLVER
