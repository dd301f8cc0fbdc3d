#include "ipv6/ip6_address.hpp"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

TEST(Ip6Address, ThreeForms) {
  const struct {
    const char* name;
    const char* bytes;
    const char* full;
    const char* identifier;
    const char* compressed;
  } cases[] = {
      {"link-local", "FE80 0000 0000 0000 0202 B3FF FE1E 8329", "FE80:0:0:0:202:B3FF:FE1E:8329", "0202:B3FF:FE1E:8329",
       "FE80::202:B3FF:FE1E:8329"},
      {"no zeros, the longest text", "1111 2222 3333 4444 AAAA BBBB CCCC DDDD",
       "1111:2222:3333:4444:AAAA:BBBB:CCCC:DDDD", "AAAA:BBBB:CCCC:DDDD", "1111:2222:3333:4444:AAAA:BBBB:CCCC:DDDD"},
      {"zeros at the end", "2001 0DB8 0000 0000 0000 0000 0000 0000", "2001:DB8:0:0:0:0:0:0", "0000:0000:0000:0000",
       "2001:DB8::"},
      {"one zero group at the end", "0001 0002 0003 0004 0005 0006 0007 0000", "1:2:3:4:5:6:7:0", "0005:0006:0007:0000",
       "1:2:3:4:5:6:7::"},
      {"all zeros", "0000 0000 0000 0000 0000 0000 0000 0000", "0:0:0:0:0:0:0:0", "0000:0000:0000:0000", "::"},
      {"Kept: a run of one group is compressed", "0001 0000 0002 0003 0004 0005 0006 0007", "1:0:2:3:4:5:6:7",
       "0004:0005:0006:0007", "1::2:3:4:5:6:7"},
      {"Kept: zeros after the first run are shown", "0001 0000 0000 0002 0000 0000 0000 0003", "1:0:0:2:0:0:0:3",
       "0000:0000:0000:0003", "1::2:0:0:0:3"},
      {"Kept: one colon before the first group", "0000 0000 0000 0000 0000 0000 0000 0001", "0:0:0:0:0:0:0:1",
       "0000:0000:0000:0001", ":1"},
      {"Kept: zeros first and last", "0000 0000 0001 0000 0000 0000 0000 0000", "0:0:1:0:0:0:0:0",
       "0000:0000:0000:0000", ":1:0:0:0:0:0"},
  };
  for (const auto& c : cases) {
    const auto bytes = bytes_of(c.bytes);
    // Exported, into buffers of the sizes that the interface asks for.
    char full[40];
    char identifier[20];
    char compressed[40];
    ::FormatIp6Addr(full, bytes.data());
    ::FormatIp6AddrSimple(identifier, bytes.data());
    ::FormatIp6AddrSimple2(compressed, bytes.data());
    EXPECT_STREQ(full, c.full) << c.name;
    EXPECT_STREQ(identifier, c.identifier) << c.name;
    EXPECT_STREQ(compressed, c.compressed) << c.name;
    EXPECT_EQ(FormatIp6AddrSimple2(Bytes(bytes.data(), 16)).view(), c.compressed) << c.name;
  }
}

TEST(Ip6Address, MissingBytesReadZero) {
  const auto bytes = bytes_of("2001 0DB8 AB");
  EXPECT_EQ(FormatIp6Addr(Bytes(bytes.data(), 5)).view(), "2001:DB8:AB00:0:0:0:0:0");
}

}  // namespace

}  // namespace wirelines::test
