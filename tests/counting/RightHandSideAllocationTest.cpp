#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "bench/RateCase.h"
#include "support/AllocationCounter.h"

namespace VELMORA_TEST {

namespace {

constexpr int EVALUATIONS = 1000;

/// Calls of `operator new` while the right-hand side is evaluated at changing times and states. In the first
/// evaluation every cell is decomposed for the first time; it does not count.
std::size_t allocations(VELMORA_BENCH::RateCase& rates) {
  rates.evaluate();
  const std::size_t before = allocationCount();
  for (int i = 0; i < EVALUATIONS; ++i) rates.evaluate();
  return allocationCount() - before;
}

std::string exampleText(const std::string& name) {
  std::ostringstream text;
  text << std::ifstream(VELMORA_SOURCE_DIR "/examples/" + name + "/" + name + ".vel").rdbuf();
  return text.str();
}

std::string testName(const ::testing::TestParamInfo<const char*>& info) {
  std::string name = info.param;
  for (char& letter : name)
    if (std::isalnum(static_cast<unsigned char>(letter)) == 0) letter = '_';
  return name;
}

class AllocationOfBalances : public ::testing::TestWithParam<const char*> {};
class AllocationOfExample : public ::testing::TestWithParam<const char*> {};

}  // namespace

TEST_P(AllocationOfBalances, thousandEvaluations_allocateNothing) {
  VELMORA_BENCH::RateCase rates(VELMORA_BENCH::RateBody{20, 5, GetParam()});
  EXPECT_EQ(allocations(rates), 0U);
}

INSTANTIATE_TEST_SUITE_P(Each, AllocationOfBalances, ::testing::ValuesIn(VELMORA_BENCH::BALANCES), testName);

/// What the body has not: sources, pipes, leaks, gas gaps, contact conditions, water.
TEST_P(AllocationOfExample, thousandEvaluations_allocateNothing) {
  VELMORA_BENCH::RateCase rates(exampleText(GetParam()));
  EXPECT_EQ(allocations(rates), 0U);
}

INSTANTIATE_TEST_SUITE_P(Each, AllocationOfExample,
                         ::testing::Values("corner", "flat_roof", "floor_covering", "frozen_facade",
                                           "glazed_gap", "heated_floor", "insulation_anchor", "leaky_roof",
                                           "rising_damp", "west_wall"),
                         testName);

TEST(AllocationControl, counter_seesAnAllocation) {
  const std::size_t before = allocationCount();
  const auto block = std::make_unique<std::string>(1000, 'x');
  EXPECT_GE(allocationCount() - before, block->empty() ? 0U : 2U);
}

}  // namespace VELMORA_TEST
