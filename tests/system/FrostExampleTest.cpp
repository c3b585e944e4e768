#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "support/TempFolder.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

using Replacements = std::map<std::string, std::string>;
using Records = std::vector<std::vector<double>>;  // time and values

/// Steps for the sake of time.
const Replacements::value_type COARSE{"MAX_DT = 10 min\nREL_TOL = 7e-7", "MAX_DT = 30 min\nREL_TOL = 1e-5"};

/// The facade in frost, run in a folder of its own with coarse steps and some pieces of its text replaced.
class FacadeRun {
 public:
  explicit FacadeRun(const Replacements& replacements = {}) {
    std::ostringstream content;
    content << std::ifstream(VELMORA_SOURCE_DIR "/examples/frozen_facade/frozen_facade.vel").rdbuf();
    std::string text = content.str();
    Replacements all = replacements;
    all.insert(COARSE);
    for (const auto& [from, to] : all) {
      const std::size_t position = text.find(from);
      EXPECT_NE(position, std::string::npos) << from;
      if (position != std::string::npos) text.replace(position, from.size(), to);
    }
    result = runSolver({"-x", "-v1", folder_.write("facade.vel", text)});
    EXPECT_EQ(result.exitCode, 0) << result.out << result.err;
  }

  /// The records of an output file, which follow its last empty line.
  Records records(const std::string& file) const {
    std::istringstream content(folder_.read("facade.results/" + file));
    Records rows;
    for (std::string line; std::getline(content, line);) {
      if (line.empty()) rows.clear();
      std::istringstream words(line);
      std::vector<double> row;
      for (double value = 0.0; words >> value;) row.push_back(value);
      if (!row.empty()) rows.push_back(row);
    }
    EXPECT_FALSE(rows.empty()) << file;
    return rows;
  }
  double mostIce() const {
    double most = 0.0;
    for (const auto& record : records("ice.out")) most = std::max(most, record[1]);
    return most;
  }

  ProcessResult result;

 private:
  TKL::TempFolder folder_;
};

#ifdef __SANITIZE_ADDRESS__
constexpr bool RUNS_SLOWLY = true;  // ten times as long
#else
constexpr bool RUNS_SLOWLY = false;
#endif
const Replacements UNTIL_FEBRUARY{{"DURATION = 181 d", "DURATION = 130 d"}};  // behind the hardest frost
constexpr double ONE_PERCENT = 1.0;  // [%] of the pores with ice, at which the facade counts as frozen

}  // namespace

TEST(FrozenFacadeExample, cycles_areThoseOfTheRecordedIceAndTemperature) {
  constexpr int DAYS = RUNS_SLOWLY ? 95 : 181;
  const FacadeRun run(Replacements{{"DURATION = 181 d", "DURATION = " + std::to_string(DAYS) + " d"}});
  const Records celsius = run.records("temperature.out"), ice = run.records("ice_surface.out"),
                cycles = run.records("cycles_surface.out");
  ASSERT_EQ(celsius.size(), DAYS * 8U + 1);
  bool frozen = false;
  double counted = 0.0;
  for (std::size_t i = 0; i < celsius.size(); ++i) {
    if (!frozen) {
      frozen = ice[i][1] >= ONE_PERCENT;
    } else if (celsius[i][1] > 0.0) {
      frozen = false;
      ++counted;
    }
    // a record of every third hour sees a change that late
    const double later = cycles[std::min(i + 1, cycles.size() - 1)][1];
    ASSERT_TRUE(counted == cycles[i][1] || counted == later) << celsius[i][0];
  }
  EXPECT_GE(counted, 1.0);
}

TEST(FrozenFacadeExample, frost_reachesTheOuterPartOnly) {
  if (RUNS_SLOWLY) GTEST_SKIP();
  const FacadeRun run(UNTIL_FEBRUARY);
  const Records cycles = run.records("cycles_profile.out"), ice = run.records("ice_profile.out");
  for (std::size_t k = 1; k < cycles.front().size(); ++k)
    for (std::size_t i = 1; i < cycles.size(); ++i) ASSERT_GE(cycles[i][k], cycles[i - 1][k]) << k;
  EXPECT_GE(cycles.back()[1], 1.0);
  EXPECT_EQ(cycles.back().back(), 0.0);  // the brick behind the old plaster
  double atFront = 0.0, atBack = 0.0;
  for (const auto& record : ice) {
    atFront = std::max(atFront, record[1]);
    atBack = std::max(atBack, record.back());
  }
  EXPECT_GT(atFront, ONE_PERCENT);
  EXPECT_LT(atBack, ONE_PERCENT);
}

TEST(FrozenFacadeExample, brickInPlaceOfTheInsulation_keepsTheFacadeFromFrost) {
  if (RUNS_SLOWLY) GTEST_SKIP();
  const FacadeRun run(Replacements{{"ExpandedPolystyrene_2005", "Brick_2001"}, *UNTIL_FEBRUARY.begin()});
  const std::vector<double> last = run.records("cycles_profile.out").back();
  EXPECT_EQ(*std::max_element(last.begin() + 1, last.end()), 0.0);
}

TEST(FrozenFacadeExample, wetWallInTheWinterOfMannheim_runsThrough) {
  const std::string weather = VELMORA_SOURCE_DIR "/../shared/climate/mannheim/";
  if (!std::filesystem::exists(weather + "TEMPER.ccd")) GTEST_SKIP() << "needs " << weather;
  const FacadeRun run(
      Replacements{{"$(CLIMATE_DIR)/germany_temperature.ccd", weather + "TEMPER.ccd"},
                   {"$(CLIMATE_DIR)/germany_relative_humidity.ccd", weather + "RELHUM.ccd"},
                   {"$(CLIMATE_DIR)/germany_wind_velocity.ccd", weather + "WINDVEL.ccd"},
                   {"$(CLIMATE_DIR)/germany_wind_direction.ccd", weather + "WINDDIR.ccd"},
                   {"TYPE = RELHUM\nVALUE = 80 %", "TYPE = MSTMASS\nVALUE = 200 kg/m3"},
                   {"START_TIME = 23587200", "START_TIME = 28857600"},
                   {"DURATION = 181 d", RUNS_SLOWLY ? "DURATION = 20 d" : "DURATION = 90 d"}});
  EXPECT_GT(run.mostIce(), 5.0);  // [kg/m2]
  EXPECT_GE(run.records("cycles_surface.out").back()[1], 1.0);
  EXPECT_NE(run.result.out.find("Global count of Ice decomposition iterations : "), std::string::npos);
  const std::string all = run.result.out + run.result.err;
  for (const char* const trouble : {"No convergence", "Convergence warning", "Adjusting relative tolerance"})
    EXPECT_EQ(all.find(trouble), std::string::npos) << trouble;
}

}  // namespace VELMORA_TEST
