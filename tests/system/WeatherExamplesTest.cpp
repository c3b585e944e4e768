// Examples under sky, in water and with a pipe, against balances by hand.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <numeric>

#include "support/ClimateCourse.h"
#include "system/ExampleRun.h"
#include "system/SteadyReference.h"

namespace VELMORA_TEST {

namespace {

constexpr double ZERO_C = 273.15;        // [K]
constexpr double RADIATION = 5.67e-8;    // [W/m2K4]
constexpr double ROOF_EMISSIVITY = 0.9;  // [-]

ClimateCourse roofClimate(const std::string& quantity) {
  return ClimateCourse(VELMORA_SOURCE_DIR "/database/DB_climate_data/germany_" + quantity + ".ccd");
}

// ---- flat roof ----

/// One hour of the night on the roof.
struct NightHour {
  double surface;  ///< [C]
  double air;      ///< [C]
  double balance;  ///< [C] of a surface without heat storage
  double deficit;  ///< [W/m2] radiation of a black body at the temperature of the air less that of the sky
};

/// Temperature [C] at which wind, sky and room are in balance.
double balancedTemperature(double air, double wind, double sky) {
  const double U = 1.0 / (0.01 / 0.23 + 0.16 / 0.04 + 0.18 / 1.65 + 0.1);
  const double film = 4.0 + 4.0 * wind;
  double T = air + ZERO_C;
  for (int i = 0; i < 20; ++i) {
    const double q = film * (air + ZERO_C - T) + ROOF_EMISSIVITY * (sky - RADIATION * std::pow(T, 4.0)) +
                     U * (20.0 + ZERO_C - T);
    T += q / (film + 4.0 * ROOF_EMISSIVITY * RADIATION * std::pow(T, 3.0) + U);
  }
  return T - ZERO_C;
}

/// A month of late summer.
constexpr double ROOF_START = 210 * 86400.0;  // [s] of the year
const ExampleRun::Changes IN_AUGUST{{"DURATION = 365 d", "START_TIME = 18144000\nDURATION = 30 d"}};

std::vector<NightHour> nightHours(const ExampleRun& run) {
  const ClimateCourse air = roofClimate("temperature"), wind = roofClimate("wind_velocity");
  const ClimateCourse sky = roofClimate("sky_radiation"), diffuse = roofClimate("diffuse_radiation");
  std::vector<NightHour> result;
  for (const auto& record : run.records("surface_temperature.out")) {
    const double t = ROOF_START + record[0] * 86400.0;
    if (record[0] == 0.0 || diffuse.at(t - 7200.0) + diffuse.at(t) + diffuse.at(t + 1800.0) > 0.0) continue;
    const double T = air.at(t), black = RADIATION * std::pow(T + ZERO_C, 4.0);
    result.push_back({record[1], T, balancedTemperature(T, wind.at(t), sky.at(t)), black - sky.at(t)});
  }
  return result;
}

}  // namespace

TEST(FlatRoofExample, surface_isColderThanTheAirAtNight) {
  const ExampleRun run("flat_roof", IN_AUGUST);
  const auto hours = nightHours(run);
  EXPECT_GT(hours.size(), 100u);
  for (const NightHour& hour : hours) EXPECT_LT(hour.surface, hour.air);
}

TEST(FlatRoofExample, surface_isInBalanceWithWindSkyAndRoomAtNight) {
  const ExampleRun run("flat_roof", IN_AUGUST);
  const auto hours = nightHours(run);
  double sum = 0.0;
  for (const NightHour& hour : hours) {
    // 11 kJ/m2K of bitumen lag by some ten minutes behind air that changes by a few kelvin in an hour
    EXPECT_NEAR(hour.surface, hour.balance, 1.0);
    sum += std::fabs(hour.surface - hour.balance);
  }
  EXPECT_LT(sum / static_cast<double>(hours.size()), 0.2);
}

TEST(FlatRoofExample, clearNights_coolItMoreThanOvercastOnes) {
  const ExampleRun run("flat_roof", IN_AUGUST);
  double clear = 0.0, overcast = 0.0;
  int nClear = 0, nOvercast = 0;
  for (const NightHour& hour : nightHours(run)) {
    if (hour.deficit > 70.0) clear += hour.air - hour.surface, ++nClear;
    if (hour.deficit < 20.0) overcast += hour.air - hour.surface, ++nOvercast;
  }
  ASSERT_GT(nClear, 5);
  ASSERT_GT(nOvercast, 5);
  EXPECT_GT(clear / nClear, 3.0 * overcast / nOvercast);
}

TEST(FlatRoofExample, sunOnIt_isTheRadiationOnTheHorizontalPlane) {
  const ExampleRun run("flat_roof", IN_AUGUST);
  const ClimateCourse direct = roofClimate("direct_radiation"), diffuse = roofClimate("diffuse_radiation");
  double expected = 0.0;
  for (double t = ROOF_START + 300.0; t < ROOF_START + 30 * 86400.0; t += 600.0)
    expected += 0.9 * (direct.at(t) + diffuse.at(t)) * 600.0 / 3.6e6;
  EXPECT_NEAR(run.lastValue("sun.out"), expected, 0.01 * expected);
}

// ---- rising damp ----

namespace {

constexpr double DAMP_AIR = 20.0;       // [C]
constexpr double DAMP_RH = 0.5;         // [-]
constexpr double DAMP_FILM = 8.0;       // [W/m2K]
constexpr double DAMP_VAPOUR = 2.5e-8;  // [s/m]
constexpr double DAMP_DAY = 86400.0;    // [s]

/// Saturation pressure [Pa] above freezing, DIN 4108-5:1981.
double dampSaturation(double celsius) {
  return 288.68 * std::pow(1.098 + celsius / 100.0, 8.02);
}

/// Evaporation of a wet surface in the room [kg/m2s].
double evaporation(double celsius) {
  return DAMP_VAPOUR * (dampSaturation(celsius) - DAMP_RH * dampSaturation(DAMP_AIR));
}

/// Temperature [C] at which a wet surface takes from the air what its evaporation needs.
double wetTemperature() {
  constexpr double LATENT = 2.466e6;  // [J/kg] between 15 and 20 C
  double low = 0.0, high = DAMP_AIR;
  while (high - low > 1e-6) {
    const double T = 0.5 * (low + high);
    (DAMP_FILM * (DAMP_AIR - T) > LATENT * evaporation(T) ? low : high) = T;
  }
  return low;
}

}  // namespace

TEST(RisingDampExample, wallTakesUpWhatDriesInTheEnd) {
  const ExampleRun run("rising_damp");
  const double uptake = run.lastValue("uptake_side.out") + run.lastValue("uptake_bottom.out");
  EXPECT_NEAR(-run.lastValue("drying.out"), uptake, 0.01 * uptake);
}

TEST(RisingDampExample, wetSurface_hasTheTemperatureOfItsEvaporation) {
  const ExampleRun run("rising_damp");
  const auto record = run.lastRecord("surface_temperature.out");
  // The coldest row has wet neighbours on both sides. Water of 20 C that it evaporates brings 0.3 W/m2, and
  // as much comes through the brick from its dry and its submerged part: up to 0.1 K.
  EXPECT_NEAR(*std::min_element(record.begin() + 1, record.end()), wetTemperature(), 0.2);
}

TEST(RisingDampExample, water_risesAsFarAsASharpFront) {
  const ExampleRun run("rising_damp");
  // C. Hall, W. D. Hoff, Proc. R. Soc. A 463 (2007) 1871: a front of sorptivity S in a wall that dries on
  // both sides comes to rest at the height S sqrt(b / (2 e theta)).
  const double S = 0.2 / 1000.0, b = 0.365, theta = 0.256;
  const double e = evaporation(wetTemperature());
  const double height = S * std::sqrt(b / (2.0 * e / 1000.0 * theta));
  EXPECT_GT(height, 1.0);
  EXPECT_LT(height, 1.8) << "the wall ends at 1.8 m above the water";
  const double drying = -run.lastValue("drying.out") / DAMP_DAY;  // of one surface
  EXPECT_NEAR(drying / e, height, 0.1 * height);
}

// ---- heated floor ----

namespace {

constexpr double SCREED = 1.65, FLOOR_EPS = 0.04;  // [W/mK]
constexpr double PIPE_SIDE = 0.016;                // [m]
constexpr double PIPE_METRES = 100.0;              // [m]

/// Of the fluid [W/K]; the cross-section is reckoned with 3.14.
double pipeCapacityRate() {
  return 200.0 * 3.14 * PIPE_SIDE * PIPE_SIDE / 4.0 * 4180.0;
}

/// The fluid: what one metre of pipe gives for each kelvin between its supply and the screed [W/mK].
double pipeConductance() {
  const double surface = std::numbers::pi * PIPE_SIDE * PIPE_METRES;
  const double rate = pipeCapacityRate();
  return rate * (1.0 - std::exp(-300.0 * surface / rate)) / PIPE_METRES;
}

SteadyReference heatedFloor(const ExampleRun& run, Links links) {
  const auto inPipe = [](double x, double y) {
    return std::fabs(x - 0.075) < 0.008 + 1e-6 && y > 0.049 - 1e-6 && y < 0.065 + 1e-6;
  };
  const ReferenceGrid grid{run.steps("X_STEPS"), run.steps("Y_STEPS"), false, [&](double x, double y) {
                             if (inPipe(x, y)) return 0.0;
                             return y > 0.065 && y < 0.145 ? FLOOR_EPS : SCREED;
                           }};
  return {grid,
          {{10.8, 20.0, [](double, double y) { return y < 1e-6; }},
           {6.0, 10.0, [](double, double y) { return y > 0.325 - 1e-6; }},
           {pipeConductance() / (4.0 * PIPE_SIDE), 35.0, inPipe}},
          links};
}

constexpr double PIPE_PITCH = 0.15;  // [m]

}  // namespace

TEST(HeatedFloorExample, heatUpAndDown_isThatOfTheReference) {
  const ExampleRun run("heated_floor");
  const SteadyReference reference = heatedFloor(run, Links::CELL_MEAN);
  const double up = run.lastValue("heat_up.out"), down = -run.lastValue("heat_down.out");
  EXPECT_NEAR(up * PIPE_PITCH, -reference.heatFrom(0), 1e-3 * up * PIPE_PITCH);
  EXPECT_NEAR(down * PIPE_PITCH, -reference.heatFrom(1), 1e-3 * down * PIPE_PITCH);
  EXPECT_NEAR((up + down) * PIPE_PITCH, reference.heatFrom(2), 1e-3 * up * PIPE_PITCH);
  // Half cells of 2 mm at the surfaces and the pipe and at the insulation lack their resistance.
  EXPECT_NEAR(up * PIPE_PITCH, -heatedFloor(run, Links::SERIES).heatFrom(0), 0.05 * up * PIPE_PITCH);
}

TEST(HeatedFloorExample, pipe_givesWhatItsWaterLoses) {
  const ExampleRun run("heated_floor");
  const double perMetre = (run.lastValue("heat_up.out") - run.lastValue("heat_down.out")) * PIPE_PITCH;
  const double heat = run.lastValue("pipe_heat.out");
  EXPECT_NEAR(heat, perMetre * PIPE_METRES, 1e-3 * heat);
  EXPECT_NEAR(run.lastValue("return_temperature.out"), 35.0 - heat / pipeCapacityRate(), 1e-3);
}

TEST(HeatedFloorExample, floor_isWarmestAboveThePipe) {
  const ExampleRun run("heated_floor");
  const SteadyReference reference = heatedFloor(run, Links::CELL_MEAN);
  const auto record = run.lastRecord("floor_temperature.out");
  const std::size_t n = record.size() - 1;
  ASSERT_EQ(n, run.steps("X_STEPS").size());
  for (std::size_t i = 0; i < n; ++i)
    EXPECT_NEAR(record[i + 1], reference.temperature(static_cast<int>(i), 0), 0.01);
  EXPECT_EQ(std::max_element(record.begin() + 1, record.end()) - record.begin(), static_cast<long>(n / 2));
}

}  // namespace VELMORA_TEST
