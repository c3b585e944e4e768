#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace TKL {

/// Finds the interval of a table that a value lies in, with the help of equal buckets over the range of the
/// table instead of a search by halves. The result is the same to the last bit.
class IntervalIndex {
 public:
  IntervalIndex() = default;

  /// @param x strictly increasing values; there is no index of less than two
  explicit IntervalIndex(const std::vector<double>& x) {
    constexpr std::size_t LONG = 10000;  // a table of which many more buckets would fill the cache
    if (x.size() < 2 || x.size() > std::numeric_limits<std::uint32_t>::max() / 4) return;
    const std::size_t mostPerInterval = x.size() < LONG ? 32 : 2;
    for (std::size_t perInterval = 2; perInterval <= mostPerInterval; perInterval *= 2)
      if (!build(x, perInterval * x.size()) || !isCrowded_) return;
  }

  /// Whether `at` lies above the first and not above the last value; false for NaN and without an index.
  bool covers(double at) const { return at > front_ && at <= back_; }

  /// Number of the first of the values `x`, those of the construction, that is not less than a value `at`
  /// that the index covers.
  std::size_t firstNotBelow(const double* x, double at) const {
    const std::uint32_t* const bounds = first_.data() + static_cast<std::ptrdiff_t>((at - front_) * scale_);
    std::size_t k = bounds[0];
    if (isCrowded_) k = static_cast<std::size_t>(std::lower_bound(x + bounds[0], x + bounds[1], at) - x);
    while (x[k] < at) ++k;
    return k;
  }

 private:
  /// @return false for a range without buckets
  bool build(const std::vector<double>& x, std::size_t nBuckets) {
    constexpr double EARLIER = 1e-6;  // in widths of a bucket: far above the rounding of a value's bucket
    const double perWidth = static_cast<double>(nBuckets) / (x.back() - x.front());
    // a range that overflows, has subnormal width or leaves no room between its ends has no buckets
    if (!(perWidth > 0.0 && perWidth < std::numeric_limits<double>::max())) return false;
    if (!(std::max(std::fabs(x.front()), std::fabs(x.back())) * perWidth < EARLIER / EPSILON)) return false;
    front_ = x.front();
    back_ = x.back();
    scale_ = perWidth;
    isCrowded_ = false;
    first_.clear();
    first_.reserve(nBuckets + 2);  // the last value may be rounded into a bucket of its own
    std::size_t k = 0;
    for (std::size_t b = 0; b < nBuckets + 2; ++b) {
      const double edge = x.front() + (static_cast<double>(b) - EARLIER) / perWidth;
      const std::size_t before = k;
      while (k + 1 < x.size() && x[k] < edge) ++k;
      first_.push_back(static_cast<std::uint32_t>(k));
      if (k - before > FEW) isCrowded_ = true;
    }
    return true;
  }

  static constexpr std::size_t FEW = 8;  ///< values in a bucket that are quickly tried one by one
  static constexpr double EPSILON = std::numeric_limits<double>::epsilon();

  double front_ = 0.0;
  double back_ = -1.0;                ///< covers nothing
  double scale_ = 0.0;                ///< buckets per unit of x
  bool isCrowded_ = false;            ///< some bucket holds more than a few values
  std::vector<std::uint32_t> first_;  ///< by bucket, and behind the last one: first value not below its edge
};

}  // namespace TKL
