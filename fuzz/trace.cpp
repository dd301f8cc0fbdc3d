// Any bytes as a trace, compressed or not: each frame lies in memory that may be read, and a trace that cannot be read
// to its end says why. The file stands in memory.
#include "host/trace.hpp"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "host/failure.hpp"

namespace {

void must(bool holds) {
  if (!holds) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace wirelines::host;
  static const int file = memfd_create("trace", 0);
  static const std::string name = "/proc/self/fd/" + std::to_string(file);
  must(ftruncate(file, 0) == 0 && pwrite(file, data, size, 0) == static_cast<ssize_t>(size));

  std::uint64_t frames = 0;
  try {
    Trace trace(name, nullptr);
    if (size % 2 != 0) trace.set_filter("ip or vlan");
    std::uint64_t before = 0;
    for (Frame frame{}; frames < 10'000 && trace.next(frame);) {
      must(frame.number == ++frames && frame.offset >= before);
      before = frame.offset;
      (void)trace.matches(frame);
      std::uint64_t sum = 0;
      for (std::uint32_t i = 0; i < frame.length; ++i) sum += frame.data[i];
      must(sum <= frame.length * std::uint64_t{255});
    }
  } catch (const Failure& failure) {
    must(failure.what()[0] != '\0' && failure.exit_code() != 0);
  }
  return 0;
}
