// A wall in the weather: rain, sun, sky and wind on it are reckoned anew from the climate files, what it
// holds and loses from balances. A month of spring has all of them.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

#include "support/ClimateCourse.h"
#include "support/ReferenceSun.h"
#include "system/ExampleRun.h"

namespace VELMORA_TEST {

namespace {

constexpr double WEST_START = 90 * 86400.0;  // [s] of the year
constexpr double WEST_SPAN = 30 * 86400.0;   // [s]
constexpr double PER_KWH = 3.6e6;            // [J]
constexpr double STEFAN_BOLTZMANN = 5.67e-8;
const ExampleRun::Changes IN_SPRING{{"DURATION = 365 d", "START_TIME = 7776000\nDURATION = 30 d"}};

ClimateCourse germany(const std::string& quantity) {
  return ClimateCourse(VELMORA_SOURCE_DIR "/database/DB_climate_data/germany_" + quantity + ".ccd");
}

/// Integral over the month of a quantity at a time of the year, by minutes.
double overTheMonth(const std::function<double(double t)>& quantity) {
  constexpr double MINUTE = 60.0;
  double sum = 0.0;
  for (double t = 0.5 * MINUTE; t < WEST_SPAN; t += MINUTE) sum += quantity(WEST_START + t) * MINUTE;
  return sum;
}

/// Driving rain on the wall [kg/m2s] from rain on the horizontal plane [mm/h] and wind.
double drivingRain(double rain, double wind, double direction) {
  const double angle = (direction - 270.0) * std::numbers::pi / 180.0;
  if (rain <= 0.0 || wind <= 0.0 || std::cos(angle) <= 0.0) return 0.0;
  const double slant = std::sqrt(1.0 + 1142.0 * std::sqrt(rain) / std::pow(wind, 4.0));
  return rain / 3600.0 * std::cos(angle) / slant * std::exp(-12.0 / (5.0 * wind * std::pow(rain, 0.25)));
}

/// Hourly temperatures of the surface [K] by the time of the year.
std::function<double(double t)> surfaceTemperature(const ExampleRun& run) {
  const auto records = run.records("surface_temperature.out");
  return [records](double t) {
    const double hours = (t - WEST_START) / 3600.0;
    const auto i = static_cast<std::size_t>(hours);
    if (i + 1 >= records.size()) return records.back()[1] + 273.15;
    const double part = hours - static_cast<double>(i);
    return (1.0 - part) * records[i][1] + part * records[i + 1][1] + 273.15;
  };
}

}  // namespace

TEST(WestWallExample, rainOnIt_isTheDrivingRainOfTheClimate) {
  const ExampleRun run("west_wall", IN_SPRING);
  const ClimateCourse rain = germany("rain"), wind = germany("wind_velocity");
  const ClimateCourse direction = germany("wind_direction"), T = germany("temperature");
  const double expected = overTheMonth([&](double t) {
    return T.at(t) > 0.0 ? 0.7 * drivingRain(rain.at(t), wind.at(t), direction.at(t)) : 0.0;
  });
  EXPECT_GT(expected, 1.0);
  EXPECT_NEAR(run.lastValue("rain.out"), expected, 0.01 * expected);
}

TEST(WestWallExample, rain_isTakenInOrRunsOff) {
  const ExampleRun run("west_wall", IN_SPRING);
  const double absorbed = run.lastValue("absorbed_rain.out");
  EXPECT_GT(absorbed, 0.0);
  const double rain = run.lastValue("rain.out");
  EXPECT_NEAR(absorbed + run.lastValue("runoff.out"), rain, 1e-6 * rain);
}

TEST(WestWallExample, sunOnIt_isThatOfAnotherAlgorithm) {
  const ExampleRun run("west_wall", IN_SPRING);
  const ClimateCourse direct = germany("direct_radiation"), diffuse = germany("diffuse_radiation");
  const double expected = overTheMonth([&](double t) {
    const double day = t / 86400.0;
    // 5 degrees west of the meridian of the clock: 20 minutes late
    const ReferenceSun sun(51.0, day + (ReferenceSun::equationOfTime(day) - 20.0) / 1440.0);
    const double ratio = sun.up > 0.0 ? sun.ratio(90.0, 270.0) : 0.0;
    const double horizontal = direct.at(t) + diffuse.at(t);
    return 0.5 * (ratio * direct.at(t) + 0.5 * diffuse.at(t) + 0.5 * 0.2 * horizontal) / PER_KWH;
  });
  EXPECT_GT(expected, 10.0);
  EXPECT_NEAR(run.lastValue("sun.out"), expected, 0.01 * expected);
}

TEST(WestWallExample, exchangeWithTheSky_isThatOfItsSurface) {
  const ExampleRun run("west_wall", IN_SPRING);
  const ClimateCourse sky = germany("sky_radiation");
  const auto T = surfaceTemperature(run);
  const double expected = overTheMonth(
      [&](double t) { return 0.9 * 0.5 * (sky.at(t) - STEFAN_BOLTZMANN * std::pow(T(t), 4.0)) / PER_KWH; });
  EXPECT_LT(expected, -1.0);
  EXPECT_NEAR(run.lastValue("sky.out"), expected, 0.01 * std::fabs(expected));
}

TEST(WestWallExample, exchangeWithTheAir_isThatOfItsSurface) {
  const ExampleRun run("west_wall", IN_SPRING);
  const ClimateCourse air = germany("temperature"), wind = germany("wind_velocity");
  const auto T = surfaceTemperature(run);
  const double expected = overTheMonth(
      [&](double t) { return (4.0 + 4.0 * wind.at(t)) * (air.at(t) + 273.15 - T(t)) / PER_KWH; });
  EXPECT_LT(expected, -1.0);
  // Between full hours the surface follows the sun, which has its kinks at half past.
  EXPECT_NEAR(run.lastValue("heat_outside.out"), expected, 0.02 * std::fabs(expected));
}

TEST(WestWallExample, water_isRainLessVapour) {
  const ExampleRun run("west_wall", IN_SPRING);
  const double gain = run.lastValue("water.out") - run.records("water.out").front()[1];
  const double rain = run.lastValue("absorbed_rain.out");
  const double drying = -run.lastValue("vapour_outside.out");  // flows are positive to the inside
  EXPECT_GT(drying, 0.5 * rain);
  EXPECT_NEAR(gain, rain - drying - run.lastValue("vapour_inside.out"), 0.01 * (rain + drying));
}

TEST(WestWallExample, heat_evaporatesWaterAndWarmsTheWall) {
  const ExampleRun run("west_wall", IN_SPRING);
  const double gain = run.lastValue("sun.out") + run.lastValue("sky.out") +
                      run.lastValue("heat_outside.out") - run.lastValue("heat_inside.out");
  constexpr double LATENT = 2.48e6;  // [J/kg] at 10 C
  const double vapour = run.lastValue("vapour_inside.out") - run.lastValue("vapour_outside.out");  // [kg/m2]
  const auto steps = run.steps("X_STEPS"), T = run.lastRecord("temperature_profile.out");
  ASSERT_EQ(T.size(), steps.size() + 1);
  double stored = 0.0, depth = 0.0;  // [J/m2] since the start at 10 C; [m]
  for (std::size_t i = 0; i < steps.size(); ++i) {
    depth += steps[i];
    stored += steps[i] * (depth < 0.0201 || depth > 0.3851 ? 1.6e6 : 1.8e6) * (T[i + 1] - 10.0);
  }
  EXPECT_GT(vapour * LATENT / PER_KWH, 4.0);
  // Rain is by some 10 K colder than the wall: 0.012 kWh/kg.
  const double cold = 0.012 * run.lastValue("absorbed_rain.out");
  EXPECT_NEAR(gain, (vapour * LATENT + stored) / PER_KWH + cold, 0.03 * gain);
}

}  // namespace VELMORA_TEST
