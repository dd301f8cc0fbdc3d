// Routing Information Protocol, versions 1 and 2 alike: a 4-byte header, then routes of 20 bytes.
#include "ipapps/rip.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kRip = layer(53, 10, 3);

constexpr int32_t kHeader = 4;
constexpr int32_t kRoute = 20;

constexpr uint16_t kFamilyIp = 2;
constexpr uint32_t kInfinity = 16;

constexpr auto kCommands = names({
    {1, "Request"},
    {2, "Response"},
});
static_assert(kCommands.distinct());

}  // namespace

void RipAnalyze(LineList& list, Bytes data) {
  if (data.size() < kHeader + kRoute) return remainder(list, data);

  const auto count = static_cast<uint32_t>((data.size() - kHeader) / kRoute);

  Section s(list, kRip);
  s.title(at(0, kRoute * count + kHeader - 1), "RIP Packet [Number Of Routing Information] %u", count);
  s.line(at(0), "[Command] %u %s", data.u8(0), parens(kCommands(data.u8(0))));
  s.line(at(1), "[Version] %u", data.u8(1));
  advance(kHeader);

  Bytes route = data.from(kHeader);
  for (uint32_t i = 1; i <= count && s; ++i) {
    const uint16_t family = route.be16(0);
    const uint32_t metric = route.be32(16);
    if (count > 1) s.line(at(0, kRoute - 1), "--- Routing Information %u ---------------", i);
    // Kept: the address family stands under the address's label.
    s.line(at(0, 1), "[IP Address] %u %s", family, parens(family == kFamilyIp ? "IP" : ""));
    DspIpAddress(list, route.sub(4, 4), s.field(at(4, 7)));
    s.line(at(16, 19), "[metric] %u%s", metric, metric == kInfinity ? " (Infinity)" : "");
    advance(kRoute);
    route = route.from(kRoute);
  }
}

}  // namespace wirelines
