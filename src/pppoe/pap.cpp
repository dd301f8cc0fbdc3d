// PPP Password Authentication Protocol (RFC 1334, section 2).
#include <algorithm>

#include "core/names.hpp"
#include "core/section.hpp"
#include "pppoe/ppp.hpp"
#include "pppoe/ppp_packet.hpp"

namespace wirelines {

namespace {

constexpr int32_t kText = 5;  // where the peer id or the message begins, behind its length

constexpr auto kCodes = names(
    {
        {1, "Authenticate Request"},
        {2, "Authenticate Ack"},
        {3, "Authenticate Nak"},
    },
    "Unknown");
static_assert(kCodes.distinct());

// The peer's name and password, each behind a length byte.
void request_lines(Section& s, Bytes data, int32_t size) {
  const uint8_t id_length = data.u8(4);
  // Kept: the length of the peer id is labelled as an identifier.
  s.line(at(4), "[Identifier] %u byte(s)", id_length);
  packet_block(s, kText, data.sub(kText, std::min<int32_t>(id_length, size - kText)));

  const int32_t rest = size - kText - id_length;
  if (rest < 1) return;
  // Kept: the block begins with the password's length byte, so that its last byte is not shown.
  const uint32_t password = kText + uint32_t{id_length};
  packet_block(s, password, data.sub(password, std::min<int32_t>(data.u8(password), rest - 1)));
}

void message_lines(Section& s, Bytes data, int32_t size) {
  s.line(at(4), "[Length] %u byte(s)", data.u8(4));
  packet_block(s, kText, data.sub(kText, std::min<int32_t>(data.u8(4), size - kText)));
}

}  // namespace

void PapAnalyze(LineList& list, Bytes data) {
  if (data.size() < kPppHeader) return;

  const uint8_t code = data.u8(0);
  const int32_t size = packet_size(data);

  Section s(list, kPppLayer);
  s.title(at(0, data.be16(2) - 1U), "PAP Header (%s)", kCodes(code));
  packet_lines(s, data, kCodes(code));
  if (!s || size < kText) return;

  switch (code) {
    case 1: request_lines(s, data, size); break;
    case 2:
    case 3: message_lines(s, data, size); break;
    default: break;
  }
}

}  // namespace wirelines
