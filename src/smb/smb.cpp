// SMB, the file sharing protocol of LAN Manager and Windows: a 32-byte header, then a command block, and further blocks
// where a command that can be chained (AndX) says so.
#include "smb/smb.hpp"

#include "core/datablock.hpp"
#include "smb/smb_commands.hpp"
#include "smb/smb_names.hpp"
#include "smb/smb_printers.hpp"

namespace wirelines {

namespace smb {

namespace {

constexpr Layer kHeader = layer(59, 7, 2);

constexpr uint8_t kResponse = 0x80;     // of flags
constexpr uint16_t kStatus32 = 0x4000;  // of flags2

constexpr uint8_t kNoAndX = 0xFF;

constexpr BitTextRow kFlags[] = {
    {7, "[bit7] 1 = Server response", "[bit7] 0 = Client request"},
    {6, "[bit6] 1 = Server should notify the client on any action",
     "[bit6] 0 = SV need only notify the client about another open req"},
    {5, "[bit5] 1 = oplock on", "[bit5] 0 = oplock off"},
    {4, "[bit4] 1 = All paths are already canonicalized", "[bit4] 0 = All paths are new"},
    {3, "[bit3] 1 = All pathnames must be treated as caseless", "[bit3] 0 = The pathnames are case sensitive"},
    {2, "[bit2] - = Reserved", "[bit2] - = Reserved"},
    {1, "[bit1] 1 = Client guarantees that there is a receive buffer",
     "[bit1] 0 = Client don't guarantees that there is a receive buffer"},
    {0, "[bit0] 1 = Server supports the sub dialect", "[bit0] 0 = Server don't supports the sub dialect"},
};

constexpr BitTextRow kFlags2[] = {
    {15, "[bit15] 1 = STRING are encoded as UNICODE", "[bit15] 0 = STRING are encoded as ASCII"},
    {14, "[bit14] 1 = Error code is a 32 bit error code", "[bit14] 0 = Error code is a DOS error code"},
    {13, "[bit13] 1 = A read will be permitted", "[bit13] 0 = Read will not be permitted"},
    {12, "[bit12] 1 = Any pathnames should be resolved in the Distributed FS",
     "[bit12] 0 = Any pathnames don't be resolved in the Distributed FS"},
    {1, "[bit1]  1 = Client is aware of extended attributes", "[bit1]  0 = Client is not aware of extended attributes"},
    {0, "[bit0]  1 = Server may return long components", "[bit0]  0 = Server don't return long components"},
};

bool is_response(Bytes header) {
  return (header.u8(9) & kResponse) != 0;
}

bool has_nt_status(Bytes header) {
  return (header.le16(10) & kStatus32) != 0;
}

// A response that says why there is nothing else to say. An NT status is an error from 0xC0000000 on, a DOS status when
// any of its bytes is set.
bool failed(Bytes header) {
  const uint32_t status = header.le32(5);
  return is_response(header) && (has_nt_status(header) ? status >= 0xC0000000 : status != 0);
}

void DspNtStatus(Section& s, Range range, uint32_t status) {
  s.line(range, "[32 bit error code] 0x%0.8X (%s)", status, NtStatusToName(status));
}

void DspDosError(Section& s, Range range, uint8_t error_class, uint16_t code) {
  s.line(range, "[Error Class] 0x%0.2X %s", error_class, parens(SmbErrorClassToName(error_class)));
  switch (error_class) {
    case 1: s.line(range, "[Error Code] 0x%0.4X %s", code, parens(SmbDosErrorToName(code))); break;
    case 2: s.line(range, "[Error Code] 0x%0.4X %s", code, parens(SmbServerErrorToName(code))); break;
    case 3: s.line(range, "[Error Code] 0x%0.4X %s", code, parens(SmbHardwareErrorToName(code))); break;
    default: s.line(range, "[Error Code] 0x%0.4X", code); break;
  }
}

void status_lines(Section& s, Bytes header) {
  constexpr Range kStatus = at(5, 8);
  const uint32_t status = header.le32(5);
  if (!is_response(header)) {
    if (status == 0) return s.line(kStatus, "[Status] 0x0000 (OK)");
    s.line(kStatus, "[Status] 0x%0.4X", status);
  } else if (has_nt_status(header)) {
    DspNtStatus(s, kStatus, status);
  } else {
    DspDosError(s, kStatus, header.u8(5), header.le16(7));
  }
}

void DspSmbFlags(Section& s, Range range, uint8_t flags) {
  s.heading(range, "[Flags] 0x%0.2X", flags);
  bit_lines(s, range, kFlags, flags);
}

void DspSmbFlags2(Section& s, Range range, uint16_t flags2) {
  s.heading(range, "[Flags2] 0x%0.4X", flags2);
  bit_lines(s, range, kFlags2, flags2);
}

bool header_lines(LineList& list, Bytes header) {
  const uint8_t command = header.u8(4);
  const Parens name = parens(SmbCommandToName(command));

  Section s(list, kHeader);
  s.title(at(0, kHeaderSize - 1), "SMB Header [Command] 0x%0.2X %s [Status] %s", command, name,
          failed(header) ? "NG" : "OK");
  s.line(at(0, 3), "[Protocol] 0xFF,'SMB'");
  s.line(at(4), "[Command] 0x%0.2X %s", command, name);
  status_lines(s, header);
  DspSmbFlags(s, at(9), header.u8(9));
  DspSmbFlags2(s, at(10, 11), header.le16(10));
  s.line(at(12, 13), "[PID Extra] 0x%0.4X", header.le16(12));
  s.line(at(24, 31), "[TID] 0x%0.4X [PID] 0x%0.4X [UID] 0x%0.4X [MID] 0x%0.4X", header.le16(24), header.le16(26),
         header.le16(28), header.le16(30));
  return static_cast<bool>(s);
}

// ---- Command blocks ----

struct Member {
  std::string_view title;
  void (*decode)(Fields&);
};

struct Command {
  uint8_t code;
  bool andx;  // begins with the place of a next block
  Member client;
  Member server;
};

constexpr bool kAndX = true;
constexpr bool kAlone = false;

constexpr Member kUnknown = {"SMB_Unknown", UnknownAnalyze};

// The one place where a command is registered.
// clang-format off
constexpr Command kCommands[] = {
    {0x00, kAlone, {"SMB_CreateDirectory (Client)", DirectoryClientAnalyze},
                   {"SMB_CreateDirectory (Server)", EmptyAnalyze}},
    {0x01, kAlone, {"SMB_DeleteDirectory (Client)", DirectoryClientAnalyze},
                   {"SMB_DeleteDirectory (Server)", EmptyAnalyze}},
    {0x02, kAlone, {"SMB_Open (Client)", OpenClientAnalyze},
                   {"SMB_Open (Server)", OpenServerAnalyze}},
    {0x04, kAlone, {"SMB_Close (Client)", CloseClientAnalyze},
                   {"SMB_Close (Server)", EmptyAnalyze}},
    {0x05, kAlone, {"SMB_Flush (Client)", HandleClientAnalyze},
                   {"SMB_Flush (Server)", EmptyAnalyze}},
    {0x06, kAlone, {"SMB_Delete (Client)", DeleteClientAnalyze},
                   {"SMB_Delete (Server)", EmptyAnalyze}},
    {0x07, kAlone, {"SMB_Rename (Client)", RenameClientAnalyze},
                   {"SMB_Rename (Server)", EmptyAnalyze}},
    // Kept: "Infomation".
    {0x08, kAlone, {"SMB_QueryInfomation (Client)", QueryInformationClientAnalyze},
                   {"SMB_QueryInfomation (Server)", QueryInformationServerAnalyze}},
    {0x0A, kAlone, {"SMB_Read (Client)", ReadClientAnalyze},
                   {"SMB_Read (Server)", ReadServerAnalyze}},
    {0x0B, kAlone, {"SMB_Write (Client)", WriteClientAnalyze},
                   {"SMB_Write (Server)", WriteServerAnalyze}},
    {0x10, kAlone, {"SMB_CheckDirectory (Client)", DirectoryClientAnalyze},
                   {"SMB_CheckDirectory (Server)", EmptyAnalyze}},
    {0x12, kAlone, {"SMB_Seek (Client)", SeekClientAnalyze},
                   {"SMB_Seek (Server)", SeekServerAnalyze}},
    {0x1A, kAlone, {"SMB_ReadRaw", ReadRawAnalyze},
                   {"SMB_ReadRaw", ReadRawAnalyze}},
    {0x1D, kAlone, {"SMB_WriteRaw (Client)", WriteRawClientAnalyze},
                   {"SMB_WriteRaw (Server)", WriteRawServerAnalyze}},
    {0x23, kAlone, {"SMB_QueryInformation2 (Client)", HandleClientAnalyze},
                   {"SMB_QueryInformation2 (Server)", QueryInformation2ServerAnalyze}},
    {0x24, kAndX, {"SMB_LockingAndX (Client)", LockingClientAnalyze},
                  {"SMB_LockingAndX (Server)", LockingServerAnalyze}},
    // Kept: a Transaction has no title of its own for the client.
    {0x25, kAlone, {"SMB_Transaction (Server)", TransactionClientAnalyze},
                   {"SMB_Transaction (Server)", TransactionServerAnalyze}},
    {0x27, kAlone, {"SMB_IoCtl (Client)", IoCtlClientAnalyze},
                   {"SMB_IoCtl (Server)", GenericAnalyze}},
    {0x2B, kAlone, {"SMB_Echo (Client)", EchoClientAnalyze},
                   {"SMB_Echo (Server)", EchoServerAnalyze}},
    {0x2D, kAndX, {"SMB_OpenAndX (Client)", OpenAndXClientAnalyze},
                  {"SMB_OpenAndX (Server)", OpenAndXServerAnalyze}},
    {0x2E, kAndX, {"SMB_ReadAndX (Client)", ReadAndXClientAnalyze},
                  {"SMB_ReadAndX (Server)", ReadAndXServerAnalyze}},
    {0x2F, kAndX, {"SMB_WriteAndX (Client)", WriteAndXClientAnalyze},
                  {"SMB_WriteAndX (Server)", WriteAndXServerAnalyze}},
    {0x32, kAlone, {"SMB_Transaction2 (Client)", Transaction2ClientAnalyze},
                   {"SMB_Transaction2 (Server)", TransactionServerAnalyze}},
    {0x34, kAlone, {"SMB_FindClose2 (Client)", FindCloseClientAnalyze},
                   {"SMB_FindClose2 (Server)", EmptyAnalyze}},
    {0x71, kAlone, {"SMB_TreeDisconnect (Client)", GenericAnalyze},
                   {"SMB_TreeDisconnect (Server)", GenericAnalyze}},
    {0x72, kAlone, {"SMB_Negotiate (Client)", NegotiateClientAnalyze},
                   {"SMB_Negotiate (Server)", NegotiateServerAnalyze}},
    {0x73, kAndX, {"SMB_SessionSetupAndX (Client)", SessionSetupClientAnalyze},
                  {"SMB_SessionSetupAndX (Server)", SessionSetupServerAnalyze}},
    {0x74, kAndX, {"SMB_LogOffAndX (Client)", LogOffAnalyze},
                  {"SMB_LogOffAndX (Server)", LogOffAnalyze}},
    {0x75, kAndX, {"SMB_TreeConnectAndX (Client)", TreeConnectClientAnalyze},
                  {"SMB_TreeConnectAndX (Server)", TreeConnectServerAnalyze}},
    {0xA0, kAlone, {"SMB_NtTransaction (Client)", NtTransactionClientAnalyze},
                   {"SMB_NtTransaction (Server)", NtTransactionServerAnalyze}},
    {0xA2, kAndX, {"SMB_NtCreateAndX (Client)", NtCreateClientAnalyze},
                  {"SMB_NtCreateAndX (Server)", NtCreateServerAnalyze}},
    // A server sends none; its block is unknown, but marks the result line.
    {0xA4, kAlone, {"SMB_NtCancel (Client)", EmptyAnalyze},
                   kUnknown},
    {0xD0, kAlone, {"SMB_SmbSendSingleBlockMessage (Client)", SendMessageAnalyze},
                   {"SMB_SmbSendSingleBlockMessage (Client)", SendMessageAnalyze}},
};
// clang-format on

// A block of a chain.
struct Link {
  Bytes block;
  uint8_t command = 0;

  // The same place under the same command.
  bool operator==(const Link& other) const {
    return block.before() == other.block.before() && command == other.command;
  }
};

// Where a chained block leads: to a place counted from the header, applied as if the block followed the header
// directly. False at the end of the chain, and when the place lies in front of the frame.
bool next_link(Link& link) {
  const uint8_t command = link.block.u8(1);
  const uint32_t offset = link.block.le16(3);
  if (command == kNoAndX || kHeaderSize > offset + link.block.before()) return false;
  link.block = offset < kHeaderSize ? link.block.back(kHeaderSize - offset) : link.block.from(offset - kHeaderSize);
  link.command = command;
  return true;
}

// How many blocks a chain has before it comes to one of them again. Where it goes on depends on a block's place alone,
// so that a chain that leads back would go round for ever. Brent's way of finding a cycle: it takes no memory, and no
// more steps than a few times the blocks.
uint32_t distinct_blocks(const Link& first) {
  Link slow = first;
  Link fast = first;
  uint32_t round = 0;
  for (uint32_t limit = 1;; ++round) {
    if (round == limit) {
      slow = fast;
      limit *= 2;
      round = 0;
    }
    if (!next_link(fast)) return UINT32_MAX;
    if (fast == slow) break;
  }
  ++round;

  slow = fast = first;
  for (uint32_t i = 0; i < round; ++i) next_link(fast);
  uint32_t lead = 0;
  for (; !(slow == fast); ++lead) {
    next_link(slow);
    next_link(fast);
  }
  return lead + round;
}

// Shows one block. True when the chain goes on behind it.
bool SmbCommandDispatch(LineList& list, Bytes header, const Link& link) {
  const Command* command = nullptr;
  for (const Command& row : kCommands) {
    if (row.code == link.command) command = &row;
  }
  const bool known = command != nullptr;
  const Member& member = !known ? kUnknown : is_response(header) ? command->server : command->client;
  const bool whole = link.block.size() >= 3;

  // The first block marks the result line; a block that cannot be decoded leaves it at the enclosing layer.
  const bool marks = state().andxDepth == 0 && known && whole;
  ++state().andxDepth;
  Section s(list, kCommand, marks ? Section::Mark::kResult : Section::Mark::kNoResult);
  if (!whole) {
    hex_dump(list, link.block, s.field(at(0, static_cast<uint32_t>(link.block.size()) - 1)));
    return false;
  }

  Fields f(s, header, link.block, member.title);
  member.decode(f);
  if (!s || f.too_short()) return false;
  if (known && command->andx && link.block.u8(1) != kNoAndX) return true;
  const uint32_t end = known && command->andx ? f.length() : f.offset();
  advance(end);
  remainder(list, link.block.from(end));
  return false;
}

}  // namespace

void UnknownAnalyze(Fields& f) {
  f.begin(3);
  DspSmbParameters(f);
  f.seek(static_cast<uint32_t>(f.size()));
}

void GenericAnalyze(Fields& f) {
  f.begin(3);
  DspSmbParameters(f);
}

void EmptyAnalyze(Fields& f) {
  if (!f.begin(3)) return;
  DspByteCount(f);
}

}  // namespace smb

void SmbAnalyze(LineList& list, Bytes data) {
  using namespace smb;
  if (data.size() < 4) return remainder(list, data);
  if (!header_lines(list, data)) return;

  advance(kHeaderSize);
  const Link first = {data.from(kHeaderSize), data.u8(4)};
  if (failed(data)) return remainder(list, first.block);

  state().andxDepth = 0;
  uint32_t most_blocks = 1;
  for (Link link = first; link.block.size() > 0 && SmbCommandDispatch(list, data, link);) {
    if (state().andxDepth == 1) most_blocks = distinct_blocks(first);
    const uint32_t before = link.block.before();
    if (state().andxDepth == most_blocks || !next_link(link)) return;
    advance(link.block.before() - before);
  }
}

}  // namespace wirelines
