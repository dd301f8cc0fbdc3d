// Where line buffers and records come from.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "core/lines.hpp"
#include "wirelines.h"

namespace wirelines {

// A line takes two blocks, its text of 129 bytes and its record. Here both come as one piece of a slab: a thread takes
// lines from its current slab one after another, and a slab goes back to the heap when its last line has been freed,
// on whichever thread. Built with WIRELINES_PLAIN_MALLOC, each block is malloc's, so that sanitizers see its bounds.
// new_text and new_record
// give null when memory is exhausted; has_text tells whether the next text needs none.

#ifdef WIRELINES_PLAIN_MALLOC

inline bool has_text(const Slab* /*current*/) {
  return false;
}

inline char* new_text(Slab*& /*current*/) {
  return static_cast<char*>(std::malloc(129));
}

inline DisplayLine* new_record(char* text) {
  auto* const record = static_cast<DisplayLine*>(std::malloc(sizeof(DisplayLine)));
  if (record != nullptr) record->text = text;
  return record;
}

#else

struct Piece {
  DisplayLine record;
  Slab* slab;
  char text[136];
};

struct Slab {
  static constexpr std::uint32_t kPieces = 180;  // about 32 KiB
  // While a thread takes lines from a slab, its count of live lines is this much too high, so that it cannot reach 0
  // and the owner need not touch it for each new line.
  static constexpr std::uint32_t kOwned = 1U << 30;

  std::atomic<std::uint32_t> live{kOwned};
  std::uint32_t taken = 0;  // pieces handed out; the owner's alone
  Piece pieces[kPieces];
};

bool change_slab(Slab*& current);  // for an empty one; false, and none, when memory is exhausted

inline bool has_text(const Slab* current) {
  return current != nullptr && current->taken != Slab::kPieces;
}

inline char* new_text(Slab*& current) {
  if (!has_text(current) && !change_slab(current)) return nullptr;
  Slab* const slab = current;
  Piece& piece = slab->pieces[slab->taken++];
  piece.slab = slab;
  piece.record.text = piece.text;
  return piece.text;
}

inline DisplayLine* new_record(char* text) {
  return &reinterpret_cast<Piece*>(text - offsetof(Piece, text))->record;
}

#endif

void free_text(char* text);                                  // a text that no record was made for
void free_lines(void* const* records, std::uint32_t count);  // records with their texts

}  // namespace wirelines
