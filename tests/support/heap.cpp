#include "support/heap.hpp"

#include <atomic>
#include <cstddef>

#include "vek4001.h"

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
void __wrap_free(void* block);
}

namespace {

constexpr int64_t kNever = INT64_MAX;
#ifdef _WIN32
// What is a thread's own is allocated there at its first use, by the very calls that end here.
int64_t until_failure = kNever;
#else
thread_local int64_t until_failure = kNever;
#endif
std::atomic<int64_t> live;
std::atomic<int64_t> allocated;
std::atomic<int32_t> messages;

bool may_allocate() {
  if (until_failure == kNever) return true;
  if (until_failure == 0) return false;
  --until_failure;
  return true;
}

}  // namespace

void* __wrap_malloc(std::size_t size) {
  void* const block = may_allocate() ? __real_malloc(size) : nullptr;
  if (block != nullptr) {
    ++live;
    ++allocated;
  }
  return block;
}

void* __wrap_realloc(void* block, std::size_t size) {
  void* const grown = may_allocate() ? __real_realloc(block, size) : nullptr;
  if (grown != nullptr) {
    ++allocated;
    if (block == nullptr) ++live;
  }
  return grown;
}

void __wrap_free(void* block) {
  if (block != nullptr) --live;
  __real_free(block);
}

namespace wirelines::test {

void fail_after(int64_t allocations) {
  until_failure = allocations;
}
void fail_no_more() {
  until_failure = kNever;
}
int64_t live_blocks() {
  return live;
}
int64_t allocations() {
  return allocated;
}
int32_t memory_messages() {
  return messages;
}

void count_memory_messages() {
  SetErrMessageHandler([](int32_t code, const char*, void*) { messages += code == VEK4001_OUT_OF_MEMORY ? 1 : 0; },
                       nullptr);
}

}  // namespace wirelines::test
