#include "core/classifier.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

struct Field {
  const char* name;
  std::size_t offset, size;
  enum { kDecimal, kHex, kBytes } shown;
};

#define FIELD(name, member, shown) \
  { name, offsetof(PacketSummary, member), sizeof(PacketSummary::member), Field::shown }
const Field kFields[] = {
    FIELD("kind", frameKind, kDecimal),
    FIELD("dsap", dsap, kHex),
    FIELD("ssap", ssap, kHex),
    FIELD("type", etherType, kHex),
    FIELD("net", networkCode, kHex),
    FIELD("at", networkOffset, kDecimal),
    FIELD("proto", ipProtocol, kDecimal),
    FIELD("transport", transportOffset, kDecimal),
    FIELD("src", srcIp, kBytes),
    FIELD("dst", dstIp, kBytes),
    FIELD("src6", srcIp6, kBytes),
    FIELD("dst6", dstIp6, kBytes),
    FIELD("ports", srcPort, kDecimal),
    FIELD("to", dstPort, kDecimal),
    FIELD("code", typeCode, kHex),
    FIELD("errors", errorFlags, kHex),
    FIELD("ipx", ipxSrcNet, kBytes),
    FIELD("node", ipxSrcNode, kBytes),
    FIELD("socket", ipxSrcSocket, kHex),
    FIELD("to-ipx", ipxDstNet, kBytes),
    FIELD("to-node", ipxDstNode, kBytes),
    FIELD("to-socket", ipxDstSocket, kHex),
    FIELD("reserved1", reserved1, kDecimal),
    FIELD("reserved2", reserved2, kDecimal),
    FIELD("reserved3", reserved3, kDecimal),
};

using Classify = void (*)(const Bytes&, PacketSummary&);

PacketSummary filled_with(uint8_t pattern) {
  PacketSummary s;
  std::memset(&s, pattern, sizeof s);
  return s;
}

// The fields that a classifier wrote, with their values in a record that was all zero. A byte was written when it
// differs from at least one of the patterns that stood there.
std::string written_by(Classify classify, Bytes data) {
  constexpr uint8_t kPatterns[] = {0x00, 0xA5, 0x5A};
  PacketSummary records[3];
  for (std::size_t i = 0; i < 3; ++i) {
    records[i] = filled_with(kPatterns[i]);
    classify(data, records[i]);
  }
  const auto byte = [&](std::size_t i, std::size_t offset) {
    return reinterpret_cast<const uint8_t*>(&records[i])[offset];
  };

  std::string out;
  for (const Field& f : kFields) {
    bool written = false;
    for (std::size_t i = 0; i < 3; ++i) {
      for (std::size_t k = 0; k < f.size; ++k) written |= byte(i, f.offset + k) != kPatterns[i];
    }
    if (!written) continue;
    uint32_t number = 0;
    std::string bytes;
    for (std::size_t k = 0; k < f.size; ++k) {
      char digits[4];
      std::snprintf(digits, sizeof digits, "%02X", unsigned{byte(0, f.offset + k)});
      bytes += digits;
    }
    if (f.size <= sizeof number) std::memcpy(&number, &reinterpret_cast<const uint8_t*>(records)[f.offset], f.size);
    char hex[12];
    std::snprintf(hex, sizeof hex, "%X", number);
    out += out.empty() ? "" : " ";
    out += f.name;
    out += '=';
    out += f.shown == Field::kBytes ? bytes : f.shown == Field::kHex ? std::string(hex) : std::to_string(number);
  }
  return out;
}

#define MACS "030405060708 0A0B0C0D0E0F "
#define IPS " src=C0000201 dst=C6336402"
#define IPS6 " src6=FE800000000000000202B3FFFE1E8329 dst6=20010DB8000000000000000000000007"
#define IP6_ADDRESSES " FE800000000000000202B3FFFE1E8329 20010DB8000000000000000000000007 "
#define TCP_HEADER "4500 0028 1234 4000 40 06 3C65 C0000201 C6336402 "
#define TCP "1001 0050 00000001 00000002 5018 2000 9341 0000"
#define UDP_HEADER "4500 001E 1234 4000 40 11 3C64 C0000201 C6336402 "
#define TCP6 "1001 0050 00000001 00000002 5002 2000 1C04 0000"
#define IPX "FFFF 001E 00 11 00000001 001B1E2F3A00 0451 00000002 001B1E2F3A01 4003"
#define IPX_FIELDS " ipx=00000002 node=001B1E2F3A01 socket=4003 to-ipx=00000001 to-node=001B1E2F3A00 to-socket=451"

struct Row {
  const char* name;
  const char* bytes;
  const char* written;
};

void check_rows(Classify classify, std::span<const Row> rows) {
  for (const Row& row : rows) {
    const auto bytes = bytes_of(row.bytes);
    const Bytes data(bytes.data(), static_cast<int32_t>(bytes.size()));
    EXPECT_EQ(written_by(classify, data), row.written) << row.name << "\ngiven:  " << row.bytes;
  }
}

#define NO_NETWORK " net=0 at=0 proto=0 transport=0"

TEST(Classifier, Frames) {
  const Row rows[] = {
      {"16 bytes", MACS "0800 4500", "kind=0" NO_NETWORK},
      {"an EtherType of no interest", MACS "6003 000000", "kind=4 type=6003" NO_NETWORK},
      {"802.3 raw", MACS "001E" IPX, "kind=1 dsap=FF ssap=FF net=1005 at=0 proto=17 transport=0" IPX_FIELDS},
      {"LLC, IPX", MACS "0021 E0E003" IPX, "kind=2 dsap=E0 ssap=E0 net=1005 at=0 proto=17 transport=0" IPX_FIELDS},
      {"LLC, IP", MACS "001F 060603" UDP_HEADER "0035 1001 000A C22A 4142",
       "kind=2 dsap=6 ssap=6 net=1001 at=17 proto=17 transport=37" IPS " ports=53 to=4097"},
      {"LLC, NetBIOS, I format", MACS "0004 F0F00002", "kind=2 dsap=F0 ssap=F0 net=1006 at=0 proto=0 transport=0"},
      {"LLC, XNS", MACS "0003 808003", "kind=2 dsap=80 ssap=80 net=1007 at=0 proto=0 transport=0"},
      {"LLC, spanning tree", MACS "0003 424203", "kind=2 dsap=42 ssap=42" NO_NETWORK},
      {"LLC, U format", MACS "0003 F0F07F", "kind=5 dsap=F0 ssap=F0" NO_NETWORK},
      {"SNAP of 21 bytes", MACS "0007 AAAA03 000000 08", "kind=3 dsap=AA ssap=AA" NO_NETWORK},
      {"SNAP, IP", MACS "0026 AAAA03 000000 0800" UDP_HEADER "0035 1001 000A C22A 4142",
       "kind=3 dsap=AA ssap=AA type=800 net=1001 at=22 proto=17 transport=42" IPS " ports=53 to=4097"},
      {"IPv6", MACS "86DD 60000000 0000 3B 40" IP6_ADDRESSES,
       "kind=4 type=86DD net=100A at=14 proto=59 transport=54" IPS6 " ports=0 to=0"},
      {"ARP", MACS "0806 0001 0800 06 04 0102 0A0B0C0D0E0F C0000201 030405060708 C6336402",
       "kind=4 type=806 net=1003 at=0 proto=0 transport=0" IPS " code=2"},
      {"RARP, cut: missing bytes read zero", MACS "8035 0001 0800 06 04 0003 0A0B0C0D0E0F C000",
       "kind=4 type=8035 net=1004 at=0 proto=0 transport=0 src=C0000000 dst=00000000 code=3"},
      {"Ethernet II, IPX", MACS "8137" IPX, "kind=4 type=8137 net=1005 at=0 proto=17 transport=0" IPX_FIELDS},
      {"XNS", MACS "0600 000000", "kind=4 type=600 net=1007 at=0 proto=0 transport=0"},
      {"AppleTalk", MACS "809B 000000", "kind=4 type=809B net=1008 at=0 proto=0 transport=0"},
      {"AppleTalk AARP", MACS "80F3 000000", "kind=4 type=80F3 net=1009 at=0 proto=0 transport=0"},
      {"PPPoE discovery", MACS "8863 1109 0000 0000", "kind=4 type=8863 net=1201 at=0 proto=0 transport=0 code=9"},
      {"PPPoE discovery without its code", MACS "0009 AAAA03 000000 8863 11",
       "kind=3 dsap=AA ssap=AA type=8863 net=1201 at=0 proto=0 transport=0"},
      {"PPPoE session, LCP", MACS "8864 1100 0001 0006 C021", "kind=4 type=8864 net=1202 at=22 proto=0 transport=22"},
      {"PPPoE session, IP", MACS "8864 1100 0001 0020 0021" UDP_HEADER "0035 1001 000A C22A 4142",
       "kind=4 type=8864 net=1001 at=22 proto=17 transport=42" IPS " ports=53 to=4097"},
      {"Kept: a session over SNAP begins at 27",
       MACS "0028 AAAA03 000000 8864 1100 0001 0020 0021" UDP_HEADER "0035 1001 000A C22A 4142",
       "kind=3 dsap=AA ssap=AA type=8864 net=1001 at=27 proto=17 transport=47" IPS " ports=53 to=4097"},
  };
  check_rows(wirelines::CheckPacket, rows);
}

// The fields of a packet without network header in front: offsets are what was added to them.
TEST(Classifier, Ip) {
  const Row rows[] = {
      {"19 bytes", "4500 0014 1234 4000 40 06 3C65 C0000201 C63364", ""},
      {"TCP", TCP_HEADER TCP, "proto=6 transport=20" IPS " ports=4097 to=80 code=18"},
      {"TCP, fill behind it", TCP_HEADER TCP " 0000 1234", "proto=6 transport=20" IPS " ports=4097 to=80 code=18"},
      {"options; header wrong", "4600 002C 1234 4000 40 06 3961 C0000201 C6336402 01010100" TCP "01",
       "proto=6 transport=24" IPS " ports=4097 to=80 code=18 errors=81"},
      {"TCP wrong", TCP_HEADER "1001 0050 00000001 00000002 5018 2000 9342 0000",
       "proto=6 transport=20" IPS " ports=4097 to=80 code=18 errors=84"},
      {"header and TCP wrong",
       "4500 0028 1234 4000 40 06 3C66 C0000201 C6336402 1001 0050 00000001 00000002 5018 2000 "
       "9342 0000",
       "proto=6 transport=20" IPS " ports=4097 to=80 code=18 errors=85"},
      {"no checksums",
       "4500 0028 1234 4000 40 06 0000 C0000201 C6336402 1001 0050 00000001 00000002 5018 2000 0000 0000",
       "proto=6 transport=20" IPS " ports=4097 to=80 code=18"},
      {"TCP of 19 bytes",
       "4500 0027 1234 4000 40 06 3C66 C0000201 C6336402 1001 0050 00000001 00000002 5018 2000 9341 00",
       "proto=6 transport=20" IPS},
      {"UDP wrong", UDP_HEADER "0035 1001 000A C22B 4142", "proto=17 transport=20" IPS " ports=53 to=4097 errors=88"},
      {"UDP without checksum", UDP_HEADER "0035 1001 000A 0000 4142", "proto=17 transport=20" IPS " ports=53 to=4097"},
      {"UDP cut: summed as far as it goes", UDP_HEADER "0035 1001 000A C22A",
       "proto=17 transport=20" IPS " ports=53 to=4097 errors=88"},
      {"UDP of 7 bytes", "4500 001B 1234 4000 40 11 3C67 C0000201 C6336402 0035 1001 000A C2",
       "proto=17 transport=20" IPS},
      {"ICMP", "4500 001C 1234 4000 40 01 3C76 C0000201 C6336402 08 00 F7FD 0001 0001",
       "proto=1 transport=20" IPS " code=8"},
      {"ICMP wrong: 0 is no exception", "4500 001C 1234 4000 40 01 3C76 C0000201 C6336402 08 00 0000 0001 0001",
       "proto=1 transport=20" IPS " code=8 errors=82"},
      {"another protocol", "4500 001C 1234 4000 40 02 3C75 C0000201 C6336402 1600 09FE E00000FB",
       "proto=2 transport=20" IPS},
      {"first fragment: no ports, no verdict",
       "4500 001E 1234 2000 40 11 5C64 C0000201 C6336402 0035 1001 0BB8 0001 4142",
       "proto=17 transport=20" IPS " ports=0 to=0"},
      {"first fragment of TCP keeps its flags",
       "4500 0028 1234 2000 40 06 5C65 C0000201 C6336402 1001 0050 00000001 00000002 5018 2000 9342 0000",
       "proto=6 transport=20" IPS " ports=0 to=0 code=18"},
      {"later fragment: its header is not summed", "4500 001E 1234 2001 40 11 0001 C0000201 C6336402 0035 1001",
       "net=1002 proto=17" IPS " ports=0 to=0"},
      {"last fragment", "4500 001E 1234 0001 40 11 7C63 C0000201 C6336402 0035 1001",
       "net=1002 proto=17" IPS " ports=0 to=0"},
      {"Kept: IPv6 counts the header twice",
       "4500 0050 1234 4000 40 29 3C1A C0000201 C6336402 60000000 0014 06 40" IP6_ADDRESSES TCP6,
       "net=100A at=20 proto=6 transport=80" IPS IPS6 " ports=4097 to=80 code=2"},
      {"IPv6 that is cut", "4500 0050 1234 4000 40 29 3C1A C0000201 C6336402 60000000 0014 06 40",
       "net=100A at=20 proto=41 transport=40" IPS},
  };
  check_rows(wirelines::CheckIp, rows);
}

TEST(Classifier, IpV6) {
  const Row rows[] = {
      {"39 bytes", "60000000 0014 06 40 FE800000000000000202B3FFFE1E8329 20010DB80000000000000000000000", ""},
      {"TCP", "60000000 0014 06 40" IP6_ADDRESSES TCP6, "proto=6 transport=40" IPS6 " ports=4097 to=80 code=2"},
      {"TCP wrong", "60000000 0014 06 40" IP6_ADDRESSES "1001 0050 00000001 00000002 5002 2000 1C03 0000",
       "proto=6 transport=40" IPS6 " ports=4097 to=80 code=2 errors=84"},
      {"hop-by-hop options twice, summed without them",
       "60000000 002C 00 40" IP6_ADDRESSES "00 00 0104 00000000 06 01 010C 000000000000000000000000" TCP6,
       "proto=6 transport=40" IPS6 " ports=4097 to=80 code=2"},
      {"hop-by-hop options that leave one byte", "60000000 0009 00 40" IP6_ADDRESSES "11 00 0104 00000000 00",
       "proto=0 transport=40" IPS6 " ports=0 to=0"},
      {"hop-by-hop options that leave two", "60000000 000A 00 40" IP6_ADDRESSES "11 00 0104 00000000 0000",
       "proto=17 transport=40" IPS6 " ports=0 to=0"},
      {"routing header", "60000000 0008 2B 40" IP6_ADDRESSES "06 00 00 00 00000000",
       "proto=43 transport=40" IPS6 " ports=0 to=0"},
      {"UDP", "60000000 000A 11 40" IP6_ADDRESSES "0035 1001 000A 4AD7 4142",
       "proto=17 transport=40" IPS6 " ports=53 to=4097"},
      {"UDP wrong", "60000000 000A 11 40" IP6_ADDRESSES "0035 1001 000A 4AD8 4142",
       "proto=17 transport=40" IPS6 " ports=53 to=4097 errors=88"},
      {"Kept: UDP wrong the other way", "60000000 000A 11 40" IP6_ADDRESSES "0035 1001 000A 4AD6 4142",
       "proto=17 transport=40" IPS6 " ports=53 to=4097"},
      {"UDP without checksum", "60000000 000A 11 40" IP6_ADDRESSES "0035 1001 000A 0000 4142",
       "proto=17 transport=40" IPS6 " ports=53 to=4097"},
      {"ICMPv6", "60000000 0008 3A 40" IP6_ADDRESSES "87 00 1532 00000000",
       "proto=58 transport=40" IPS6 " ports=0 to=0 code=87"},
      {"ICMPv6 wrong", "60000000 0008 3A 40" IP6_ADDRESSES "87 00 1533 00000000",
       "proto=58 transport=40" IPS6 " ports=0 to=0 code=87 errors=82"},
      {"ICMPv6 without checksum, 4 bytes", "60000000 0004 3A 40" IP6_ADDRESSES "87 00 0000",
       "proto=58 transport=40" IPS6 " ports=0 to=0 code=87"},
      {"ICMPv6 of 3 bytes", "60000000 0003 3A 40" IP6_ADDRESSES "87 00 00",
       "proto=58 transport=40" IPS6 " ports=0 to=0"},
  };
  check_rows(wirelines::CheckIpV6, rows);
}

TEST(Classifier, IpxAndPppSession) {
  const Row ipx[] = {
      {"packet", IPX, "proto=17" IPX_FIELDS},
      {"cut: missing bytes read zero", "FFFF 001E 00 04 0000",
       "proto=4 ipx=00000000 node=000000000000 socket=0 to-ipx=00000000 to-node=000000000000 to-socket=0"},
  };
  check_rows(wirelines::CheckIpx, ipx);
  const Row ppp[] = {
      {"7 bytes", "1100 0001 0006 C0", ""},        {"LCP", "1100 0001 0006 C021", "net=1202"},
      {"CHAP", "1100 0001 0006 C223", "net=1203"}, {"PAP", "1100 0001 0006 C023", "net=1204"},
      {"IPCP", "1100 0001 0006 8021", "net=1205"}, {"IPv6CP", "1100 0001 0006 8057", ""},
      {"IP", "1100 0001 0006 0021", "net=1001"},
  };
  check_rows(wirelines::CheckPppSession, ppp);
}

TEST(Classifier, ErrorsAreAddedToWhatIsThere) {
  const auto frame = bytes_of(MACS "0800" UDP_HEADER "0035 1001 000A C22B 4142");
  PacketSummary s = filled_with(0);
  s.errorFlags = WIRELINES_BAD_IP;
  ::CheckPacket(frame.data(), static_cast<int32_t>(frame.size()), &s);
  EXPECT_EQ(s.errorFlags, WIRELINES_BAD_IP | WIRELINES_BAD_UDP);
}

TEST(Classifier, NoBytesAtAll) {
  EXPECT_EQ(written_by(wirelines::CheckPacket, Bytes(nullptr, 0)), "kind=0" NO_NETWORK);
  EXPECT_EQ(written_by(wirelines::CheckIp, Bytes(nullptr, -1)), "");
  EXPECT_EQ(written_by(wirelines::CheckIpV6, Bytes(nullptr, INT32_MIN)), "");
  EXPECT_EQ(written_by(wirelines::CheckPppSession, Bytes(nullptr, 0)), "");
  EXPECT_EQ(written_by(wirelines::CheckIpx, Bytes(nullptr, 0)),
            "proto=0 ipx=00000000 node=000000000000 socket=0 to-ipx=00000000 to-node=000000000000 to-socket=0");
}

}  // namespace

}  // namespace wirelines::test
