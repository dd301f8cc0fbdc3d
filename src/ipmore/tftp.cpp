// Trivial File Transfer Protocol: an opcode, then numbers, data, or texts that end with a zero byte.
#include "ipmore/tftp.hpp"

#include "core/labelled.hpp"
#include "core/names.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kTftp = layer(32, 7, 5);

constexpr uint32_t kMostOptions = 50;

enum Opcode : uint16_t {
  kReadRequest = 1,
  kWriteRequest = 2,
  kData = 3,
  kAcknowledgment = 4,
  kError = 5,
  kOptionAcknowledgment = 6,
};

constexpr auto kOpcodes = names(
    {
        {kReadRequest, "Read request"},
        {kWriteRequest, "Write request"},
        {kData, "Data"},
        {kAcknowledgment, "Acknowledgment"},
        {kError, "Error"},
        {kOptionAcknowledgment, "Option Acknowledgment"},
    },
    "Unknown");
static_assert(kOpcodes.distinct());

constexpr auto kErrors = names(
    {
        {1, "File not found"},
        {2, "Access violation"},
        {3, "Disk full or allocation exceeded"},
        {4, "Illegal TFTP operation"},
        {5, "Unknown transfer ID"},
        {6, "File already exists"},
        {7, "No such user"},
        {8, "option negotiation"},
    },
    "Unknown");
static_assert(kErrors.distinct());

// A text at the frame offset, and `rest` moved behind it. False when no zero byte ends it.
bool text_line(Section& s, Bytes& rest, std::string_view label) {
  const auto length = rest.text().find('\0');
  if (length == std::string_view::npos) return false;
  DspLabelledText(s.list(), label, rest.first(static_cast<int32_t>(length)), s.field(at(0)));
  const auto next = static_cast<uint32_t>(length) + 1;
  advance(next);
  rest = rest.from(next);
  return true;
}

void option_lines(Section& s, Bytes rest) {
  for (uint32_t i = 0; i < kMostOptions && s; ++i) {
    if (!text_line(s, rest, "[Option] ")) return;
    if (!text_line(s, rest, "[Value] ")) return;
  }
}

void block_line(Section& s, Bytes rest) {
  if (rest.size() >= 2) s.value(at(0, 1), "[Block No] %u (0x%0.2X)", rest.be16(0));
}

void data_lines(Section& s, Bytes rest) {
  block_line(s, rest);
  if (rest.size() < 3) return;
  const Range range = at(2, static_cast<uint32_t>(rest.size()) - 1);
  const Bytes data = rest.from(2);
  s.value(range, "[Data] %u (0x%0.4X) byte(s)", static_cast<uint32_t>(data.size()));
  hex_dump(s.list(), data, s.attributes(s.codes().field, 2, range));
}

void error_lines(Section& s, Bytes rest) {
  if (rest.size() < 2) return;
  s.line(at(0, 1), "[ErrorCode] %u (%s)", rest.be16(0), kErrors(rest.be16(0)));
  advance(2);
  rest = rest.from(2);
  text_line(s, rest, "[Error Message] ");
}

}  // namespace

void TftpAnalyze(LineList& list, Bytes data) {
  if (data.size() < 2) return remainder(list, data);

  const uint16_t opcode = data.be16(0);

  Section s(list, kTftp);
  s.title(at(0, static_cast<uint32_t>(data.size()) - 1), "TFTP Packet");
  s.line(at(0, 1), "[Opcode] %u (%s)", opcode, kOpcodes(opcode));
  advance(2);
  Bytes rest = data.from(2);
  switch (opcode) {
    case kReadRequest:
    case kWriteRequest:
      text_line(s, rest, "[File Name] ");
      text_line(s, rest, "[Mode] ");
      option_lines(s, rest);
      break;
    case kData: data_lines(s, rest); break;
    case kAcknowledgment: block_line(s, rest); break;
    case kError: error_lines(s, rest); break;
    case kOptionAcknowledgment: option_lines(s, rest); break;
    default: break;
  }
}

}  // namespace wirelines
