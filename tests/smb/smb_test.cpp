#include "smb/smb.hpp"

#include <gtest/gtest.h>

#include <string>

#include "core/lines.hpp"
#include "smb/smb_names.hpp"
#include "smb/smb_rows.hpp"

namespace wirelines::test {

namespace {

const Case kHeaderRows[] = {
    {"a request with every flag", "FF'SMB' 71 02010000 7F FFFF 3412 00000000000000000000 0100 0200 0300 0400 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "59 0 0-31 7,2 |--- SMB Header [Command] 0x71 (TREE_DISCONNECT) [Status] OK ---------------|\n"
     "122 1 0-3 7,2 |[Protocol] 0xFF,'SMB'|\n"
     "122 1 4-4 7,2 |[Command] 0x71 (TREE_DISCONNECT)|\n"
     "122 1 5-8 7,2 |[Status] 0x0102|\n"
     "59 1 9-9 7,2 |[Flags] 0x7F|\n"
     "122 2 9-9 7,2 |    [bit7] 0 = Client request|\n"
     "122 2 9-9 7,2 |    [bit6] 1 = Server should notify the client on any action|\n"
     "122 2 9-9 7,2 |    [bit5] 1 = oplock on|\n"
     "122 2 9-9 7,2 |    [bit4] 1 = All paths are already canonicalized|\n"
     "122 2 9-9 7,2 |    [bit3] 1 = All pathnames must be treated as caseless|\n"
     "122 2 9-9 7,2 |    [bit2] - = Reserved|\n"
     "122 2 9-9 7,2 |    [bit1] 1 = Client guarantees that there is a receive buffer|\n"
     "122 2 9-9 7,2 |    [bit0] 1 = Server supports the sub dialect|\n"
     "59 1 10-11 7,2 |[Flags2] 0xFFFF|\n"
     "122 2 10-11 7,2 |    [bit15] 1 = STRING are encoded as UNICODE|\n"
     "122 2 10-11 7,2 |    [bit14] 1 = Error code is a 32 bit error code|\n"
     "122 2 10-11 7,2 |    [bit13] 1 = A read will be permitted|\n"
     "122 2 10-11 7,2 |    [bit12] 1 = Any pathnames should be resolved in the Distributed FS|\n"
     "122 2 10-11 7,2 |    [bit1]  1 = Client is aware of extended attributes|\n"
     "122 2 10-11 7,2 |    [bit0]  1 = Server may return long components|\n"
     "122 1 12-13 7,2 |[PID Extra] 0x1234|\n"
     "122 1 24-31 7,2 |[TID] 0x0001 [PID] 0x0002 [UID] 0x0003 [MID] 0x0004|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_TreeDisconnect (Client) -------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a request of an unknown command with no flag",
     "FF'SMB' FF 00000000 00 0000 0000 00000000000000000000 0100 0200 0300 0400 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "59 0 0-31 7,2 |--- SMB Header [Command] 0xFF  [Status] OK --------------------------------|\n"
     "122 1 0-3 7,2 |[Protocol] 0xFF,'SMB'|\n"
     "122 1 4-4 7,2 |[Command] 0xFF |\n"
     "122 1 5-8 7,2 |[Status] 0x0000 (OK)|\n"
     "59 1 9-9 7,2 |[Flags] 0x00|\n"
     "122 2 9-9 7,2 |    [bit7] 0 = Client request|\n"
     "122 2 9-9 7,2 |    [bit6] 0 = SV need only notify the client about another open req|\n"
     "122 2 9-9 7,2 |    [bit5] 0 = oplock off|\n"
     "122 2 9-9 7,2 |    [bit4] 0 = All paths are new|\n"
     "122 2 9-9 7,2 |    [bit3] 0 = The pathnames are case sensitive|\n"
     "122 2 9-9 7,2 |    [bit2] - = Reserved|\n"
     "122 2 9-9 7,2 |    [bit1] 0 = Client don't guarantees that there is a receive buffer|\n"
     "122 2 9-9 7,2 |    [bit0] 0 = Server don't supports the sub dialect|\n"
     "59 1 10-11 7,2 |[Flags2] 0x0000|\n"
     "122 2 10-11 7,2 |    [bit15] 0 = STRING are encoded as ASCII|\n"
     "122 2 10-11 7,2 |    [bit14] 0 = Error code is a DOS error code|\n"
     "122 2 10-11 7,2 |    [bit13] 0 = Read will not be permitted|\n"
     "122 2 10-11 7,2 |    [bit12] 0 = Any pathnames don't be resolved in the Distributed FS|\n"
     "122 2 10-11 7,2 |    [bit1]  0 = Client is not aware of extended attributes|\n"
     "122 2 10-11 7,2 |    [bit0]  0 = Server don't return long components|\n"
     "122 1 12-13 7,2 |[PID Extra] 0x0000|\n"
     "122 1 24-31 7,2 |[TID] 0x0001 [PID] 0x0002 [UID] 0x0003 [MID] 0x0004|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Unknown -----------------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},

    {"less than four bytes", "FF'SM'",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-2 1,10 |---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-2 1,10 |0000  FF 53 4D 20  0  0  0  0                            .SM|\n"},
};
LINE_CASES(SmbHeader, SmbAnalyze, kHeaderRows)

const Case kChainRows[] = {
    {"two blocks",
     REQUEST("2D") "0F 2E 00 4700 0000 0000 0000 0000 00000000 0100 00000000 00000000 00000000 0600 'A.TXT' 00 0A FF "
                   "00 0000 0000 00000000 0010 0000 00000000 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-70 3,2 |--- SMB_OpenAndX (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 15 (0x0F) word(s)|\n"
     "55 1 37-38 3,2 |[Flags] 0x0000|\n"
     "55 1 39-40 3,2 |[Desired Access] 0x0000|\n"
     "55 1 41-42 3,2 |[Search Attributes] 0x0000|\n"
     "55 1 43-44 3,2 |[File Attributes] 0x0000|\n"
     "118 1 45-48 3,2 |[Created] 01/01/1970 00:00:00|\n"
     "55 1 49-50 3,2 |[Open Function] 0x0001|\n"
     "118 1 51-54 3,2 |[Allocation Size] 0 (0x00000000) byte(s)|\n"
     "118 1 63-64 3,2 |[Byte Count] 6 (0x0006) byte(s)|\n"
     "118 1 65-70 3,2 |[File Name] A.TXT|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 71-93 3,2 |--- SMB_ReadAndX (Client) -------------------------------------------------|\n"
     "118 1 71-71 3,2 |[Word Count] 10 (0x0A) word(s)|\n"
     "118 1 76-77 3,2 |[File Handle] 0x0000|\n"
     "118 1 78-81 3,2 |[File Offset] 0 (0x00000000) byte(s)|\n"
     "118 1 82-83 3,2 |[Max Count] 4096 (0x1000) byte(s)|\n"
     "118 1 84-85 3,2 |[Min Count] 0 (0x0000) byte(s)|\n"
     "118 1 92-93 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"three blocks, the third counted from the second",
     REQUEST("74") "02 74 00 2700 0000 02 74 00 2700 0000 02 FF 00 0000 0000 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 39-45 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 39-39 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 44-45 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 46-52 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 46-46 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 51-52 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 53-53 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 53-53 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"a gap between the blocks", RESPONSE("74") "02 74 00 2800 0000 EE 02 FF 00 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Server) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 40-46 3,2 |--- SMB_LogOffAndX (Server) -----------------------------------------------|\n"
     "118 1 40-40 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 45-46 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"an unknown command at the end", REQUEST("74") "02 03 00 2700 0000 01 0100 0000 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 39-43 3,2 |--- SMB_Unknown -----------------------------------------------------------|\n"
     "118 1 39-39 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "55 1 40-41 3,2 |[Word Parameters]|\n"
     "118 2 40-41 3,2 |0x0001 |\n"
     "118 1 42-43 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a block of two bytes at the end", REQUEST("74") "02 2E 00 2700 0000 0AFF",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "118 1 39-40 3,2 |0000  0A FF 20  0  0  0  0  0                            ..|\n"},
    {"a chain that leads behind the frame", REQUEST("74") "02 2E 00 FFFF 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a chain that ends at a block too short", REQUEST("74") "02 2E 00 2700 0000 0A 74 00 2700",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 39-43 3,2 |--- SMB_ReadAndX (Client) -------------------------------------------------|\n"
     "118 1 39-43 3,2 |0000  0A 74 00 27 00 20  0  0                            .t.'.|\n"},
    {"a chain that ends at a command that has none", REQUEST("74") "02 71 00 2700 0000 02 7400 2700 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 39-45 3,2 |--- SMB_TreeDisconnect (Client) -------------------------------------------|\n"
     "118 1 39-39 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "55 1 40-43 3,2 |[Word Parameters]|\n"
     "118 2 40-43 3,2 |0x0074 0x0027 |\n"
     "118 1 44-45 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a chain that leads to itself", REQUEST("74") "02 74 00 2000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a chain that leads to the same place under another command", RESPONSE("24") "02 74 00 2000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LockingAndX (Server) ----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Server) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a chain that leads back and round", REQUEST("74") "02 74 00 2700 0000 02 74 00 1900 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 39-45 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 39-39 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 44-45 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a chain that leads back to its second block",
     REQUEST("74") "02 74 00 2700 0000 02 74 00 2700 0000 02 74 00 1900 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 39-45 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 39-39 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 44-45 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 46-52 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 46-46 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 51-52 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"a chain that leads back into the header", REQUEST("74") "02 74 00 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 0-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 0-0 3,2 |[Word Count] 255 (0xFF) word(s)|\n"
     "118 1 5-6 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
};
COMMAND_CASES(SmbChain, SmbAnalyze, kChainRows)

// A message behind 16 bytes of other headers.
void behind_16_bytes(LineList& list, Bytes frame) {
  advance(16);
  SmbAnalyze(list, frame.from(16));
}

const Case kChainsBackward[] = {
    {"a chain that leads in front of the header",
     "02FF0000000000 0000000000000000 00 FF'SMB' 74 00000000 18 0100 0000 02 74 00 0200 0000 00 0000 0100 0200 0300 "
     "0400 02 74 00 0E00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 48-54 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 48-48 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 53-54 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 30-36 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 30-30 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 0-6 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 0-0 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 5-6 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 7-54 1,10 |---[Data] 48 (0x0030) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 7-22 1,10 |0000  00 00 00 00 00 00 00 00 - 00 FF 53 4D 42 74 00 00  ..........SMBt..|\n"
     "63 1 23-38 1,10 |0010  00 00 18 01 00 00 00 02 - 74 00 02 00 00 00 00 00  ........t.......|\n"
     "63 1 39-54 1,10 |0020  00 01 00 02 00 03 00 04 - 00 02 74 00 0E 00 00 00  ..........t.....|\n"},
    {"a chain that leads in front of the frame",
     "02FF0000000000 0000000000000000 00 FF'SMB' 74 00000000 18 0100 0000 02 74 00 0100 0000 00 0000 0100 0200 0300 "
     "0400 02 74 00 0E00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 48-54 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 48-48 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 53-54 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "55 0 30-36 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 30-30 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
};
COMMAND_CASES(SmbChainBackward, behind_16_bytes, kChainsBackward)

std::string line_text(const LineList& list, uint32_t index) {
  return static_cast<const DisplayLine*>(list.data[index])->text;
}

TEST(Smb, StatusDecidesWhetherTheBlockIsDecoded) {
  const auto echo = [](const char* status, const char* flags, const char* flags2) {
    return std::string("FF'SMB' 2B ") + status + flags + flags2 +
           "0000 0000000000000000 0000 0000000000000000 01 0100 0000";
  };
  struct {
    const char* status;
    const char* flags;
    const char* flags2;
    const char* result;
    const char* line;
    const char* next;
    bool decoded;
  } const kCases[] = {
      {"00000000", "00", "0000", "OK", "[Status] 0x0000 (OK)", "[Flags] 0x00", true},
      {"020100C0", "00", "0040", "OK", "[Status] 0xC0000102", "[Flags] 0x00", true},
      {"00000000", "80", "0040", "OK", "[32 bit error code] 0x00000000 (OK)", "[Flags] 0x80", true},
      {"05000080", "80", "0040", "OK", "[32 bit error code] 0x80000005 (UnKnown Error)", "[Flags] 0x80", true},
      {"220000C0", "80", "0040", "NG", "[32 bit error code] 0xC0000022 (ACCESS_DENIED)", "[Flags] 0x80", false},
      {"00000000", "80", "0000", "OK", "[Error Class] 0x00 (No Error)", "[Error Code] 0x0000", true},
      {"00000500", "80", "0000", "NG", "[Error Class] 0x00 (No Error)", "[Error Code] 0x0005", false},
      {"01000200", "80", "0000", "NG", "[Error Class] 0x01 (DOS Based Error)", "[Error Code] 0x0002 (File Not Found)",
       false},
      {"01009999", "80", "0000", "NG", "[Error Class] 0x01 (DOS Based Error)", "[Error Code] 0x9999 (Unknown)", false},
      {"01000000", "80", "0000", "NG", "[Error Class] 0x01 (DOS Based Error)", "[Error Code] 0x0000 ", false},
      {"02000200", "80", "0000", "NG", "[Error Class] 0x02 (Server Error)", "[Error Code] 0x0002 (Bad password)",
       false},
      {"02009999", "80", "0000", "NG", "[Error Class] 0x02 (Server Error)", "[Error Code] 0x9999 (Unknown)", false},
      {"03002700", "80", "0000", "NG", "[Error Class] 0x03 (Hardware Style Error)", "[Error Code] 0x0027 (Disk Full)",
       false},
      {"03009999", "80", "0000", "NG", "[Error Class] 0x03 (Hardware Style Error)", "[Error Code] 0x9999 ", false},
      {"04000200", "80", "0000", "NG", "[Error Class] 0x04 (Not an SMB Format Command)", "[Error Code] 0x0002", false},
      {"00010000", "80", "0000", "NG", "[Error Class] 0x00 (No Error)", "[Error Code] 0x0000", false},
  };
  for (const auto& c : kCases) {
    const auto bytes = bytes_of(echo(c.status, c.flags, c.flags2));
    LineList list{};
    state().reset(WIRELINES_ASCII);
    SmbAnalyze(list, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    EXPECT_NE(line_text(list, 1).find(std::string("[Status] ") + c.result + " -"), std::string::npos) << c.line;
    EXPECT_EQ(line_text(list, 4), c.line);
    EXPECT_EQ(line_text(list, 5), c.next) << c.line;
    EXPECT_EQ(line_text(list, state().topLineIndex).find("--- SMB_Echo") != std::string::npos, c.decoded) << c.line;
    DelDspBuffer(&list);
  }
}

TEST(Smb, ResultLineIsTheFirstDecodedBlock) {
  const struct {
    const char* message;
    const char* title;
  } kCases[] = {
      {REQUEST("74") "02 74 00 2700 0000 02 FF 00 0000 0000", "--- SMB_LogOffAndX (Client) "},
      {REQUEST("03") "00 0000", "--- SMB Header [Command] 0x03 (CREATE) "},
      {REQUEST("A4") "00 0000", "--- SMB_NtCancel (Client) "},
      {RESPONSE("A4") "00 0000", "--- SMB_Unknown "},
      {REQUEST("74") "0200", "--- SMB Header "},
      {REQUEST("74") "02 FF", "--- SMB Header "},
      {REQUEST("74") "", "--- SMB Header "},
      {REQUEST("74") "020000", "--- SMB_LogOffAndX (Client) "},
      {REQUEST("74") "02 03 00 2700 0000 00 0000", "--- SMB_LogOffAndX (Client) "},
  };
  for (const auto& c : kCases) {
    const auto bytes = bytes_of(c.message);
    LineList list{};
    state().reset(WIRELINES_ASCII);
    SmbAnalyze(list, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
    EXPECT_EQ(line_text(list, state().topLineIndex).rfind(c.title, 0), 0U)
        << line_text(list, state().topLineIndex) << "\n"
        << c.message;
    DelDspBuffer(&list);
  }
}

// A length that a lower layer handed on ends the message; what was captured behind it is read, not shown.
TEST(Smb, EndsWhereTheLayerBelowSays) {
  const auto bytes = bytes_of(REQUEST("0B") "05 0100 0200 00000000 0200 0500 01 0200 AABB EE");
  const auto decode = [](LineList& list, Bytes data) { SmbAnalyze(list, data.first(32 + 17)); };
  const auto lines = decode_and_dump(decode, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  EXPECT_NE(lines.find("[Data Length] 2 (0x0002)"), std::string::npos);
  EXPECT_NE(lines.find("0 0 48-48 1,10 |---[Data] 1 (0x0001) byte(s)"), std::string::npos);
  EXPECT_EQ(lines.find("BB"), std::string::npos);
}

TEST(Smb, NtStatusNamesErrorsAlone) {
  const struct {
    uint32_t first;
    uint32_t last;
  } kNamed[] = {{0xC0000001, 0xC0000035}, {0xC0000037, 0xC000016E}, {0xC0000172, 0xC0000178}, {0xC000017A, 0xC000019C},
                {0xC0000202, 0xC0000249}, {0xC0000250, 0xC000025C}, {0xC000025E, 0xC0000270}, {0xC0009898, 0xC0009898}};
  uint32_t count = 0;
  for (const auto& range : kNamed) {
    EXPECT_EQ(smb::NtStatusToName(range.first - 1), "UnKnown Error");
    EXPECT_EQ(smb::NtStatusToName(range.last + 1), "UnKnown Error");
    for (uint32_t status = range.first; status <= range.last; ++status, ++count) {
      EXPECT_NE(smb::NtStatusToName(status), "UnKnown Error") << status;
    }
  }
  EXPECT_EQ(count, 512U);
  EXPECT_EQ(smb::NtStatusToName(0), "OK");
  EXPECT_EQ(smb::NtStatusToName(0xC0000001), "UNSUCCESSFUL");
  EXPECT_EQ(smb::NtStatusToName(0xC000026E), "VOLUME_DISMOUNTED");
  EXPECT_EQ(smb::NtStatusToName(0xC0009898), "WOW_ASSERTION");
}

}  // namespace

}  // namespace wirelines::test
