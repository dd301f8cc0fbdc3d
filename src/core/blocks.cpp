// Line buffers and records, from slabs or from malloc.
#include "core/blocks.hpp"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace wirelines {

#ifdef WIRELINES_PLAIN_MALLOC

char* new_text() {
  return static_cast<char*>(std::malloc(129));
}

DisplayLine* new_record(char* text) {
  auto* const record = static_cast<DisplayLine*>(std::malloc(sizeof(DisplayLine)));
  if (record != nullptr) record->text = text;
  return record;
}

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

struct Slab;

struct Piece {
  DisplayLine record;
  Slab* slab;
  char text[136];
};

constexpr std::uint32_t kPiecesPerSlab = 180;  // about 32 KiB
// A slab counts its live lines. While a thread still takes lines from it, the count is kept this much too high, so
// that it cannot reach 0 and the owner need not touch it for each new line.
constexpr std::uint32_t kOwned = 1U << 30;

struct Slab {
  std::atomic<std::uint32_t> live{kOwned};
  std::uint32_t taken = 0;  // pieces handed out; the owner's alone
  Piece pieces[kPiecesPerSlab];
};

void drop_slab(Slab* slab) {
  slab->~Slab();
  std::free(slab);
}

struct CurrentSlab {
  Slab* slab = nullptr;

  CurrentSlab() = default;
  CurrentSlab(const CurrentSlab&) = delete;
  CurrentSlab& operator=(const CurrentSlab&) = delete;
  ~CurrentSlab() { retire(); }

  // Gives up taking from the slab; its last line frees it, or nobody's.
  void retire() {
    if (slab == nullptr) return;
    Slab* const old = slab;
    slab = nullptr;
    const std::uint32_t surplus = kOwned - old->taken;
    if (old->live.fetch_sub(surplus, std::memory_order_acq_rel) == surplus) drop_slab(old);
  }
};

thread_local CurrentSlab current;

Piece* piece_of(char* text) {
  return reinterpret_cast<Piece*>(text - offsetof(Piece, text));
}

void release(Slab* slab, std::uint32_t lines) {
  const std::uint32_t before = slab->live.fetch_sub(lines, std::memory_order_acq_rel);
  if (before == lines) {
    drop_slab(slab);
  } else if (slab == current.slab && before - lines == kOwned - slab->taken) {
    current.retire();  // its lines are all gone, and so nothing outlives them
  }
}

}  // namespace

char* new_text() {
  Slab* slab = current.slab;
  if (slab == nullptr || slab->taken == kPiecesPerSlab) {
    current.retire();
    void* const memory = std::malloc(sizeof(Slab));
    if (memory == nullptr) return nullptr;
    slab = current.slab = new (memory) Slab;
  }
  Piece& piece = slab->pieces[slab->taken++];
  piece.slab = slab;
  piece.record.text = piece.text;
  return piece.text;
}

DisplayLine* new_record(char* text) {
  return &piece_of(text)->record;
}

void free_text(char* text) {
  release(piece_of(text)->slab, 1);
}

void free_lines(void* const* records, std::uint32_t count) {
  Slab* slab = nullptr;
  std::uint32_t lines = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    auto* const record = static_cast<DisplayLine*>(records[i]);
    if (record == nullptr) continue;
    Slab* const of_record = reinterpret_cast<Piece*>(record)->slab;
    if (of_record != slab && slab != nullptr) {
      release(slab, lines);
      lines = 0;
    }
    slab = of_record;
    ++lines;
  }
  if (slab != nullptr) release(slab, lines);
}

#endif

}  // namespace wirelines
