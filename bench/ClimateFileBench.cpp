// Reading of a CCD file of a million lines: the file alone, and with what a climate condition makes of it.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <vector>

#include "climate/ClimateFile.h"
#include "climate/VelClimateCond.h"

namespace {

constexpr int LINES = 1000000;

/// A file with a value for each minute.
class MinuteFile {
 public:
  MinuteFile()
      : path_((std::filesystem::temp_directory_path() / ("minutes_" + std::to_string(getpid()) + ".ccd"))
                  .string()) {
    constexpr int MINUTES_PER_DAY = 1440, MINUTES_PER_HOUR = 60;
    std::string text = "# a value for each minute\nTEMPER C\n";
    for (int minute = 0; minute < LINES; ++minute) {
      char line[64];
      std::snprintf(line, sizeof(line), "%d\t%02d:%02d:00\t%.3f\n", minute / MINUTES_PER_DAY,
                    minute % MINUTES_PER_DAY / MINUTES_PER_HOUR, minute % MINUTES_PER_HOUR,
                    0.001 * (minute % 40000) - 10.0);
      text += line;
    }
    std::ofstream(path_, std::ios::binary) << text;
  }
  ~MinuteFile() { std::filesystem::remove(path_); }
  MinuteFile(const MinuteFile&) = delete;
  MinuteFile& operator=(const MinuteFile&) = delete;

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

void readCcdFile(benchmark::State& state) {
  const MinuteFile file;
  std::vector<double> times, values;
  std::string typeName, unitName, comment, errorText;
  for ([[maybe_unused]] const auto& pass : state) {
    if (!VELMORA::read_CCD(file.path(), times, values, typeName, unitName, comment, errorText)) {
      state.SkipWithError(errorText.c_str());
    }
  }
  state.SetItemsProcessed(state.iterations() * LINES);
}
BENCHMARK(readCcdFile)->Unit(benchmark::kMillisecond);

void prepareClimateFromCcdFile(benchmark::State& state) {
  const MinuteFile file;
  for ([[maybe_unused]] const auto& pass : state) {
    VELMORA::VelClimateCond condition;
    std::string typeName;
    TKL::Unit unit;
    condition.readClimateData(file.path(), typeName, unit);
    benchmark::DoNotOptimize(condition.data.x.data());
  }
  state.SetItemsProcessed(state.iterations() * LINES);
}
BENCHMARK(prepareClimateFromCcdFile)->Unit(benchmark::kMillisecond);

}  // namespace
