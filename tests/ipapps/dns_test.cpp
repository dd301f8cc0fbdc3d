#include "ipapps/dns.hpp"

#include <gtest/gtest.h>

#include <string>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kMessages[] = {
    {"query", "1234 0100 0001 0000 0000 0000 03 'www' 07 'example' 03 'net' 00 0001 0001",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-32 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4660 (0x1234)|\n"
     "83 1 2-3 3,6 |[R] 0 (request)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 1 [ANCOUNT] 0 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "83 1 12-32 3,6 |--- Question section 1 ---------------------|\n"
     "83 1 12-28 3,6 |[QNAME] www.example.net.|\n"
     "83 1 29-30 3,6 |[TYPE] 1 (A)|\n"
     "83 1 31-32 3,6 |[CLASS] 1 (Internet)|\n"},
    {"Kept: four bytes of range for AAAA (all kinds that are taken apart)",
     "1234 8180 0000 0006 0001 0001 03 'www' 07 'example' 03 'net' 00 0005 0001 0000003C 0006 03 'cdn' C010 C00C "
     "0001 0001 0000003C 0004 C0000205 C00C 001C 0001 0000003C 0010 20010DB8000000000000000000000205 C010 000F "
     "0001 00000E10 0009 000A 04 'mail' C010 C00C 0010 0001 0000003C 0003 02 'hi' C00C 000C 0001 0000003C 0001 00 "
     "C010 0002 0001 00000E10 0005 02 'ns' C010 00 0029 04D0 00008000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-165 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4660 (0x1234)|\n"
     "83 1 2-3 3,6 |[R] 1 (response)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 2-3 3,6 |[AA] Authoritative Answer flag = 0|\n"
     "83 1 2-3 3,6 |[TC] Truncation Flag = 0|\n"
     "83 1 2-3 3,6 |[RD] Recursion Desired Flag = 1|\n"
     "83 1 2-3 3,6 |[RA] Recursion Available Flag = 1|\n"
     "83 1 2-3 3,6 |[RCODE] 0 (OK)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 0 [ANCOUNT] 6 [NSCOUNT] 1 [ARCOUNT] 1|\n"
     "83 1 12-44 3,6 |--- Answer Section 1 -----------------------|\n"
     "83 1 12-28 3,6 |[NAME] www.example.net.|\n"
     "83 1 29-30 3,6 |[TYPE] 5 (CNAME)|\n"
     "83 1 31-32 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 33-36 3,6 |[TTL] 60 sec|\n"
     "83 1 37-38 3,6 |[Data Length] 6 (0x0006) byte(s)|\n"
     "83 1 39-44 3,6 |[CNAME] cdn.example.net.|\n"
     "83 1 45-60 3,6 |--- Answer Section 2 -----------------------|\n"
     "83 1 45-46 3,6 |[NAME] www.example.net.|\n"
     "83 1 47-48 3,6 |[TYPE] 1 (A)|\n"
     "83 1 49-50 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 51-54 3,6 |[TTL] 60 sec|\n"
     "83 1 55-56 3,6 |[Data Length] 4 (0x0004) byte(s)|\n"
     "83 1 57-60 3,6 |[IP Address] 192.0.2.5 |\n"
     "83 1 61-88 3,6 |--- Answer Section 3 -----------------------|\n"
     "83 1 61-62 3,6 |[NAME] www.example.net.|\n"
     "83 1 63-64 3,6 |[TYPE] 28 (AAAA)|\n"
     "83 1 65-66 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 67-70 3,6 |[TTL] 60 sec|\n"
     "83 1 71-72 3,6 |[Data Length] 16 (0x0010) byte(s)|\n"
     "83 1 73-76 3,6 |[IPv6 Address] 2001:DB8:0:0:0:0:0:205 |\n"
     "83 1 89-109 3,6 |--- Answer Section 4 -----------------------|\n"
     "83 1 89-90 3,6 |[NAME] example.net.|\n"
     "83 1 91-92 3,6 |[TYPE] 15 (MX)|\n"
     "83 1 93-94 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 95-98 3,6 |[TTL] 3600 sec|\n"
     "83 1 99-100 3,6 |[Data Length] 9 (0x0009) byte(s)|\n"
     "83 1 101-102 3,6 |[PREFERENCE] 10|\n"
     "83 1 103-109 3,6 |[EXCHANGE] mail.example.net.|\n"
     "83 1 110-124 3,6 |--- Answer Section 5 -----------------------|\n"
     "83 1 110-111 3,6 |[NAME] www.example.net.|\n"
     "83 1 112-113 3,6 |[TYPE] 16 (TXT)|\n"
     "83 1 114-115 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 116-119 3,6 |[TTL] 60 sec|\n"
     "83 1 120-121 3,6 |[Data Length] 3 (0x0003) byte(s)|\n"
     "83 1 122-124 3,6 |[RESOURCE]|\n"
     "83 2 122-124 3,6 |0000  02 68 69 20  0  0  0  0                            .hi|\n"
     "83 1 125-137 3,6 |--- Answer Section 6 -----------------------|\n"
     "83 1 125-126 3,6 |[NAME] www.example.net.|\n"
     "83 1 127-128 3,6 |[TYPE] 12 (PTR)|\n"
     "83 1 129-130 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 131-134 3,6 |[TTL] 60 sec|\n"
     "83 1 135-136 3,6 |[Data Length] 1 (0x0001) byte(s)|\n"
     "83 1 137-137 3,6 |[PTR] .|\n"
     "83 1 138-154 3,6 |--- Authority Records Section 1 ------------|\n"
     "83 1 138-139 3,6 |[NAME] example.net.|\n"
     "83 1 140-141 3,6 |[TYPE] 2 (NS)|\n"
     "83 1 142-143 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 144-147 3,6 |[TTL] 3600 sec|\n"
     "83 1 148-149 3,6 |[Data Length] 5 (0x0005) byte(s)|\n"
     "83 1 150-154 3,6 |[NS] ns.example.net.|\n"
     "83 1 155-165 3,6 |--- Additional Records Section 1 -----------|\n"
     "83 1 155-155 3,6 |[NAME] .|\n"
     "83 1 156-157 3,6 |[TYPE] 41 (Unknown)|\n"
     "83 1 158-159 3,6 |[CLASS] 1232 (Unknown)|\n"
     "83 1 160-163 3,6 |[TTL] 32768 sec|\n"
     "83 1 164-165 3,6 |[Data Length] 0 (0x0000) byte(s)|\n"
     "83 1 166-165 3,6 |[RESOURCE]|\n"},
    {"Kept: the SOA record shifts the ranges after it",
     "1236 8583 0000 0000 0001 0001 03 'net' 00 0006 0001 00000384 001F 02 'ns' C00C 03 'adm' C00C 00000001 "
     "00000E10 00000258 00015180 0000003C 00 0001 0001 00000000 0004 C0000205",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-72 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4662 (0x1236)|\n"
     "83 1 2-3 3,6 |[R] 1 (response)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 2-3 3,6 |[AA] Authoritative Answer flag = 1|\n"
     "83 1 2-3 3,6 |[TC] Truncation Flag = 0|\n"
     "83 1 2-3 3,6 |[RD] Recursion Desired Flag = 1|\n"
     "83 1 2-3 3,6 |[RA] Recursion Available Flag = 1|\n"
     "83 1 2-3 3,6 |[RCODE] 3 (Name Error)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 0 [ANCOUNT] 0 [NSCOUNT] 1 [ARCOUNT] 1|\n"
     "83 1 12-57 3,6 |--- Authority Records Section 1 ------------|\n"
     "83 1 12-16 3,6 |[NAME] net.|\n"
     "83 1 17-18 3,6 |[TYPE] 6 (SOA)|\n"
     "83 1 19-20 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 21-24 3,6 |[TTL] 900 sec|\n"
     "83 1 25-26 3,6 |[Data Length] 31 (0x001F) byte(s)|\n"
     "83 1 27-31 3,6 |[MName] ns.net.|\n"
     "83 1 32-37 3,6 |[RName] adm.net.|\n"
     "83 1 38-41 3,6 |[SERIAL] 1|\n"
     "83 1 42-45 3,6 |[REFRESH] 3600 sec|\n"
     "83 1 46-49 3,6 |[RETRY] 600 sec|\n"
     "83 1 50-53 3,6 |[EXPIRE] 86400 sec|\n"
     "83 1 54-57 3,6 |[MINIMUM] 60 sec|\n"
     "83 1 73-87 3,6 |--- Additional Records Section 1 -----------|\n"
     "83 1 73-73 3,6 |[NAME] .|\n"
     "83 1 74-75 3,6 |[TYPE] 1 (A)|\n"
     "83 1 76-77 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 78-81 3,6 |[TTL] 0 sec|\n"
     "83 1 82-83 3,6 |[Data Length] 4 (0x0004) byte(s)|\n"
     "83 1 84-87 3,6 |[IP Address] 192.0.2.5 |\n"},
    {"Kept: status is no known operation (root names, an answer past the end)",
     "1237 1000 0002 0001 0000 0000 00 0006 0001 00 00FF 00FF",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-21 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4663 (0x1237)|\n"
     "83 1 2-3 3,6 |[R] 0 (request)|\n"
     "83 1 2-3 3,6 |[OPCODE] 2 (Unknown)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 2 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "83 1 12-16 3,6 |--- Question section 1 ---------------------|\n"
     "83 1 12-12 3,6 |[QNAME] .|\n"
     "83 1 13-14 3,6 |[TYPE] 6 (SOA)|\n"
     "83 1 15-16 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 17-21 3,6 |--- Question section 2 ---------------------|\n"
     "83 1 17-17 3,6 |[QNAME] .|\n"
     "83 1 18-19 3,6 |[TYPE] 255 (*)|\n"
     "83 1 20-21 3,6 |[CLASS] 255 (any)|\n"},
    {"Kept: RDATA is shown past the end", "1238 0000 0000 0001 0000 0000 00 0001 0001 00000000 0004 C000",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-24 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4664 (0x1238)|\n"
     "83 1 2-3 3,6 |[R] 0 (request)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 0 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "83 1 12-26 3,6 |--- Answer Section 1 -----------------------|\n"
     "83 1 12-12 3,6 |[NAME] .|\n"
     "83 1 13-14 3,6 |[TYPE] 1 (A)|\n"
     "83 1 15-16 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 17-20 3,6 |[TTL] 0 sec|\n"
     "83 1 21-22 3,6 |[Data Length] 4 (0x0004) byte(s)|\n"
     "83 1 23-26 3,6 |[IP Address] 192.0.0.0 |\n"},
    {"answer cut in its name", "1238 0000 0000 0001 0000 0000 3F 'ab'",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-14 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4664 (0x1238)|\n"
     "83 1 2-3 3,6 |[R] 0 (request)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 0 [ANCOUNT] 1 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "83 1 12-85 3,6 |--- Answer Section 1 -----------------------|\n"
     "83 1 12-75 3,6 |[NAME] ab|\n"
     "83 1 76-77 3,6 |[TYPE] 0 (Unknown)|\n"
     "83 1 78-79 3,6 |[CLASS] 0 (Unknown)|\n"
     "83 1 80-83 3,6 |[TTL] 0 sec|\n"
     "83 1 84-85 3,6 |[Data Length] 0 (0x0000) byte(s)|\n"},
    {"one byte too short", "1237 1000 0002 0001 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-10 1,10 |---[Data] 11 (0x000B) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 0-10 1,10 |0000  12 37 10 00 00 02 00 01 - 00 00 00                 .7.........|\n"},
    {"names that end in odd ways",
     "123B 0000 0005 0000 0000 0000 C00C 0001 0001 01 'a' C012 0001 0001 C002 0001 0001 03 'www' FFFF 0001 0001 "
     "05 'ab' 00 'cd' 00 0001 0001",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-52 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4667 (0x123B)|\n"
     "83 1 2-3 3,6 |[R] 0 (request)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 5 [ANCOUNT] 0 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "83 1 12-17 3,6 |--- Question section 1 ---------------------|\n"
     "83 1 12-13 3,6 |[QNAME] |\n"
     "83 1 14-15 3,6 |[TYPE] 1 (A)|\n"
     "83 1 16-17 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 18-25 3,6 |--- Question section 2 ---------------------|\n"
     "83 1 18-21 3,6 |[QNAME] a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.a.|\n"
     "83 1 22-23 3,6 |[TYPE] 1 (A)|\n"
     "83 1 24-25 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 26-31 3,6 |--- Question section 3 ---------------------|\n"
     "83 1 26-27 3,6 |[QNAME] .|\n"
     "83 1 28-29 3,6 |[TYPE] 1 (A)|\n"
     "83 1 30-31 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 32-41 3,6 |--- Question section 4 ---------------------|\n"
     "83 1 32-37 3,6 |[QNAME] www..|\n"
     "83 1 38-39 3,6 |[TYPE] 1 (A)|\n"
     "83 1 40-41 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 42-52 3,6 |--- Question section 5 ---------------------|\n"
     "83 1 42-48 3,6 |[QNAME] ab|\n"
     "83 1 49-50 3,6 |[TYPE] 1 (A)|\n"
     "83 1 51-52 3,6 |[CLASS] 1 (Internet)|\n"},
    {"Kept: each line of a long name shows its end",
     "1239 0000 0002 0000 0000 0000 3C 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa' 0A "
     "'bbbbbbbbbb' 00 0001 0001 3C 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa' 3C "
     "'bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb' 3C "
     "'cccccccccccccccccccccccccccccccccccccccccccccccccccccccccccc' 00 0001 0001",
     "65535 65535 0-0 0,0 ||\n"
     "20 0 0-276 3,6 |--- DNS Message -----------------------------------------------------------|\n"
     "83 1 0-1 3,6 |[ID] 4665 (0x1239)|\n"
     "83 1 2-3 3,6 |[R] 0 (request)|\n"
     "83 1 2-3 3,6 |[OPCODE] 0 (query)|\n"
     "83 1 4-11 3,6 |[QDCOUNT] 2 [ANCOUNT] 0 [NSCOUNT] 0 [ARCOUNT] 0|\n"
     "83 1 12-88 3,6 |--- Question section 1 ---------------------|\n"
     "83 1 12-84 3,6 |[QNAME] aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa.bbbbbbbbbb.|\n"
     "83 1 85-86 3,6 |[TYPE] 1 (A)|\n"
     "83 1 87-88 3,6 |[CLASS] 1 (Internet)|\n"
     "83 1 89-276 3,6 |--- Question section 2 ---------------------|\n"
     "83 1 89-272 3,6 "
     "|aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa."
     "bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb.cccccc|\n"
     "83 1 89-272 3,6 "
     "|bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb.cccccccccccccccccccccccccccccccccccccccccccccccccccccccccccc.|"
     "\n"
     "83 1 89-272 3,6 |           cccccccccccccccccccccccccccccccccccccc.|\n"
     "83 1 273-274 3,6 |[TYPE] 1 (A)|\n"
     "83 1 275-276 3,6 |[CLASS] 1 (Internet)|\n"},
};
LINE_CASES(Dns, DnsAnalyze, kMessages)

TEST(Dns, TypeNames) {
  struct Row {
    uint8_t type;
    const char* shown;
  };
  const Row rows[] = {
      {3, "3 (MD)"},        {4, "4 (NF)"},        {7, "7 (MB)"},      {8, "8 (MG)"},        {9, "9 (MR)"},
      {10, "10 (NULL)"},    {11, "11 (WKS)"},     {13, "13 (HINFO)"}, {14, "14 (MINFO)"},   {252, "252 (AXFR)"},
      {253, "253 (MAILB)"}, {254, "254 (MAILA)"}, {255, "255 (*)"},   {17, "17 (Unknown)"},
  };
  for (const Row& row : rows) {
    auto message = bytes_of("0000 0000 0001 0000 0000 0000 00 0000 0001");
    message[14] = row.type;
    const auto lines = decode_and_dump(DnsAnalyze, Bytes(message.data(), static_cast<int32_t>(message.size())));
    EXPECT_NE(lines.find("|[TYPE] " + std::string(row.shown) + '|'), std::string::npos) << row.shown << " in\n"
                                                                                        << lines;
  }
}

// A text nearly as long as can be, then 31 levels of 64 pointers each to the next level, and at last a label for which
// there is no room: as a tree these would be 64 to the power of 31.
TEST(Dns, PointersThatFanOutEnd) {
  auto message = bytes_of("0000 0000 0001 0000 0000 0000");
  for (int i = 0; i < 11; ++i) {
    message.push_back(127);
    message.insert(message.end(), 127, 'a');
  }
  const std::size_t levels = message.size() + 6;
  const auto pointer = [&message](std::size_t to) {
    message.push_back(static_cast<uint8_t>(0xC0 | to >> 8));
    message.push_back(static_cast<uint8_t>(to & 0xFF));
  };
  pointer(levels);
  message.insert(message.end(), {0, 1, 0, 1});
  for (std::size_t level = 0; level < 31; ++level) {
    for (int i = 0; i < 64; ++i) pointer(levels + 128 * (level + 1));
  }
  message.insert(message.end(), 128, 127);
  const auto lines = decode_and_dump(DnsAnalyze, Bytes(message.data(), static_cast<int32_t>(message.size())));
  EXPECT_NE(lines.find("|           " + std::string(39, 'a') + ".|"), std::string::npos) << lines;
}

}  // namespace

}  // namespace wirelines::test
