// Pairs of uses: the right one compiles, the wrong one must not.
#include "core/section.hpp"

void use(wirelines::Section& s) {
#if defined(USE_kinds_right)
  s.line(wirelines::at(0), "[Name] %s %u", "x", 1);
#elif defined(USE_kinds_wrong)
  s.line(wirelines::at(0), "[Name] %s %u", 1, "x");
#elif defined(USE_count_right)
  s.line(wirelines::at(0), "[Value] %u (0x%0.4X)", 1, 1);
#elif defined(USE_count_wrong)
  s.line(wirelines::at(0), "[Value] %u (0x%0.4X)", 1);
#elif defined(USE_uniform_right)
  s.value(wirelines::at(0), "[Value] %u (0x%0.4X)", 1);
#elif defined(USE_uniform_wrong)
  s.value(wirelines::at(0), "[Value] %u (%s)", 1);
#elif defined(USE_long_right)
  s.line(wirelines::at(0),
         "1234567890123456789012345678901234567890123456789012345678901234567890123456789012345678901234");
#elif defined(USE_long_wrong)
  s.line(wirelines::at(0),
         "1234567890123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890"
         "1234567890123456789012345678901234567890");
#endif
}
