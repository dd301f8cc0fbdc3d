// The library's heap under watch: its calls of malloc, realloc and free come through here (see tests/CMakeLists.txt).
#pragma once

#include <cstdint>

namespace wirelines::test {

// Lets the next `allocations` of this thread succeed and all later ones fail, until fail_no_more().
void fail_after(int64_t allocations);
void fail_no_more();

int64_t live_blocks();      // blocks that the library holds now
int64_t allocations();      // calls so far that allocated
int32_t memory_messages();  // ErrMessage(101) so far, from when the first driver asked for messages
void count_memory_messages();

}  // namespace wirelines::test
