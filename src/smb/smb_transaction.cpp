// Transaction, Transaction2 and NtTransaction: calls of remote services, with counts and places of a parameter and a
// data area, both counted from the message's header.
#include <algorithm>

#include "core/names.hpp"
#include "smb/smb_commands.hpp"
#include "smb/smb_printers.hpp"

namespace wirelines::smb {

namespace {

constexpr uint16_t kNotify = 4;  // NtTransaction function

constexpr auto kSubcommands = names(
    {
        {0x0000, "OPEN2"},
        {0x0001, "FIND_FIRST2"},
        {0x0002, "FIND_NEXT2"},
        {0x0003, "QUERY_FS_INFORMATION"},
        {0x0004, "SET_FS_QUOTA"},
        {0x0005, "QUERY_PATH_INFORMATION"},
        {0x0006, "SET_PATH_INFORMATION"},
        {0x0007, "QUERY_FILE_INFORMATION"},
        {0x0008, "SET_FILE_INFORMATION"},
        {0x0009, "FSCTL"},
        {0x000A, "IOCTL2"},
        {0x000B, "FIND_NOTIFY_FIRST"},
        {0x000C, "FIND_NOTIFY_NEXT"},
        {0x000D, "CREATE_DIRECTORY"},
        {0x000E, "SESSION_SETUP"},
        {0x0010, "GET_DFS_REFERRAL"},
        {0x0011, "REPORT_DFS_INCONSISTENCY"},
    },
    "Unknown");

constexpr auto kFunctions = names(
    {
        {1, "Create"},
        {2, "IoCtl"},
        {3, "Set Security Desc"},
        {4, "Notify"},
        {5, "Rename"},
        {6, "Query Security Desc"},
        {7, "Get User Quota"},
        {8, "Set User Quota"},
    },
    "Unknown");

constexpr auto kWatchTrees = names({{0, "Current directory only"}, {1, "Subdirectories also"}}, "Unknown");

static_assert(kSubcommands.distinct() && kFunctions.distinct());

constexpr BitRow kFlags[] = {
    {1, "    [bit1] one-way transaction = %u"},
    {0, "    [bit0] TID disconnect = %u"},
};

constexpr BitRow kCompletionFilter[] = {
    {11, "    [bit11] Stream Write = %u"},
    {10, "    [bit10] Stream Size Change = %u"},
    {9, "    [bit9] Stream Name Change = %u"},
    {8, "    [bit8] Security Change = %u"},
    {7, "    [bit7] EA Change = %u"},
    {6, "    [bit6] Created Change = %u"},
    {5, "    [bit5] Last Access Change = %u"},
    {4, "    [bit4] Last Write Change = %u"},
    {3, "    [bit3] Size Change = %u"},
    {2, "    [bit2] Attribute Change = %u"},
    {1, "    [bit1] Directory Name Changee = %u"},
    {0, "    [bit0] File Name Change = %u"},
};

uint16_t DspParameterCount(Fields& f) {
  return f.le16("[Parameter Count] %u (0x%0.4X) byte(s)");
}
uint16_t DspParameterOffset(Fields& f) {
  return f.le16("[Prameter Offset] %u (0x%0.4X) byte(s)");
}
void DspNtTotalParameterCount(Fields& f) {
  f.le32("[Total Parameter Count] %u (0x%0.8X) byte(s)");
}
void DspNtTotalDataCount(Fields& f) {
  f.le32("[Total Data Count] %u (0x%0.8X) byte(s)");
}
uint32_t DspNtParameterCount(Fields& f) {
  return f.le32("[Parameter Count] %u (0x%0.8X) byte(s)");
}
uint32_t DspNtParameterOffset(Fields& f) {
  return f.le32("[Parameter Offset] %u (0x%0.8X) byte(s)");
}
void DspNtDataCount(Fields& f) {
  f.le32("[Data Count] %u (0x%0.8X) byte(s)");
}
void DspNtDataOffset(Fields& f) {
  f.le32("[Data Offset] %u (0x%0.8X) byte(s)");
}

// Bytes of the message from `begin` up to, not including, `end`, both counted from the block. An area can begin in
// front of it.
struct Area {
  int64_t begin = 0;
  int64_t end = 0;
  [[nodiscard]] bool empty() const { return end <= begin; }
  [[nodiscard]] Range range() const { return at(static_cast<uint32_t>(begin), static_cast<uint32_t>(end) - 1); }
};

// `count` bytes at `offset` of the header, cut to the end.
Area area_at(const Fields& f, uint32_t offset, uint32_t count) {
  const int64_t begin = offset - f.position();
  return {begin, std::min(begin + count, static_cast<int64_t>(f.size()))};
}

Bytes bytes_of(const Fields& f, const Area& area) {
  const auto length = static_cast<int32_t>(area.end - area.begin);
  if (area.begin >= 0) return f.block().sub(static_cast<uint32_t>(area.begin), length);
  return f.header().sub(static_cast<uint32_t>(area.begin + f.position()), length);
}

void DspParameters(Fields& f, const Area& area, NumberFormat format) {
  if (area.empty()) return;
  f.section().heading_value(area.range(), format, static_cast<uint32_t>(area.end - area.begin));
  hex_dump(f.section().list(), bytes_of(f, area), f.section().attributes(kCommand.field, 2, area.range()));
}

void DspAreaData(Fields& f, const Area& area) {
  if (area.empty()) return;
  data_block(f.section().list(), bytes_of(f, area), f.section().field(area.range()).start);
}

void seek_behind(Fields& f, const Area& area) {
  if (!area.empty()) f.seek(static_cast<uint32_t>(std::max<int64_t>(f.offset(), area.end)));
}

// The parameter area, the data area, and the bytes between them; the cursor ends behind both.
void DspAreas(Fields& f, const Area& parameters, const Area& data) {
  const bool both = !parameters.empty() && !data.empty();
  const bool parameters_first = parameters.begin <= data.begin;
  const Area& first = parameters_first ? parameters : data;
  const Area& second = parameters_first ? data : parameters;
  const Area between = {std::max<int64_t>(f.offset(), first.end), second.begin};

  DspParameters(f, parameters, "[Parameter] %u (0x%0.4X) byte(s)");
  if (both && parameters_first) DspAreaData(f, between);
  DspAreaData(f, data);
  if (both && !parameters_first) DspAreaData(f, between);
  seek_behind(f, parameters);
  seek_behind(f, data);
}

void DspNtParameters(Fields& f, uint32_t offset, uint32_t count) {
  const Area parameters = area_at(f, offset, count);
  DspParameters(f, parameters, "[Parameters] %u (0x%0.4X) byte(s)");
  seek_behind(f, parameters);
}

// Setup words, as many as begin before the end. Nothing bounds their count but the byte that tells it.
void setup_words(Fields& f, uint32_t count, Format<uint32_t, uint16_t> format, bool subcommand = false) {
  const uint32_t end = f.offset() + 2 * count;
  for (uint32_t i = 0; i < count && f.more(); ++i) {
    const uint16_t v = f.le16();
    add_line(f.section().list(), f.section().field(f.last()), format, i, v);
    if (subcommand && i == 0) f.line("[Subcommand] 0x%0.4X (%s)", v, kSubcommands(v));
  }
  f.seek(end);
}

constexpr bool kWithSubcommand = true;

struct TransactionAreas {
  Area parameters;
  Area data;
};

// The lines of a request up to its byte count.
TransactionAreas request_lines(Fields& f, bool with_subcommand) {
  DspTotalParameterCount(f);
  DspTotalDataCount(f);
  DspMaxParameterCount(f);
  DspMaxDataCount(f);
  f.u8("[Max Setup Count] %u (0x%0.2X) word(s)");
  f.skip(1);
  f.flags16("[Flags] 0x%0.4X", kFlags);
  DspTimeout(f);
  f.skip(2);
  const uint16_t parameter_count = DspParameterCount(f);
  const uint16_t parameter_offset = DspParameterOffset(f);
  const uint16_t data_count = DspByteCount(f);
  const uint16_t data_offset = DspDataOffset(f);
  const uint8_t setup_count = f.u8("[Setup Count] %u word(s)");
  f.skip(1);
  setup_words(f, setup_count, "[Setup Word %u] 0x%0.4X", with_subcommand);
  DspByteCount(f);
  return {area_at(f, parameter_offset, parameter_count), area_at(f, data_offset, data_count)};
}

}  // namespace

void TransactionClientAnalyze(Fields& f) {
  if (!f.begin(31)) return;
  const auto [parameters, data] = request_lines(f, !kWithSubcommand);
  f.string("[Transaction Function Code] ");
  DspAreas(f, parameters, data);
}

void Transaction2ClientAnalyze(Fields& f) {
  if (!f.begin(31)) return;
  const auto [parameters, data] = request_lines(f, kWithSubcommand);
  DspAreas(f, parameters, data);
}

// Transaction and Transaction2.
void TransactionServerAnalyze(Fields& f) {
  if (!f.begin(23)) return;
  DspTotalParameterCount(f);
  DspTotalDataCount(f);
  f.skip(2);
  const uint16_t parameter_count = DspParameterCount(f);
  const uint16_t parameter_offset = DspParameterOffset(f);
  f.le16("[Parameter Displacement] %u (0x%0.4X) byte(s)");
  const uint16_t data_count = DspByteCount(f);
  const uint16_t data_offset = DspDataOffset(f);
  f.le16("[Data Displacement] %u (0x%0.4X) byte(s)");
  const uint8_t setup_count = f.u8("[Setup Count] %u (0x%0.4X) word(s)");
  f.skip(1);
  setup_words(f, setup_count, "[Setup Word %u] 0x%0.4X");
  f.skip(2);  // the byte count
  DspAreas(f, area_at(f, parameter_offset, parameter_count), area_at(f, data_offset, data_count));
}

void NtTransactionClientAnalyze(Fields& f) {
  if (!f.begin(41)) return;
  f.u8("[Max Setup Count] %u (0x%0.2X) word(s)");
  f.skip(2);
  DspNtTotalParameterCount(f);
  DspNtTotalDataCount(f);
  f.le32("[Max Parameter Count] %u (0x%0.8X) byte(s)");
  f.le32("[Max Data Count] %u (0x%0.8X) byte(s)");
  const uint32_t parameter_count = DspNtParameterCount(f);
  const uint32_t parameter_offset = DspNtParameterOffset(f);
  DspNtDataCount(f);
  DspNtDataOffset(f);
  const uint8_t setup_count = f.u8("[Setup Count] %u (0x%0.2X) word(s)");
  const uint16_t function = f.le16();
  f.line("[Function Code] 0x%0.4X (%s)", function, kFunctions(function));
  const uint32_t setup = f.offset();
  if (function == kNotify) {
    f.flags32("[Cmpletion Filter] 0x%0.8X", kCompletionFilter);
    f.le16("[FID] 0x%0.4X");
    const uint8_t tree = f.u8();
    f.line("[Watch Tree] %u (%s)", tree, kWatchTrees(tree));
    f.seek(setup + 2U * setup_count);
  } else {
    setup_words(f, setup_count, "[Setup Word - %u] 0x%0.4X");
  }
  DspByteCount(f);
  DspNtParameters(f, parameter_offset, parameter_count);
}

void NtTransactionServerAnalyze(Fields& f) {
  if (f.words() == 0) return EmptyAnalyze(f);
  if (!f.begin(39)) return;
  f.skip(3);
  DspNtTotalParameterCount(f);
  DspNtTotalDataCount(f);
  const uint32_t parameter_count = DspNtParameterCount(f);
  const uint32_t parameter_offset = DspNtParameterOffset(f);
  f.le32("[Parameter Displacement] %u (0x%0.8X) byte(s)");
  DspNtDataCount(f);
  DspNtDataOffset(f);
  f.le32("[Data Displacement] %u (0x%0.8X) byte(s)");
  const uint8_t setup_count = f.u8("[Setup Word Count] %u word(s)");
  setup_words(f, setup_count, "[Setup Word - %u] 0x%0.4X");
  DspByteCount(f);
  DspNtParameters(f, parameter_offset, parameter_count);
}

}  // namespace wirelines::smb
