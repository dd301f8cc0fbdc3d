// NCP: a request or reply header by its type, or a packet of a burst. Carried by IPX packet type 17.
#include "netware/ncp.hpp"

#include "core/section.hpp"
#include "netware/ncp_names.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(38, 3, 4);

constexpr uint16_t kCreateConnection = 0x1111;
constexpr uint16_t kServiceRequest = 0x2222;
constexpr uint16_t kServiceReply = 0x3333;
constexpr uint16_t kDestroyConnection = 0x5555;
constexpr uint16_t kBurst = 0x7777;
constexpr uint16_t kBeingProcessed = 0x9999;

constexpr int32_t kBurstHeader = 33;

void DspSequenceNo8(LineList& list, uint8_t number, const LineAttributes& attributes) {
  add_number(list, attributes, "[Sequence No] %u (0x%0.2X)", number);
}
void DspConnectionNo(LineList& list, uint8_t number, const LineAttributes& attributes) {
  add_number(list, attributes, "[Connection No] %u", number);
}
void DspTaskNo(LineList& list, uint8_t number, const LineAttributes& attributes) {
  add_number(list, attributes, "[Task No] %u", number);
}

// Functions 22 and 23 have a length of two bytes before their subfunction.
bool has_subfunction_length(Bytes request) {
  return request.u8(6) == 22 || request.u8(6) == 23;
}

uint32_t header_length(Bytes data) {
  switch (data.be16(0)) {
    case kCreateConnection: return 2;
    case kServiceRequest: return has_subfunction_length(data) ? 10 : 9;
    case kServiceReply: return 8;
    case kBurst: return kBurstHeader;
    default: return 6;
  }
}

void number_lines(Section& s, Bytes data) {
  DspSequenceNo8(s.list(), data.u8(2), s.field(at(2)));
  DspConnectionNo(s.list(), data.u8(3), s.field(at(3)));
  DspTaskNo(s.list(), data.u8(4), s.field(at(4)));
}

void function_line(Section& s, Bytes data, uint32_t header) {
  const uint8_t function = data.u8(6);
  if (!ncp_has_subfunctions(function)) {
    s.line(at(6), "[Function Code] %u %s", function, parens(NcpFunctionToName(function, 0)));
    return;
  }
  const uint8_t subfunction = data.u8(has_subfunction_length(data) ? 9 : 7);
  // Kept: the range begins at the high byte of the connection number.
  s.line(at(5, header - 1), "[Function] %u [Subfunction] %u %s", function, subfunction,
         parens(NcpFunctionToName(function, subfunction)));
}

void request_lines(Section& s, Bytes data, uint32_t header) {
  switch (const uint16_t type = data.be16(0)) {
    case kCreateConnection: s.line(at(0, 1), "[Request Type] 0x1111 (Create a service connection)"); break;
    case kServiceRequest: s.line(at(0, 1), "[Request Type] 0x2222 (Service request)"); break;
    case kDestroyConnection: s.line(at(0, 1), "[Request Type] 0x5555 (Destroy service connection)"); break;
    default: s.line(at(0, 1), "[Request Type] 0x%X (Unknown)", type); break;
  }
  if (data.be16(0) == kCreateConnection) return;
  number_lines(s, data);
  if (data.be16(0) == kServiceRequest) function_line(s, data, header);
}

void reply_lines(Section& s, Bytes data) {
  switch (const uint16_t type = data.be16(0)) {
    case kServiceReply: s.line(at(0, 1), "[Reply Type] 0x3333 (Service reply)"); break;
    case kBeingProcessed: s.line(at(0, 1), "[Reply Type] 0x9999 (Request Being Processed)"); break;
    default: s.line(at(0, 1), "[Reply Type] 0x%X (Unknown)", type); break;
  }
  number_lines(s, data);
  s.value(at(6), "[Completion Code] %u", data.u8(6));
  s.value(at(7), "[Connection Status] %u", data.u8(7));
}

}  // namespace

void NcpAnalyze(LineList& list, Bytes data) {
  if (data.size() < 2) return remainder(list, data);

  const uint16_t type = data.be16(0);
  const uint32_t header = header_length(data);

  Section s(list, kLayer);
  switch (type) {
    case kCreateConnection:
    case kServiceRequest:
    case kServiceReply:
    case kDestroyConnection:
    case kBurst: break;
    // Kept: 0x9999, a reply too, is not taken apart.
    default: return remainder(list, data);
  }
  s.title(at(0, header - 1), "NCP Packet");
  if (type == kBurst) return NcpBurstAnalyze(list, data);
  if (type == kServiceReply) {
    reply_lines(s, data);
  } else {
    request_lines(s, data, header);
  }
  if (!s) return;

  advance(header);
  remainder(list, data.from(header));
}

void NcpBurstAnalyze(LineList& list, Bytes data) {
  if (data.size() < kBurstHeader) return;

  Section s(list, kLayer, Section::Mark::kInside);
  s.line(at(0, 1), "[Request Type] 0x7777 (Burst Mode)");
  s.value(at(2), "[Flags] 0x%0.2X", data.u8(2));
  if (data.u8(3) == 2) {
    s.line(at(3), "[Stream Type] 0x02 (Big send burst)");
  } else {
    s.value(at(3), "[Stream Type] 0x%0.2X", data.u8(3));
  }
  s.value(at(4, 7), "[Souce Connection ID] %u (0x%0.8X)", data.be32(4));
  s.value(at(8, 11), "[Destination Connection ID]%u (0x%0.8X)", data.be32(8));
  // Kept: the sequence number is taken as one byte, so that every later field stands one byte early.
  s.value(at(12), "[Sequence No] %u", data.u8(12));
  s.value(at(13, 16), "[Send Delay Type] %u msec", data.be32(13));
  s.value(at(17, 18), "[Burst Sequesnce No] %u (0x%0.4X)", data.be16(17));
  s.value(at(19, 20), "[ACK Sequence No] %u (0x%0.4X)", data.be16(19));
  s.value(at(21, 24), "[Total Burst length] %u (0x%0.8X) byte(s)", data.be32(21));
  // Kept: the letter u stands where the decimal number was meant.
  s.value(at(25, 28), "[Burst Offset] u (0x%0.8X) byte(s)", data.be32(25));
  s.value(at(29, 30), "[Burst Length] %u (0x%0.4X) byte(s)", data.be16(29));
  s.value(at(31, 32), "[Fragment List Entries] %u (0x%0.4X)", data.be16(31));
  if (!s) return;

  advance(kBurstHeader);
  remainder(list, data.from(kBurstHeader));
}

}  // namespace wirelines
