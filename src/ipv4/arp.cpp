// ARP (RFC 826) and RARP (RFC 903), always read as for Ethernet and IPv4: 28 bytes, whatever address lengths they
// state.
#include "ipv4/arp.hpp"

#include "core/datablock.hpp"
#include "core/names.hpp"
#include "core/nicknames.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(25, 9, 6);
constexpr int32_t kMessage = 28;

constexpr auto kOperations = names({
    {1, "ARP Request"},
    {2, "ARP Reply"},
    {3, "RARP Request"},
    {4, "RARP Reply"},
});
static_assert(kOperations.distinct());

}  // namespace

void ArpAnalyze(LineList& list, Bytes data) {
  if (data.size() < kMessage) return remainder(list, data);

  const uint16_t hardware = data.be16(0);
  const uint16_t protocol = data.be16(2);
  const uint16_t operation = data.be16(6);
  const std::string_view operation_name = kOperations(operation);

  Section s(list, kLayer);
  s.title(at(0, 27), "%s", operation_name.empty() ? "Unknown" : operation_name);
  if (hardware == 1) {
    s.line(at(0, 1), "[Hardware Type] 1 (Ethernet)");
  } else {
    s.line(at(0, 1), "[Hardware Type] %u", hardware);
  }
  s.line(at(2, 3), "[Protocol Type] 0x%0.4X %s", protocol, Parens(TypeName(protocol)));
  s.line(at(4), "[Hardware Address Length] %u byte(s)", data.u8(4));
  s.line(at(5), "[Protocol Address Length] %u byte(s)", data.u8(5));
  if (operation_name.empty()) {
    s.line(at(6, 7), "[Operation] %u", operation);
  } else {
    s.line(at(6, 7), "[Operation] %u (%s)", operation, operation_name);
  }
  const TextBuffer sender = mac_text(data.sub(8, 6));
  const TextBuffer sender_ip = ip_text(data.sub(14, 4));
  const TextBuffer target = mac_text(data.sub(18, 6));
  const TextBuffer target_ip = ip_text(data.sub(24, 4));
  s.line(at(8, 13), "[Sender Hardware Address] %s %s", sender.view(), parens(station_nickname(sender.bytes)));
  s.line(at(14, 17), "[Sender Protocol Address] %s %s", sender_ip.view(), parens(ip_nickname(sender_ip.bytes)));
  s.line(at(18, 23), "[Target Hardware Address] %s %s", target.view(), parens(station_nickname(target.bytes)));
  s.line(at(24, 27), "[Target Protocol Address] %s %s", target_ip.view(), parens(ip_nickname(target_ip.bytes)));
}

}  // namespace wirelines
