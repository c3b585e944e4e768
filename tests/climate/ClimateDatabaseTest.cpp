#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <sstream>

#include "climate/ClimateTestSupport.h"
#include "climate/VelClimateCond.h"
#include "keywords/KeywordList.h"
#include "support/MessageCapture.h"

using namespace VELMORA;

namespace {

const std::string ROOT = VELMORA_SOURCE_DIR;
const std::string DATABASE = ROOT + "/database/DB_climate_data/";
const std::array<const char*, 2> DATABASE_FILES{"germany_temperature.ccd", "germany_indoor_temperature.ccd"};

std::string fileContent(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

/// Means of the months of a year of 365 days in hourly values.
std::array<double, 12> monthlyMeans(const std::vector<double>& hourly) {
  constexpr std::array<int, 12> DAYS{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::array<double, 12> means{};
  auto begin = hourly.begin();
  for (std::size_t m = 0; m < DAYS.size(); ++m) {
    const auto end = begin + 24 * DAYS[m];
    means[m] = std::accumulate(begin, end, 0.0) / (24.0 * DAYS[m]);
    begin = end;
  }
  return means;
}

}  // namespace

TEST(ClimateDatabase, yearHas8760HoursAndItsEnd) {
  for (const char* const name : DATABASE_FILES) {
    const ClimateSeries s = readSeries(DATABASE + name);
    ASSERT_TRUE(s.ok) << s.errorText;
    ASSERT_EQ(s.times.size(), 8761u);
    for (std::size_t i = 0; i < s.times.size(); ++i) ASSERT_EQ(s.times[i], 3600.0 * static_cast<double>(i));
    EXPECT_EQ(s.values.front(), s.values.back()) << name;
  }
}

TEST(ClimateDatabase, monthlyMeansMatchTheNormals) {
  // area mean of Germany, 1991-2020, Deutscher Wetterdienst [C]
  constexpr std::array<double, 12> NORMALS{0.9, 1.5, 4.6, 9.0, 13.1, 16.4, 18.3, 18.0, 13.8, 9.4, 4.8, 1.8};
  const ClimateSeries s = readSeries(DATABASE + DATABASE_FILES[0]);
  ASSERT_TRUE(s.ok) << s.errorText;
  const std::array<double, 12> means = monthlyMeans(s.values);
  for (std::size_t m = 0; m < NORMALS.size(); ++m)
    EXPECT_NEAR(means[m], NORMALS[m], 0.3) << "month " << m + 1;
}

TEST(ClimateDatabase, outdoorTemperatureStaysPlausible) {
  const ClimateSeries s = readSeries(DATABASE + DATABASE_FILES[0]);
  ASSERT_TRUE(s.ok) << s.errorText;
  for (std::size_t i = 0; i < s.values.size(); ++i) {
    ASSERT_GT(s.values[i], -25.0);
    ASSERT_LT(s.values[i], 40.0);
    if (i > 0) {
      ASSERT_LT(std::abs(s.values[i] - s.values[i - 1]), 4.0) << "hour " << i;
    }
  }
}

TEST(ClimateDatabase, indoorTemperatureLiesBetween20And25) {
  const ClimateSeries s = readSeries(DATABASE + DATABASE_FILES[1]);
  ASSERT_TRUE(s.ok) << s.errorText;
  for (const double value : s.values) {
    ASSERT_GE(value, 20.0);
    ASSERT_LE(value, 25.0);
  }
}

TEST(ClimateDatabase, scriptReproducesTheFilesByteForByte) {
  const std::string directory = ::testing::TempDir() + "climate_database_script";
  const std::string command =
      "python3 '" + ROOT + "/tools/generate_climate.py' --directory '" + directory + "' 2>&1";
  std::FILE* const pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  std::string output;
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) output += static_cast<char>(c);
  ASSERT_EQ(pclose(pipe), 0) << output;
  for (const char* const name : DATABASE_FILES) {
    const std::string written = fileContent(directory + "/" + name);
    EXPECT_FALSE(written.empty()) << name;
    EXPECT_TRUE(written == fileContent(DATABASE + name)) << name;
  }
  std::filesystem::remove_all(directory);
}

TEST(WeatherStations, allSeriesAreReadWithoutComplaint) {
  const std::filesystem::path folder = ROOT + "/../shared/climate";
  if (!std::filesystem::is_directory(folder)) GTEST_SKIP() << "no measured weather in " << folder;
  TKL::MessageCapture messages;
  int count = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
    if (entry.path().extension() != ".ccd") continue;
    VelClimateCond climate;
    climate.name = entry.path().stem().string();
    climate.condition = static_cast<VelClimateCond::condition_t>(
        KeywordList::Enumeration("VelClimateCond::condition_t", climate.name));
    climate.kind = VelClimateCond::K_DATLINEAR;
    climate.fileName = entry.path().string();
    ASSERT_NO_THROW(climate.prepareCalculation({})) << entry.path();
    EXPECT_GE(climate.data.size(), 8760u) << entry.path();
    ++count;
  }
  EXPECT_GT(count, 0);
  EXPECT_TRUE(messages.messages.empty());
}
