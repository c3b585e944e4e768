#include <gtest/gtest.h>

#include <string>

#include "climate/VelClimateCond.h"
#include "support/AllocationCounter.h"

using VELMORA::VelClimateCond;

TEST(ClimateAllocation, newIsCounted) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP() << "the sanitizer has its own operators";
  const std::size_t before = allocationCount();
  auto* const object = new std::string(100, 'x');
  const std::size_t after = allocationCount();
  delete object;
  EXPECT_GT(after, before);
}

TEST(ClimateAllocation, currentValue_allocatesNothing) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP() << "the sanitizer has its own operators";
  VelClimateCond data;
  data.kind = VelClimateCond::K_DATLINEAR;
  data.condition = VelClimateCond::C_RELHUM;
  data.extendData = false;
  data.data.setValues({0.0, 10.0, 20.0}, {0.1, 0.2, 0.3});
  data.para[VelClimateCond::P_SHIFTVALUE].set("SHIFTVALUE", 0.0, "---");
  VelClimateCond sine;
  sine.kind = VelClimateCond::K_2SINUS;
  const std::size_t before = allocationCount();
  for (double t = 0.0; t <= 20.0; t += 0.5) {
    data.calcCurrentValue(t);
    sine.calcCurrentValue(t);
  }
  EXPECT_EQ(allocationCount(), before);
}
