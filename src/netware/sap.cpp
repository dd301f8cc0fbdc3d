// SAP: an operation, then servers of 64 bytes. Carried by IPX from or to socket 0x0452.
#include "netware/sap.hpp"

#include "core/names.hpp"
#include "core/section.hpp"

namespace wirelines {

namespace {

constexpr Layer kLayer = layer(43, 9, 4);
constexpr uint32_t kOperationSize = 2;
constexpr uint32_t kEntrySize = 64;

constexpr auto kServerTypes = names({
    {0x0004, "File Server"},        {0x0005, "Job Server"},
    {0x0007, "Print Server"},       {0x0009, "Archive Server"},
    {0x000A, "Job Queue"},          {0x0021, "NAS SNA Gateway"},
    {0x002E, "Dynamic SAP"},        {0x0047, "Print Server Acknowledge"},
    {0x004B, "Btrieve VAP5.0"},     {0x004C, "SAP VAP"},
    {0x007A, "TES-NetWare VMS"},    {0x0098, "NetWare Access Server"},
    {0x009A, "Named Pipe Server"},  {0x009E, "Portable NetWare"},
    {0x0107, "NetWare386"},         {0x0111, "Test Server "},
    {0x0166, "NetWare Management"}, {0x026A, "NetWare Management"},
    {0x026B, "Time Synchronous"},   {0x0278, "NetWare Directory Server"},
});
static_assert(kServerTypes.distinct());

void operation_line(Section& s, uint16_t operation) {
  switch (operation) {
    // Kept: request and reply of the general service are exchanged.
    case 1: s.line(at(0, 1), "[Packet Type] 0x0001 (General Service Reply)"); break;
    case 2: s.line(at(0, 1), "[Packet Type] 0x0002 (General Service Request)"); break;
    case 3: s.line(at(0, 1), "[Packet Type] 0x0003 (Nearest Service Request)"); break;
    case 4: s.line(at(0, 1), "[Packet Type] 0x0004 (Nearest Service Reply)"); break;
    default: s.value(at(0, 1), "[Packet Type] 0x%0.4X (Unknown)", operation); break;
  }
}

void entry_lines(Section& s, Bytes entry) {
  s.line(at(0, 1), "[Server Type] 0x%0.4X %s", entry.be16(0), parens(kServerTypes(entry.be16(0))));
  s.line(at(2, 49), "[Server Name] %s", entry.sub(2, 48));
  s.line(at(50, 53), "[Network] %0.2X%0.2X%0.2X%0.2X", entry.u8(50), entry.u8(51), entry.u8(52), entry.u8(53));
  s.line(at(54, 59), "[Node Address] %0.2X%0.2X%0.2X%0.2X%0.2X%0.2X", entry.u8(54), entry.u8(55), entry.u8(56),
         entry.u8(57), entry.u8(58), entry.u8(59));
  s.value(at(60, 61), "[Socket] 0x%0.4X", entry.be16(60));
  s.value(at(62, 63), "[Intermediate Network] %u", entry.be16(62));
}

}  // namespace

void SapAnalyze(LineList& list, Bytes data) {
  if (data.size() < static_cast<int32_t>(kOperationSize + kEntrySize)) return remainder(list, data);

  const uint32_t count = (static_cast<uint32_t>(data.size()) - kOperationSize) / kEntrySize;

  Section s(list, kLayer);
  s.title(at(0, kEntrySize * count + 1), "SAP Packet [Informations] %u", count);
  operation_line(s, data.be16(0));
  advance(kOperationSize);
  for (uint32_t i = 0; s && i < count; ++i) {
    if (count > 1) s.line(at(0, 63), "--- SAP Information %u -------------------", i + 1);
    entry_lines(s, data.from(kOperationSize + kEntrySize * i));
    advance(kEntrySize);
  }
}

}  // namespace wirelines
