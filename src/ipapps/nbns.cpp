// NetBIOS name service (RFC 1002, section 4.2): a header of flags and counts, questions, and three sections of resource
// records. Called for UDP port 137.
#include "ipapps/nbns.hpp"

#include <optional>

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"
#include "ipapps/name_printers.hpp"

namespace wirelines {

namespace {

constexpr int32_t kLeastMessage = 18;
constexpr uint32_t kHeaderSize = 12;
constexpr uint32_t kNameSize = 34;
constexpr uint32_t kQuestionSize = 38;
constexpr uint8_t kPointer = 0xC0;  // first byte of a name that is two bytes long

constexpr uint16_t kTypeNb = 32;
constexpr uint16_t kTypeNodeStatus = 33;
constexpr uint32_t kNodeNameSize = 18;

constexpr auto kTypeNames = names(
    {
        {1, "IP address Resource Record"},
        {2, "Name Server Resource Record"},
        {10, "NULL Resource Record"},
        {kTypeNb, "NetBIOS general Name Service Resource Record"},
        {kTypeNodeStatus, "NetBIOS NODE STATUS Resource Record"},
    },
    "Unknown");
static_assert(kTypeNames.distinct());

constexpr std::string_view kNodeTypes[] = {"0 (B node)", "1 (P node)", "2 (M node)", "3 (Reserved)"};

struct RecordSection {
  uint32_t count_at;  // where the header counts its records
  NumberFormat heading;
};
constexpr RecordSection kRecordSections[] = {
    {6, "--- ANSWER SECTION %u --------------------"},
    {8, "--- AUTHORITY SECTION %u -----------------"},
    {10, "--- ADDITIONAL RECORDS SECTION %u --------"},
};

// Questions and records alike.
void DspNbnsRecordType(Section& s, Range range, uint16_t type) {
  s.line(range, "[QUESTION_TYPE] 0x%0.4X (%s)", type, kTypeNames(type));
}

enum class NameFlags { kOfAddress, kOfNode };

void DspNameFlags(Section& s, Range range, uint16_t flags, NameFlags kind) {
  s.heading(range, "[NAME_FLAGS] 0x%0.4X", flags);
  s.detail(range, "    [Group Name Flag] %s",
           (flags & 0x8000) != 0 ? "1 (GROUP NetBIOS name)" : "0 (UNIQUE NetBIOS name)");
  s.detail(range, "    [Owner Node Type] %s", kNodeTypes[flags >> 13 & 3]);
  if (kind == NameFlags::kOfAddress) return;
  s.detail(range, "    [Deregister Flag] %s", (flags & 0x1000) != 0 ? "1 (this name is deleted)" : "0");
  s.detail(range, "    [Conflict Flag] %s", (flags & 0x0800) != 0 ? "1 (conflict)" : "0");
  s.detail(range, "    [Active Name Flag] %s",
           (flags & 0x0400) != 0 ? "1 (All entries have this flag set to one)" : "0");
  s.detail(range, "    [Permanent Name Flag] %s",
           (flags & 0x0200) != 0 ? "1 (entry is for the permanent node name)" : "0");
}

// What an adapter counts; `first` is the record's byte where `statistics` begin.
void statistics_lines(Section& s, Bytes statistics, uint32_t first) {
  const Bytes& b = statistics;
  const auto range = [first](uint32_t from, uint32_t to) { return at(first + from, first + to); };
  s.line(range(0, 5), "[UNIT_ID] %0.2X,%0.2X,%0.2X,%0.2X,%0.2X,%0.2X", b.u8(0), b.u8(1), b.u8(2), b.u8(3), b.u8(4),
         b.u8(5));
  s.value(range(6, 6), "[JUMPERS] %u (0x%0.2X)", b.u8(6));
  s.value(range(7, 7), "[TEST_RESULT] %u (0x%0.2X)", b.u8(7));
  s.value(range(8, 9), "[VERSION_NUMBER] %u ", b.be16(8));
  s.value(range(10, 11), "[PERIOD_OF_STATISTICS] %u ", b.be16(10));
  s.value(range(12, 13), "[NUMBER_OF_CRCs] %u ", b.be16(12));
  s.value(range(14, 15), "[NUMBER_ALIGNMENT_ERRORS] %u ", b.be16(14));
  s.value(range(16, 17), "[NUMBER_OF_COLLISIONS] %u ", b.be16(16));
  s.value(range(18, 19), "[NUMBER_SEND_ABORTS] %u ", b.be16(18));
  s.value(range(20, 23), "[NUMBER_GOOD_SENDS] %u ", b.be32(20));
  s.value(range(24, 27), "[NUMBER_GOOD_RECEIVES] %u ", b.be32(24));
  s.value(range(28, 29), "[NUMBER_RETRANSMITS] %u ", b.be16(28));
  s.value(range(30, 31), "[NUMBER_NO_RESOURCE_CONDITIONS] %u ", b.be16(30));
  s.value(range(32, 33), "[NUMBER_FREE_COMMAND_BLOCKS] %u ", b.be16(32));
  // Kept: bytes 34 and 35 are left out, so that the last six fields sit two bytes late; one label has no bracket.
  s.value(range(36, 37), "[TOTAL_NUMBER_COMMAND_BLOCKS] %u ", b.be16(36));
  s.value(range(38, 39), "MAX_TOTAL_NUMBER_COMMAND_BLOCKS] %u ", b.be16(38));
  s.value(range(40, 41), "[NUMBER_PENDING_SESSIONS] %u ", b.be16(40));
  s.value(range(42, 43), "[MAX_NUMBER_PENDING_SESSIONS] %u ", b.be16(42));
  s.value(range(44, 45), "[MAX_TOTAL_SESSIONS_POSSIBLE] %u ", b.be16(44));
  s.value(range(46, 47), "[SESSION_DATA_PACKET_SIZE] %u ", b.be16(46));
}

// The answer to a NODE STATUS request, from byte `first` of the record.
void node_status_lines(Section& s, Bytes record, uint32_t first) {
  const uint32_t count = record.u8(first);
  s.value(at(first), "[NUM_NAMES] %u", count);
  const uint32_t statistics = first + 1 + kNodeNameSize * count;
  for (uint32_t j = 1; j <= count; ++j) {
    const uint32_t e = first + 1 + kNodeNameSize * (j - 1);
    if (!s || !record.has(e)) break;
    s.line(at(e, e + 15), "[NODE_NAME -%u-] %s", j, record.sub(e, 15));
    DspNameFlags(s, at(e + 16, e + 17), record.be16(e + 16), NameFlags::kOfNode);
  }
  statistics_lines(s, record.from(statistics), statistics);
}

uint32_t name_length(Bytes record) {
  return record.u8(0) == kPointer ? 2 : kNameSize;
}

uint32_t NbnsRecordLength(Bytes record) {
  if (record.size() < 10) return 10;
  const uint32_t k = name_length(record);
  return k + 10 + record.be16(k + 8);
}

void NbnsRecordAnalyze(Section& s, Bytes record, const std::optional<Bytes>& last_question) {
  const int32_t remaining = record.size();
  if (remaining < 6) return;

  const uint32_t k = name_length(record);
  const uint16_t type = record.be16(k);
  const uint32_t length = record.be16(k + 8);
  // Kept: a pointer is not followed; it stands for the last question's name.
  const auto name = record.u8(0) == kPointer ? last_question : record;
  if (name) DspNetBiosName(s.list(), "[RR_NAME] ", *name, s.field(at(0, k - 1)));
  DspNbnsRecordType(s, at(k, k + 1), type);
  DspRecordClass(s.list(), record.be16(k + 2), s.field(at(k + 2, k + 3)));

  // Kept: what must be left for each step does not count the name.
  if (remaining < 10) return;
  s.value(at(k + 4, k + 7), "[TTL] %lu sec", record.be32(k + 4));
  if (remaining < 12) return;
  // Kept: a length in seconds.
  s.value(at(k + 8, k + 9), "[RDLENGTH] %lu sec", length);
  if (remaining < static_cast<int32_t>(length) + 12) return;

  const uint32_t first = k + 10;
  switch (type) {
    case kTypeNb:
      DspNameFlags(s, at(first, first + 1), record.be16(first), NameFlags::kOfAddress);
      DspIpAddress(s.list(), record.sub(first + 2, 4), s.field(at(first + 2, first + 5)));
      break;
    case kTypeNodeStatus: node_status_lines(s, record, first); break;
    default: {
      const Range range = at(first, first + length - 1);
      s.line(range, "[RESOURCE]");
      hex_dump(s.list(), record.sub(first, static_cast<int32_t>(length)), s.attributes(s.codes().field, 2, range));
      break;
    }
  }
}

}  // namespace

void NbnsAnalyze(LineList& list, Bytes data) {
  if (data.size() < kLeastMessage) return remainder(list, data);

  Section s(list, kNetBiosLayer);
  s.title(at(0, static_cast<uint32_t>(data.size()) - 1), "NetBIOS Name Service");
  DspId(list, data.be16(0), s.field(at(0, 1)));
  DspNsFlags(list, data.be16(2), BroadcastFlag::kShow, s.field(at(2, 3)));
  DspSectionCounts(list, data, s.field(at(4, 11)));

  advance(kHeaderSize);
  Bytes rest = data.from(kHeaderSize);
  std::optional<Bytes> last_question;
  for (uint32_t i = 1; i <= data.be16(4); ++i) {
    if (!s || rest.size() < static_cast<int32_t>(kQuestionSize)) return;
    s.value(at(0, kQuestionSize - 1), "--- QUESTION SECTION %u ------------------", i);
    DspNetBiosName(list, "[QUESTION_NAME] ", rest, s.field(at(0, 33)));
    DspNbnsRecordType(s, at(34, 35), rest.be16(34));
    DspRecordClass(list, rest.be16(36), s.field(at(36, 37)));
    last_question = rest;
    advance(kQuestionSize);
    rest = rest.from(kQuestionSize);
  }

  // Every counted record has its section line, also where nothing is left of the message.
  for (const auto& section : kRecordSections) {
    for (uint32_t i = 1; i <= data.be16(section.count_at); ++i) {
      const uint32_t length = NbnsRecordLength(rest);
      s.value(at(0, length - 1), section.heading, i);
      if (!s) return;
      NbnsRecordAnalyze(s, rest, last_question);
      advance(length);
      rest = rest.from(length);
    }
  }
}

}  // namespace wirelines
