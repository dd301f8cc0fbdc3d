// The public headers, each on its own and twice, as C++20.
#include "wirelines.h"

#include "vek4001.h"

#include "vek4003.h"

#include <cstddef>
#include <type_traits>

static_assert(std::is_standard_layout_v<DisplayLine> && std::is_trivial_v<DisplayLine>);
static_assert(offsetof(DisplayLine, protocolCode) == sizeof(void*));
static_assert(offsetof(DisplayLine, level) == sizeof(void*) + 4);
static_assert(offsetof(DisplayLine, startOffset) == sizeof(void*) + 8);
static_assert(offsetof(DisplayLine, endOffset) == sizeof(void*) + 12);
static_assert(offsetof(DisplayLine, styleIndex) == sizeof(void*) + 16);
static_assert(offsetof(DisplayLine, styleGroup) == sizeof(void*) + 20);
static_assert(std::is_standard_layout_v<LineList> && std::is_trivial_v<LineList>);
static_assert(sizeof(LineList) == sizeof(void*) + 16 || sizeof(void*) == 4);
