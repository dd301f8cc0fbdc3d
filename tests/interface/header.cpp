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

static_assert(std::is_standard_layout_v<PacketSummary> && std::is_trivial_v<PacketSummary>);
static_assert(sizeof(PacketSummary) == 90 && alignof(PacketSummary) == 1);
static_assert(offsetof(PacketSummary, frameKind) == 0);
static_assert(offsetof(PacketSummary, dsap) == 4);
static_assert(offsetof(PacketSummary, ssap) == 5);
static_assert(offsetof(PacketSummary, etherType) == 6);
static_assert(offsetof(PacketSummary, networkCode) == 8);
static_assert(offsetof(PacketSummary, ipProtocol) == 12);
static_assert(offsetof(PacketSummary, dstIp) == 13);
static_assert(offsetof(PacketSummary, dstIp6) == 17);
static_assert(offsetof(PacketSummary, reserved1) == 33);
static_assert(offsetof(PacketSummary, dstPort) == 34);
static_assert(offsetof(PacketSummary, srcPort) == 36);
static_assert(offsetof(PacketSummary, srcIp) == 38);
static_assert(offsetof(PacketSummary, srcIp6) == 42);
static_assert(offsetof(PacketSummary, ipxDstNet) == 58);
static_assert(offsetof(PacketSummary, ipxDstNode) == 62);
static_assert(offsetof(PacketSummary, ipxDstSocket) == 68);
static_assert(offsetof(PacketSummary, ipxSrcNet) == 70);
static_assert(offsetof(PacketSummary, ipxSrcNode) == 74);
static_assert(offsetof(PacketSummary, ipxSrcSocket) == 80);
static_assert(offsetof(PacketSummary, typeCode) == 82);
static_assert(offsetof(PacketSummary, reserved2) == 83);
static_assert(offsetof(PacketSummary, networkOffset) == 84);
static_assert(offsetof(PacketSummary, transportOffset) == 86);
static_assert(offsetof(PacketSummary, reserved3) == 88);
static_assert(offsetof(PacketSummary, errorFlags) == 89);
