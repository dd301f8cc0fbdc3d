#include "modules/allocation.hpp"

#include <cstddef>
#include <cstdlib>
#include <new>

constinit thread_local int g_allocations = 0;
constinit thread_local int g_allocations_left = -1;

#ifndef ALLOCATIONS_HIDDEN
void* operator new(std::size_t size) {
  ++g_allocations;
  if (g_allocations_left == 0) throw std::bad_alloc();
  if (g_allocations_left > 0) --g_allocations_left;
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}
#endif
