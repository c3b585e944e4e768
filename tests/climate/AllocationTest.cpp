#include <gtest/gtest.h>

#include <cstdlib>
#include <new>
#include <string>

#include "climate/VelClimateCond.h"

#ifndef __SANITIZE_ADDRESS__  // the address sanitizer has its own operators

namespace {

long allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

using VELMORA::VelClimateCond;

TEST(ClimateAllocation, newIsCounted) {
  const long before = allocations;
  auto* const object = new std::string(100, 'x');
  const long after = allocations;
  delete object;
  EXPECT_GT(after, before);
}

TEST(ClimateAllocation, currentValue_allocatesNothing) {
  VelClimateCond data;
  data.kind = VelClimateCond::K_DATLINEAR;
  data.condition = VelClimateCond::C_RELHUM;
  data.extendData = false;
  data.data.setValues({0.0, 10.0, 20.0}, {0.1, 0.2, 0.3});
  data.para[VelClimateCond::P_SHIFTVALUE].set("SHIFTVALUE", 0.0, "---");
  VelClimateCond sine;
  sine.kind = VelClimateCond::K_2SINUS;
  const long before = allocations;
  for (double t = 0.0; t <= 20.0; t += 0.5) {
    data.calcCurrentValue(t);
    sine.calcCurrentValue(t);
  }
  EXPECT_EQ(allocations, before);
}

#endif
