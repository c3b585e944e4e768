#include "foundation/IntervalIndex.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace TKL {

namespace {

std::size_t searched(const std::vector<double>& x, double at) {
  return static_cast<std::size_t>(std::lower_bound(x.begin(), x.end(), at) - x.begin());
}

/// At all values, beside them, and at random ones between; a table without an index covers nothing.
void expectSameAsSearch(const std::vector<double>& x, bool hasIndex = true) {
  const IntervalIndex index(x);
  EXPECT_EQ(index.covers(x.back()), hasIndex);
  std::mt19937 random(7);
  std::uniform_real_distribution<double> between(x.front(), x.back());
  const double infinity = std::numeric_limits<double>::infinity();
  for (const double value : x)
    for (const double at : {value, std::nextafter(value, -infinity), std::nextafter(value, infinity)}) {
      ASSERT_TRUE(!index.covers(at) || (at > x.front() && at <= x.back()));
      if (!index.covers(at)) continue;
      ASSERT_EQ(index.firstNotBelow(x.data(), at), searched(x, at)) << at;
    }
  for (int i = 0; i < 2000; ++i) {
    const double at = between(random);
    if (!index.covers(at)) continue;
    ASSERT_EQ(index.firstNotBelow(x.data(), at), searched(x, at)) << at;
  }
}

}  // namespace

TEST(IntervalIndex, equalSteps_areFoundLikeByHalves) {
  std::vector<double> x;
  for (int i = 0; i < 300; ++i) x.push_back(0.1 * i);
  expectSameAsSearch(x);
}

TEST(IntervalIndex, stepsOverManyDecades_areFoundLikeByHalves) {
  std::vector<double> x;
  for (int i = 0; i < 120; ++i) x.push_back(std::pow(10.0, -12.0 + 0.15 * i));
  expectSameAsSearch(x);
}

TEST(IntervalIndex, crowdBesideASingleValue_isFoundLikeByHalves) {
  std::vector<double> x;
  for (int i = 0; i < 500; ++i) x.push_back(1.0 + 1e-9 * i);
  x.push_back(1000.0);
  expectSameAsSearch(x);
}

TEST(IntervalIndex, neighbouringNumbers_areFoundLikeByHalves) {
  std::vector<double> x = {1.0};
  while (x.size() < 20) x.push_back(std::nextafter(x.back(), 2.0));
  expectSameAsSearch(x, false);
}

TEST(IntervalIndex, twoValues_areFoundLikeByHalves) {
  expectSameAsSearch({-3.0, 5.0});
}

TEST(IntervalIndex, subnormalAndHugeRanges_areFoundLikeByHalves) {
  const double tiny = std::numeric_limits<double>::denorm_min();
  expectSameAsSearch({0.0, tiny, 2 * tiny, 3 * tiny}, false);
  const double huge = 0.9 * std::numeric_limits<double>::max();
  const std::vector<double> x = {-huge, 0.0, 1.0, huge};
  EXPECT_FALSE(IntervalIndex(x).covers(0.5));
}

TEST(IntervalIndex, whatIsNotBetweenTheEnds_isNotCovered) {
  const IntervalIndex index({1.0, 2.0, 3.0, 4.0});
  for (const double at : {std::nan(""), 0.5, 1.0, 4.1}) EXPECT_FALSE(index.covers(at)) << at;
  EXPECT_FALSE(IntervalIndex().covers(0.0));
  EXPECT_FALSE(IntervalIndex({1.0}).covers(1.0));
}

}  // namespace TKL
