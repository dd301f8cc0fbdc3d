// Simple Network Management Protocol, versions 1 and 2c: nested elements of {tag, length, value} in BER. Only the few
// shapes of BER that these messages have are read.
#include "ipmore/snmp.hpp"

#include <algorithm>

#include "core/hextext.hpp"
#include "core/labelled.hpp"
#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kSnmp = layer(34, 9, 5);

constexpr uint8_t kInteger = 0x02;
constexpr uint8_t kOctetString = 0x04;
constexpr uint8_t kObjectId = 0x06;
constexpr uint8_t kConstructed = 0x20;  // bit of a tag
constexpr uint8_t kSequence = 0x30;
constexpr uint8_t kIpAddress = 0x40;
constexpr uint8_t kCounter = 0x41;
constexpr uint8_t kGauge = 0x42;
constexpr uint8_t kTimeTicks = 0x43;
constexpr uint8_t kFirstPdu = 0xA0;
constexpr uint8_t kTrap = 0xA4;  // and the last PDU

// How much is shown at most.
constexpr uint32_t kMostCommunityBytes = 16;
constexpr uint32_t kMostRequestIdBytes = 10;
constexpr uint32_t kMostObjectIdBytes = 16;
constexpr uint32_t kMostIntegerBytes = 8;
constexpr uint32_t kMostItems = 20;  // objects of a list, elements of an object, elements of a trap

constexpr uint32_t kGenericTrap = 2;  // place of the generic trap among the elements of a trap

constexpr auto kPdus = names(
    {
        {0xA0, "GetRequest"},
        {0xA1, "GetNextRequest"},
        {0xA2, "GetResponse"},
        {0xA3, "SetRequest"},
        {0xA4, "Trap"},
    },
    "Unknown");
static_assert(kPdus.distinct());

constexpr auto kErrors = names(
    {
        {0, "noError"},
        {1, "tooBig"},
        {2, "noSuchName"},
        {3, "badValue"},
        {4, "readOnly"},
        {5, "genErr"},
        {6, "noAccess"},
        {7, "wrongType"},
        {8, "wrongLength"},
        {9, "wrongEncoding"},
        {10, "wrongValue"},
        {11, "noCreation"},
        {12, "inconsistentValue"},
        {13, "resourceUnavailable"},
        {14, "commitFailed"},
        {15, "undoFailed"},
        {16, "authorizationError"},
        {17, "notWritable"},
        {18, "inconsistentName"},
    },
    "Unknown");
static_assert(kErrors.distinct());

constexpr auto kTraps = names(
    {
        {0, "coldStart"},
        {1, "warmStart"},
        {2, "linkDown"},
        {3, "linkUp"},
        {4, "authenticationFailure"},
        {5, "egpNeighborLoss"},
        {6, "enterpriseSpecific"},
    },
    "Unknown");
static_assert(kTraps.distinct());

// Bytes that a length takes, or -1 where there is none. `field` begins with it.
int32_t length_size(Bytes field) {
  if (field.size() < 1) return -1;
  return field.u8(0) < 0x80 ? 1 : (field.u8(0) & 0x7F) + 1;
}

// The length itself, or -1 where it cannot be read, as in the indefinite form.
int64_t length_value(Bytes field) {
  if (field.size() < 1) return -1;
  const uint8_t first = field.u8(0);
  if (first < 0x80) return first;
  // Kept: also the form of two bytes asks for three.
  if (field.size() < 3) return -1;
  switch (first) {
    case 0x81: return field.u8(1);
    case 0x82: return field.be16(1);
    case 0x83: return field.be32(0) & 0xFFFFFF;
    case 0x84: return field.be32(1);
    default: return -1;
  }
}

struct Element {
  uint8_t tag = 0;
  uint32_t header = 0;  // bytes of tag and length, and so where the value begins; 0 when the length cannot be read
  uint32_t length = 0;  // of the value, as stated

  [[nodiscard]] int64_t size() const { return int64_t{header} + length; }
  [[nodiscard]] Range value_range() const { return at(header, header + length - 1); }
};

Element element_of(Bytes data) {
  const Bytes field = data.from(1);
  const int64_t length = length_value(field);
  if (length < 0) return {};
  return {data.u8(0), 1 + static_cast<uint32_t>(length_size(field)), static_cast<uint32_t>(length)};
}

// What a constructed element holds, as far as the bytes around it go.
Bytes content_of(Bytes data, const Element& element) {
  const Bytes rest = data.from(element.header);
  return rest.first(static_cast<int32_t>(std::min<int64_t>(element.length, rest.size())));
}

// The captured bytes of a value, `most` at most.
Bytes value_of(Bytes data, const Element& element, uint32_t most = INT32_MAX) {
  return data.sub(element.header, static_cast<int32_t>(std::min(element.length, most)));
}

// The low 32 bits of a number of any width.
uint32_t number_of(Bytes data, const Element& element) {
  uint32_t number = 0;
  for (uint32_t i = 0; i < element.length; ++i) number = number << 8 | data.u8(element.header + i);
  return number;
}

// Elements that follow one another, from the frame offset on. `step` gets each, with the frame offset at its tag, and
// returns the bytes to go on by, or 0 to end the walk.
template <typename Step>
void walk(Section& s, Bytes data, Step step) {
  uint32_t offset = state().frameOffset;
  for (uint32_t i = 0; i < kMostItems && s; ++i) {
    state().frameOffset = offset;
    const int64_t consumed = step(data, i);
    if (consumed == 0 || consumed >= data.size()) return;
    offset += static_cast<uint32_t>(consumed);
    data = data.from(static_cast<uint32_t>(consumed));
  }
}

// "1.3.6.1" from at most 16 bytes. Ends before a sub-identifier that is cut there, or has more than four bytes.
class ObjectIdText {
 public:
  explicit ObjectIdText(Bytes id) {
    if (id.size() < 1) return;
    put(id.u8(0) / 40U);
    put(id.u8(0) % 40U);
    for (uint32_t q = 1; static_cast<int32_t>(q) < id.size();) {
      uint32_t part = 0;
      uint32_t n = 0;
      bool complete = false;
      while (!complete && n < 4 && static_cast<int32_t>(q + n) < id.size()) {
        const uint8_t byte = id.u8(q + n);
        part = part << 7 | (byte & 0x7FU);
        complete = byte < 0x80;
        ++n;
      }
      if (!complete) return;
      put(part);
      q += n;
    }
  }
  [[nodiscard]] std::string_view view() const { return {text_, length_}; }

 private:
  void put(uint32_t part) {
    const TextBuffer number(".%u", part);
    const std::string_view text = number.view().substr(length_ == 0 ? 1 : 0);
    length_ += static_cast<uint32_t>(text.copy(text_ + length_, sizeof text_ - length_));
  }

  char text_[kMaxText];
  uint32_t length_ = 0;
};

void value_dump(Section& s, Bytes data, const Element& element) {
  hex_dump(s.list(), value_of(data, element), s.field(element.value_range()));
}

void number_line(Section& s, Bytes data, const Element& element, std::string_view label) {
  if (element.length > kMostIntegerBytes) return value_dump(s, data, element);
  s.line(element.value_range(), "[%s] %lu", label, number_of(data, element));
}

void object_id_line(Section& s, Bytes data, const Element& element, std::string_view label) {
  const ObjectIdText id(value_of(data, element, kMostObjectIdBytes));
  s.line(element.value_range(), "[%s] %s", label, id.view());
}

void time_ticks_line(Section& s, Bytes data, const Element& element) {
  constexpr uint32_t kDay = 86400;
  // Asked of the byte as it stands, so that a length in the long form gives a hex dump.
  if (data.u8(1) > kMostIntegerBytes) return value_dump(s, data, element);
  const uint32_t hundredths = number_of(data, element);
  const uint32_t seconds = hundredths / 100;
  const uint32_t of_day = seconds % kDay;
  s.line(element.value_range(), "[TimeTicks] %u/%2.2u:%2.2u:%2.2u.%2.2u", seconds / kDay, of_day / 3600,
         of_day % 3600 / 60, of_day % 60, hundredths % 100);
}

// One value. Returns the bytes consumed, as the walks below expect it.
int64_t value_lines(Section& s, Bytes data) {
  const Element e = element_of(data);
  if (e.length == 0) return e.size();
  switch (e.tag) {
    case kInteger: number_line(s, data, e, "Integer"); break;
    case kOctetString: {
      const auto held = static_cast<uint32_t>(std::max(0, data.from(e.header).size()));
      DspLabelledText(s.list(), "[Octet String] ", value_of(data, e, held), s.field(e.value_range()));
      break;
    }
    case kObjectId: object_id_line(s, data, e, "Object Identifier"); break;
    case kIpAddress: DspIpAddress(s.list(), data.sub(e.header, 4), s.field(e.value_range())); break;
    case kCounter: number_line(s, data, e, "Counter"); break;
    case kGauge: number_line(s, data, e, "Gauge"); break;
    case kTimeTicks: time_ticks_line(s, data, e); break;
    default: value_dump(s, data, e); break;
  }
  return e.size();
}

// A name and its value.
int64_t object_lines(Section& s, Bytes data, uint32_t number) {
  const Element e = element_of(data);
  if (e.header == 0) return 0;
  s.line(at(0, e.header + e.length - 1), "--- Object %u -------------------------------", number);
  // Kept: the content of anything else is then taken for the next object.
  if ((e.tag & kConstructed) == 0) return e.header;

  advance(e.header);
  walk(s, content_of(data, e), [&](Bytes value, uint32_t) { return value_lines(s, value); });
  return e.size();
}

// Request ID, status and index, whatever their tags, and the objects.
void request_lines(Section& s, Bytes data) {
  Element e;
  const auto read = [&] {
    e = element_of(data);
    return e.header != 0;
  };
  // Behind an element that runs past the message nothing can be read.
  const auto step_over = [&] {
    const auto size = static_cast<uint32_t>(std::min<int64_t>(e.size(), UINT32_MAX));
    advance(size);
    data = data.from(size);
  };

  if (!read()) return;
  s.line(e.value_range(), "[Request ID] 0x%s", HexText(value_of(data, e, kMostRequestIdBytes)).view());
  step_over();

  if (!read()) return;
  const uint8_t error = data.u8(e.header);
  s.line(e.value_range(), "[Error Status] %u (%s)", error, kErrors(error));
  step_over();

  if (!read()) return;
  s.line(e.value_range(), "[Error Index] 0x%0.2X", data.u8(e.header));
  step_over();

  if (!read() || (e.tag & kConstructed) == 0) return;
  advance(e.header);
  walk(s, content_of(data, e), [&](Bytes object, uint32_t i) { return object_lines(s, object, i + 1); });
}

// A trap up to its time. Its objects are not shown.
void trap_lines(Section& s, Bytes data) {
  walk(s, data, [&](Bytes element, uint32_t i) {
    const Element e = element_of(element);
    if (e.header == 0) return e.size();
    // Kept: these ranges end before they begin.
    const Range empty = at(e.header, e.header - 1);
    const uint8_t first = element.u8(e.header);
    switch (e.tag) {
      case kInteger:
        if (i == kGenericTrap) {
          s.line(empty, "[%s] %u %s", "Trap Type", first, parens(kTraps(first)));
        } else {
          s.line(empty, "[%s] %u", "Specific Trap Type", first);
        }
        break;
      // "vendor ID" in half-width katakana.
      case kObjectId:
        object_id_line(s, element, e,
                       "\xCD\xDE\xDD\xC0\xDE\xB0"
                       "ID");
        break;
      case kIpAddress: {
        const TextBuffer text = ip_text(element.sub(e.header, 4));
        s.line(empty, "[Agent IpAddress] %s %s", text.view(), parens(ip_nickname(text.bytes)));
        break;
      }
      case kTimeTicks: time_ticks_line(s, element, e); break;
      default: break;
    }
    return e.size();
  });
}

// Where the PDU begins, or 0 when this is not a message of SNMP version 1 or 2c.
uint32_t find_pdu(Bytes data) {
  const int32_t s = length_size(data.from(1));
  if (s < 0) return 0;
  const auto community = static_cast<uint32_t>(s) + 5;  // its length; the version before it takes three bytes
  const int64_t length = length_value(data.from(community));
  if (length < 0) return 0;
  const int64_t pdu = int64_t{community} + length_size(data.from(community)) + length;
  if (pdu >= data.captured()) return 0;
  const uint8_t tag = data.u8(static_cast<uint32_t>(pdu));
  return tag >= kFirstPdu && tag <= kTrap ? static_cast<uint32_t>(pdu) : 0;
}

}  // namespace

void SnmpAnalyze(LineList& list, Bytes data) {
  const uint32_t pdu = find_pdu(data);
  const uint32_t version = 1 + static_cast<uint32_t>(length_size(data.from(1)));  // its element
  if (pdu == 0 || data.u8(0) != kSequence || data.be16(version) != 0x0201) return remainder(list, data);

  const uint8_t tag = data.u8(pdu);
  const uint8_t number = data.u8(version + 2);
  // The length of the community is one byte here, and its text follows at once.
  const uint32_t community = version + 5;
  const uint32_t shown = std::min<uint32_t>(data.u8(community - 1), kMostCommunityBytes);

  // Kept: no blank line before the title, and the result line stays with the layer below.
  Section s(list, kSnmp, Section::Mark::kInside);
  s.title(at(0, static_cast<uint32_t>(data.size()) - 1), "SNMP (%s)", kPdus(tag));
  s.line(at(version + 2, version + 3), "[Version] %u (SNMPv%u)", number, number + 1);
  s.line(at(community, community + shown - 1), "[Community] %s", data.sub(community, static_cast<int32_t>(shown)));
  advance(pdu);
  s.line(at(0), "[PDU type] %u (%s)", tag & 0x1F, kPdus(tag));
  if (!s) return;

  const Bytes message = data.from(pdu);
  const Element e = element_of(message);
  if (e.header == 0) return;
  advance(e.header);
  if (tag == kTrap) {
    trap_lines(s, content_of(message, e));
  } else {
    request_lines(s, content_of(message, e));
  }
}

}  // namespace wirelines
