// Where line buffers and records come from.
#pragma once

#include <cstdint>

#include "wirelines.h"

namespace wirelines {

// A line takes two blocks, its text of 129 bytes and its record. Here both come as one piece of a slab: a thread takes
// lines from its current slab one after another, and a slab goes back to the heap when its last line has been freed,
// on whichever thread. Built with WIRELINES_PLAIN_MALLOC, each block is malloc's, so that sanitizers see its bounds.

char* new_text();                     // null when memory is exhausted
DisplayLine* new_record(char* text);  // the record for a text of new_text; null when memory is exhausted
void free_text(char* text);           // a text that no record was made for
void free_lines(void* const* records, std::uint32_t count);  // records with their texts

}  // namespace wirelines
