// UDP (RFC 768), and the choice of the application by well-known port.
#include "core/datablock.hpp"
#include "core/printers.hpp"
#include "core/protocol_names.hpp"
#include "core/section.hpp"
#include "ipapps/dhcp.hpp"
#include "ipapps/dns.hpp"
#include "ipapps/nbds.hpp"
#include "ipapps/nbns.hpp"
#include "ipapps/rip.hpp"
#include "ipmore/ntp.hpp"
#include "ipmore/snmp.hpp"
#include "ipmore/tftp.hpp"
#include "ipv4/transport.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(49, 6, 3);
constexpr uint32_t kHeader = 8;

using Application = void (*)(LineList&, Bytes);

// The one place where an application over UDP is registered. The order decides, and not every test asks both sides: an
// application that is not here is shown as a data block.
Application application_of(uint16_t source, uint16_t destination) {
  const auto either = [&](uint16_t port) { return source == port || destination == port; };
  if (destination == 67 || destination == 68) return DhcpAnalyze;
  if (either(137)) return NbnsAnalyze;
  if (either(53)) return DnsAnalyze;
  if (either(138)) return NbdsAnalyze;
  if (source == 520 && destination == 520) return RipAnalyze;
  if (either(123)) return NtpAnalyze;
  if (either(161)) return SnmpAnalyze;
  if (either(69)) return TftpAnalyze;
  return remainder;
}

}  // namespace

void UdpAnalyze(LineList& list, Bytes data, const Carrier& carrier) {
  if (data.size() < static_cast<int32_t>(kHeader)) return remainder(list, data);

  const uint16_t source = data.be16(0);
  const uint16_t destination = data.be16(2);

  Section s(list, kLayer);
  s.title(at(0, kHeader - 1), "UDP Header [%u] --> [%u]", source, destination);
  DspSourcePort(list, kUdp, source, s.field(at(0, 1)));
  DspDestinationPort(list, kUdp, destination, s.field(at(2, 3)));
  DspDataLength16(list, data.be16(4), s.field(at(4, 5)));
  DspTransportChecksum(s, at(6, 7), data.be16(6), data, carrier);
  if (!s) return;

  advance(kHeader);
  application_of(source, destination)(list, data.from(kHeader));
}

}  // namespace wirelines
