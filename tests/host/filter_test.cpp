// Display filters: which frames they let through, what is wrong with a filter and where, and the table in the manual.
#include "host/filter.hpp"

#include <gtest/gtest.h>
#include <vek4003.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "hex.hpp"
#include "program.hpp"

namespace wirelines::host {
namespace {

// Whether the filter lets a frame through, taken from a heap copy of exactly its size.
bool lets_through(const std::string& filter, const std::string& hex, std::uint32_t missing = 0,
                  int link_type = DLT_EN10MB) {
  const auto bytes = bytes_of(hex);
  const auto length = static_cast<std::uint32_t>(bytes.size());
  const std::string trace = "trace";
  FilterScratch scratch(true, WIRELINES_SJIS);
  const Frame frame = {7, &trace, bytes.data(), length, length + missing, 1714557661, 250000000, 24, link_type};
  try {
    return Filter(filter).matches(frame, scratch);
  } catch (const FilterError& error) {
    ADD_FAILURE() << filter << ": " << error.position() << ": " << error.what();
    return false;
  }
}

const std::string kMacs = "00005E005301 00005E005302 ";  // to the first from the second
const std::string kIp = "0000 40 06 0000 C0000201 C6336402 ";
const std::string kTcp =
    kMacs + "8100 6005 0800 4500 0028 0001 " + kIp + "C001 008B 00000001 00000002 5012 2000 0000 0000";
const std::string kWrong = kMacs + "0800 4500 0028 0001 " + kIp + "C001 008B 00000001 00000002 5012 2000 1234 0000";
const std::string kIp6 = kMacs + "86DD 60000000 0008 11 40 20010DB8 00x11 01 FE80 00x13 01 0035 C001 0008 0001";
const std::string kIpx = kMacs + "001E FFFF 001E 00 11 C0A80100 00005E005301 0451 00000002 00005E005302 4003";
const std::string kArp = kMacs + "0806 0001 0800 0604 0001 00005E005302 C0000201 00x6 C0000202";
const std::string kDns = kMacs +
                         "0800 4500 002D 0001 0000 40 11 0000 C0000201 C6336402 C001 0035 0019 0000 "
                         "0001 0100 0001 0000 0000 0000 00 0001 0001";

struct Given {
  const char* what;
  std::string frame;
  std::vector<const char*> yes, no;
  std::uint32_t missing = 0;
  int link_type = DLT_EN10MB;
};

void check(const std::vector<Given>& cases) {
  for (const auto& c : cases) {
    for (const auto* filter : c.yes) {
      EXPECT_TRUE(lets_through(filter, c.frame, c.missing, c.link_type)) << c.what << ": " << filter;
    }
    for (const auto* filter : c.no) {
      EXPECT_FALSE(lets_through(filter, c.frame, c.missing, c.link_type)) << c.what << ": " << filter;
    }
  }
}

class FilterFields : public testing::Test {
 protected:
  FilterFields() {
    setenv("TZ", "Asia/Tokyo", 1);
    tzset();
    NickNameClear();
  }
  ~FilterFields() override { NickNameClear(); }
};

TEST_F(FilterFields, of_frames) {
  check({
      {"TCP behind a tag",
       kTcp,
       {"tcp",
        "TCP",
        "ip",
        "ether",
        "vlan",
        "vlan.id == 5",
        "vlan.id",
        "tcp.port == 139",
        "tcp.srcport == 0xC001",
        "tcp.dstport < 140",
        "port == 139",
        "ip.src == 192.0.2.1",
        "ip.addr == 198.51.100.2",
        "ip.proto == 6",
        "station == 192.0.2.1",
        "station == 00-00-5E-00-53-1",
        "station.src == 00005e005302",
        "tcp.syn and tcp.ack",
        "tcp.flags == 0x12",
        "frame.number == 7",
        "frame.length == 58",
        "srcPort == 49153",
        "network == \"IP\"",
        "tcp.port == \"netbios-ssn\"",
        "tcp.port in {1..138, 139}"},
       {"udp", "arp", "udp.port", "vlan.id != 5", "tcp.srcport == 139", "ip.dst == 192.0.2.1", "tcp.fin", "ipv6.addr",
        "station.src == 198.51.100.2", "frame.cut", "tcp.port == \"netbios\"", "smb", "network ~ \"6\"",
        "tcp.port in {1..138, 140..49152}"}},
      {"UDP over IPv6",
       kIp6,
       {"ipv6", "udp", "ipv6.src == 2001:db8::1", "ipv6.addr == fe80::1", "station == fe80:0::0001", "udp.port == 53",
        "ipv6.next == 17", "ipv6.dst == fe80::/10"},
       {"ip", "ip.addr", "tcp.port", "ipv6.src == fe80::1", "tcp.checksum.bad", "ipv6.dst == ff80::/10"}},
      {"wrong checksum",
       kWrong,
       {"checksum.bad", "tcp.checksum.bad", "frame.captured == 54"},
       {"ip.checksum.bad", "udp.checksum.bad", "frame.cut"}},
      {"the same, cut at capture",
       kWrong,
       {"frame.cut", "frame.length == 55", "frame.captured == 54"},
       {"checksum.bad"},
       1},
      {"raw IPX",
       kIpx,
       {"ipx", "ipx.type == 17", "ipx.socket == 0x451", "ipx.socket == \"ncp\"", "ipx.srcsocket == 0x4003",
        "ipx.dst == c0a80100.00005e005301", "ipx.addr == 2:00:00:5e:00:53:02", "station == 2.00005e005302",
        "ipx.node == 00:00:5e:00:53:02", "ipx.net == 2", "ipx.net in {1, c0a80100}", "ipxDstNet == c0a80100"},
       {"tcp", "udp", "llc", "ip.proto", "ipx.src == c0a80100.00005e005301", "ipx.net == 1", "netbios"}},
      {"ARP",
       kArp,
       {"arp", "arp.op == 1", "arp.dst == 192.0.2.2", "station.dst == 192.0.2.2", "arp.addr == 192.0.2.1"},
       {"ip", "ip.src", "rarp", "arp.src == 192.0.2.2"}},
      {"DNS", kDns, {"dns", "udp", "line ~ \"[id] 1 (\"", "line"}, {"ntp", "smb", "line ~ \"[id] 2 (\""}},
      {"NetBIOS frame", kMacs + "0003 F0F003", {"netbios", "llc", "llc.ssap == 0xF0"}, {"snap", "ipx", "eth.type"}},
      {"session", kMacs + "8864 1100 0004 0002 C021", {"pppoe", "lcp", "eth.type == 0x8864"}, {"chap", "pppoe.code"}},
      {"IPX RIP, not IP's",
       kMacs + "001E FFFF 0028 00 01 00000001 FFFFFFFFFFFF 0453 00000001 00005E005302 4003 0002 "
               "00000002 0001 0002",
       {"rip", "ipx"},
       {"udp", "sap"}},
      {"fragment",
       kMacs + "0800 4500 0028 0001 2000 40 06 0000 C0000201 C6336402 C001 008B 00x16",
       {"tcp"},
       {"tcp.port", "port == 0", "tcp.port != 1"}},
      {"no IP header", kMacs + "0800 4500 00x4", {"ip"}, {"ip.src", "tcp", "udp", "ip.proto"}},
      {"nothing", "", {"not ether", "not station", "!eth.src", "frame.length == 0"}, {"ip", "line ~ \"IP\""}},
      {"no Ethernet",
       "4500 0014 0000 0000 40 3B 0000 C0000201 C6336402",
       {"ip", "station", "ip.dst == 198.51.100.2"},
       {"ether", "eth.addr", "eth.src == 00:00:00:00:00:00", "eth.dst"},
       0,
       DLT_RAW},
  });
}

TEST_F(FilterFields, comparisons) {
  check({
      {"TCP, ports 49153 and 139",
       kTcp,
       {"tcp.port != 80", "!(tcp.port == 80)", "not tcp.port in {80, 443}", "!!tcp", "udp or tcp and ip",
        "tcp or udp and arp", "(tcp or udp) and ip", "not udp and tcp", "!udp.port == 1&&tcp", "tcp.port > 49152",
        "tcp.port < 140", "ip.src == 192.0.2.0/24", "ip.src == 193.0.2.1/7", "ip.src == 1.2.3.4/0",
        "eth.src == 00:00:5e:ff:ff:ff/24", "ip.src in {10.0.0.0/8, 192.0.2.0/31}"},
       {"tcp.port != 139", "udp.port != 80", "!(tcp.port != 80)", "(tcp or udp) and arp", "tcp and not tcp",
        "tcp.port > 49153", "ip.src == 192.0.3.0/24", "ip.src == 193.0.2.1/8", "ip.src != 192.0.2.0/24",
        "eth.src == 00:00:5f:00:53:02/24"}},
      {"at 2024-05-01 19:01:01.25 in Tokyo",
       kTcp,
       {"frame.time == \"2024-05-01\"", "frame.time >= \"2024-05-01 19:01\"", "frame.time <= \"2024-05-01 19:01\"",
        "frame.time < \"2024-05-01T19:01:02\"", "frame.time == \"2024-05-01 19:01:01.2\"",
        "frame.time != \"2024-05-02\"", "frame.time > \"2024-04-30 23:59:59\"",
        "frame.time < \"2024-05-01 19:01:01.251\""},
       {"frame.time > \"2024-05-01\"", "frame.time == \"2024-05-01 10:01\"", "frame.time > \"2024-05-01 19:01:01.25\"",
        "frame.time == \"2024-05-01 19:01:01.3\""}},
  });
}

// Names are code page 932 in the name module. The second byte of U+30BD (0x83 0x5C) is a backslash, that of U+30C1
// (0x83 0x60) and U+30A2 (0x83 0x41) a letter or sign too: none of them is found alone.
TEST_F(FilterFields, names_and_texts) {
  NickNameAdd(NICKNAME_STATION, "00:00:5e:00:53:02", "\x83\x5C\x83\x41 Server");
  NickNameAdd(NICKNAME_IP, "198.51.100.2", "na?ve");
  NickNameAdd(NICKNAME_PORT, "139", "shares");
  check({
      {"TCP",
       kTcp,
       {"station == \"\u30BD\u30A2 Server\"", "station ~ \"\u30BD\"", "station ~ \"SERVER\"", "eth.src ~ \"\u30A2 s\"",
        "station.dst == \"na\u00EFve\"", "ip.dst == \"NA?VE\"", "station != \"other\"", "tcp.port == \"Shares\"",
        "port ~ \"are\"", "station in {\"other\", \"na?ve\"}"},
       {"station ~ \"\\\\\"", "station == \"Server\"", "station ~ \"A \"", "ip.src ~ \"n\"", "station == \"na?v\"",
        "station != \"na?ve\"", "tcp.port == \"netbios-ssn\""}},
      {"IPX",
       kIpx,
       {"ipx.src ~ \"server\"", "ipx.addr == \"\u30BD\u30A2 server\"", "station.src ~ \"server\""},
       {"ipx.dst ~ \"server\"", "station.dst ~ \"server\""}},
      {"data in Japanese, and a control byte",
       kMacs + "88B5 835C8341 07 22",
       {"line ~ \"\u30BD\u30A2\"", "line ~ \"--- data link [ethernet_ii] -\"", "line == \"[Frame Type] ETHERNET_II\""},
       {"line == \"[Frame Type]\"", "line ~ \"\x07\"", "line ~ \"ethernet_iii\""}},
  });
}

TEST(Filter, faults) {
  const std::string deep(101, '(');
  const struct {
    std::string filter;
    std::size_t position;
    const char* message;  // begins like this
  } kCases[] = {
      {"", 0, "expected a field or a protocol, not, or ("},
      {"tcp and", 7, "expected a field"},
      {"tcp and == 5", 8, "expected a field or a protocol, not, or (, not '=='"},
      {"tcp udp", 4, "expected and, or, or the end, not 'udp'"},
      {"(tcp or udp", 11, "expected )"},
      {"tcp)", 3, "no parenthesis is open here"},
      {"tcp and ip.scr == 10.0.0.1", 8, "'ip.scr' is no field or protocol; did you mean ip.src?"},
      {"frame.len > 9", 0, "'frame.len' is no field or protocol; did you mean frame.length?"},
      {"ip6", 0, "'ip6' is no field or protocol; did you mean ipv6?"},
      {"zebra", 0, "'zebra' is no field or protocol"},
      {"tcp == 1", 4, "tcp is a yes or no"},
      {"tcp.port = 80", 9, "equal is written =="},
      {"tcp & udp", 4, "and is written &&"},
      {"tcp | udp", 4, "or is written ||"},
      {"tcp # udp", 4, "'#' means nothing here"},
      {"line ~ 'abc'", 7, "texts stand in double quotes"},
      {"line ~ \"abc\\\"", 7, "this text has no closing quote"},
      {"line ~ \"\"", 7, "an empty text"},
      {"line ~ abc", 7, "expected a text in double quotes, not 'abc'"},
      {"line > \"abc\"", 5, "line can be compared with == and != only"},
      {"tcp.port == 80x", 12, "expected a number, as 80 or 0x50, or a name in double quotes, not '80x'"},
      {"tcp.port == 18446744073709551616", 12, "expected a number"},
      {"frame.number == \"7\"", 16, "expected a number, as 80 or 0x50, not"},
      {"frame.number ~ \"7\"", 13, "frame.number can be compared"},
      {"tcp.port > \"www\"", 11, "names have no order"},
      {"tcp.port in 80", 12, "expected {, not '80'"},
      {"tcp.port in {80 81}", 16, "expected }, not '81'"},
      {"tcp.port in {}", 13, "expected a number"},
      {"tcp.port in {9..5}", 13, "this range ends before it begins"},
      {"tcp.port in {9..}", 13, "expected a range of numbers"},
      {"ip.src == 10.0.0.1/33", 10, "expected an IPv4 address"},
      {"ip.src == 10.0.0", 10, "expected an IPv4 address"},
      {"ip.src > 10.0.0.1", 7, "ip.src can be compared with == and != only"},
      {"ipv6.src == 10.0.0.1", 12, "expected an IPv6 address"},
      {"eth.src == 0:0:5e:0:53", 11, "expected a MAC address"},
      {"eth.src == 0:0:5e:0:53:1:2", 11, "expected a MAC address"},
      {"eth.src == 0:0-5e:0:53:1", 11, "expected a MAC address"},
      {"eth.src == 00005e0053gg", 11, "expected a MAC address"},
      {"ipx.src == 123456789.00005e005301", 11, "expected an IPX network and node"},
      {"ipx.net == -1", 11, "expected a hexadecimal number"},
      {"station == fileserver", 11, "expected a MAC, IPv4, IPv6 or IPX address, or a name in double quotes"},
      {"frame.time == 2024-05-01", 14, "expected a time in double quotes"},
      {"frame.time == \"2024-5-1\"", 14, "expected a time"},
      {"frame.time == \"2024-05-01 10\"", 14, "expected a time"},
      {"frame.time == \"2024-05-01 10:00:00.1234567890\"", 14, "expected a time"},
      {deep + "tcp", 100, "nested deeper than 100"},
      {std::string(100000, '!'), 100, "nested deeper than 100"},
  };
  for (const auto& c : kCases) {
    try {
      const Filter understood(c.filter);
      ADD_FAILURE() << c.filter << " was understood";
    } catch (const FilterError& error) {
      EXPECT_EQ(error.position(), c.position) << c.filter << ": " << error.what();
      EXPECT_TRUE(std::string_view(error.what()).starts_with(c.message)) << c.filter << ": " << error.what();
    }
  }
}

TEST(Filter, long_chains_do_not_nest) {
  std::string any = "udp";
  for (int i = 0; i < 100000; i++) any += i % 2 == 0 ? " or arp" : " and ip";
  EXPECT_TRUE(lets_through(any + " or tcp", kTcp));
  EXPECT_FALSE(lets_through(any, kTcp));
}

// The manual's table is the code's.
TEST(Filter, manual) {
  std::string table = "| field | is a | |\n|---|---|---|\n";
  for (const auto& field : filter_field_infos()) {
    table +=
        "| `" + std::string(field.name) + "` | " + std::string(field.type) + " | " + std::string(field.about) + " |\n";
  }
  EXPECT_TRUE(contents(SOURCE_DIR "/docs/filter.md").ends_with("\n\n" + table)) << table;
}

TEST_F(Program, display_filter) {
  folder_.file("trace.pcap.names", "station 0a:0b:0c:0d:0e:0f \u30B5\u30FC\u30D0\n");
  const struct {
    const char* command;
    int exit_code;
    const char* out;
    const char* err;
  } kCases[] = {
      {"$W list -Y 'frame.length > 16' $T | cut -c1-5", 0, "    2\n    3\n", ""},
      {"$W list -N 2-3 -c 1 -Y 'frame.captured != 16' $T | cut -c1-5", 0, "    3\n", ""},
      {"$W list -f 'greater 17' -Y 'not frame.cut' $T | cut -c1-5", 0, "    3\n", ""},
      {"$W list --utc -Y 'frame.time < \"2024-05-01 10:00:01\"' $T | cut -c1-5", 0, "    1\n", ""},
      {"$W show -Y 'line ~ \"(0x0010)\"' $T | grep ^Frame | cut -c1-7", 0, "Frame 2\n", ""},
      {"$W json --lines none -Y 'station == \"\u30B5\u30FC\u30D0\"' -c 1 $T | cut -c1-15", 0, "{\"v\":1,\"frame\":\n",
       ""},
      {"$W classify -Y 'station ~ \"\u30D0\" and frame.number == 2' $T | cut -f 2", 0, "2\n", ""},
      {"$W stats --json -Y 'frame.number < 3' $T | tr -d ' ' | grep -o -m1 '\"frames\":2'", 0, "\"frames\":2\n", ""},
      {"$W list -Y tcp $T", 0, "", "wirelines: none of the 3 frame(s) was chosen\n"},
      {"$W list -Y 'station == \"\u30B5\" oops' $T", 64, "",
       "wirelines: --display-filter: expected and, or, or the end, not 'oops'\n"
       "  station == \"\u30B5\" oops\n"
       "                  ^\n"},
  };
  for (const auto& c : kCases) {
    const auto result = run(c.command);
    EXPECT_EQ(result.exit_code, c.exit_code) << c.command;
    EXPECT_EQ(result.out, c.out) << c.command;
    EXPECT_EQ(result.err, c.err) << c.command;
  }
}

}  // namespace
}  // namespace wirelines::host
