// Any text as a display filter: it is understood, or the fault is somewhere in it; and what is understood says of each
// frame the opposite of its negation.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/filter.hpp"
#include "vek4003.h"

namespace {

using namespace wirelines::host;

void must(bool holds, const char* what) {
  if (holds) return;
  (void)std::fprintf(stderr, "filter: %s\n", what);
  std::abort();
}

std::vector<std::uint8_t> bytes_of(std::string_view hex) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoul(std::string(hex.substr(i, 2)), nullptr, 16)));
  }
  return bytes;
}

// An SMB message in TCP behind a VLAN tag, a NetBIOS name query in UDP over IPv6, IPX, ARP, and part of a header.
const std::vector<std::uint8_t> kFrames[] = {
    bytes_of("00005e00530100005e005302810000050800450000510001000040060000c0000201c6336402c001008b00000001000000025018"
             "20000000000000000025ff534d42720000000008010000000000000000000000000000000000000000000002000000"),
    bytes_of(
        "33330000000100005e00530286dd60000000003a1140fe800000000000000000000000000001ff0200000000000000000000000000"
        "0100890089003a0000000101100001000000000000204142434445464748494a4b4c4d4e4f4142434445464748494a4b4c4d4e4f"
        "0000200001"),
    bytes_of("ffffffffffff00005e00530281370000ffff001e00110000000100005e00530104510000000200005e0053024003"),
    bytes_of("ffffffffffff00005e005302080600010800060400010000000000000000000000000000c0000201"),
    bytes_of("00005e00530100005e0053020800"),
};

std::optional<Filter> parsed(std::string_view text) {
  try {
    return Filter(text);
  } catch (const FilterError& error) {
    must(error.position() <= text.size(), "a fault behind the end");
    must(error.what()[0] != '\0', "a fault without a reason");
    return std::nullopt;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static FilterScratch scratch(true, WIRELINES_SJIS);
  static const std::string trace = "trace";
  NickNameAdd(NICKNAME_STATION, "00:00:5e:00:53:02", "file\x83\x54server");
  NickNameAdd(NICKNAME_IP, "192.0.2.1", "gateway");

  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto filter = parsed(text);
  if (!filter) return 0;  // "a) or (b" has a negation all the same
  const auto negated = parsed("!(" + text + ")");
  if (!negated) return 0;  // nested too deep now
  std::uint64_t number = 0;
  for (const auto& bytes : kFrames) {
    const auto length = static_cast<std::uint32_t>(bytes.size());
    const Frame frame = {.number = ++number,
                         .trace = &trace,
                         .data = bytes.data(),
                         .length = length,
                         .original_length = length,
                         .seconds = 1714557661,
                         .nanoseconds = 250000000,
                         .offset = 24};
    must(filter->matches(frame, scratch) != negated->matches(frame, scratch), "not the opposite");
  }
  return 0;
}
