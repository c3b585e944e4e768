#pragma once

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace VELMORA_TEST {

/// A climate series as a test needs it: numbers as they stand in a CCD file, joined by straight lines.
class ClimateCourse {
 public:
  explicit ClimateCourse(const std::string& path) {
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
      std::istringstream words(line);
      int day = 0, hours = 0, minutes = 0;
      char colon = 0, second = 0;
      std::string seconds;
      double value = 0.0;
      if (words >> day >> hours >> colon >> minutes >> second >> seconds >> value)
        points_.emplace_back(day * 86400.0 + hours * 3600.0 + minutes * 60.0, value);
    }
    if (points_.size() < 2) throw std::runtime_error("No climate series in " + path);
  }

  /// Value at a time [s] from the start of the year.
  double at(double t) const {
    const auto right = std::lower_bound(points_.begin() + 1, points_.end() - 1, std::make_pair(t, 0.0));
    const auto left = right - 1;
    return left->second + (right->second - left->second) * (t - left->first) / (right->first - left->first);
  }

 private:
  std::vector<std::pair<double, double>> points_;  ///< [s], unit of the file
};

}  // namespace VELMORA_TEST
