// The wall of an example in measured weather: the integrator gets through it at the tolerance that it is
// given.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "solver/WestWall.h"

namespace VELMORA_SOLVER {

namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr double WEATHER_DAYS = 20.0;
#else
constexpr double WEATHER_DAYS = 365.0;
#endif
const std::string WEATHER_STATIONS = VELMORA_SOURCE_DIR "/../shared/climate/";

/// The series of the shipped climate by the names that a station gives to its own.
const std::map<std::string, std::string> SERIES{
    {"temperature", "TEMPER"},       {"relative_humidity", "RELHUM"}, {"rain", "HORRAIN"},
    {"wind_velocity", "WINDVEL"},    {"wind_direction", "WINDDIR"},   {"direct_radiation", "DIRRAD"},
    {"diffuse_radiation", "DIFRAD"}, {"sky_radiation", "SKYEMISS"}};

/// The wall with the weather of a station, as far as it has measured it.
std::string wallAt(const std::string& station, const std::string& place) {
  std::string text = westWallText(0.0, WEATHER_DAYS);
  for (const auto& [shipped, measured] : SERIES) {
    const std::string file = WEATHER_STATIONS + station + "/" + measured + ".ccd";
    if (std::filesystem::exists(file))
      replaceAll(text,
                 std::string(VELMORA_SOURCE_DIR "/database/DB_climate_data/germany_") + shipped + ".ccd",
                 file);
  }
  replaceAll(text, "LATITUDE = 51 Deg\nLONGITUDE = 10 Deg\nTIMEZONE = 1 h", place);
  return text;
}

void expectSmoothRun(const std::string& station, const std::string& place) {
  if (!std::filesystem::is_directory(WEATHER_STATIONS + station))
    GTEST_SKIP() << "no measured weather in " << WEATHER_STATIONS;
  WallRun run(wallAt(station, place));
  run.runAll();
  EXPECT_GE(run.solver.t, WEATHER_DAYS * 86400.0);
  for (const auto& message : run.capture.messages)
    EXPECT_TRUE(message.type != TKL::MSG_WARNING && message.type != TKL::MSG_ERROR) << message.text;
}

}  // namespace

TEST(MeasuredWeather, wallInTokyo_isCalculatedAtItsTolerance) {
  expectSmoothRun("tokyo", "LATITUDE = 35.7 Deg\nLONGITUDE = 139.8 Deg\nTIMEZONE = 9 h");
}

TEST(MeasuredWeather, wallInMannheim_isCalculatedAtItsTolerance) {
  expectSmoothRun("mannheim", "LATITUDE = 49.5 Deg\nLONGITUDE = 8.55 Deg\nTIMEZONE = 1 h");
}

}  // namespace VELMORA_SOLVER
