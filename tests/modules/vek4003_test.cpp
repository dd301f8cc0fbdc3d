// Keys, names, look-ups and threads.
#include "modules/vek4003_test.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "modules/allocation.hpp"

namespace {

class Vek4003 : public testing::Test {
 protected:
  void SetUp() override { NickNameClear(); }
  void TearDown() override { NickNameClear(); }
};

// The name, or "-" when there is none; then the buffer must be as it was.
std::string look_up(NickNameKind kind, const std::string& key) {
  std::array<char, 36> name{};
  name.fill('?');
  std::int32_t found = 0;
  switch (kind) {
    case NICKNAME_STATION: found = StationToNickName(key.c_str(), name.data()); break;
    case NICKNAME_IP: found = IpStrToNickName(key.c_str(), name.data()); break;
    case NICKNAME_IP6: found = Ip6StrToNickName(key.c_str(), name.data()); break;
    case NICKNAME_PORT: found = PortStrToNickName(key.c_str(), name.data()); break;
    case NICKNAME_SAP: found = SapToName(key.substr(0, 2).c_str(), key.substr(2).c_str(), name.data()); break;
    case NICKNAME_TYPE: found = ProtocolTypeToName(key.c_str(), name.data()); break;
  }
  if (found == 1) return name.data();
  for (const char c : name) EXPECT_EQ(c, '?');
  return found == 0 ? "-" : "neither 0 nor 1";
}

// Each row: a key as a user writes it, the text that the decoder asks with, the text that is shown and saved.
struct Form {
  NickNameKind kind;
  const char* written;
  const char* asked;
  const char* shown;
};

const Form kForms[] = {
    {NICKNAME_STATION, "0123456789AB", "0123456789AB", "0123456789AB"},
    {NICKNAME_STATION, "0123456789ab", "0123456789AB", "0123456789AB"},
    {NICKNAME_STATION, "01:23:45:67:89:ab", "0123456789AB", "0123456789AB"},
    {NICKNAME_STATION, "01-23-45-67-89-AB", "0123456789AB", "0123456789AB"},
    {NICKNAME_STATION, "01.23.45.67.89.AB", "0123456789AB", "0123456789AB"},
    {NICKNAME_STATION, "8:0:20:1:2:3", "080020010203", "080020010203"},
    {NICKNAME_STATION, "ff:ff:ff:ff:ff:ff", "FFFFFFFFFFFF", "FFFFFFFFFFFF"},
    {NICKNAME_IP, "192.0.2.1", "192.0.2.1", "192.0.2.1"},
    {NICKNAME_IP, "255.255.255.255", "255.255.255.255", "255.255.255.255"},
    {NICKNAME_IP, "0.0.0.0", "0.0.0.0", "0.0.0.0"},
    {NICKNAME_IP6, "fe80::202:b3ff:fe1e:8329", "FE80:0:0:0:202:B3FF:FE1E:8329", "fe80::202:b3ff:fe1e:8329"},
    {NICKNAME_IP6, "fe80::202:b3ff:fe1e:8329", "FE80::202:B3FF:FE1E:8329", "fe80::202:b3ff:fe1e:8329"},
    {NICKNAME_IP6, "::1", "0:0:0:0:0:0:0:1", "::1"},
    {NICKNAME_IP6, "::1", ":1", "::1"},
    {NICKNAME_IP6, ":1", "0:0:0:0:0:0:0:1", "::1"},
    {NICKNAME_IP6, "::", "::", "::"},
    {NICKNAME_IP6, "::", "0:0:0:0:0:0:0:0", "::"},
    {NICKNAME_IP6, "1:0:2:3:4:5:6:7", "1::2:3:4:5:6:7", "1:0:2:3:4:5:6:7"},
    {NICKNAME_IP6, "1:0:0:2::3", "1::2:0:0:0:3", "1:0:0:2::3"},
    {NICKNAME_IP6, "0:0:1::", ":1:0:0:0:0:0", "0:0:1::"},
    {NICKNAME_IP6, "2001:0DB8:0000:0000:0000:0000:0000:0000", "2001:DB8::", "2001:db8::"},
    {NICKNAME_IP6, "::ffff:192.0.2.1", ":FFFF:C000:201", "::ffff:192.0.2.1"},
    {NICKNAME_PORT, "0", "0", "0"},
    {NICKNAME_PORT, "65535", "65535", "65535"},
    {NICKNAME_SAP, "e0E0", "E0E0", "E0E0"},
    {NICKNAME_SAP, "AA/03", "AA03", "AA03"},
    {NICKNAME_TYPE, "0x0800", "0800", "0800"},
    {NICKNAME_TYPE, "86dd", "86DD", "86DD"},
    {NICKNAME_TYPE, "0X5", "0005", "0005"},
};

TEST_F(Vek4003, KeysAreFoundInEveryForm) {
  for (const auto& form : kForms) {
    SCOPED_TRACE(form.written);
    NickNameClear();
    EXPECT_EQ(look_up(form.kind, form.asked), "-");
    EXPECT_EQ(reason_text(NickNameAdd(form.kind, form.written, "a name")), "");
    EXPECT_EQ(look_up(form.kind, form.asked), "a name");
    EXPECT_EQ(look_up(form.kind, form.kind == NICKNAME_PORT ? "1" : "0102"), "-");
    EXPECT_NE(all_names().find(std::string(" ") + form.shown + " a name\n"), std::string::npos) << all_names();
    EXPECT_EQ(NickNameRemove(form.kind, form.asked), 1);
    EXPECT_EQ(NickNameRemove(form.kind, form.asked), 0);
    EXPECT_EQ(look_up(form.kind, form.asked), "-");
  }
}

// The two texts of an address that the decoder asks with.
std::string full_text(const std::array<unsigned, 8>& groups) {
  std::array<char, 40> text{};
  (void)std::snprintf(text.data(), text.size(), "%X:%X:%X:%X:%X:%X:%X:%X", groups[0], groups[1], groups[2], groups[3],
                      groups[4], groups[5], groups[6], groups[7]);
  return text.data();
}

std::string compressed_text(const std::array<unsigned, 8>& groups) {
  std::string text;
  int zeros = 0;
  bool started = false;
  bool compressed = false;
  for (const auto group : groups) {
    if (group == 0) {
      text += compressed ? ":0" : zeros == 0 ? ":" : "";
      ++zeros;
      continue;
    }
    if (zeros != 0) compressed = true;
    std::array<char, 8> digits{};
    (void)std::snprintf(digits.data(), digits.size(), started ? ":%X" : "%X", group);
    started = true;
    text += digits.data();
  }
  return groups[7] == 0 && !compressed ? text + ":" : text;
}

TEST_F(Vek4003, EveryPatternOfZeroGroupsIsFoundUnderBothTexts) {
  std::vector<std::array<unsigned, 8>> addresses;
  for (unsigned pattern = 0; pattern < 256; ++pattern) {
    std::array<unsigned, 8> groups{};
    for (unsigned i = 0; i < 8; ++i) groups[i] = (pattern >> i & 1) != 0 ? 0xF0 >> i | 1 : 0;
    std::array<std::uint8_t, 16> bytes{};
    for (std::size_t i = 0; i < 8; ++i) bytes[2 * i + 1] = static_cast<std::uint8_t>(groups[i]);
    std::array<char, INET6_ADDRSTRLEN> usual{};
    ASSERT_NE(inet_ntop(AF_INET6, bytes.data(), usual.data(), usual.size()), nullptr);
    ASSERT_EQ(NickNameAdd(NICKNAME_IP6, usual.data(), std::to_string(pattern).c_str()), nullptr) << usual.data();
    addresses.push_back(groups);
  }
  for (std::size_t pattern = 0; pattern < addresses.size(); ++pattern) {
    const auto& groups = addresses[pattern];
    EXPECT_EQ(look_up(NICKNAME_IP6, full_text(groups)), std::to_string(pattern)) << full_text(groups);
    EXPECT_EQ(look_up(NICKNAME_IP6, compressed_text(groups)), std::to_string(pattern)) << compressed_text(groups);
  }
}

struct Refused {
  NickNameKind kind;
  std::vector<const char*> keys;
  const char* reason;
};

const Refused kRefusedKeys[] = {
    {NICKNAME_STATION,
     {"", "0123456789A", "0123456789ABC", "0123456789AG", "01:23:45:67:89", "01:23:45:67:89:AB:CD", "01:23:45-67:89:AB",
      "01::45:67:89:AB", "001:23:45:67:89:AB", "01:23:45:67:89:", ":23:45:67:89:AB", "0123.4567.89AB", " 0123456789A",
      "0x0123456789", "+1:23:45:67:89:AB"},
     "the key is not a MAC address of twelve hexadecimal digits or six groups"},
    {NICKNAME_IP,
     {"", "1", "1.2.3", "1.2.3.4.5", "1.2.3.256", "1.2.3.", "1.2.3.4 ", "a.b.c.d", "::1", "-1.2.3.4"},
     "the key is not an IPv4 address"},
    {NICKNAME_IP6,
     {"", ":", ":::", "1", "1:2:3:4:5:6:7", "1:2:3:4:5:6:7:", "1:2:3:4:5:6:7:8:", "1:2:3:4:5:6:7:8:9", "1::2::3",
      "1:2:3:4:5:6:7::8", ":1:2:3:4:5:6:7:8", "12345::", "::g", "fe80::1%eth0", "192.0.2.1", "1:::2",
      "0x1::", "::1:", "1111:2222:3333:4444:5555:6666:7777:8888:9999:aaaa:bbbb"},
     "the key is not an IPv6 address"},
    {NICKNAME_PORT,
     {"", "-1", "+1", "65536", "080", "00", "1a", "0x50", "99999", "100000"},
     "the key is not a port number from 0 to 65535"},
    {NICKNAME_SAP,
     {"", "E0", "E0E", "E0E0E", "E/0E0", "E0/E", "E0//E0", "E0/G0", "E0-E0"},
     "the key is not a DSAP and SSAP of two hexadecimal digits each"},
    {NICKNAME_TYPE,
     {"", "0x", "08000", "0x08000", "080G", "x800", "-800"},
     "the key is not an EtherType of one to four hexadecimal digits"},
    {static_cast<NickNameKind>(6), {"1"}, "there is no such kind of name"},
};

TEST_F(Vek4003, OtherKeysAreRefused) {
  for (const auto& row : kRefusedKeys) {
    for (const char* key : row.keys) {
      EXPECT_EQ(reason_text(NickNameAdd(row.kind, key, "x")), row.reason) << row.kind << " '" << key << "'";
      EXPECT_EQ(NickNameRemove(row.kind, key), 0);
    }
  }
  EXPECT_EQ(all_names(), "");
}

TEST_F(Vek4003, LookUpsOfOtherTextsFindNothing) {
  for (const auto& form : kForms) NickNameAdd(form.kind, form.written, "x");
  for (const auto& row : kRefusedKeys) {
    for (const char* key : row.keys) EXPECT_EQ(look_up(row.kind, std::strlen(key) < 2 ? "zz" : key), "-") << key;
  }
  std::array<char, 36> out{};
  EXPECT_EQ(SapToName("E0E", "0", out.data()), 0);
  EXPECT_EQ(SapToName("E0", "E0/", out.data()), 0);
  EXPECT_EQ(SapToName(nullptr, "E0", out.data()), 0);
  EXPECT_EQ(SapToName("E0", nullptr, out.data()), 0);
  EXPECT_EQ(StationToNickName(nullptr, out.data()), 0);
  EXPECT_EQ(StationToNickName("0123456789AB", nullptr), 0);
}

struct NameCase {
  NickNameKind kind;
  std::string name;
  const char* reason;
};

const NameCase kNames[] = {
    {NICKNAME_STATION, "x", ""},
    {NICKNAME_STATION, std::string(31, 'x'), ""},
    {NICKNAME_STATION, std::string(32, 'x'), "the name is longer than 31 bytes"},
    {NICKNAME_PORT, std::string(35, 'x'), ""},
    {NICKNAME_PORT, std::string(36, 'x'), "the name is longer than 35 bytes"},
    {NICKNAME_PORT, std::string(100000, 'x'), "the name is longer than 35 bytes"},
    {NICKNAME_PORT, "", "the name is empty"},
    {NICKNAME_PORT, " \t ", "the name is empty"},
    {NICKNAME_PORT, "a b  c", ""},
    {NICKNAME_PORT, " a", "the name begins or ends with a blank"},
    {NICKNAME_PORT, "a ", "the name begins or ends with a blank"},
    {NICKNAME_PORT, "a\tb", "the name holds a control byte"},
    {NICKNAME_PORT, "a\nport 2 b", "the name holds a control byte"},
    {NICKNAME_PORT, "\x1B[2J", "the name holds a control byte"},
    {NICKNAME_PORT, "a\x7F", "the name holds a control byte"},
    {NICKNAME_PORT, "\xE3\x81\x82 \xFF", ""},
    {NICKNAME_PORT, "C#", ""},
    {NICKNAME_PORT, "#1", "the name holds a '#' that begins a comment in a file of names"},
    {NICKNAME_PORT, "a #1", "the name holds a '#' that begins a comment in a file of names"},
};

TEST_F(Vek4003, NamesAreTakenWholeOrRefused) {
  for (const auto& c : kNames) {
    NickNameClear();
    const char* key = c.kind == NICKNAME_STATION ? "0123456789AB" : "80";
    EXPECT_EQ(NickNameAdd(c.kind, key, "earlier"), nullptr);
    EXPECT_EQ(reason_text(NickNameAdd(c.kind, key, c.name.c_str())), c.reason) << c.name;
    EXPECT_EQ(look_up(c.kind, key), *c.reason == '\0' ? c.name : "earlier");
  }
  EXPECT_EQ(reason_text(NickNameAdd(NICKNAME_PORT, nullptr, "x")), "there is no key");
  EXPECT_EQ(reason_text(NickNameAdd(NICKNAME_PORT, "80", nullptr)), "there is no name");
  EXPECT_EQ(NickNameRemove(NICKNAME_PORT, nullptr), 0);
}

TEST_F(Vek4003, EachVisitsByKindAndNumber) {
  const char* const kPorts[] = {"443", "80", "8080", "9"};
  for (const char* port : kPorts) NickNameAdd(NICKNAME_PORT, port, "p");
  NickNameAdd(NICKNAME_TYPE, "800", "t");
  NickNameAdd(NICKNAME_IP6, "2001:db8::", "b");
  NickNameAdd(NICKNAME_IP6, "::1", "a");
  NickNameAdd(NICKNAME_STATION, "2", "refused");
  NickNameAdd(NICKNAME_STATION, "000000000002", "s");
  EXPECT_EQ(all_names(),
            "station 000000000002 s\nip6 ::1 a\nip6 2001:db8:: b\n"
            "port 9 p\nport 80 p\nport 443 p\nport 8080 p\ntype 0800 t\n");

  int visits = 0;
  const auto stop_at_third = [](NickNameKind, const char*, const char*, void* context) -> std::int32_t {
    NickNameClear();  // what is visited is what was there at the call
    return ++*static_cast<int*>(context) < 3 ? 1 : 0;
  };
  EXPECT_EQ(NickNameEach(stop_at_third, &visits), 1);
  EXPECT_EQ(visits, 3);
  EXPECT_EQ(all_names(), "");
  EXPECT_EQ(NickNameEach(nullptr, nullptr), 1);
}

TEST_F(Vek4003, LookUpsAllocateNothing) {
  SKIP_IF_ALLOCATIONS_HIDDEN();
  for (const auto& form : kForms) NickNameAdd(form.kind, form.written, "a name");
  std::array<char, 36> out{};
  const int before = g_allocations;
  const auto found = StationToNickName("0123456789AB", out.data()) + IpStrToNickName("192.0.2.1", out.data()) +
                     Ip6StrToNickName(":FFFF:C000:201", out.data()) + Ip6StrToNickName("nothing", out.data()) +
                     PortStrToNickName("65535", out.data()) + SapToName("E0", "E0", out.data()) +
                     ProtocolTypeToName("0800", out.data());
  EXPECT_EQ(g_allocations, before);
  EXPECT_EQ(found, 6);
}

TEST_F(Vek4003, ExhaustedMemoryIsAReasonAndChangesNothing) {
  SKIP_IF_ALLOCATIONS_HIDDEN();
  NickNameAdd(NICKNAME_PORT, "80", "kept");
  int failures = 0;
  for (;; ++failures) {
    g_allocations_left = failures;
    const char* reason = NickNameAdd(NICKNAME_IP, "192.0.2.1", "new");
    g_allocations_left = -1;
    if (reason == nullptr) break;
    ASSERT_STREQ(reason, "memory is exhausted");
    ASSERT_EQ(all_names(), "port 80 kept\n");
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(all_names(), "ip 192.0.2.1 new\nport 80 kept\n");

  int visits = 0;
  g_allocations_left = 0;
  const auto visited = NickNameEach([](NickNameKind, const char*, const char*,
                                       void* context) -> std::int32_t { return ++*static_cast<int*>(context); },
                                    &visits);
  g_allocations_left = -1;
  EXPECT_EQ(visited, 0);
  EXPECT_EQ(visits, 0);
}

// Readers must see one of the two names whole, or none, while names come and go.
TEST_F(Vek4003, LookUpsDuringChangesSeeWholeNames) {
  const std::string first(31, 'a');
  const std::string second(17, 'b');
  std::atomic<bool> done = false;
  std::atomic<int> broken = 0;
  std::atomic<int> found = 0;
  std::vector<std::thread> readers;
  readers.reserve(3);
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([&] {
      std::array<char, 36> out{};
      while (!done) {
        for (const int got : {StationToNickName("0123456789AB", out.data()), Ip6StrToNickName("FE80::1", out.data())}) {
          if (got == 0) continue;
          ++found;
          if (out.data() != first && out.data() != second) ++broken;
        }
        std::this_thread::yield();
      }
    });
  }
  for (int n = 0; n < 3000 || found == 0; ++n) {
    EXPECT_EQ(NickNameAdd(NICKNAME_STATION, "01:23:45:67:89:ab", first.c_str()), nullptr);
    EXPECT_EQ(NickNameAdd(NICKNAME_IP6, "fe80:0::1", second.c_str()), nullptr);
    EXPECT_EQ(NickNameAdd(NICKNAME_STATION, "0123456789AB", second.c_str()), nullptr);
    NickNameAdd(NICKNAME_STATION, std::to_string(100000000000 + n).c_str(), "filler");  // makes the table grow
    EXPECT_EQ(NickNameRemove(NICKNAME_IP6, "FE80:0:0:0:0:0:0:1"), 1);
    if (n % 500 == 499) NickNameClear();
  }
  done = true;
  for (auto& reader : readers) reader.join();
  EXPECT_EQ(broken, 0);
}

}  // namespace
