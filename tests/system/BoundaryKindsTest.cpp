// Every kind of boundary condition in a project file: what it brings against a formula by hand, and what is
// told when its climate or its wall is missing.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <numbers>

#include "system/ConditionProject.h"

namespace VELMORA_TEST {

namespace {

constexpr double T_BRICK = ConditionProject::MEDIUM;                     // [K] at the surface
constexpr double SIGMA_SB = 5.67e-8;                                     // [W/m2K4]
constexpr double SEALED = -1.0;                                          // a condition without wall
constexpr double INWARD_ONLY = std::numeric_limits<double>::infinity();  // any flow into the brick

/// The weather of all cases, by type.
const std::map<std::string, std::string> KIND_WEATHER{{"TEMPER", "10 C"},
                                                      {"RELHUM", "60 %"},
                                                      {"VAPPRESS", "1500 Pa"},
                                                      {"NORRAIN", "1 l/m2h"},
                                                      {"HORRAIN", "2 l/m2h"},
                                                      {"WINDVEL", "3 m/s"},
                                                      {"WINDDIR", "300 Deg"},
                                                      {"SHWRAD", "400 W/m2"},
                                                      {"DIRRAD", "300 W/m2"},
                                                      {"DIFRAD", "100 W/m2"},
                                                      {"LOWRAD", "50 W/m2"},
                                                      {"SKYEMISS", "300 W/m2"},
                                                      {"SKYTEMP", "5 C"},
                                                      {"CLOUDCOV", "5 1/10"},
                                                      {"GRNDEMISS", "380 W/m2"},
                                                      {"GRNDTEMP", "12 C"},
                                                      {"PREHEAD", "0.7 m"},
                                                      {"HEATFLOW", "500 W"},
                                                      {"HEATFLUXDENS", "80 W/m2"},
                                                      {"WATFLUXDENS", "1e-4 kg/m2s"},
                                                      {"MASSFLUXDENS", "200 kg/m2s"}};

double saturationPressure(double T) {
  return 288.68 * std::pow(1.098 + (T - 273.15) / 100.0, 8.02);
}
const double AIR_PV = 0.6 * saturationPressure(283.15);     // [Pa]
const double BRICK_PV = 0.8 * saturationPressure(T_BRICK);  // [Pa]

/// Between the surface and a sky or a ground of this radiation [W/m2].
double netRadiation(double other) {
  return other - SIGMA_SB * std::pow(T_BRICK, 4.0);
}
double blackRadiation(double T) {
  return SIGMA_SB * std::pow(T, 4.0);
}

/// 0.5 of the rain that 3 m/s of wind at 30 Deg to the normal drive against the wall [kg/m2s].
double shelteredRain() {
  const double slant = std::sqrt(1.0 + 1142.0 * std::sqrt(2.0) / 81.0);
  const double share =
      std::exp(-12.0 / (15.0 * std::pow(2.0, 0.25))) * std::cos(std::numbers::pi / 6.0) / slant;
  return 0.5 * share * 2.0 / 3600.0;
}

/// Heat of one metre of a pipe [W] of 10 mm radius and 50 m length, with a pump and a heater.
double pipeHeat() {
  const double rate = 200.0 * 3.14e-4 * 4180.0;
  const double exchange = rate * (1.0 - std::exp(-300.0 * 2.0 * std::numbers::pi * 0.01 * 50.0 / rate));
  return ((283.15 - T_BRICK) * exchange + 500.0) / 50.0;
}

/// Sky of 5 C with the emissivity of damp air and half a cover of clouds, ground of 12 C; seen from a wall.
double skyAndGround() {
  const double humid = 0.82 - 0.25 * std::exp(-0.00075006 * AIR_PV), cloudy = 1.0 + 0.2 * 0.25;
  const double ground = 1.0 / (1.0 / 0.8 + 1.0 / 0.9 - 1.0);
  return 0.5 * 0.9 * netRadiation(blackRadiation(278.15) * humid * cloudy) +
         0.5 * ground * netRadiation(blackRadiation(285.15));
}

struct Kind {
  const char* type;
  const char* kind;
  std::string parameters;
  std::vector<std::string> climates;
  double inclination;  ///< [Deg] of its wall
  const char* output;
  double expected;  ///< [W/m2] or [kg/m2s] into the brick
};

const std::string RAIN_LIMITS = "EXPCOEFF = 0.5 -\nMINRTEMP = 0 C\nMINRFLUX = 0 l/m2s\n";

const std::vector<Kind>& boundaryKinds() {
  static const std::vector<Kind> all{
      {"HEATCOND", "SURFVAL", "", {"TEMPER"}, SEALED, "HEATFLUX", -1e5},
      {"HEATCOND", "IMPFLUX", "", {"HEATFLUXDENS"}, SEALED, "HEATFLUX", 80.0},
      {"HEATCOND", "EXCHANGE", "EXCOEFF = 8 W/m2K\n", {"TEMPER"}, SEALED, "HEATFLUX", -80.0},
      {"HEATCOND",
       "EXCHANGE_VEL",
       "EXCOEFF = 4 W/m2K\nEXCH_SLOPE = 2 J/m3K\nEXCH_EXP = 2 -\n",
       {"TEMPER", "WINDVEL"},
       SEALED,
       "HEATFLUX",
       -10.0 * (4.0 + 2.0 * 9.0)},
      {"HEATCOND",
       "HEATPIPE",
       "HP_RADIUS = 10 mm\nHP_LENGTH = 50 m\nHP_CAPACITY = 4180 J/kgK\nHP_TRANSFER = 300 W/m2K\n",
       {"TEMPER", "MASSFLUXDENS", "HEATFLOW"},
       SEALED,
       "HEATFLUX",
       pipeHeat()},
      {"VAPDIFF",
       "EXCHANGE",
       "EXCOEFF = 2.5e-8 s/m\nSD_VALUE = 0.1 m\n",
       {"TEMPER", "RELHUM"},
       SEALED,
       "VAPDIFF",
       (AIR_PV - BRICK_PV) / (1.0 / 2.5e-8 + 0.1 / 1.966e-10)},
      {"VAPDIFF",
       "EXCHANGE_VEL",
       "EXCOEFF = 2.5e-8 s/m\nEXCH_SLOPE = 1e-8 s2/m2\n",
       {"TEMPER", "VAPPRESS", "WINDVEL"},
       SEALED,
       "VAPDIFF",
       5.5e-8 * (1500.0 - BRICK_PV)},
      {"RAIN", "IMPFLUX", RAIN_LIMITS, {"TEMPER", "RELHUM", "NORRAIN"}, SEALED, "NORMRAIN", 0.5 / 3600.0},
      {"RAIN",
       "STDRAIN",
       RAIN_LIMITS,
       {"TEMPER", "RELHUM", "HORRAIN", "WINDVEL", "WINDDIR"},
       90.0,
       "NORMRAIN",
       shelteredRain()},
      {"SHWRAD", "IMPFLUX", "SURABSOR = 0.6 -\n", {"SHWRAD"}, SEALED, "SHWRAD", 240.0},
      // at midnight
      {"SHWRAD",
       "SUNRADM",
       "SURABSOR = 0.6 -\nGRDREFLE = 0.2 -\n",
       {"DIRRAD", "DIFRAD"},
       90.0,
       "SHWRAD",
       0.6 * (0.5 * 100.0 + 0.5 * 0.2 * 400.0)},
      {"SHWRAD",
       "SOLARCOLL",
       "SOLAR_ETA0 = 0.8 -\nSOLAR_K0 = 3 W/m2K\nSOLAR_K1 = 0.01 W/m2K2\n",
       {"DIRRAD", "DIFRAD", "TEMPER"},
       0.0,
       "SHWRAD",
       0.8 * 400.0 - 3.0 * 10.0 - 0.01 * 100.0},
      {"LOWRAD", "IMPFLUX", "SUREMISS = 0.9 -\n", {"LOWRAD"}, SEALED, "LWRAD", 45.0},
      {"LOWRAD",
       "LRADCOMP",
       "SUREMISS = 0.9 -\nGRDEMISS = 0.8 -\nFLAGS = INCLUDE_GROUND\n",
       {"SKYEMISS", "GRNDEMISS"},
       90.0,
       "LWRAD",
       0.45 * netRadiation(300.0) + 0.5 / (1.0 / 0.8 + 1.0 / 0.9 - 1.0) * netRadiation(380.0)},
      {"LOWRAD",
       "BOLTZMAN",
       "SUREMISS = 0.9 -\nGRDEMISS = 0.8 -\nFLAGS = INCLUDE_GROUND INCLUDE_RH_CLOUD\n",
       {"TEMPER", "RELHUM", "CLOUDCOV", "SKYTEMP", "GRNDTEMP"},
       90.0,
       "LWRAD",
       skyAndGround()},
      {"WATCONTC", "SURFVAL", "", {"TEMPER", "PREHEAD"}, SEALED, "WATFLUX", INWARD_ONLY},
      {"WATCONTC", "HYDROSTATIC", "", {"TEMPER", "PREHEAD"}, SEALED, "WATFLUX", INWARD_ONLY},
      {"WATCONTC", "IMPFLUX", "", {"TEMPER", "WATFLUXDENS"}, SEALED, "WATFLUX", 1e-4}};
  return all;
}

/// A project with a condition of this kind; one of its climates may be left out.
void buildProject(ConditionProject& project, const Kind& kind, const std::string& without = "",
                  bool withWall = true) {
  project.balances = "ENERGY MOISTURE";
  std::string lines = kind.parameters;
  for (const std::string& climate : kind.climates) {
    project.climate(climate, KIND_WEATHER.at(climate));
    if (climate != without) lines += climate + " = " + climate + "\n";
  }
  if (kind.inclination >= 0.0) {
    project.wall(kind.inclination);
    if (withWall) lines += "WALLDATA = Wall\n";
  }
  project.boundary(kind.type, kind.kind, lines);
  const bool mass = std::string(kind.type) == "VAPDIFF" || std::string(kind.type) == "RAIN" ||
                    std::string(kind.type) == "WATCONTC";
  project.fluxOutput(kind.output, mass ? "kg/m2s" : "W/m2");
}

std::string nameOf(const Kind& kind) {
  return std::string(kind.type) + ' ' + kind.kind;
}

/// What a pipe may lack: without a pump or a heater it gives less, and a supply has a value of its own.
bool mayBeMissing(const Kind& kind) {
  return std::string(kind.kind) == "HEATPIPE";
}

/// The run ends with this text.
void expectFailure(const ProcessResult& result, const Kind& kind, const std::string& missing) {
  EXPECT_EQ(result.exitCode, 1) << nameOf(kind) << missing;
  EXPECT_TRUE(result.errHasInOrder({"Error in boundary condition 'Surface' with type '" +
                                    std::string(kind.type) + "'.\n" + missing + " needs to be specified!"}))
      << nameOf(kind) << result.err;
}

}  // namespace

TEST(BoundaryKinds, eachInAProject_bringsTheFlowOfItsFormula) {
  for (const Kind& kind : boundaryKinds()) {
    ConditionProject project;
    buildProject(project, kind);
    const ProcessResult result = project.run();
    ASSERT_EQ(result.exitCode, 0) << nameOf(kind) << result.err;
    const double flow = project.values(kind.output)[0];
    if (kind.expected == INWARD_ONLY) {
      EXPECT_GT(flow, 1e-4) << nameOf(kind);
      continue;
    }
    // A given surface temperature cools the half metre of brick noticeably within three seconds.
    const double decay =
        std::exp(kind.expected / 10.0 * ConditionProject::SECONDS / (ConditionProject::RHO_C * 0.5));
    const double expected = kind.expected == -1e5 ? kind.expected * decay : kind.expected;
    EXPECT_NEAR(flow, expected, 2e-3 * std::fabs(expected)) << nameOf(kind);
  }
}

TEST(BoundaryKinds, climateThatAKindNeeds_isAskedFor) {
  for (const Kind& kind : boundaryKinds()) {
    if (mayBeMissing(kind)) continue;
    for (const std::string& climate : kind.climates) {
      ConditionProject project;
      buildProject(project, kind, climate);
      const std::string asked = climate == "VAPPRESS" ? "RELHUM" : climate;  // either of them
      expectFailure(project.run(), kind, "Climate condition of type '" + asked + "'");
    }
  }
}

TEST(BoundaryKinds, wallThatAKindNeeds_isAskedFor) {
  int walls = 0;
  for (const Kind& kind : boundaryKinds()) {
    if (kind.inclination < 0.0) continue;
    ConditionProject project;
    buildProject(project, kind, "", false);
    expectFailure(project.run(), kind, "Wall definition");
    ++walls;
  }
  EXPECT_EQ(walls, 5);
}

TEST(BoundaryKinds, pipeWithoutPumpAndSupply_givesThePowerOfItsHeater) {
  ConditionProject project;
  Kind pipe = boundaryKinds()[4];
  ASSERT_TRUE(mayBeMissing(pipe));
  pipe.climates = {"HEATFLOW"};
  buildProject(project, pipe);
  ASSERT_EQ(project.run().exitCode, 0);
  EXPECT_NEAR(project.values("HEATFLUX")[0], 500.0 / 50.0, 1e-6);
}

TEST(BoundaryKinds, waterTableBelowTheCell_doesNotTouchIt) {
  ConditionProject project;
  project.balances = "ENERGY MOISTURE";
  project.climate("TEMPER", "10 C");
  project.climate("PREHEAD", "0.3 m");
  project.boundary("WATCONTC", "HYDROSTATIC", "TEMPER = TEMPER\nPREHEAD = PREHEAD\n");
  project.fluxOutput("WATFLUX", "kg/m2s");
  ASSERT_EQ(project.run().exitCode, 0);
  EXPECT_EQ(project.values("WATFLUX")[0], 0.0);
}

TEST(BoundaryKinds, rainOnARoof_isNegativeInItsOutputAsAllThatFallsIs) {
  ConditionProject project;
  project.balances = "ENERGY MOISTURE";
  std::string lines = RAIN_LIMITS + "WALLDATA = Wall\n";
  for (const char* const climate : {"TEMPER", "RELHUM", "HORRAIN", "WINDVEL", "WINDDIR"}) {
    project.climate(climate, KIND_WEATHER.at(climate));
    lines += std::string(climate) + " = " + climate + "\n";
  }
  project.wall(10.0);
  project.boundary("RAIN", "STDRAIN", lines, "TOP");
  project.fluxOutput("NORMRAIN", "kg/m2s", "TOP");
  ASSERT_EQ(project.run().exitCode, 0);
  EXPECT_NEAR(project.values("NORMRAIN")[0], -0.5 * 2.0 / 3600.0, 1e-9);
}

}  // namespace VELMORA_TEST
