#pragma once

#include <cstddef>

/// Counts the calls of `operator new` in this test binary. The address sanitizer has operators of its own: in
/// its builds nothing is counted and tests of allocations are to be skipped.
#ifdef __SANITIZE_ADDRESS__
inline constexpr bool COUNTS_ALLOCATIONS = false;
#else
inline constexpr bool COUNTS_ALLOCATIONS = true;
#endif

std::size_t allocationCount();

/// While it lives, `operator new` finds no memory for blocks of `bytes` and more.
class MemoryLimit {
 public:
  explicit MemoryLimit(std::size_t bytes);
  ~MemoryLimit();
  MemoryLimit(const MemoryLimit&) = delete;
  MemoryLimit& operator=(const MemoryLimit&) = delete;
};
