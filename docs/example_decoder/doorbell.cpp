// Doorbell Protocol (made up for docs/add-a-decoder.md): an 8-byte header, then items of {kind, length, value}. Called
// for UDP port 9010.
#include "doorbell.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kDoorbell = layer(61, 11, 6);  // title code (fields have 61 + 63), style pair

constexpr int32_t kHeader = 8;
constexpr uint8_t kItemHeader = 2;

constexpr uint8_t kItemDoor = 1;
constexpr uint8_t kItemSeconds = 2;

constexpr auto kOperations = names(
    {
        {1, "Ring"},
        {2, "Answer"},
        {3, "Open"},
    },
    "Unknown");
static_assert(kOperations.distinct());

// The length of an item counts its two bytes of kind and length, so one below 2 would never end.
void item_lines(Section& s, Bytes items) {
  for (uint32_t q = 0; q < items.readable() && s;) {
    const uint8_t kind = items.u8(q);
    const uint8_t length = items.u8(q + 1);
    const Range value = at(q + kItemHeader, q + length - 1);
    s.line(at(q, q + 1), "[Item] %u [Length] %u byte(s)", kind, length);
    if (length < kItemHeader) return;
    if (length == kItemHeader) {
      // It has no value, and so no bytes for a line to describe.
    } else if (kind == kItemDoor) {
      s.detail(value, "[Door] %s", items.sub(q + kItemHeader, length - kItemHeader).text());
    } else if (kind == kItemSeconds) {
      s.detail_value(value, "[Seconds] %u (0x%0.4X)", items.be16(q + kItemHeader));
    }
    q += length;
  }
}

}  // namespace

void DoorbellAnalyze(LineList& list, Bytes data) {
  if (data.size() < kHeader) return remainder(list, data);

  const uint8_t operation = data.u8(1);
  const uint16_t item_bytes = data.be16(2);

  Section s(list, kDoorbell);  // makes the blank line, and marks the title as the frame's result
  s.title(at(0, kHeader - 1), "Doorbell Header [%s]", kOperations(operation));
  s.line(at(0), "[Version] %u", data.u8(0));
  s.line(at(1), "[Operation] %u (%s)", operation, kOperations(operation));
  s.value(at(2, 3), "[Item Length] %u (0x%0.4X) byte(s)", item_bytes);
  DspIpAddress(list, data.sub(4, 4), s.field(at(4, 7)));  // with the user's name for it
  advance(kHeader);                                       // from here on, ranges count from behind the header
  item_lines(s, data.sub(kHeader, item_bytes));
  if (!s) return;  // memory ran out: nothing more is made

  advance(item_bytes);
  remainder(list, data.from(kHeader + uint32_t{item_bytes}));
}

}  // namespace wirelines
