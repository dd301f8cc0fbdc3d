#include "host/rows.hpp"

#include <gtest/gtest.h>
#include <vek4003.h>

#include <cstdlib>
#include <ctime>
#include <string>

#include "hex.hpp"
#include "written.hpp"

namespace wirelines::host {
namespace {

// Puts out the row of a frame, from a heap copy of exactly its size.
void put_row(RowPrinter& printer, const std::string& hex, std::uint32_t original_length) {
  setenv("TZ", "UTC0", 1);
  tzset();
  const auto bytes = bytes_of(hex);
  const auto length = static_cast<std::uint32_t>(bytes.size());
  const std::string trace = "trace";
  printer.row(
      {7, &trace, bytes.data(), length, original_length > 0 ? original_length : length, 1714557661, 123456789, 0});
}

// The row without the newline.
std::string row(const std::string& hex, std::uint32_t original_length = 0, bool color = false) {
  const auto result = written([&](Output& out) {
    RowPrinter printer(out, color);
    put_row(printer, hex, original_length);
  });
  EXPECT_TRUE(result.ends_with('\n'));
  return result.substr(0, result.size() - 1);
}

const std::string kBegin = "    7 10:01:01.123456 ";
const std::string kMacs = "0A0B0C0D0E0F 020304050607 ";
const std::string kStations = "02:03:04:05:06:07 0a:0b:0c:0d:0e:0f ";
const std::string kHosts = "192.0.2.1         198.51.100.255    ";
const std::string kIp6Hosts = "2001:db8::1       fe80::1           ";

// IPv4 with the checksum left out: total length, flags and offset, and protocol are to be filled in.
std::string ip(const std::string& length, const std::string& protocol, const std::string& fragment = "0000") {
  return kMacs + "0800 4500 " + length + " 0102 " + fragment + " 40 " + protocol + " 0000 C0000201 C63364FF ";
}
std::string ip6(const std::string& length, const std::string& next_header) {
  return kMacs + "86DD 60000000 " + length + next_header + "40 20010DB8 00x11 01 FE80 00x13 01 ";
}
const std::string kIpx = "FFFF 001E 00 11 00000001 FFFFFFFFFFFF 0451 C0A80102 020304050607 4003 ";
const std::string kArp = "0001 0800 0604 ";

struct Case {
  const char* what;
  std::string frame;
  std::string wanted;  // behind number and time
  std::uint32_t original_length = 0;
};

TEST(Rows, table) {
  const Case kCases[] = {
      {"TCP", ip("0028", "06") + "C001 0050 00x8 50 12 0000 0000 0000", kHosts + "TCP      54 49153 > 80 WWW [S.]"},
      {"every flag", ip("0028", "06") + "C001 C002 00x8 50 FF 0000 0000 0000",
       kHosts + "TCP      54 49153 > 49154 [FSRP.UEW]"},
      {"no flag", ip("0028", "06") + "01BB C002 00x8 50 00 0000 0000 0000",
       kHosts + "TCP      54 443 HTTPS > 49154 []"},
      {"TCP checksum", ip("0028", "06") + "C001 0050 00x8 50 02 0000 1234 0000",
       kHosts + "TCP      54 49153 > 80 WWW [S], TCP checksum wrong"},
      {"no TCP header", ip("0020", "06") + "C001 0050 00x8", kHosts + "TCP      46 no ports"},
      {"TCP ports of 0", ip("0028", "06") + "00x12 50 00 0000 0000 0000", kHosts + "TCP      54 0 > 0 []"},
      {"UDP, a name by transport", ip("001C", "11") + "C001 0202 0008 0000", kHosts + "UDP      42 49153 > 514 SYSLOG"},
      {"the same port by another transport", ip("0028", "06") + "0202 C002 00x8 50 00 0000 0000 0000",
       kHosts + "TCP      54 514 SHELL > 49154 []"},
      {"one port, named once", ip("001C", "11") + "0089 0089 0008 0000", kHosts + "UDP      42 137 > 137 NETBIOS-NS"},
      {"two checksums", kMacs + "0800 4500 001C 0102 0000 40 11 1111 C0000201 C63364FF C001 0050 0008 2222",
       kHosts + "UDP      42 49153 > 80 WWW, IP checksum wrong, UDP checksum wrong"},
      {"ICMP", ip("001C", "01") + "0800 F7FF 0000 0000", kHosts + "ICMP     42 Echo Request (8)"},
      {"ICMP without a name, and its checksum", ip("001C", "01") + "2A00 0000 0000 0000",
       kHosts + "ICMP     42 type 42, ICMP checksum wrong"},
      {"no ICMP header", ip("0016", "01") + "0800", kHosts + "ICMP     36 no type"},
      {"other protocol", ip("0014", "02"), kHosts + "IGMP     34 protocol 2 IGMP"},
      {"protocol without a name", ip("0014", "FD"), kHosts + "IP       34 protocol 253"},
      {"first fragment", ip("001C", "11", "2000") + "C001 0202 0008 0000",
       kHosts + "UDP      42 fragment at 0, ID 0x0102"},
      {"last fragment of another protocol", ip("001C", "2F", "00B9") + "00x8",
       kHosts + "IP       42 protocol 47 GRE, fragment at 1480, the last, ID 0x0102"},
      {"do not fragment", ip("001C", "11", "4000") + "C001 0202 0008 0000", kHosts + "UDP      42 49153 > 514 SYSLOG"},
      {"no IP header", kMacs + "0800 4500 00x17", kStations + "IP       33 header incomplete"},
      {"UDP over IPv6", ip6("0008", "11") + "0035 C001 0008 0000", kIp6Hosts + "UDP      62 53 DOMAIN > 49153"},
      {"ICMPv6 behind hop-by-hop options", ip6("000C", "00") + "3A00 00x6 8F000000",
       kIp6Hosts + "ICMPv6   66 type 143"},
      {"extension header", ip6("0008", "2C") + "3A 00x7", kIp6Hosts + "IPv6     62 next header 44 Fragment"},
      {"no IPv6 header", kMacs + "86DD 60 00x38", kStations + "IPv6     53 header incomplete"},
      {"IPv6 in IPv4", ip("003C", "29") + "60000000 0000 3B40 00x15 01 FE80 00x13 01",
       "::1               fe80::1           IPv6     74 next header 59, in IPv4"},
      {"IPv6 that its IPv4 datagram cuts", ip("003B", "29") + "60000000 0000 3B40 00x15 01 FE80 00x13 01",
       kHosts + "IPv6     74 header incomplete"},
      {"long IPv6 addresses push", kMacs + "86DD 60000000 0000 3B40 20010DB8 11x12 20010DB8 22x12",
       "2001:db8:1111:1111:1111:1111:1111:1111 2001:db8:2222:2222:2222:2222:2222:2222 IPv6     54 next header 59"},
      {"IP behind LLC", kMacs + "001F 060603 4500 001C 0000 0000 40 11 0000 C0000201 C63364FF 0035 C001 0008 0000",
       kHosts + "UDP      45 53 DOMAIN > 49153"},
      {"ARP request", kMacs + "0806 " + kArp + "0001 020304050607 C0000201 00x6 C0000202",
       kStations + "ARP      42 who-has 192.0.2.2 tell 192.0.2.1"},
      {"ARP reply from elsewhere, over SNAP",
       kMacs + "0024 AAAA03 000000 0806 " + kArp + "0002 0666666666AA C0000201 020304050607 C0000202",
       kStations + "ARP      50 192.0.2.1 is-at 06:66:66:66:66:aa"},
      {"RARP request", kMacs + "8035 " + kArp + "0003 020304050607 00x4 020304050608 00x4",
       kStations + "RARP     42 who-is 02:03:04:05:06:08 tell 02:03:04:05:06:07"},
      {"RARP reply", kMacs + "8035 " + kArp + "0004 020304050607 C0000201 020304050608 C0000202",
       kStations + "RARP     42 02:03:04:05:06:08 is 192.0.2.2"},
      {"other ARP operation, cut short", kMacs + "0806 " + kArp + "0009", kStations + "ARP      22 operation 9"},
      {"raw IPX", kMacs + "001E " + kIpx,
       "c0a80102.020304050607 1.ffffffffffff    IPX      44 0x4003 > 0x0451 NCP, type 17 NCP"},
      {"IPX of Ethernet II, one socket", kMacs + "8137 FFFF 001E 00 04 00x4 FFFFFFFFFFFF 0455 00x4 020304050607 0455",
       "0.020304050607    0.ffffffffffff    IPX      44 0x0455 > 0x0455 NetBIOS, type 4"},
      {"NetBIOS frame", kMacs + "0003 F0F003", kStations + "NetBIOS  17 SAP 0xF0 > 0xF0 UI"},
      {"LLC, I format", kMacs + "0004 420502 00", kStations + "LLC      18 SAP 0x05 > 0x42 I"},
      {"LLC, S format", kMacs + "0004 424201 00", kStations + "LLC      18 SAP 0x42 > 0x42 S"},
      {"LLC, U format", kMacs + "0003 42427F", kStations + "LLC      17 SAP 0x42 > 0x42 U"},
      {"SNAP", kMacs + "0008 AAAA03 00000C 2000", kStations + "SNAP     22 OUI 0x00000C, type 0x2000"},
      {"SNAP without a type", kMacs + "0003 AAAA03 00000C", kStations + "SNAP     20 header incomplete"},
      {"AppleTalk", kMacs + "0008 AAAA03 080007 809B", kStations + "AppleTalk 22 OUI 0x080007, type 0x809B AppleTalk"},
      {"PPPoE discovery", kMacs + "8863 1109 0000 0000", kStations + "PPPoE    20 code 0x09 PADI, session 0x0000"},
      {"PPPoE code without a name", kMacs + "8863 110A 0001 0000", kStations + "PPPoE    20 code 0x0A, session 0x0001"},
      {"PPPoE session", kMacs + "8864 1100 0004 0002 8057", kStations + "PPPoE    22 PPP 0x8057, session 0x0004"},
      {"LCP over SNAP", kMacs + "0010 AAAA03 000000 8864 1100 0004 0002 C021",
       kStations + "LCP      30 PPP 0xC021, session 0x0004"},
      {"fragment in a PPPoE session over SNAP",
       kMacs + "0024 AAAA03 000000 8864 1100 0004 0016 0021 4500 0014 0102 2001 40 11 0000 C0000201 C63364FF",
       kHosts + "UDP      50 fragment at 8, ID 0x0102"},
      {"EtherType with a name", kMacs + "6002 00x3", kStations + "Ether    17 EtherType 0x6002 DEC Remote Console"},
      {"EtherType without", kMacs + "88B5 00x3", kStations + "Ether    17 EtherType 0x88B5"},
      {"16 bytes", kMacs + "0800 4500", kStations + "Ether    16 too short, EtherType 0x0800 IP"},
      {"12 bytes", kMacs, kStations + "Ether    12 too short"},
      {"11 bytes", "0A0B0C0D0E0F 0203040506", "-                 0a:0b:0c:0d:0e:0f Ether    11 too short"},
      {"nothing", "", "-                 -                 Ether     0 too short"},
      {"nothing captured", "", "-                 -                 Ether  1514 too short (cut)", 1514},
      {"a long length pushes", kMacs + "88B5 00x3", kStations + "Ether 262144 EtherType 0x88B5 (cut)", 262144},
      {"cut: no verdict on TCP", ip("05DC", "06") + "C001 0050 00x8 50 02 0000 1234 0000",
       kHosts + "TCP    1514 49153 > 80 WWW [S] (cut)", 1514},
      {"cut: one on the IP header, which is there",
       kMacs + "0800 4500 05DC 0102 0000 40 11 1111 C0000201 C63364FF C001 0050 0008 2222",
       kHosts + "UDP    1514 49153 > 80 WWW, IP checksum wrong (cut)", 1514},
      {"cut: none on the IP header without its options",
       kMacs + "0800 4600 05DC 0102 0000 40 11 1111 C0000201 C63364FF", kHosts + "UDP    1514 no ports (cut)", 1514},
  };
  std::string all_wanted;
  for (const auto& c : kCases) {
    EXPECT_EQ(row(c.frame, c.original_length), kBegin + c.wanted) << c.what;
    all_wanted += kBegin + c.wanted + "\n";
  }
  // What a printer keeps of one frame does not change the next.
  EXPECT_EQ(written([&](Output& out) {
              RowPrinter printer(out, false);
              for (const auto& c : kCases) put_row(printer, c.frame, c.original_length);
            }),
            all_wanted);
}

// Any frame cut anywhere has its row, and only bytes that are there are read.
TEST(Rows, cut_anywhere) {
  const std::string frames[] = {ip("0028", "06") + "C001 0050 00x8 50 12 0000 0000 0000",
                                ip6("000C", "3A") + "8F00 00x8",
                                kMacs + "0806 " + kArp + "0001 020304050607 C0000201 00x6 C0000202",
                                kMacs + "001E " + kIpx, kMacs + "0010 AAAA03 000000 8864 1100 0004 0002 C021"};
  for (const auto& frame : frames) {
    std::string hex;
    for (const auto byte : bytes_of(frame)) {
      EXPECT_TRUE(row(hex, 1514).ends_with("(cut)")) << hex;
      constexpr const char* kDigits = "0123456789ABCDEF";
      hex += {kDigits[byte >> 4], kDigits[byte & 0x0F]};
    }
  }
}

TEST(Rows, names) {
  NickNameAdd(NICKNAME_STATION, "020304050607", "alpha");
  NickNameAdd(NICKNAME_IP, "192.0.2.1", "a-name-longer-than-its-column");
  NickNameAdd(NICKNAME_IP6, "fe80::1", "\x93\xFA\x96\x7B");
  NickNameAdd(NICKNAME_PORT, "80", "web");
  NickNameAdd(NICKNAME_PORT, "50000", "proxy");
  NickNameAdd(NICKNAME_SAP, "4205", "tree");
  NickNameAdd(NICKNAME_TYPE, "88B5", "trial");
  const Case kCases[] = {
      {"a name may push; ports", ip("0028", "06") + "C350 0050 00x8 50 10 0000 0000 0000",
       "a-name-longer-than-its-column 198.51.100.255    TCP      54 50000 proxy > 80 web [.]"},
      {"code page 932 takes a column a byte", ip6("0000", "3B"),
       "2001:db8::1       日本              IPv6     54 next header 59"},
      {"ARP", kMacs + "0806 " + kArp + "0002 020304050607 C0000201 00x6 C0000202",
       "alpha             0a:0b:0c:0d:0e:0f ARP      42 a-name-longer-than-its-column is-at alpha"},
      {"IPX", kMacs + "001E " + kIpx,
       "c0a80102.alpha    1.ffffffffffff    IPX      44 0x4003 > 0x0451 NCP, type 17 NCP"},
      {"SAPs", kMacs + "0003 420503", "alpha             0a:0b:0c:0d:0e:0f LLC      17 SAP 0x05 > 0x42 UI tree"},
      {"EtherType", kMacs + "88B5 00x3", "alpha             0a:0b:0c:0d:0e:0f Ether    17 EtherType 0x88B5 trial"},
  };
  for (const auto& c : kCases) EXPECT_EQ(row(c.frame), kBegin + c.wanted) << c.what;
  NickNameClear();
}

TEST(Rows, color) {
  EXPECT_EQ(row(ip("001C", "11") + "C001 0202 0008 0000", 0, true),
            kBegin + kHosts + "\x1B[38;5;30mUDP\x1B[0m      42 49153 > 514 SYSLOG");
  EXPECT_EQ(row(ip("001C", "11") + "C001 0202 0008 2222", 0, true),
            kBegin + kHosts +
                "\x1B[1;38;5;160mUDP\x1B[0m      42 49153 > 514 SYSLOG, \x1B[1;38;5;160mUDP checksum wrong\x1B[0m");
  EXPECT_EQ(row(kMacs + "88B5 00x3", 0, true), row(kMacs + "88B5 00x3")) << "of no family";
}

}  // namespace
}  // namespace wirelines::host
