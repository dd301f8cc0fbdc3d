// Network Time Protocol: time messages of 48 bytes, and control messages (mode 6) with a 12-byte header.
#include "ipmore/ntp.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "core/calendar.hpp"
#include "core/names.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kNtp = layer(23, 7, 6);

constexpr uint32_t kControlHeader = 12;
constexpr uint32_t kTimeMessage = 48;
constexpr uint8_t kControlMode = 6;

constexpr auto kLeapIndicators = names({
    {0, "No Warning"},
    {1, "+1 Second"},
    {2, "-1 Second"},
    {3, "Alarm"},
});
static_assert(kLeapIndicators.distinct());

constexpr auto kModes = names({
    {0, "Reserved"},
    {1, "Symmetric Active"},
    {2, "symmetric Passive"},
    {3, "Client"},
    {4, "Servder"},
    {5, "Broadcast"},
    {6, "NTP Control Message"},
    {7, "Reserved"},
});
static_assert(kModes.distinct());

constexpr auto kOperations = names(
    {
        {1, "read status"},
        {2, "read variables"},
        {3, "write variables"},
        {4, "read clock variables"},
        {5, "write clock variables"},
        {6, "set trap address/port"},
        {7, "trap response"},
    },
    "reserved");
static_assert(kOperations.distinct());

// Kept: the first has five characters and the identifier four, so that it never matches; "WWW " is no published name.
constexpr std::string_view kClocks[] = {"LOCAL", "PPS ", "ACTS", "USNO", "PTB ", "TDF ", "DCF ", "MSF ",
                                        "WWW ",  "WWVB", "WWVH", "CHU ", "LORC", "OMEG", "GPS ", "GOES"};

std::string_view stratum_name(uint8_t stratum) {
  if (stratum == 0) return "Unspecified";
  if (stratum == 1) return "Primary Reference";
  return stratum < 16 ? "Secondary Reference" : "Reserved";
}

void clock_line(Section& s, Bytes clock) {
  constexpr Range kRange = at(12, 15);
  constexpr std::string_view kLabel = "[Reference Clock Identifier]";
  const std::string_view text = clock.text();
  if (clock.u8(0) == 0) {
    s.line(kRange, "%s Unspecified", kLabel);
  } else if (std::find(std::begin(kClocks), std::end(kClocks), text) != std::end(kClocks)) {
    s.line(kRange, "%s %s", kLabel, text);
  } else {
    s.line(kRange, "%s %u.%u.%u.%u", kLabel, clock.u8(0), clock.u8(1), clock.u8(2), clock.u8(3));
  }
}

void timestamp_line(Section& s, Bytes data, uint32_t offset, std::string_view label) {
  const Range range = at(offset, offset + 7);
  const uint32_t seconds = data.be32(offset);  // since 1900
  const uint32_t fraction = data.be32(offset + 4);
  if (seconds == 0 && fraction == 0) {
    s.line(range, "%s 0000/00/00 00:00:00.0", label);
    return;
  }
  const uint32_t of_day = seconds % 86400;
  // Kept: the calendar's year 1 stands for 1900 although their leap years differ, and the day is one less than its own,
  // so that the first of a month shows as day 0. Nor do the microseconds have leading zeros.
  const Date date = date_of_day(seconds / 86400);
  s.line(range, "%s %u/%0.2u/%0.2u %0.2u:%0.2u:%0.2u.%u", label, date.year + 1899, date.month, date.day - 1,
         of_day / 3600, of_day % 3600 / 60, of_day % 60, fraction / 4295);
}

void control_lines(Section& s, Bytes data) {
  const uint8_t flags = data.u8(1);
  const uint8_t operation = flags & 0x1F;
  s.line(at(1), "[R] %u [E] %u [M] %u", flags >> 7, flags >> 6 & 1, flags >> 5 & 1);
  s.line(at(1), "[Operation Code] %u (%s)", operation, kOperations(operation));
  s.value(at(2, 3), "[Sequence] %u (0x%0.4X)", data.be16(2));
  s.value(at(4, 5), "[Status] 0x%0.4X", data.be16(4));
  s.value(at(6, 7), "[Association ID] 0x%0.4X", data.be16(6));
  s.value(at(8, 9), "[Offset] 0x%0.4X", data.be16(8));
  s.value(at(10, 11), "[Count] %u", data.be16(10));
}

void time_lines(Section& s, Bytes data) {
  const uint8_t stratum = data.u8(1);
  const uint8_t poll = data.u8(2);
  const auto exponent = static_cast<int8_t>(data.u8(3));
  s.line(at(1), "[Stratum] %u (%s)", stratum, stratum_name(stratum));
  s.line(at(2), "[Poll] %u (%u second(s))", poll, poll < 32 ? 1U << poll : 0);
  s.line(at(3), "[Precision] 0x%0.2X (%f second(s))", data.u8(3), std::ldexp(1.0, std::min<int>(exponent, 0)));
  s.value(at(4, 7), "[Synchronizing Distance] 0x%0.8X", data.be32(4));
  s.value(at(8, 11), "[Estimated Drift Rate] 0x%0.8X", data.be32(8));
  clock_line(s, data.sub(12, 4));
  timestamp_line(s, data, 16, "[Reference Timestamp]");
  timestamp_line(s, data, 24, "[Originate Timestamp]");
  timestamp_line(s, data, 32, "[Receive Timestamp]");
  timestamp_line(s, data, 40, "[Transmit Timestamp]");
}

}  // namespace

void NtpAnalyze(LineList& list, Bytes data) {
  if (data.size() < static_cast<int32_t>(kControlHeader)) return remainder(list, data);

  const auto size = static_cast<uint32_t>(data.size());
  const uint8_t leap = data.u8(0) >> 6;
  const uint8_t mode = data.u8(0) & 7;

  Section s(list, kNtp);
  s.title(at(0, size - 1), "NTP Message");
  s.line(at(0), "[LI] %u (%s)", leap, kLeapIndicators(leap));
  s.line(at(0), "[Version] %u", data.u8(0) >> 3 & 7);
  s.line(at(0), "[Mode] %u (%s)", mode, kModes(mode));

  uint32_t end = kControlHeader;
  if (mode == kControlMode) {
    control_lines(s, data);
  } else {
    if (size < kTimeMessage) return;
    time_lines(s, data);
    end = kTimeMessage;
  }
  if (!s) return;

  advance(end);
  remainder(list, data.from(end));
}

}  // namespace wirelines
