// The report as people and programs get it.
#include <gtest/gtest.h>
#include <vek4003.h>

#include <cstdlib>
#include <ctime>
#include <nlohmann/json.hpp>

#include "hex.hpp"
#include "host/report.hpp"
#include "written.hpp"

namespace wirelines::host {
namespace {

class Stats : public testing::Test {
 protected:
  Stats() {
    setenv("TZ", "UTC0", 1);
    tzset();
    NickNameClear();
    NickNameAdd(NICKNAME_STATION, "020000000002", "\xB1\x1B[1m");  // refused: a control byte
    NickNameAdd(NICKNAME_STATION, "020000000002", "\xB1\xB2");
  }
  ~Stats() override { NickNameClear(); }

  void add(const std::string& hex, std::uint32_t milliseconds, std::uint32_t missing = 0) {
    const auto bytes = bytes_of(hex);
    const auto length = static_cast<std::uint32_t>(bytes.size());
    tally_.add({1, nullptr, bytes.data(), length, length + missing, 1714557661 + milliseconds / 1000,
                milliseconds % 1000 * 1'000'000, 0, DLT_EN10MB});
  }

  void add_frames() {
    add("FFx6 020000000001 88B5 00x86", 0);
    add("020000000001 020000000002 88B5 00x46", 1000, 40);
    add("020000000001 020000000002 0800 4500 001C 0102 0000 40 11 1234 C0000201 C63364FF C000 0035 0008 0000", 4000);
  }

  std::string text(bool utf8, std::size_t top = 10) {
    return written([&](Output& out) { write_text(out, tally_, {top, false, utf8}); });
  }

  Tally tally_{true, 2};
};

TEST_F(Stats, for_people) {
  add_frames();
  const auto report = text(true);
  for (const auto* const part : {
           "Frames     3, 1 cut at capture\n"
           "Bytes      242 on the wire, 40 of them not captured\n"
           "Time       2024-05-01 10:01:01.000000 to 10:01:05.000000\n"
           "Duration   4.000 s\n"
           "Rate       0.8 frames/s, 484 bit/s\n"
           "Length     average 80.7, shortest 42, longest 100\n"
           "Checksums  1 of IPv4 header wrong\n"
           "\n"
           "Protocols\n"
           "                 frames       %  bytes       %\n"
           "  Ethernet II         3  100.0%    242  100.0%\n"
           "    Type 0x88B5       2   66.7%    200   82.6%\n"
           "    IPv4              1   33.3%     42   17.4%\n"
           "      UDP             1   33.3%     42   17.4%\n",
           "\nStations  (2)\n"
           "                     name       frames  bytes       %  sent  bytes  received  bytes\n"
           "  02:00:00:00:00:01                  3    242  100.0%     1    100         2    142\n"
           "  ff:ff:ff:ff:ff:ff  broadcast       1    100   41.3%     0      0         1    100\n"
           "  2 more frames sent by addresses that the full table could not take (142 bytes)\n",
           "\nStation conversations  (2)\n"
           "  A                  B          frames  bytes      %  A > B  bytes  B > A  bytes\n"
           "  02:00:00:00:00:01  \xEF\xBD\xB1\xEF\xBD\xB2              2    142  58.7%      0      0      2    142\n",
           "  udp 53  DOMAIN       1  33.3%     42  17.4%\n",
           "\nFraming of the stations  (frames sent)\n  all Ethernet II\n",
           "\nTraffic over time  (100 ms a column, the highest 100 bytes, 8.0 kbit/s)\n"
           "  █         █\n",
       }) {
    EXPECT_NE(report.find(part), std::string::npos) << part << "is not in\n" << report;
  }
  const auto ascii = text(false);
  EXPECT_NE(ascii.find("\n  #         #\n"), std::string::npos) << ascii;
  EXPECT_EQ(ascii.find("█"), std::string::npos);
  EXPECT_NE(text(true, 1).find("\n    1 more"), std::string::npos);
  EXPECT_NE(text(true, 1).find("\nStations  (1 of 2)\n"), std::string::npos);
}

TEST_F(Stats, stations_of_several_framings) {
  add("020000000001 020000000002 0003 F0F07F", 0);
  add("020000000001 020000000002 88B5 00x46", 0);
  EXPECT_NE(text(true).find("                     name  Ethernet II  LLC\n"), std::string::npos) << text(true);
}

TEST_F(Stats, for_programs) {
  add_frames();
  const auto json = nlohmann::json::parse(written([&](Output& out) { write_json(out, tally_, 10); }));
  const auto expect = [&json](const char* pointer, const nlohmann::json& value) {
    EXPECT_EQ(json.at(nlohmann::json::json_pointer(pointer)), value) << pointer;
  };
  expect("/frames", 3);
  expect("/bytes", 242);
  expect("/cut", {{"frames", 1}, {"missing_bytes", 40}});
  expect("/start", "2024-05-01T10:01:01.000000000Z");
  expect("/seconds", 4.0);
  expect("/protocols/3", {{"path", {"Ethernet II", "IPv4", "UDP"}}, {"frames", 1}, {"bytes", 42}});
  expect("/stations/entries", 2);
  expect("/stations/not_entered/sent", {{"frames", 2}, {"bytes", 142}});
  expect("/stations/rows/0/framings", {{"Ethernet II", {{"frames", 1}, {"bytes", 100}}}});
  expect("/station_conversations/rows/0/b", {{"address", "02:00:00:00:00:02"}, {"name", "\xEF\xBD\xB1\xEF\xBD\xB2"}});
  expect("/station_conversations/rows/0/b_to_a", {{"frames", 2}, {"bytes", 142}});
  expect("/ports/rows/0", {{"protocol", "udp"}, {"port", 53}, {"name", "DOMAIN"}, {"frames", 1}, {"bytes", 42}});
  expect("/checksums/ipv4", {{"right", 0}, {"wrong", 1}, {"none", 0}, {"not_verified", 0}});
  expect("/sizes/0", {{"from", 0}, {"to", 59}, {"frames", 1}, {"bytes", 42}});
  expect("/timeline/seconds", 0.01);
  EXPECT_EQ(json["timeline"]["frames"].size(), 401U);
}

}  // namespace
}  // namespace wirelines::host
