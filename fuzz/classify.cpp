// The five classifiers over any bytes: each may write the fields of its layers and no other byte, what it writes must
// not depend on what stood there, and it may only add to the error flags.
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

#include "wirelines.h"

namespace {

using Record = unsigned char[sizeof(PacketSummary)];

struct Part {
  std::size_t offset, size;
};
#define PART(member)                                               \
  Part {                                                           \
    offsetof(PacketSummary, member), sizeof(PacketSummary::member) \
  }

constexpr Part kFrame[] = {PART(frameKind), PART(dsap),        PART(ssap),
                           PART(etherType), PART(networkCode), PART(networkOffset)};
constexpr Part kNetwork[] = {PART(networkCode), PART(networkOffset), PART(srcIp), PART(dstIp)};
constexpr Part kIp6[] = {PART(ipProtocol), PART(srcIp6),   PART(dstIp6),          PART(srcPort),
                         PART(dstPort),    PART(typeCode), PART(transportOffset), PART(errorFlags)};
constexpr Part kIpx[] = {PART(ipProtocol), PART(ipxDstNet),  PART(ipxDstNode),  PART(ipxDstSocket),
                         PART(ipxSrcNet),  PART(ipxSrcNode), PART(ipxSrcSocket)};
constexpr Part kAdded[] = {PART(networkOffset), PART(transportOffset), PART(errorFlags)};

void must(bool holds) {
  if (!holds) std::abort();
}

template <std::size_t N>
void mark(Record& mask, const Part (&parts)[N]) {
  for (const Part& part : parts) std::memset(mask + part.offset, 1, part.size);
}

using Classify = void (*)(const uint8_t*, int32_t, PacketSummary*);

void check(Classify classify, const uint8_t* data, std::size_t size, const Record& may_write, const Record& added) {
  constexpr unsigned char kPatterns[2] = {0xA5, 0x5A};
  Record found[2];
  for (int i = 0; i < 2; ++i) {
    PacketSummary summary;
    std::memset(&summary, kPatterns[i], sizeof summary);
    classify(data, static_cast<int32_t>(size), &summary);
    std::memcpy(found[i], &summary, sizeof summary);

    must((summary.errorFlags & kPatterns[i]) == kPatterns[i]);
    must((summary.errorFlags & ~(kPatterns[i] | 0x8F)) == 0);
  }
  for (std::size_t k = 0; k < sizeof(Record); ++k) {
    const bool kept = found[0][k] == kPatterns[0] && found[1][k] == kPatterns[1];
    if (may_write[k] == 0) must(kept);
    if (added[k] == 0) must(kept || found[0][k] == found[1][k]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  Record packet{};
  Record ip{};
  Record ip6{};
  Record ipx{};
  Record added{};
  mark(packet, kFrame);
  mark(packet, kNetwork);
  mark(packet, kIp6);
  mark(packet, kIpx);
  mark(ip, kNetwork);
  mark(ip, kIp6);
  mark(ip6, kIp6);
  mark(ipx, kIpx);
  mark(added, kAdded);

  check(CheckPacket, data, size, packet, added);
  // From the first byte, and as the payload of Ethernet II.
  for (const std::size_t begin : {std::size_t{0}, std::size_t{14}}) {
    if (begin > size) break;
    check(CheckIp, data + begin, size - begin, ip, added);
    check(CheckIpV6, data + begin, size - begin, ip6, added);
    check(CheckIpx, data + begin, size - begin, ipx, added);
    check(CheckPppSession, data + begin, size - begin, ip, added);
  }
  return 0;
}
