// NetBIOS frames: over LLC a header of its own stated length, little-endian; over IPX eight kinds of packets.
#include "netware/netbios_frames.hpp"

#include "core/names.hpp"
#include "core/printers.hpp"
#include "core/section.hpp"
#include "ipapps/name_printers.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(29, 3, 5);

constexpr auto kCommands = names({
    {0x00, "ADD_GROUP_NAME_QUERY"},
    {0x01, "ADD_NAME_QUERY"},
    {0x0D, "ADD_NAME_RESPONSE"},
    {0x02, "NAME_IN_CONFLICT"},
    {0x0A, "NAME_QUERY"},
    {0x0E, "NAME_RECOGNIZED"},
    {0x1F, "SESSION_ALIVE"},
    {0x17, "SESSION_CONFIRM"},
    {0x18, "SESSION_END"},
    {0x19, "SESSION_INITIALIZE"},
    {0x14, "DATA_ACK"},
    {0x15, "DATA_FIRST_MIDDLE"},
    {0x08, "DATAGRAM"},
    {0x09, "DATAGRAM_BROADCAST"},
    {0x16, "DATA_ONLY_LAST"},
    {0x1A, "NO_RECEIVE"},
    {0x1C, "RECEIVE_CONTINUE"},
    {0x1B, "RECEIVE_OUTSTANDING"},
    {0x03, "STATUS_QUERY"},
    {0x0F, "STATUS_RESPONSE"},
    {0x07, "TERMINATE_TRACE"},
    {0x13, "TERMINATE_TRACE"},
});
static_assert(kCommands.distinct());

void DspDelimiter(LineList& list, uint16_t delimiter, const LineAttributes& attributes) {
  add_number(list, attributes, "[Deliminater] 0x%X", delimiter);
}
void DspNbCommand(LineList& list, uint8_t command, const LineAttributes& attributes) {
  add_line(list, attributes, "[Command] 0x%0.2X (%s)", command, kCommands(command));
}
void DspTransmitCorrelator(LineList& list, uint16_t correlator, const LineAttributes& attributes) {
  add_number(list, attributes, "[Transmit Correlator] 0x%0.4X", correlator);
}
void DspResponseCorrelator(LineList& list, uint16_t correlator, const LineAttributes& attributes) {
  add_number(list, attributes, "[Response Correlator] 0x%0.4X", correlator);
}

// A name of 16 bytes is shown without the last, which tells the kind of the name.
Bytes name_text(Bytes data, uint32_t offset) {
  return data.sub(offset, 15);
}

// ---- Over IPX

constexpr uint8_t kFindName = 1;
constexpr uint8_t kNameRecognized = 2;
constexpr uint8_t kCheckName = 3;
constexpr uint8_t kDeregisterName = 5;
constexpr uint8_t kSessionData = 6;
constexpr uint8_t kSessionEnd = 7;
constexpr uint8_t kSessionEndAck = 8;
constexpr uint8_t kDirectedDatagram = 11;

constexpr auto kStreamTypes = names({
    {kFindName, " (Find Name)"},
    {kNameRecognized, " (Name Recognized)"},
    {kCheckName, " (Check Name)"},
    {4, " (Name in Use)"},
    {kDeregisterName, " (Deregister Name)"},
    {kSessionData, " (Session Data)"},
    {kSessionEnd, " (Session End)"},
    {kSessionEndAck, " (Session End ACK)"},
    {9, " (Status Query)"},
    {10, " (Status Response)"},
    {kDirectedDatagram, " (Directed Datagram)"},
});
static_assert(kStreamTypes.distinct());

void stream_type_line(Section& s, Bytes data, uint32_t offset) {
  s.line(at(offset), "[Data Stream Type] %u%s", data.u8(offset), kStreamTypes(data.u8(offset)));
}

void connection_control_lines(Section& s, uint8_t control) {
  s.line(at(0), "[Connection control] 0x%0.2X", control);
  s.detail(at(0), "    [bit7] System packet = %u", control >> 7 & 1);
  s.detail(at(0), "    [bit6] Acknowledgement required = %u", control >> 6 & 1);
  s.detail(at(0), "    [bit5] Attention = %u", control >> 5 & 1);
  s.detail(at(0), "    [bit4] End of message = %u", control >> 4 & 1);
  s.detail(at(0), "    [bit3] Resend = %u", control >> 3 & 1);
}

void connection_id_lines(Section& s, Bytes data) {
  s.value(at(2, 3), "[Source Connection ID] %u (0x%0.4X)", data.le16(2));
  s.value(at(4, 5), "[Destination Connection ID] %u (0x%0.4X)", data.le16(4));
}

// Kept: bit 7 set shows as a unique name, though it marks a group.
void name_type_lines(Section& s, uint8_t flag) {
  const auto bit = [flag](uint32_t n) { return flag >> n & 1; };
  const auto text = [&](uint32_t n, const char* set, const char* clear) { return bit(n) != 0 ? set : clear; };
  s.line(at(32), "[Name type flag] 0x%0.2X", flag);
  s.detail(at(32), "    [bit7] %u (%s)", bit(7), text(7, "Unique name", "Group name"));
  s.detail(at(32), "    [bit6] %u (%s)", bit(6), text(6, "Name in use", "Name not used"));
  s.detail(at(32), "    [bit2] %u (%s)", bit(2), text(2, "Name registered", "Name not registered"));
  s.detail(at(32), "    [bit1] %u (%s)", bit(1), text(1, "Name duplicated", "Name not duplicated"));
  s.detail(at(32), "    [bit0] %u (%s)", bit(0), text(0, "Name deregistered", "Name not deregistered"));
}

// The networks that the packet has crossed. Kept: their bytes are shown in reverse order.
void route_lines(Section& s, Bytes data, std::string_view label) {
  for (uint32_t q = 0; q < 32; q += 4) {
    if (data.le32(q) != 0) s.line(at(q, q + 3), "[%s] 0x%0.8X", label, data.le32(q));
  }
}

// Up to ten names of 16 bytes from byte 34.
void claim_name_lines(Section& s, Bytes data) {
  for (uint32_t q = 34; q < 34 + 10 * 16; q += 16) {
    if (data.size() < static_cast<int32_t>(q + 16) || data.u8(q) == 0) return;
    s.line(at(q, q + 15), "[Claim name] %s", name_text(data, q));
  }
}

void directed_datagram(LineList& list, Bytes data) {
  if (data.size() < 34) return remainder(list, data);

  Section s(list, kLayer);
  s.title(at(0, 33), "NetBIOS Directed Datagram");
  stream_type_line(s, data, 1);
  s.line(at(2, 17), "[Sender's Name] %s", name_text(data, 2));
  s.line(at(18, 33), "[Receiver's Name] %s", name_text(data, 18));
  if (!s) return;

  advance(34);
  netbios_payload(list, data.from(34));
}

void session_data(LineList& list, Bytes data) {
  Section s(list, kLayer);
  s.title(at(0, 17), "NetBIOS Session Data [%u] --> [%u]", data.le16(2), data.le16(4));
  connection_control_lines(s, data.u8(0));
  stream_type_line(s, data, 1);
  connection_id_lines(s, data);
  s.value(at(6, 7), "[Sequence No.] %u (0x%0.4X)", data.le16(6));
  s.value(at(8, 9), "[Total Length] %u (0x%0.4X) byte(s)", data.le16(8));
  s.value(at(10, 11), "[Offset] %u (0x%0.4X)", data.le16(10));
  s.value(at(12, 13), "[Data length] %u (0x%0.4X) byte(s)", data.le16(12));
  s.value(at(14, 15), "[ACK Sequence No.] %u (0x%0.4X)", data.le16(14));
  s.value(at(16, 17), "[Bytes Received] %u (0x%0.4X) byte(s)", data.le16(16));
  if (!s) return;

  advance(18);
  netbios_payload(list, data.from(18));
}

// Session End and its ACK.
void session_end(LineList& list, Bytes data) {
  Section s(list, kLayer);
  if (data.u8(1) == kSessionEnd) {
    s.title(at(0, 5), "NetBIOS Session End");
  } else {
    s.title(at(0, 5), "NetBIOS Session End ACK");
  }
  connection_control_lines(s, data.u8(0));
  stream_type_line(s, data, 1);
  connection_id_lines(s, data);
}

// Find Name, Name Recognized, Check Name, Deregister Name.
void name_packet(LineList& list, Bytes data) {
  if (data.size() < 50) return remainder(list, data);

  const uint8_t type = data.u8(33);

  Section s(list, kLayer);
  switch (type) {
    case kFindName: s.title(at(0, 49), "NetBIOS Find Name"); break;
    case kNameRecognized: s.title(at(0, 49), "NetBIOS Name Recognized"); break;
    case kCheckName: s.title(at(0, 49), "NetBIOS Check Name"); break;
    default: s.title(at(0, 49), "NetBIOS Deregister Name"); break;
  }
  route_lines(s, data, type == kNameRecognized ? "Route" : "Broadcast Network");
  if (type != kDeregisterName) name_type_lines(s, data.u8(32));
  stream_type_line(s, data, 33);
  claim_name_lines(s, data);
}

}  // namespace

void NetBiosNameFrameAnalyze(LineList& list, Bytes data) {
  if (data.size() < 2) return remainder(list, data);

  const uint16_t header = data.le16(0);

  Section s(list, kLayer);
  if (data.size() < header) return remainder(list, data.from(2));

  const Bytes receiver = name_text(data, 12);
  const Bytes sender = name_text(data, 28);
  s.title(at(0, header - 1U), "NetBIOS [%s] --> [%s]", sender, receiver);
  DspHeaderLength(list, header, s.field(at(0, 1)));
  DspDelimiter(list, data.le16(2), s.field(at(2, 3)));
  DspNbCommand(list, data.u8(4), s.field(at(4)));
  s.value(at(5), "[Optional Data1] 0x%0.2X", data.u8(5));
  s.value(at(6, 7), "[Optional Data2] 0x%0.4X", data.le16(6));
  DspTransmitCorrelator(list, data.le16(8), s.field(at(8, 9)));
  DspResponseCorrelator(list, data.le16(10), s.field(at(10, 11)));
  s.line(at(12, 27), "[Receiver's Name] %s", receiver);
  s.line(at(28, 43), "[Sender's Name] %s", sender);
  if (!s) return;

  advance(header);
  netbios_payload(list, data.from(header));
}

void NetBiosSessionFrameAnalyze(LineList& list, Bytes data) {
  if (data.size() <= 0) return remainder(list, data);

  const uint16_t header = data.le16(0);
  const uint32_t ack = data.u8(5) >> 3 & 1;
  const uint32_t with_data = data.u8(5) >> 2 & 1;
  const uint32_t no_ack = data.u8(5) >> 1 & 1;
  const uint8_t remote = data.u8(12);
  const uint8_t local = data.u8(13);

  Section s(list, kLayer);
  s.title(at(0, header - 1U), "NetBIOS [%u] --> [%u] [ACK] %u [Data] %u [NoACK] %u", local, remote, ack, with_data,
          no_ack);
  DspHeaderLength(list, header, s.field(at(0, 1)));
  DspDelimiter(list, data.le16(2), s.field(at(2, 3)));
  DspNbCommand(list, data.u8(4), s.field(at(4)));
  s.line(at(5), "[Flags] [ACK] %u [Data] %u [NoACK] %u", ack, with_data, no_ack);
  DspTransmitCorrelator(list, data.le16(8), s.field(at(8, 9)));
  DspResponseCorrelator(list, data.le16(10), s.field(at(10, 11)));
  s.value(at(12), "[Remote Session No] %u (0x%0.2X)", remote);
  s.value(at(13), "[Local Session No] %u (0x%0.2X)", local);
  if (!s) return;

  advance(header);
  netbios_payload(list, data.from(header));
}

void IpxNetBiosAnalyze(LineList& list, Bytes data) {
  if (data.size() < 18) return remainder(list, data);

  if (data.u8(0) == 0 && data.u8(1) == kDirectedDatagram) return directed_datagram(list, data);
  switch (data.u8(1)) {
    case kSessionData: return session_data(list, data);
    case kSessionEnd:
    case kSessionEndAck: return session_end(list, data);
    default: break;
  }
  switch (data.u8(33)) {
    case kFindName:
    case kNameRecognized:
    case kCheckName:
    case kDeregisterName: return name_packet(list, data);
    default: return remainder(list, data);
  }
}

}  // namespace wirelines
