#pragma once

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "material/Material.h"

namespace MM {

/// Folder of the material files that go with the program.
inline std::filesystem::path shippedFolder() {
  return std::filesystem::path(VELMORA_SOURCE_DIR) / "database/DB_material_data";
}

/// All of them, by name.
inline std::vector<std::filesystem::path> shippedFiles() {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(shippedFolder()))
    if (entry.path().extension() == ".m6") files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

inline Material shippedMaterial(const std::filesystem::path& file) {
  Material material;
  material.read(TKL::Path(file.string()));
  return material;
}

/// `count` numbers from `first` to `last`, with a constant ratio.
inline std::vector<double> logSpaced(double first, double last, std::size_t count) {
  std::vector<double> values;
  for (std::size_t i = 0; i < count; ++i)
    values.push_back(first * std::pow(last / first, static_cast<double>(i) / static_cast<double>(count - 1)));
  return values;
}

/// `count` numbers from `first` to `last`, with a constant difference.
inline std::vector<double> evenlySpaced(double first, double last, std::size_t count) {
  std::vector<double> values;
  for (std::size_t i = 0; i < count; ++i)
    values.push_back(first + (last - first) * static_cast<double>(i) / static_cast<double>(count - 1));
  return values;
}

using Curve = std::function<double(double)>;

/// Largest |back(there(x)) / x - 1|; not a number counts as infinite.
inline double largestReturnError(const std::vector<double>& xs, const Curve& there, const Curve& back) {
  double largest = 0.0;
  for (const double x : xs) {
    const double error = std::fabs(back(there(x)) / x - 1.0);
    largest = std::isnan(error) ? HUGE_VAL : std::max(largest, error);
  }
  return largest;
}

/// Number of steps from one x to the next in which the curve does not fall by more than `-tolerance`.
inline std::size_t stepsNotFalling(const std::vector<double>& xs, const Curve& curve,
                                   double tolerance = 0.0) {
  std::size_t count = 0;
  for (std::size_t i = 1; i < xs.size(); ++i)
    if (!(curve(xs[i]) < curve(xs[i - 1]) + tolerance)) ++count;
  return count;
}

/// Number of points in which the curve is not a finite number above 0.
inline std::size_t pointsNotPositive(const std::vector<double>& xs, const Curve& curve) {
  return static_cast<std::size_t>(std::count_if(xs.begin(), xs.end(), [&](double x) {
    const double y = curve(x);
    return !(y > 0.0) || std::isinf(y);
  }));
}

/// Largest share by which a difference quotient of `integral` leaves the range of `integrand`. The quotient
/// is taken from each x to `next(x)`, the range over some points from one such step before to one step
/// behind: a table that is no coarser than a step stays inside.
inline double largestQuotientError(const std::vector<double>& xs, const Curve& next, const Curve& previous,
                                   const Curve& integral, const Curve& integrand) {
  constexpr std::size_t SAMPLES = 11;
  double largest = 0.0;
  for (const double x : xs) {
    const double quotient = (integral(next(x)) - integral(x)) / (next(x) - x);
    double low = HUGE_VAL, high = -HUGE_VAL;
    for (const double at : evenlySpaced(previous(x), next(next(x)), SAMPLES)) {
      low = std::min(low, integrand(at));
      high = std::max(high, integrand(at));
    }
    const double error = std::max(low / quotient - 1.0, quotient / high - 1.0);
    largest = std::isnan(error) ? HUGE_VAL : std::max(largest, error);
  }
  return largest;
}

/// Largest |actual / expected - 1|.
inline double largestRelativeError(const std::vector<double>& xs, const Curve& actual,
                                   const Curve& expected) {
  double largest = 0.0;
  for (const double x : xs) {
    const double error = std::fabs(actual(x) / expected(x) - 1.0);
    largest = std::isnan(error) ? HUGE_VAL : std::max(largest, error);
  }
  return largest;
}

/// Largest |actual - expected|.
inline double largestError(const std::vector<double>& xs, const Curve& actual, const Curve& expected) {
  double largest = 0.0;
  for (const double x : xs) {
    const double error = std::fabs(actual(x) - expected(x));
    largest = std::isnan(error) ? HUGE_VAL : std::max(largest, error);
  }
  return largest;
}

}  // namespace MM
