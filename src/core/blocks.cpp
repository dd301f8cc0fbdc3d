// Line buffers and records, from slabs or from malloc.
#include "core/blocks.hpp"

#include <new>

namespace wirelines {

#ifdef WIRELINES_PLAIN_MALLOC

void free_text(char* text) {
  std::free(text);
}

void free_lines(void* const* records, std::uint32_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    auto* const record = static_cast<DisplayLine*>(records[i]);
    if (record != nullptr) std::free(record->text);
    std::free(record);
  }
}

#else

namespace {

void drop_slab(Slab* slab) {
  slab->~Slab();
  std::free(slab);
}

// Gives up taking from the current slab; its last line frees it, or nobody's.
void retire(Slab*& current) {
  Slab* const slab = current;
  if (slab == nullptr) return;
  current = nullptr;
  const std::uint32_t surplus = Slab::kOwned - slab->taken;
  if (slab->live.fetch_sub(surplus, std::memory_order_acq_rel) == surplus) drop_slab(slab);
}

// Gives up a thread's slab when the thread ends.
struct RetireAtExit {
  bool armed = false;
  ~RetireAtExit() { retire(state().slab); }
};
thread_local RetireAtExit retire_at_exit;

void release(Slab* slab, std::uint32_t lines) {
  const std::uint32_t before = slab->live.fetch_sub(lines, std::memory_order_acq_rel);
  if (before == lines) {
    drop_slab(slab);
  } else if (slab == state().slab && before - lines == Slab::kOwned - slab->taken) {
    retire(state().slab);  // its lines are all gone, and so nothing outlives them
  }
}

}  // namespace

bool change_slab(Slab*& current) {
  retire(current);
  void* const memory = std::malloc(sizeof(Slab));
  if (memory == nullptr) return false;
  current = new (memory) Slab;
  retire_at_exit.armed = true;
  return true;
}

void free_text(char* text) {
  release(reinterpret_cast<Piece*>(text - offsetof(Piece, text))->slab, 1);
}

void free_lines(void* const* records, std::uint32_t count) {
  Slab* slab = nullptr;
  std::uint32_t lines = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (records[i] == nullptr) continue;
    Slab* const of_record = static_cast<Piece*>(records[i])->slab;
    if (of_record != slab) {
      if (slab != nullptr) release(slab, lines);
      slab = of_record;
      lines = 0;
    }
    ++lines;
  }
  if (slab != nullptr) release(slab, lines);
}

#endif

}  // namespace wirelines
