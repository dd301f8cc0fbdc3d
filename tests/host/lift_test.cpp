#include "host/lift.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>

#include "files.hpp"
#include "hex.hpp"
#include "host/decode.hpp"
#include "host/lines.hpp"
#include "written.hpp"

namespace wirelines::host {
namespace {

Frame frame_of(const std::vector<std::uint8_t>& bytes, int link_type = DLT_EN10MB) {
  const auto length = static_cast<std::uint32_t>(bytes.size());
  return {.number = 1,
          .trace = nullptr,
          .data = bytes.data(),
          .length = length,
          .original_length = length,
          .seconds = 1714557661,
          .nanoseconds = 0,
          .offset = 0,
          .link_type = link_type};
}

// The lines of a frame in the raw form, without the time, with the title at the top index marked by '>'.
std::string lines_of(const std::vector<std::uint8_t>& bytes, int link_type = DLT_EN10MB) {
  Lines lines;
  const auto top_line = lines.decode(frame_of(bytes, link_type), WIRELINES_ASCII);
  return written([&](Output& out) {
    std::uint32_t i = 0;
    lines.each([&](const DisplayLine& line) {
      if (i++ == top_line) out.append('>');
      if (!std::string_view(line.text).starts_with("[Time]")) raw_line(out, line);
    });
  });
}

const std::string kMacs = "010203040506 0A0B0C0D0E0F ";
const std::string kIp = "45 00 0014 0000 0000 40 3B 0000 C0000201 C6336402 ";
const std::string kIp6 = "60000000 0000 3B 40 20010DB8 00x12 20010DB8 00x12 ";
const std::string kStation = "[0A0B0C0D0E0F] --> [010203040506] ---------------------------------|\n";

// What is told of a frame whose Ethernet header is made up, up to its type.
std::string made_up(const std::string& length, const std::string& source = "000000000000") {
  const std::string none = " 4294967295-4294967295 2,9 |";
  return ">10 0" + none + "--- MAC [" + source + "] --> [000000000000] ---------------------------------|\n" +
         "73 1 0-0 2,9 |[Length] " + length + " byte(s)|\n" + "73 1" + none + "[Destination Address] 000000000000 |\n" +
         "73 1" + none + "[Source Address] " + source + " |\n" + "65535 65535 0-0 0,0 ||\n";
}

std::string made_up_ethernet_ii(const std::string& range, const std::string& type) {
  return "12 0 " + range + " 4,9 |--- Data Link [Ethernet_II] -----------------------------------------------|\n" +
         "75 1 " + range + " 4,9 |[Frame Type] Ethernet_II|\n" + "75 1 " + range + " 4,9 |[Protocol Type] " + type +
         "|\n";
}

std::string data_block(const std::string& range, const std::string& size, const std::string& hex) {
  return "65535 65535 0-0 0,0 ||\n0 0 " + range + " 1,10 |---[Data] " + size +
         " byte(s) --------------------------------- ASCII ------|\n63 1 " + range + " 1,10 |0000  " + hex + "|\n";
}

const std::string kNone = "4294967295-4294967295";
// The PPPoE header made up around a PPP packet; the title's range, the protocol's.
std::string made_up_session(const std::string& title, const std::string& protocol_range, const std::string& size,
                            const std::string& protocol, const std::string& top = ">") {
  const std::string none = "77 1 4294967295-4294967295 6,9 |";
  return "65535 65535 0-0 0,0 ||\n" + top + "14 0 " + title +
         " 6,9 |--- PPP Session Header ----------------------------------------------------|\n" + none + "[Ver] 1|\n" +
         none + "[Type] 1|\n" + none + "[Code] 0x00 (Session Stage)|\n" + none + "[Session ID] 0x0000|\n" + none +
         "[Length] " + size + " byte(s)|\n77 1 " + protocol_range + " 6,9 |[PPP Protocol] " + protocol + "|\n";
}

const std::string kSessionMadeUpHere = ", shown with Ethernet and PPPoE headers made up by the host|\n";
const std::string kMadeUpHere = ", shown with an Ethernet header made up by the host|\n";

TEST(Lift, lines) {
  const auto addresses = [](const std::string& length) {
    return ">10 0 0-11 2,9 |--- MAC " + kStation + "73 1 0-0 2,9 |[Length] " + length +
           " byte(s)|\n73 1 0-5 2,9 |[Destination Address] 010203040506 |\n"
           "73 1 6-11 2,9 |[Source Address] 0A0B0C0D0E0F |\n65535 65535 0-0 0,0 ||\n";
  };
  const std::string two_bytes = "41 42 20  0  0  0  0  0                            AB";
  const struct {
    const char* what;
    int link_type;
    std::string frame, lines;
  } kCases[] = {
      {"one tag", DLT_EN10MB, kMacs + "8100 6005 88B5 4142",
       addresses("20 (0x0014)") + made_up_ethernet_ii("16-17", "0x88B5 ") +
           "75 1 12-15 4,9 |[VLAN] 5 [Priority] 3 [Drop Eligible] 0 (802.1Q)|\n" +
           data_block("18-19", "2 (0x0002)", two_bytes)},
      {"two tags", DLT_EN10MB, kMacs + "88A8 F064 8100 0FFF 88B5 4142",
       addresses("24 (0x0018)") + made_up_ethernet_ii("20-21", "0x88B5 ") +
           "75 1 12-15 4,9 |[VLAN] 100 [Priority] 7 [Drop Eligible] 1 (802.1ad)|\n"
           "75 1 16-19 4,9 |[VLAN] 4095 [Priority] 0 [Drop Eligible] 0 (802.1Q)|\n" +
           data_block("22-23", "2 (0x0002)", two_bytes)},
      {"tag and LLC", DLT_EN10MB, kMacs + "8100 0001 0005 4242 03 4142",
       addresses("23 (0x0017)") +
           "12 0 16-20 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
           "75 1 16-20 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
           "75 1 16-17 4,9 |[Frame Length] 5 (0x0005) byte(s)|\n"
           "75 1 18-20 4,9 |[LLC] [DSAP] 0x42 [SSAP] 0x42 [Control] 0x03 |\n"
           "75 1 12-15 4,9 |[VLAN] 1 [Priority] 0 [Drop Eligible] 0 (802.1Q)|\n" +
           data_block("21-22", "2 (0x0002)", two_bytes)},
      {"cut behind the first tag", DLT_EN10MB, kMacs + "8100 0001 8100 00",
       addresses("19 (0x0013)") + made_up_ethernet_ii("16-17", "0x8100 ") +
           "75 1 12-15 4,9 |[VLAN] 1 [Priority] 0 [Drop Eligible] 0 (802.1Q)|\n" +
           data_block("18-18", "1 (0x0001)", "00 20  0  0  0  0  0  0                            .")},
      {"cut in the tag", DLT_EN10MB, kMacs + "8100 4142",
       addresses("16 (0x0010)") + made_up_ethernet_ii("12-13", "0x8100 ") +
           data_block("14-15", "2 (0x0002)", two_bytes)},
      {"Linux cooked", DLT_LINUX_SLL, "0004 0001 0006 0A0B0C0D0E0F 0000 88B5 4142",
       made_up("18 (0x0012)", "0A0B0C0D0E0F") + made_up_ethernet_ii(kNone, "0x88B5 ") +
           "75 1 0-15 4,9 |[Link] Linux cooked v1" + kMadeUpHere +
           "75 1 0-15 4,9 |[Packet Type] 4 (sent by us) [Hardware Type] 1 [Protocol] 0x88B5|\n" +
           data_block("16-17", "2 (0x0002)", two_bytes)},
      {"Linux cooked with a tag; no address", DLT_LINUX_SLL, "0003 0304 0000 00x8 8100 2007 88B5 4142",
       made_up("22 (0x0016)") + made_up_ethernet_ii("18-19", "0x88B5 ") + "75 1 0-15 4,9 |[Link] Linux cooked v1" +
           kMadeUpHere +
           "75 1 0-15 4,9 |[Packet Type] 3 (to another host) [Hardware Type] 772 [Protocol] 0x8100|\n"
           "75 1 14-17 4,9 |[VLAN] 7 [Priority] 1 [Drop Eligible] 0 (802.1Q)|\n" +
           data_block("20-21", "2 (0x0002)", two_bytes)},
      {"Linux cooked, LLC", DLT_LINUX_SLL, "0002 0001 0006 0A0B0C0D0E0F 0000 0004 4242 03 4142",
       made_up("21 (0x0015)", "0A0B0C0D0E0F") +
           "12 0 16-18 4,9 |--- Data Link [IEEE802.2(LLC)] --------------------------------------------|\n"
           "75 1 16-18 4,9 |[Frame Type] IEEE802.2(LLC)|\n"
           "75 1 " +
           kNone +
           " 4,9 |[Frame Length] 5 (0x0005) byte(s)|\n"
           "75 1 16-18 4,9 |[LLC] [DSAP] 0x42 [SSAP] 0x42 [Control] 0x03 |\n"
           "75 1 0-15 4,9 |[Link] Linux cooked v1" +
           kMadeUpHere + "75 1 0-15 4,9 |[Packet Type] 2 (multicast) [Hardware Type] 1 [Protocol] 0x0004|\n" +
           data_block("19-20", "2 (0x0002)", two_bytes)},
      {"Linux cooked, no EtherType", DLT_LINUX_SLL, "0009 0118 0000 00x8 000C 4142",
       made_up("18 (0x0012)") + made_up_ethernet_ii(kNone, "0xFFFF ") + "75 1 0-15 4,9 |[Link] Linux cooked v1" +
           kMadeUpHere + "75 1 0-15 4,9 |[Packet Type] 9 (unknown) [Hardware Type] 280 [Protocol] 0x000C|\n" +
           data_block("16-17", "2 (0x0002)", two_bytes)},
      {"half a Linux cooked header", DLT_LINUX_SLL, "4142",
       made_up("2 (0x0002)") + made_up_ethernet_ii(kNone, "0xFFFF ") + "75 1 " + kNone +
           " 4,9 |[Link] Linux cooked v1" + kMadeUpHere + data_block("0-1", "2 (0x0002)", two_bytes)},
      {"Linux cooked v2", DLT_LINUX_SLL2, "88B5 0000 00000002 0001 01 06 0A0B0C0D0E0F 0000 4142",
       made_up("22 (0x0016)", "0A0B0C0D0E0F") + made_up_ethernet_ii(kNone, "0x88B5 ") +
           "75 1 0-19 4,9 |[Link] Linux cooked v2" + kMadeUpHere +
           "75 1 0-19 4,9 |[Packet Type] 1 (broadcast) [Hardware Type] 1 [Protocol] 0x88B5|\n" +
           data_block("20-21", "2 (0x0002)", two_bytes)},
      {"Linux cooked v2 with two tags", DLT_LINUX_SLL2,
       "88A8 0000 00000002 0001 00 06 0A0B0C0D0E0F 0000 0001 8100 0002 88B5 4142",
       made_up("30 (0x001E)", "0A0B0C0D0E0F") + made_up_ethernet_ii("26-27", "0x88B5 ") +
           "75 1 0-19 4,9 |[Link] Linux cooked v2" + kMadeUpHere +
           "75 1 0-19 4,9 |[Packet Type] 0 (to us) [Hardware Type] 1 [Protocol] 0x88A8|\n"
           "75 1 20-21 4,9 |[VLAN] 1 [Priority] 0 [Drop Eligible] 0 (802.1ad)|\n"
           "75 1 22-25 4,9 |[VLAN] 2 [Priority] 0 [Drop Eligible] 0 (802.1Q)|\n" +
           data_block("28-29", "2 (0x0002)", two_bytes)},
      {"raw, neither IPv4 nor IPv6", DLT_RAW, "0102",
       made_up("2 (0x0002)") + made_up_ethernet_ii(kNone, "0xFFFF ") + "75 1 " + kNone + " 4,9 |[Link] Raw IP" +
           kMadeUpHere + data_block("0-1", "2 (0x0002)", "01 02 20  0  0  0  0  0                            ..")},
      {"nothing at all", DLT_RAW, "",
       made_up("0 (0x0000)") + made_up_ethernet_ii(kNone, "0xFFFF ") + "75 1 " + kNone + " 4,9 |[Link] Raw IP" +
           kMadeUpHere},
      {"PPP, a protocol that only a session has", DLT_PPP, "FF03 80FD 4142",
       made_up("6 (0x0006)").substr(1) + made_up_ethernet_ii(kNone, "0x8864 (PPPoE Session)") +
           "75 1 0-3 4,9 |[Link] PPP" + kSessionMadeUpHere + made_up_session("2-3", "2-3", "4(0x0004)", "0x80FD ") +
           data_block("4-5", "2 (0x0002)", two_bytes)},
      {"LCP, shorter than the library shows", DLT_PPP, "FF03 C021 0907 0008 01020304",
       made_up("12 (0x000C)").substr(1) + made_up_ethernet_ii(kNone, "0x8864 (PPPoE Session)") +
           "75 1 0-3 4,9 |[Link] PPP, shown with Ethernet and PPPoE headers and padding made up by the host|\n" +
           made_up_session("2-3", "2-3", "10(0x000A)", "0xC021 (LCP)", "") +
           "65535 65535 0-0 0,0 ||\n>13 0 4-17 5,9 |--- LCP Header (Echo Request) "
           "---------------------------------------------|\n"
           "76 1 4-4 5,9 |[Code] 9 (Echo Request)|\n76 1 5-5 5,9 |[Identifier] 0x07|\n"
           "76 1 6-7 5,9 |[Length] 8 (0x0008) byte(s)|\n76 1 8-11 5,9 |[Magic Number] 01,02,03,04|\n"},
      {"PPP, all of the header compressed", DLT_PPP, "C1 4142",
       made_up("3 (0x0003)").substr(1) + made_up_ethernet_ii(kNone, "0x8864 (PPPoE Session)") +
           "75 1 0-0 4,9 |[Link] PPP" + kSessionMadeUpHere + made_up_session(kNone, kNone, "4(0x0004)", "0x00C1 ") +
           data_block("1-2", "2 (0x0002)", two_bytes)},
      {"half a PPP header", DLT_PPP_SERIAL, "FF03 C0",
       made_up("3 (0x0003)") + made_up_ethernet_ii(kNone, "0xFFFF ") + "75 1 " + kNone + " 4,9 |[Link] PPP" +
           kMadeUpHere + data_block("0-2", "3 (0x0003)", "FF 03 C0 20  0  0  0  0                            ...")},
      {"Cisco's PPP", DLT_PPP_SERIAL, "8F00 2000 4142",
       made_up("6 (0x0006)") + made_up_ethernet_ii(kNone, "0x2000 ") + "75 1 0-3 4,9 |[Link] PPP" + kMadeUpHere +
           "75 1 2-3 4,9 |[Protocol] 0x2000|\n" + data_block("4-5", "2 (0x0002)", two_bytes)},
      {"loopback, an unknown family", DLT_LOOP, "00000063 4142",
       made_up("6 (0x0006)") + made_up_ethernet_ii(kNone, "0xFFFF ") + "75 1 0-3 4,9 |[Link] BSD loopback" +
           kMadeUpHere + data_block("4-5", "2 (0x0002)", two_bytes)},
  };
  for (const auto& c : kCases) {
    auto found = lines_of(bytes_of(c.frame), c.link_type);
    EXPECT_EQ(found, c.lines) << c.what;
  }
}

// Which network layer the made-up header leads to, and where its title and the title's end stand in the real frame.
TEST(Lift, network_layers) {
  const struct {
    const char* what;
    int link_type;
    std::string frame, title;
  } kCases[] = {
      {"raw IPv4", DLT_RAW, kIp, ">47 0 0-19 4,3 |--- IP "},
      {"raw IPv6", DLT_RAW, kIp6, ">45 0 0-39 1,3 |--- IPv6 Header ["},
      {"IPv4", DLT_IPV4, kIp, ">47 0 0-19 4,3 |--- IP "},
      {"IPv6", DLT_IPV6, kIp6, ">45 0 0-39 1,3 |--- IPv6 Header ["},
      {"little-endian loopback, IPv4", DLT_NULL, "02000000" + kIp, ">47 0 4-23 4,3 |--- IP "},
      {"big-endian loopback, IPv4", DLT_NULL, "00000002" + kIp, ">47 0 4-23 4,3 |--- IP "},
      {"big-endian loopback, IPv6", DLT_NULL, "0000001C" + kIp6, ">45 0 4-43 1,3 |--- IPv6 Header ["},
      {"loopback in network order", DLT_LOOP, "00000018" + kIp6, ">45 0 4-43 1,3 |--- IPv6 Header ["},
      {"Linux cooked", DLT_LINUX_SLL, "0000 0001 0006 0A0B0C0D0E0F 0000 0800" + kIp, ">47 0 16-35 4,3 |--- IP "},
      {"PPP, IPv4", DLT_PPP, "FF03 0021" + kIp, ">47 0 4-23 4,3 |--- IP "},
      {"PPP, the header compressed", DLT_PPP, "21" + kIp, ">47 0 1-20 4,3 |--- IP "},
      {"PPP, IPv6", DLT_PPP_SERIAL, "0057" + kIp6, ">45 0 2-41 1,3 |--- IPv6 Header ["},
      {"PPP with the direction, LCP", DLT_PPP_WITH_DIR, "00 FF03 C021 09010008 01020304",
       ">13 0 5-18 5,9 |--- LCP Header (Echo Request)"},
      {"PPP, IPX", DLT_PPP, "002B FFFF 001E 00 04 00000000 FFFFFFFFFFFF 0452 00000000 020304050607 4000",
       ">36 0 2-31 1,4 |--- IPX Header ["},
  };
  for (const auto& c : kCases) {
    const auto found = lines_of(bytes_of(c.frame), c.link_type);
    EXPECT_NE(found.find(c.title), std::string::npos) << c.what << "\n" << found;
  }
}

struct Line {
  std::string text;
  std::uint32_t code, level, first, last;
  bool operator==(const Line&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Line& line) {
  return out << line.code << ' ' << line.level << ' ' << line.first << '-' << line.last << ' ' << line.text;
}

std::vector<Line> decoded(const Frame& frame, std::uint32_t& top_line) {
  Lines lines;
  top_line = lines.decode(frame, WIRELINES_ASCII);
  std::vector<Line> result;
  lines.each([&](const DisplayLine& l) {
    result.push_back({l.text, l.protocolCode, l.level, l.startOffset, l.endOffset});
  });
  return result;
}

// Real frames, each with tags put in: the same lines, at the bytes to which the tags moved what they describe.
TEST(Lift, tagged_frames_as_untagged_ones) {
  const std::string name = SOURCE_DIR "/examples/lan.pcap";
  Trace trace(name, {});
  int frames = 0;
  for (Frame frame{}; trace.next(frame); frames++) {
    for (const std::uint32_t tags : {1U, 2U, 5U}) {
      std::vector<std::uint8_t> bytes(frame.data, frame.data + frame.length);
      for (std::uint32_t i = 0; i < tags; i++) {
        constexpr std::uint8_t kTag[] = {0x81, 0x00, 0x00, 0x2A};
        bytes.insert(bytes.begin() + 12, std::begin(kTag), std::end(kTag));
      }
      const auto moved = [tags](std::uint32_t offset) {
        return offset < 12 || offset == 0xFFFFFFFF ? offset : offset + 4 * tags;
      };
      std::uint32_t top = 0;
      std::uint32_t wanted_top = 0;
      auto wanted = decoded(frame, wanted_top);
      std::size_t behind_link = 0;
      for (std::size_t i = 0; i < wanted.size(); i++) {
        wanted[i].first = moved(wanted[i].first);
        wanted[i].last = moved(wanted[i].last);
        if (wanted[i].text.starts_with("[Length]") && wanted[i].code == 73) {
          char text[40];
          (void)std::snprintf(text, sizeof text, "[Length] %zu (0x%04zX) byte(s)", bytes.size(), bytes.size());
          wanted[i].text = text;
        }
        if (behind_link == 0 && i > 6 && wanted[i].level == 65535) behind_link = i;
      }
      ASSERT_GT(behind_link, 0U);
      for (std::uint32_t i = tags; i-- > 0;) {
        const Line line{"[VLAN] 42 [Priority] 0 [Drop Eligible] 0 (802.1Q)", 75, 1, 12 + 4 * i, 15 + 4 * i};
        wanted.insert(wanted.begin() + static_cast<std::ptrdiff_t>(behind_link), line);
      }
      if (wanted_top > 0) wanted_top += tags;
      EXPECT_EQ(decoded(frame_of(bytes), top).size(), wanted.size());
      auto tagged = frame_of(bytes);
      tagged.seconds = frame.seconds;
      tagged.nanoseconds = frame.nanoseconds;
      EXPECT_EQ(decoded(tagged, top), wanted) << frame.number;
      EXPECT_EQ(top, wanted_top) << frame.number;

      PacketSummary plain{};
      PacketSummary lifted{};
      CheckPacket(frame.data, static_cast<std::int32_t>(frame.length), &plain);
      Lift lift(true);
      lift.take(tagged);
      CheckPacket(lift.data(), lift.length(), &lifted);
      lift.correct(lifted);
      for (const auto offset : {&PacketSummary::networkOffset, &PacketSummary::transportOffset}) {
        if (plain.*offset != 0) plain.*offset = static_cast<std::uint16_t>(plain.*offset + 4 * tags);
      }
      EXPECT_EQ(std::memcmp(&plain, &lifted, sizeof plain), 0) << frame.number;
    }
  }
  EXPECT_GT(frames, 10);
}

// Real frames of PPPoE sessions as a serial line would have them: behind the PPP protocol the same lines.
TEST(Lift, ppp_frames_as_those_of_sessions) {
  const std::string name = SOURCE_DIR "/examples/pppoe.pcap";
  Trace trace(name, {});
  constexpr std::uint32_t kBefore = 20;  // Ethernet and PPPoE
  std::map<int, int> protocols;
  for (Frame frame{}; trace.next(frame);) {
    const int protocol = frame.data[20] << 8 | frame.data[21];
    if (frame.data[12] != 0x88 || frame.data[13] != 0x64 || protocol == 0x57)
      continue;  // IPv6 is not shown in a session
    std::vector<std::uint8_t> bytes = {0xFF, 0x03};
    bytes.insert(bytes.end(), frame.data + kBefore, frame.data + frame.length);
    std::uint32_t top = 0;
    auto wanted = decoded(frame, top);
    const auto behind = std::find_if(wanted.begin(), wanted.end(),
                                     [](const Line& line) { return line.text.starts_with("[PPP Protocol]"); });
    wanted.erase(wanted.begin(), behind + 1);
    for (auto& line : wanted) {
      if (line.first == line.last && line.first == 0) continue;
      line.first -= kBefore - 2;
      line.last -= kBefore - 2;
    }
    auto found = decoded(frame_of(bytes, DLT_PPP), top);
    ASSERT_GE(found.size(), wanted.size());
    found.erase(found.begin(), found.end() - static_cast<std::ptrdiff_t>(wanted.size()));
    EXPECT_EQ(found, wanted) << frame.number;
    protocols[protocol]++;
  }
  EXPECT_GE(protocols.size(), 5U);
}

// Every link type and every length: the frame in a heap copy of exactly its size, no byte beyond it described by the
// data link and no line lost.
TEST(Lift, any_length) {
  const auto tagged = bytes_of("8100 0001 88A8 0002 8100 0003 0800 " + kIp);
  for (const int type : {DLT_EN10MB, DLT_LINUX_SLL, DLT_LINUX_SLL2, DLT_RAW, DLT_IPV4, DLT_IPV6, DLT_NULL, DLT_LOOP,
                         DLT_PPP, DLT_PPP_SERIAL, DLT_PPP_WITH_DIR}) {
    for (std::size_t length = 0; length <= tagged.size(); length++) {
      for (const std::size_t before : {0U, 12U, 14U}) {
        std::vector<std::uint8_t> bytes(before, 0x81);
        bytes.insert(bytes.end(), tagged.begin(), tagged.begin() + static_cast<std::ptrdiff_t>(length));
        bytes.shrink_to_fit();
        std::uint32_t top = 0;
        const auto lines = decoded(frame_of(bytes, type), top);
        ASSERT_GT(lines.size(), 6U);
        EXPECT_LE(top, lines.size());
        for (const auto& line : lines) {
          if (line.text.starts_with("[VLAN]") || line.text.starts_with("[Link]")) {
            EXPECT_TRUE(line.last < bytes.size() || line.last == 0xFFFFFFFF) << type << " " << bytes.size();
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace wirelines::host
