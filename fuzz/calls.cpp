// Every exported call that is given bytes, on its own. The first byte chooses the call, the second how far its data
// lies from an even address, and the character set.
#include <algorithm>
#include <array>
#include <memory>

#include "lines.hpp"

namespace {

using Analyze = void (*)(LineList*, const uint8_t*, int32_t);
constexpr Analyze kAnalyzers[] = {IpAnalyze,         Ip6Analyze,     ArpAnalyze, IpxAnalyze, PPPoEDiscoveryAnalyze,
                                  PPPSessionAnalyze, UnKnownProtocol};

void must(bool holds) {
  if (!holds) std::abort();
}

template <std::size_t N>
void must_end_in(const std::array<char, N>& text) {
  must(std::memchr(text.data(), 0, N) != nullptr);
}

void lines(const uint8_t* data, int32_t size, unsigned call, uint32_t mode) {
  LineList list{};
  HexOutput(&list, nullptr, 0, mode);
  must(list.count == 0);
  if (call < std::size(kAnalyzers)) {
    kAnalyzers[call](&list, data, size);
  } else {
    HexDump(&list, data, size, 63, 1, static_cast<uint32_t>(size), 2 * static_cast<uint32_t>(size), 1, 10);
  }
  check_lines(list);
  DelDspBuffer(&list);
}

// A labelled text is at most max_bytes long, and ends at its first zero byte.
void labelled(const uint8_t* data, std::size_t size) {
  LineList list{};
  const auto* const text = reinterpret_cast<const char*>(data);
  const auto shown = DspTitleString(&list, "[Label] ", text, static_cast<int32_t>(size), 94, 1, 0, 6, 5);
  must(shown == static_cast<int32_t>(strnlen(text, size)));
  check_lines(list);
  DelDspBuffer(&list);
}

// What is made of bytes whose number the interface lays down, and of text.
void values(const uint8_t* data, std::size_t size) {
  std::array<uint8_t, 40> bytes{};
  if (size != 0) std::memcpy(bytes.data(), data, std::min(size, bytes.size()));
  const auto number = static_cast<uint16_t>(bytes[0] << 8 | bytes[1]);

  std::array<char, 40> address{};
  FormatIp6Addr(address.data(), bytes.data());
  must_end_in(address);
  FormatIp6AddrSimple2(address.data(), bytes.data());
  must_end_in(address);
  std::array<char, 20> simple{};
  FormatIp6AddrSimple(simple.data(), bytes.data());
  must(std::strlen(simple.data()) == 19);

  std::array<uint8_t, 12> pseudo{};
  IpPsuadoHeder(bytes.data(), pseudo.data());
  must(CulUdpChksum(data, static_cast<int32_t>(size), pseudo.data(), 12) <= 0xFFFF);
  must(IpCheckSum(data, static_cast<int32_t>(size)) <= 0xFFFF);

  uint8_t dsap = 0;
  uint8_t ssap = 0;
  uint16_t type = 0;
  const auto kind = CheckFrameType(bytes.data(), &ssap, &dsap);
  must(kind >= 1 && kind <= 5);
  must(GetProtocolType(bytes.data(), &type) <= 1);
  for (const auto* name : {TypeToProtocolName(number), IpProtocolToName(bytes[0]), NwPacketToName(bytes[0]),
                           NwSocketToName(number), IcmpTypeInfoToName(bytes[0]), IcmpV6TypeInfoToName(bytes[0]),
                           PPPSessionToName(bytes[0]), PortToName(number, bytes[2])}) {
    must(std::strlen(name) < 64);
  }

  std::array<char, 41> text{};
  std::memcpy(text.data(), bytes.data(), bytes.size());
  must(std::strlen(AddParenthesis(text.data())) < 120);
  LineList list{};
  must(DspTitle(&list, text.data(), 12, 0, 0, 0, 1, 9) == 0);
  char* const line = GetLineBuf();
  line[0] = 0;
  must(AddString(&list, line, 75, 1, 0, 0, 1, 9) == 0);
  check_lines(list);
  DelDspBuffer(&list);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const unsigned call = data[0] % (std::size(kAnalyzers) + 3);
  const std::size_t shift = data[1] % 8;
  const uint32_t mode = data[1] / 8 % 7;
  const std::size_t length = size - 2;

  // Ends where the block does, so that a sanitizer sees a read past it.
  const auto block = std::make_unique<uint8_t[]>(shift + length);
  uint8_t* const bytes = block.get() + shift;
  if (length != 0) std::memcpy(bytes, data + 2, length);
  const auto count = static_cast<int32_t>(length);
  switch (call) {
    case std::size(kAnalyzers) + 1: labelled(bytes, length); break;
    case std::size(kAnalyzers) + 2: values(bytes, length); break;
    default: lines(bytes, count, call, mode); break;
  }
  return 0;
}
