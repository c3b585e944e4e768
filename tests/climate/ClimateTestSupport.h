#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "climate/ClimateFile.h"

namespace VELMORA {

/// What a climate file reader hands back.
struct ClimateSeries {
  bool ok = false;
  std::vector<double> times;
  std::vector<double> values;
  std::string typeName;
  std::string unitName;
  std::string comment;
  std::string errorText;
};

inline ClimateSeries readSeries(const TKL::Path& path) {
  ClimateSeries s;
  s.ok = read_climate_file(path, s.times, s.values, s.typeName, s.unitName, s.comment, s.errorText);
  return s;
}

inline ClimateSeries parseCcd(std::string_view content) {
  ClimateSeries s;
  s.ok = parse_CCD(content, s.times, s.values, s.typeName, s.unitName, s.comment, s.errorText);
  return s;
}

inline ClimateSeries parseCli(std::string_view content) {
  ClimateSeries s;
  s.ok = parse_CLI(content, "x.cli", s.times, s.values, s.typeName, s.unitName, s.comment, s.errorText);
  return s;
}

/// Writes a file that belongs to the running test alone.
inline TKL::Path testFile(const std::string& name, std::string_view content) {
  const auto* const info = ::testing::UnitTest::GetInstance()->current_test_info();
  const std::string path =
      ::testing::TempDir() + "climate_" + info->test_suite_name() + "_" + info->name() + "_" + name;
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

}  // namespace VELMORA
