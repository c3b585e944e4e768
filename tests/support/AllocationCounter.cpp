#include "support/AllocationCounter.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace {
constexpr std::size_t NO_LIMIT = std::numeric_limits<std::size_t>::max();

std::size_t allocations = 0;
std::size_t memoryLimit = NO_LIMIT;
}  // namespace

std::size_t allocationCount() {
  return allocations;
}

MemoryLimit::MemoryLimit(std::size_t bytes) {
  memoryLimit = bytes;
}

MemoryLimit::~MemoryLimit() {
  memoryLimit = NO_LIMIT;
}

#ifndef __SANITIZE_ADDRESS__

void* operator new(std::size_t size) {
  ++allocations;
  if (size >= memoryLimit) throw std::bad_alloc();
  if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

#endif
