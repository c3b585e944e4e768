#pragma once

#include <algorithm>
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

  /// @param x strictly increasing values
  explicit IntervalIndex(const std::vector<double>& x) {
    constexpr std::size_t BUCKETS_PER_INTERVAL = 2;
    if (x.size() < 3 || x.size() > std::numeric_limits<std::uint32_t>::max() / 4) return;
    const std::size_t nBuckets = BUCKETS_PER_INTERVAL * x.size();
    const double perWidth = static_cast<double>(nBuckets) / (x.back() - x.front());
    // a range that overflows or has subnormal width has no buckets
    if (!(perWidth > 0.0 && perWidth < std::numeric_limits<double>::max())) return;
    scale_ = perWidth;
    first_.reserve(nBuckets + 1);
    std::size_t k = 0;
    for (std::size_t b = 0; b <= nBuckets; ++b) {
      const double edge = x.front() + static_cast<double>(b) / perWidth;
      while (k + 1 < x.size() && x[k] < edge) ++k;
      first_.push_back(static_cast<std::uint32_t>(k));
    }
  }

  /// Number of the first of the values `x`, those of the construction, that is not less than `at`, which must
  /// not be above the last one. 0 for NaN.
  std::size_t firstNotBelow(const std::vector<double>& x, double at) const {
    if (first_.empty()) return static_cast<std::size_t>(std::lower_bound(x.begin(), x.end(), at) - x.begin());
    if (!(at > x.front())) return 0;
    constexpr std::uint32_t FEW = 8;
    const auto bucket = std::min(static_cast<std::size_t>((at - x.front()) * scale_), first_.size() - 2);
    std::size_t k = first_[bucket];
    const std::size_t end = first_[bucket + 1];
    if (end - k > FEW)
      k = static_cast<std::size_t>(std::lower_bound(x.begin() + static_cast<std::ptrdiff_t>(k),
                                                    x.begin() + static_cast<std::ptrdiff_t>(end), at) -
                                   x.begin());
    while (x[k] < at) ++k;                // rounding at the edge of a bucket may have put the value
    while (k > 0 && x[k - 1] >= at) --k;  // into the next one, or into the one before
    return k;
  }

 private:
  double scale_ = 0.0;                ///< buckets per unit of x
  std::vector<std::uint32_t> first_;  ///< by bucket, and behind the last one: first value not below its edge
};

}  // namespace TKL
