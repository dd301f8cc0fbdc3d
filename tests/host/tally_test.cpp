// What single frames count as, and that everything adds up.
#include "host/tally.hpp"

#include <gtest/gtest.h>

#include <filesystem>

#include "hex.hpp"
#include "host/labels.hpp"
#include "host/report.hpp"

namespace wirelines::host {
namespace {

// From a heap copy of exactly its size.
void add(Tally& tally, const std::string& hex, std::uint32_t missing = 0, int link_type = DLT_EN10MB) {
  const auto bytes = bytes_of(hex);
  const auto length = static_cast<std::uint32_t>(bytes.size());
  tally.add({1, nullptr, bytes.data(), length, length + missing, 1714557661, 0, 0, link_type});
}

std::string verdicts(const Tally& tally) {
  std::string text;
  for (std::size_t i = 0; i < kChecksums; i++) {
    const auto& [right, wrong, none, not_verified] = tally.checksums[i];
    const auto put = [&](const char* verdict, std::uint64_t count) {
      for (; count > 0; count--) text += (text.empty() ? "" : ", ") + std::string(kChecksumNames[i]) + " " + verdict;
    };
    put("right", right);
    put("wrong", wrong);
    put("none", none);
    put("not verified", not_verified);
  }
  return text;
}

const std::string kMacs = "020304050607 0A0B0C0D0E0F ";
const std::string kHosts = "C0000201 C63364FF ";
const std::string kIp6 = "86DD 60000000 0008 ";
const std::string kIp6Hosts = "20010DB8 00x11 01 FE80 00x13 01 ";

// IPv4 of 28 bytes, unless told otherwise.
std::string ip(const std::string& protocol, const std::string& checksum = "0000", const std::string& fragment = "0000",
               const std::string& length = "001C") {
  return "4500 " + length + " 0102 " + fragment + " 40 " + protocol + " " + checksum + " " + kHosts;
}

TEST(Tally, a_frame_counts_as) {
  const std::string udp = "C000 0035 0008 ";
  const std::string tcp = "C001 01BD 00x8 5012 0000 1234 0000";
  const std::string ipx = "FFFF 001E 00 04 00000001 FFx6 0452 00000001 0A0B0C0D0E0F 4003";
  const struct {
    const char* what;
    std::string frame;
    std::uint32_t missing;
    std::string path, port, verdicts;
  } kCases[] = {
      {"too short", "0102", 0, "Too short", "", ""},
      {"unknown type", kMacs + "88B5 00x46", 0, "Ethernet II/Type 0x88B5", "", ""},
      {"ARP", kMacs + "0806 00x28", 0, "Ethernet II/ARP", "", ""},
      {"UDP, nothing calculated", kMacs + "0800" + ip("11") + udp + "0000", 0, "Ethernet II/IPv4/UDP", "udp 53",
       "IPv4 header none, UDP none"},
      {"UDP, right", kMacs + "0800" + ip("11", "8C9B") + udp + "5274", 0, "Ethernet II/IPv4/UDP", "udp 53",
       "IPv4 header right, UDP right"},
      {"UDP, wrong", kMacs + "0800" + ip("11", "8C9C") + udp + "5275", 0, "Ethernet II/IPv4/UDP", "udp 53",
       "IPv4 header wrong, UDP wrong"},
      {"UDP, wrong but cut", kMacs + "0800" + ip("11", "8C9C", "0000", "0020") + udp + "5275", 4,
       "Ethernet II/IPv4/UDP", "udp 53", "IPv4 header wrong, UDP not verified"},
      {"UDP, none but cut", kMacs + "0800" + ip("11") + udp + "0000", 4, "Ethernet II/IPv4/UDP", "udp 53",
       "IPv4 header none, UDP not verified"},
      {"UDP header incomplete", kMacs + "0800" + ip("11") + "C0000035", 0, "Ethernet II/IPv4/UDP", "",
       "IPv4 header none, UDP not verified"},
      {"an IPv4 header cut in its options", kMacs + "0800 4600 0020 0102 0000 40 11 1234" + kHosts, 12,
       "Ethernet II/IPv4/UDP", "", "IPv4 header not verified, UDP not verified"},
      {"an IPv4 header cut", kMacs + "0800 4500 001C", 24, "Ethernet II/IPv4/header incomplete", "",
       "IPv4 header not verified"},
      {"a first fragment", kMacs + "0800" + ip("11", "1234", "2000") + udp + "1234", 0,
       "Ethernet II/IPv4/UDP/fragments", "", "IPv4 header wrong, UDP not verified"},
      {"a later fragment", kMacs + "0800" + ip("11", "1234", "0001") + udp + "1234", 0,
       "Ethernet II/IPv4/UDP/fragments", "", "IPv4 header not verified, UDP not verified"},
      {"TCP, the service sends",
       kMacs + "0800" + ip("06", "0000", "0000", "0028") + "01BD C001 00x8 5012 0000 12340000", 0,
       "Ethernet II/IPv4/TCP", "tcp 445", "IPv4 header none, TCP wrong"},
      {"ICMP, right", kMacs + "0800" + ip("01") + "0800 F7FF 00x4", 0, "Ethernet II/IPv4/ICMP", "",
       "IPv4 header none, ICMP right"},
      {"ICMP without a checksum is wrong", kMacs + "0800" + ip("01") + "0800 0000 00x4", 0, "Ethernet II/IPv4/ICMP", "",
       "IPv4 header none, ICMP wrong"},
      {"UDP over IPv6", kMacs + kIp6 + "1140" + kIp6Hosts + udp + "0000", 0, "Ethernet II/IPv6/UDP", "udp 53",
       "UDP none"},
      {"UDP behind hop-by-hop options", kMacs + "86DD 60000000 0010 0040" + kIp6Hosts + "1100 0104 00x4" + udp + "0000",
       0, "Ethernet II/IPv6/UDP", "udp 53", "UDP none"},
      {"ICMPv6, cut", kMacs + kIp6 + "3A40" + kIp6Hosts + "8700 1234", 4, "Ethernet II/IPv6/ICMPv6", "",
       "ICMP not verified"},
      {"TCP in IPv6 in IPv4",
       kMacs + "0800" + ip("29", "0000", "0000", "0050") + "60000000 0014 0640" + kIp6Hosts + tcp, 0,
       "Ethernet II/IPv4/IPv6/TCP", "tcp 445", "IPv4 header none, TCP wrong"},
      {"IPv6 in IPv4, cut", kMacs + "0800" + ip("29", "0000", "0000", "003C") + "6000", 38,
       "Ethernet II/IPv4/IPv6/header incomplete", "", "IPv4 header none"},
      {"IPv6 that its IPv4 datagram cuts",
       kMacs + "0800" + ip("29", "0000", "0000", "003B") + "60000000 0008 1140" + kIp6Hosts + udp + "0000", 0,
       "Ethernet II/IPv4/IPv6/header incomplete", "", "IPv4 header none"},
      {"UDP that the IPv4 datagram around its IPv6 cuts",
       kMacs + "0800" + ip("29", "0000", "0000", "0043") + "60000000 0008 1140" + kIp6Hosts + udp + "1234", 0,
       "Ethernet II/IPv4/IPv6/UDP", "", "IPv4 header none, UDP not verified"},
      {"UDP in a session", kMacs + "8864 1100 0001 001E 0021" + ip("11") + udp + "0000", 0,
       "Ethernet II/PPPoE session/IPv4/UDP", "udp 53", "IPv4 header none, UDP none"},
      {"UDP in a session over SNAP", kMacs + "002A AAAA03 000000 8864 1100 0001 001E 0021" + ip("11") + udp + "0000", 0,
       "SNAP/PPPoE session/IPv4/UDP", "udp 53", "IPv4 header none, UDP none"},
      {"PPPoE", kMacs + "8863 1109 0000 0000", 0, "Ethernet II/PPPoE discovery", "", ""},
      {"UDP over LLC", kMacs + "001F 060603" + ip("11") + udp + "0000", 0, "LLC/IPv4/UDP", "udp 53",
       "IPv4 header none, UDP none"},
      {"NetWare, raw", kMacs + "001E" + ipx, 0, "802.3 raw/IPX/Type 4", "ipx 0x0452", ""},
      {"NetWare over LLC", kMacs + "0021 E0E003" + ipx, 0, "LLC/IPX/Type 4", "ipx 0x0452", ""},
      {"other SAPs", kMacs + "0003 424303", 0, "LLC/SAP 43 > 42", "", ""},
      {"control", kMacs + "0003 F0F07F", 0, "LLC/Control (S and U format)", "", ""},
      {"SNAP, cut", kMacs + "0008 AAAA03 0000", 3, "SNAP/header incomplete", "", ""},
  };
  for (const auto& c : kCases) {
    Tally tally;
    add(tally, c.frame, c.missing);
    std::string found;
    for (const auto& name : path(ProtocolKey::unpack(tally.protocols.entries().at(0).key))) {
      found += (found.empty() ? "" : "/") + name;
    }
    EXPECT_EQ(found, c.path) << c.what;
    const auto& ports = tally.ports.entries();
    EXPECT_EQ(ports.empty() ? "" : label(ports[0].key).address, c.port) << c.what;
    EXPECT_EQ(verdicts(tally), c.verdicts) << c.what;
  }
}

TEST(Tally, vlan_tags_and_other_link_layers) {
  const auto udp = ip("11", "8C9B") + "C000 0035 0008 5274";
  Tally tally;
  add(tally, kMacs + "8100 0005 0800" + udp);
  add(tally, udp, 0, DLT_RAW);
  EXPECT_EQ(verdicts(tally), "IPv4 header right, IPv4 header right, UDP right, UDP right");
  EXPECT_EQ(tally.stations.total, (Count{1, 46}));
  EXPECT_EQ(tally.framings[kNoEthernet], (Count{1, 28}));
  EXPECT_EQ(tally.total, (Count{2, 74}));
  add(tally, "C021 0901 0008 00x4", 0, DLT_PPP);
  EXPECT_EQ(path(ProtocolKey::unpack(tally.protocols.entries().back().key)),
            (std::vector<std::string>{"No Ethernet", "PPP", "LCP"}));
}

// Both ways of a conversation come into one entry.
TEST(Tally, talkers_and_conversations) {
  Tally tally;
  const std::string a = "020000000001 ";
  const std::string b = "020000000002 ";
  add(tally, b + a + "88B5 00x46");
  add(tally, a + b + "88B5 00x86");
  add(tally, a + b + "0003 F0F07F 00x43");
  ASSERT_EQ(tally.stations.talkers.entries().size(), 2U);
  const auto stations = top_entries(tally.stations.talkers, 0, [](const Station& s) { return s.sent; });
  EXPECT_EQ(label(stations[0].key).address, "02:00:00:00:00:02");
  EXPECT_EQ(stations[0].value.sent, (Count{2, 160}));
  EXPECT_EQ(stations[0].value.received, (Count{1, 60}));
  EXPECT_EQ(stations[0].value.framings[kEthernetII], (Count{1, 100}));
  EXPECT_EQ(stations[0].value.framings[kLlc], (Count{1, 60}));
  ASSERT_EQ(tally.stations.conversations.entries().size(), 1U);
  const auto& pair = tally.stations.conversations.entries()[0];
  EXPECT_EQ(pair.key, (Key<12>{2, 0, 0, 0, 0, 1, 2, 0, 0, 0, 0, 2}));
  EXPECT_EQ(pair.value.forth, (Count{1, 60}));
  EXPECT_EQ(pair.value.back, (Count{2, 160}));
}

// Every part of a tally gives the same totals.
template <std::size_t N, typename T>
void expect_layer(const Layer<N, T>& layer, const std::string& what) {
  Count sent = layer.talkers_missed.sent;
  Count received = layer.talkers_missed.received;
  Count pairs = layer.conversations_missed;
  for (const auto& entry : layer.talkers.entries()) {
    sent += entry.value.sent;
    received += entry.value.received;
  }
  for (const auto& entry : layer.conversations.entries()) pairs += entry.value.both();
  EXPECT_EQ(sent, layer.total) << what;
  EXPECT_EQ(received, layer.total) << what;
  EXPECT_EQ(pairs, layer.total) << what;
}

void expect_totals(const Tally& tally, Count total, const std::string& what) {
  EXPECT_EQ(tally.total, total) << what;
  const auto tree = protocol_tree(tally);
  Count protocols;
  Count sizes;
  Count framings;
  Count time;
  for (const auto& part : tree.parts) protocols += part.count;
  for (const auto& count : tally.sizes) sizes += count;
  for (const auto& count : tally.framings) framings += count;
  for (const auto& count : tally.timeline.columns(80).counts) time += count;
  EXPECT_EQ(protocols, total) << what;
  EXPECT_EQ(sizes, total) << what;
  EXPECT_EQ(framings, total) << what;
  EXPECT_EQ(time, total) << what;
  expect_layer(tally.stations, what);
  expect_layer(tally.ip, what);
  expect_layer(tally.ip6, what);
  expect_layer(tally.ipx, what);
}

TEST(Tally, totals_add_up) {
  std::size_t traces = 0;
  for (const std::filesystem::path folder : {SOURCE_DIR "/examples", SOURCE_DIR "/../shared/captures"}) {
    if (!std::filesystem::is_directory(folder)) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() != ".pcap") continue;
      const std::string name = entry.path();
      Tally tally;
      Tally small(true, 3);
      Count total;
      try {
        Trace trace(name, [] {});
        for (Frame frame{}; trace.next(frame);) {
          tally.add(frame);
          small.add(frame);
          total.add(frame.original_length);
        }
      } catch (const Failure&) {  // what was read before still counts
      }
      traces++;
      expect_totals(tally, total, name);
      expect_totals(small, total, name + " in small tables");
    }
  }
  EXPECT_GT(traces, 5U);
}

TEST(Tally, a_full_table_counts_what_it_cannot_take) {
  Tally tally(true, 2);
  const std::string target = "020000000001 ";
  for (const auto* const source : {"020000000002 ", "020000000003 ", "020000000004 ", "020000000002 "}) {
    add(tally, target + source + "0800" + ip("11") + "C000 0035 0008 0000");
  }
  add(tally, target + target + "0800" + ip("11") + "0007 0007 0008 0000");
  add(tally, target + target + "0800" + ip("11") + "0009 0009 0008 0000");
  EXPECT_EQ(tally.stations.talkers.entries().size(), 2U);
  EXPECT_EQ(tally.stations.talkers_missed.sent, (Count{2, 84}));
  EXPECT_EQ(tally.stations.talkers_missed.received, (Count{0, 0}));
  EXPECT_EQ(tally.stations.conversations.entries().size(), 2U);
  EXPECT_EQ(tally.stations.conversations_missed, (Count{3, 126}));
  EXPECT_EQ(tally.ports.entries().size(), 2U);
  EXPECT_EQ(tally.ports_missed, (Count{1, 42}));
  expect_totals(tally, {6, 252}, "a full table");
}

TEST(BoundedTable, finds_what_it_holds) {
  BoundedTable<Key<3>, std::uint32_t> table(5000);
  const auto key = [](std::uint32_t i) {
    return Key<3>{static_cast<std::uint8_t>(i >> 16), static_cast<std::uint8_t>(i >> 8), static_cast<std::uint8_t>(i)};
  };
  for (std::uint32_t i = 0; i < 6000; i++) {
    auto* const value = table.enter(key(i * 257));
    ASSERT_EQ(value != nullptr, i < 5000) << i;
    if (value != nullptr) *value = i;
  }
  for (std::uint32_t i = 0; i < 5000; i++) ASSERT_EQ(*table.enter(key(i * 257)), i);
}

}  // namespace
}  // namespace wirelines::host
