// The classifier against the decoders: over the frames of real traces, the record must say what the lines say.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <string_view>

#include "ipv6/ip6_address.hpp"
#include "support/traces.hpp"
#include "wirelines.h"

namespace wirelines::test {

namespace {

// Title codes.
enum { kLink = 12, kPppoe = 14, kArp = 25, kIpx = 36, kIp6 = 45, kIcmp = 46, kIp = 47, kTcp = 48, kUdp = 49 };

class Shown {
 public:
  explicit Shown(Bytes frame) { AnalyzeOutput(&list_, frame.data(), frame.size(), 0, 0, WIRELINES_ASCII); }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;
  ~Shown() { DelDspBuffer(&list_); }

  // Of the first layer with this title code.
  [[nodiscard]] const DisplayLine* title(uint32_t layer) const {
    for (int32_t i = 0; i < list_.count; ++i) {
      if (line(i).protocolCode == layer && line(i).level == 0) return &line(i);
    }
    return nullptr;
  }
  // What follows `label` in the n-th field of a layer that begins with it; null when there is none.
  [[nodiscard]] const char* text(uint32_t layer, std::string_view label, int nth = 0) const {
    for (int32_t i = 0; i < list_.count; ++i) {
      if (line(i).protocolCode != layer + 63 || !std::string_view(line(i).text).starts_with(label)) continue;
      if (nth-- == 0) return line(i).text + label.size();
    }
    return nullptr;
  }
  [[nodiscard]] uint32_t number(uint32_t layer, std::string_view label, int nth = 0) const {
    const char* const digits = text(layer, label, nth);
    if (digits == nullptr) return 0;
    return static_cast<uint32_t>(std::strtoul(digits, nullptr, std::strncmp(digits, "0x", 2) == 0 ? 16 : 10));
  }
  [[nodiscard]] bool wrong(uint32_t layer) const {
    const char* const verdict = text(layer, "[Checksum] ");
    return verdict != nullptr && std::strstr(verdict, "(NG)") != nullptr;
  }

 private:
  [[nodiscard]] const DisplayLine& line(int32_t i) const { return *static_cast<const DisplayLine*>(list_.data[i]); }
  LineList list_{};
};

void dotted(const char* text, uint8_t* address) {
  unsigned a[4] = {};
  ASSERT_NE(text, nullptr);
  ASSERT_EQ(std::sscanf(text, "%u.%u.%u.%u", &a[0], &a[1], &a[2], &a[3]), 4) << text;
  for (int i = 0; i < 4; ++i) address[i] = static_cast<uint8_t>(a[i]);
}

void hex(const char* text, uint8_t* bytes, int count) {
  ASSERT_NE(text, nullptr);
  for (int i = 0; i < count; ++i) {
    unsigned byte = 0;
    ASSERT_EQ(std::sscanf(text + 2 * i, "%2X", &byte), 1) << text;
    bytes[i] = static_cast<uint8_t>(byte);
  }
}

void same_ip6(const char* text, const uint8_t (&address)[16]) {
  ASSERT_NE(text, nullptr);
  const std::string_view shown(text);
  EXPECT_EQ(FormatIp6AddrSimple2(Bytes(address, 16)).view(), shown.substr(0, shown.find(' ')));
}

template <typename Key>
uint32_t code_of(const std::map<Key, uint32_t>& codes, Key key) {
  const auto found = codes.find(key);
  return found == codes.end() ? 0 : found->second;
}

const std::map<uint32_t, uint32_t> kTypes = {{0x0800, 0x1001}, {0x86DD, 0x100A}, {0x0806, 0x1003}, {0x8035, 0x1004},
                                             {0x8137, 0x1005}, {0x0600, 0x1007}, {0x809B, 0x1008}, {0x80F3, 0x1009},
                                             {0x8863, 0x1201}, {0x8864, 0x1201}};
const std::map<uint32_t, uint32_t> kSaps = {{0x0606, 0x1001}, {0xE0E0, 0x1005}, {0xF0F0, 0x1006}, {0x8080, 0x1007}};
const std::map<uint32_t, uint32_t> kSession = {
    {0x0021, 0x1001}, {0xC021, 0x1202}, {0xC223, 0x1203}, {0xC023, 0x1204}, {0x8021, 0x1205}};

// The record that the lines of a frame describe. What no line shows, or what the classifier is meant to see otherwise,
// is taken from `found`.
class Expected : public PacketSummary {
 public:
  Expected(const Shown& shown, Bytes frame, const PacketSummary& found)
      : PacketSummary{}, shown_(shown), frame_(frame), found_(found) {
    if (frame.size() < 17) return;
    link();
    if (networkCode == 0x1003 || networkCode == 0x1004) arp();
    if (networkCode == 0x1005) ipx();
    if (networkCode == 0x1201) pppoe();
    if (networkCode == 0x1001) ip();
    if (networkCode == 0x100A) ip6();
  }

 private:
  void link() {
    const std::string_view type = shown_.text(kLink, "[Frame Type] ");
    if (const char* const saps = shown_.text(kLink, "[LLC] ")) {
      unsigned d = 0, s = 0, control = 0;
      ASSERT_EQ(std::sscanf(saps, "[DSAP] 0x%2X [SSAP] 0x%2X [Control] 0x%2X", &d, &s, &control), 3);
      dsap = static_cast<uint8_t>(d);
      ssap = static_cast<uint8_t>(s);
      const bool s_or_u = control != 3 && control % 2 != 0;
      frameKind = s_or_u ? 5 : 2;
      networkCode = s_or_u ? 0 : code_of(kSaps, d << 8 | s);
      start_ = 17;
      // An I frame's payload is classified though it is no UI frame's.
      if (control != 3 && (networkCode == 0x1001 || networkCode == 0x1005)) static_cast<PacketSummary&>(*this) = found_;
    } else if (type == "IEEE802.3") {
      frameKind = 1;
      dsap = ssap = 0xFF;
      networkCode = 0x1005;
    } else {
      const bool snap = type != "Ethernet_II";
      frameKind = snap ? 3 : 4;
      if (snap) dsap = ssap = 0xAA;
      if (snap && frame_.size() < 22) return;
      etherType = static_cast<uint16_t>(shown_.number(kLink, "[Protocol Type] "));
      networkCode = code_of(kTypes, uint32_t{etherType});
      start_ = snap ? 22 : 14;
    }
    if (networkCode == 0x1001 || networkCode == 0x100A) networkOffset = transportOffset = start_;
  }

  void arp() {
    if (shown_.title(kArp) == nullptr) {  // a short message has no lines
      typeCode = found_.typeCode;
      std::memcpy(srcIp, found_.srcIp, 4);
      std::memcpy(dstIp, found_.dstIp, 4);
      return;
    }
    typeCode = static_cast<uint8_t>(shown_.number(kArp, "[Operation] "));
    dotted(shown_.text(kArp, "[Sender Protocol Address] "), srcIp);
    dotted(shown_.text(kArp, "[Target Protocol Address] "), dstIp);
  }

  void ipx() {
    if (shown_.title(kIpx) == nullptr) {  // likewise
      ipProtocol = found_.ipProtocol;
      std::memcpy(ipxDstNet, found_.ipxDstNet, 24);
      return;
    }
    ipProtocol = static_cast<uint8_t>(shown_.number(kIpx, "[Packet Type] "));
    hex(shown_.text(kIpx, "[Destination Network Address] "), ipxDstNet, 4);
    hex(shown_.text(kIpx, "[Destination Network Address] ", 1), ipxDstNode, 6);
    ipxDstSocket = static_cast<uint16_t>(shown_.number(kIpx, "[Destination Socket] "));
    hex(shown_.text(kIpx, "[Souce Network Address] "), ipxSrcNet, 4);
    hex(shown_.text(kIpx, "[Souce Node Address] "), ipxSrcNode, 6);
    ipxSrcSocket = static_cast<uint16_t>(shown_.number(kIpx, "[Souce Socket] "));
  }

  void pppoe() {
    const bool session = etherType == 0x8864;
    if (session) networkOffset = transportOffset = frameKind == 4 ? 22 : 27;
    // A message that is too short has no lines, and which lines there are depends on the code, not on the EtherType.
    if (shown_.title(kPppoe) == nullptr || (session && shown_.number(kPppoe, "[Code] ") != 0)) {
      static_cast<PacketSummary&>(*this) = found_;
      return;
    }
    if (!session) {
      typeCode = static_cast<uint8_t>(shown_.number(kPppoe, "[Code] "));
    } else if (const uint32_t code = code_of(kSession, shown_.number(kPppoe, "[PPP Protocol] "))) {
      networkCode = code;
    }
  }

  void ip() {
    const DisplayLine* const title = shown_.title(kIp);
    if (title == nullptr) return;
    const uint32_t header = shown_.number(kIp, "[Header Length] ");
    const uint32_t total = shown_.number(kIp, "[Total Length] ");
    end_ = std::min(static_cast<uint32_t>(frame_.size()), title->startOffset + total);
    // The labels of the addresses are the other way round.
    dotted(shown_.text(kIp, "[Destination Address] "), srcIp);
    dotted(shown_.text(kIp, "[Source Address] "), dstIp);
    ipProtocol = static_cast<uint8_t>(shown_.number(kIp, "[Protocol] "));
    if (shown_.number(kIp, "[Fragment offset] ") != 0) {  // its header's checksum is not looked at
      networkCode = 0x1002;
      return;
    }
    if (shown_.wrong(kIp)) errorFlags |= 0x81;
    transportOffset = static_cast<uint16_t>(transportOffset + header);
    const bool more_fragments = std::strstr(shown_.text(kIp, "[Flags] "), "[More Fragments] 1") != nullptr;
    switch (ipProtocol) {
      case 1: icmp(4); break;
      case 6:
      case 17: transport(); break;
      case 41:
        networkOffset = static_cast<uint16_t>(networkOffset + header);
        transportOffset = static_cast<uint16_t>(transportOffset + header);
        networkCode = 0x100A;
        return;
      default: break;
    }
    if (more_fragments) srcPort = dstPort = 0;
  }

  void ip6() {
    const DisplayLine* const title = shown_.title(kIp6);
    if (title == nullptr) return;
    if (etherType == 0x86DD) {
      EXPECT_EQ(title->startOffset, found_.networkOffset);
      end_ = static_cast<uint32_t>(frame_.size());
    }
    same_ip6(shown_.text(kIp6, "[Source Address] "), found_.srcIp6);
    same_ip6(shown_.text(kIp6, "[Destination Address] "), found_.dstIp6);
    std::memcpy(srcIp6, found_.srcIp6, 16);
    std::memcpy(dstIp6, found_.dstIp6, 16);
    transportOffset = static_cast<uint16_t>(transportOffset + 40);

    int64_t left = std::min(int64_t{shown_.number(kIp6, "[Payload length] ")}, int64_t{end_} - title->startOffset - 40);
    ipProtocol = static_cast<uint8_t>(shown_.number(kIp6, "[Next Header] "));
    for (int i = 0; ipProtocol == 0; ++i) {
      left -= 8 + 8 * int64_t{shown_.number(kIp6, "[Next Header Length] ", i)};
      if (left < 2) return;
      ipProtocol = static_cast<uint8_t>(shown_.number(kIp6, "[Next Header] ", i + 1));
    }
    if (ipProtocol == 6 || ipProtocol == 17) transport();
    if (ipProtocol == 58) icmp(8);
    // Of wrong sums only those that fall short are told.
    if (ipProtocol != 6 && (found_.errorFlags & 0x80) == 0) errorFlags = 0;
  }

  void transport() {
    const uint32_t layer = ipProtocol == 6 ? kTcp : kUdp;
    const DisplayLine* const title = shown_.title(layer);
    if (title == nullptr) return;
    unsigned from = 0, to = 0;
    ASSERT_EQ(std::sscanf(std::strchr(title->text, '['), "[%u] --> [%u]", &from, &to), 2);
    srcPort = static_cast<uint16_t>(from);
    dstPort = static_cast<uint16_t>(to);
    if (layer == kTcp) {
      unsigned bits[6] = {};
      ASSERT_EQ(std::sscanf(shown_.text(kTcp, "[Flags] "), "[URG] %u [ACK] %u [PSH] %u [RST] %u [SYN] %u [FIN] %u",
                            &bits[0], &bits[1], &bits[2], &bits[3], &bits[4], &bits[5]),
                6);
      typeCode = found_.typeCode & 0xC0;  // which no line shows
      for (int i = 0; i < 6; ++i) typeCode = static_cast<uint8_t>(typeCode | bits[i] << (5 - i));
    }
    if (shown_.wrong(layer)) errorFlags |= layer == kTcp ? 0x84 : 0x88;
  }

  // A message below the decoder's `minimum` has no lines, one below that of its kind no checksum line.
  void icmp(int32_t minimum) {
    if (shown_.title(kIcmp) == nullptr) {
      if (minimum == 8) typeCode = found_.typeCode;
    } else {
      typeCode = static_cast<uint8_t>(shown_.number(kIcmp, "[Type] "));
    }
    if (shown_.text(kIcmp, "[Checksum] ") == nullptr) {
      errorFlags |= found_.errorFlags & 0x82;
    } else if (shown_.wrong(kIcmp)) {
      errorFlags |= 0x82;
    }
  }

  const Shown& shown_;
  Bytes frame_;
  const PacketSummary& found_;
  uint16_t start_ = 0;  // of the network layer
  uint32_t end_ = 0;    // of the IP packet, behind its last byte
};

std::string all_fields(const PacketSummary& s) {
  std::string text;
  const auto add = [&](const char* name, const auto& value) {
    text += name;
    for (std::size_t i = 0; i < sizeof value; ++i) {
      char digits[4];
      std::snprintf(digits, sizeof digits, "%02X", unsigned{reinterpret_cast<const uint8_t*>(&value)[i]});
      text += digits;
    }
  };
  add("kind ", s.frameKind);
  add(" dsap ", s.dsap);
  add(" ssap ", s.ssap);
  add(" type ", s.etherType);
  add(" net ", s.networkCode);
  add(" proto ", s.ipProtocol);
  add(" dst ", s.dstIp);
  add(" dst6 ", s.dstIp6);
  add(" ports ", s.dstPort);
  add(" ", s.srcPort);
  add(" src ", s.srcIp);
  add(" src6 ", s.srcIp6);
  add(" ipx ", s.ipxDstNet);
  add(" ", s.ipxDstNode);
  add(" ", s.ipxDstSocket);
  add(" ", s.ipxSrcNet);
  add(" ", s.ipxSrcNode);
  add(" ", s.ipxSrcSocket);
  add(" code ", s.typeCode);
  add(" at ", s.networkOffset);
  add(" ", s.transportOffset);
  add(" errors ", s.errorFlags);
  return text;
}

TEST(ClassifierSweep, TheRecordSaysWhatTheLinesSay) {
  if (!traces_there()) GTEST_SKIP() << "no traces at " << kTraces;
  std::map<uint32_t, int> frames_of_code;
  const int frames = for_each_trace_frame([&](const std::string& place, Bytes frame, const timeval&) {
    PacketSummary found{};
    CheckPacket(frame.data(), frame.size(), &found);
    ++frames_of_code[found.networkCode];
    const Shown shown(frame);
    const Expected expected(shown, frame, found);
    EXPECT_EQ(all_fields(found), all_fields(expected)) << place;
  });
  EXPECT_GT(frames, 0);
  for (const uint32_t code : {0x1001U, 0x1002U, 0x1003U, 0x1004U, 0x1005U, 0x1006U, 0x100AU, 0x1201U, 0x1202U}) {
    EXPECT_GT(frames_of_code[code], 0) << std::hex << code;
  }
}

}  // namespace

}  // namespace wirelines::test
