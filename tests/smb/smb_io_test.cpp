#include "smb/smb_rows.hpp"

namespace wirelines::test {

namespace {

const Case kIoRows[] = {
    {"Read request", REQUEST("0A") "05 0100 0010 00020000 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-44 3,2 |--- SMB_Read (Client) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 5 (0x05) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Read Count] 4096 (0x1000) byte(s)|\n"
     "118 1 37-40 3,2 |[File Offset] 512 (0x00000200) byte(s)|\n"
     "118 1 41-42 3,2 |[Remaining] 0 (0x0000) byte(s)|\n"
     "118 1 43-44 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Read response", RESPONSE("0A") "05 0300 0000000000000000 0600 01 0300 AABBCC",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-50 3,2 |--- SMB_Read (Server) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 5 (0x05) word(s)|\n"
     "118 1 33-34 3,2 |[Read Count] 3 (0x0003) byte(s)|\n"
     "118 1 43-44 3,2 |[Byte Count] 6 (0x0006) byte(s)|\n"
     "118 1 45-45 3,2 |[Buffer Format] 1 (Data block)|\n"
     "118 1 46-47 3,2 |[Data Length] 3 (0x0003) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-50 1,10 |---[Data] 3 (0x0003) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-50 1,10 |0000  AA BB CC 20  0  0  0  0                            ...|\n"},
    {"Read response that ends at its buffer format", RESPONSE("0A") "05 0300 0000000000000000 0600 01",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-45 3,2 |--- SMB_Read (Server) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 5 (0x05) word(s)|\n"
     "118 1 33-34 3,2 |[Read Count] 3 (0x0003) byte(s)|\n"
     "118 1 43-44 3,2 |[Byte Count] 6 (0x0006) byte(s)|\n"
     "118 1 45-45 3,2 |[Buffer Format] 1 (Data block)|\n"},
    {"Write request", REQUEST("0B") "05 0100 0200 00000000 0200 0500 01 0200 AABB EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-49 3,2 |--- SMB_Write (Client) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 5 (0x05) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Write Count] 2 (0x0002) byte(s)|\n"
     "118 1 37-40 3,2 |[File Offset] 0 (0x00000000) byte(s)|\n"
     "118 1 41-42 3,2 |[Remaining] 2 (0x0002) byte(s)|\n"
     "118 1 43-44 3,2 |[Byte Count] 5 (0x0005) byte(s)|\n"
     "118 1 45-45 3,2 |[Buffer Format] 1 (Data block)|\n"
     "118 1 46-47 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-49 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-49 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 50-50 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 50-50 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"Write response", RESPONSE("0B") "01 0200 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_Write (Server) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[Write Count] 2 (0x0002) byte(s)|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Seek request", REQUEST("12") "04 0100 0100 00010000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-42 3,2 |--- SMB_Seek (Client) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 4 (0x04) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Mode] 1 (Current)|\n"
     "118 1 37-40 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 41-42 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Seek response", RESPONSE("12") "02 00010000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_Seek (Server) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 33-36 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"ReadRaw request", REQUEST("1A") "08 0100 00010000 0010 0000 FFFFFFFF 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-50 3,2 |--- SMB_ReadRaw -----------------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 8 (0x08) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-38 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Count] 4096 (0x1000) byte(s)|\n"
     "118 1 41-42 3,2 |[Min Count] 0 (0x0000) byte(s)|\n"
     "118 1 43-46 3,2 |[Timeout] 0xFFFFFFFF (Forever)|\n"
     "118 1 49-50 3,2 |[Byte Count] 0 byte(s)|\n"},
    {"ReadRaw response with the high offset", RESPONSE("1A") "0A 0100 00010000 0010 0000 E8030000 0000 01000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-54 3,2 |--- SMB_ReadRaw -----------------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 10 (0x0A) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-38 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Count] 4096 (0x1000) byte(s)|\n"
     "118 1 41-42 3,2 |[Min Count] 0 (0x0000) byte(s)|\n"
     "118 1 43-46 3,2 |[Timeout] 1000 (0x000003E8) msec|\n"
     "118 1 49-52 3,2 |[32bits Offset High] 0x00000001|\n"
     "118 1 53-54 3,2 |[Byte Count] 0 byte(s)|\n"},
    {"ReadRaw request with the high offset, a byte too short",
     REQUEST("1A") "0A 0100 00010000 0010 0000 E8030000 0000 01000000 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-53 3,2 |--- SMB_ReadRaw -----------------------------------------------------------|\n"
     "118 1 32-47 3,2 |0000  0A 01 00 00 01 00 00 00 - 10 00 00 E8 03 00 00 00  ................|\n"
     "118 1 48-53 3,2 |0010  00 01 00 00 00 00 20  0                            ......|\n"},
    {"WriteRaw request", REQUEST("1D") "0C 0100 0002 0000 00010000 E8030000 0300 00000000 0200 3C00 0300 EE AABB DD",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-61 3,2 |--- SMB_WriteRaw (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Write Count] 512 (0x0200) byte(s)|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 43-46 3,2 |[Timeout] 1000 (0x000003E8) msec|\n"
     "55 1 47-48 3,2 |[Write Mode] 0x0003|\n"
     "118 2 47-48 3,2 |    [bit1] pipe/dev = 1|\n"
     "118 2 47-48 3,2 |    [bit0] complete write to disk and send response = 1|\n"
     "118 1 53-54 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 55-56 3,2 |[Data Offset] 60 (0x003C) byte(s)|\n"
     "118 1 57-58 3,2 |[Byte Count] 3 (0x0003) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 60-61 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 60-61 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 62-62 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 62-62 1,10 |0000  DD 20  0  0  0  0  0  0                            .|\n"},
    {"WriteRaw request with the high offset",
     REQUEST("1D") "0E 0100 0002 0000 00010000 E8030000 0300 00000000 0200 0000 01000000 0200 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-64 3,2 |--- SMB_WriteRaw (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 14 (0x0E) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Write Count] 512 (0x0200) byte(s)|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 43-46 3,2 |[Timeout] 1000 (0x000003E8) msec|\n"
     "55 1 47-48 3,2 |[Write Mode] 0x0003|\n"
     "118 1 53-54 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 55-56 3,2 |[Data Offset] 0 (0x0000) byte(s)|\n"
     "118 1 61-62 3,2 |[Byte Count] 2 (0x0002) byte(s)|\n"
     "118 1 57-60 3,2 |[32bits Offset High] 0x00000001|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 63-64 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 63-64 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"WriteRaw request without data in the frame",
     REQUEST("1D") "0C 0100 0002 0000 00010000 E8030000 0300 00000000 0200 FF00 0300 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-59 3,2 |--- SMB_WriteRaw (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Write Count] 512 (0x0200) byte(s)|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 43-46 3,2 |[Timeout] 1000 (0x000003E8) msec|\n"
     "55 1 47-48 3,2 |[Write Mode] 0x0003|\n"
     "118 1 53-54 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 55-56 3,2 |[Data Offset] 255 (0x00FF) byte(s)|\n"
     "118 1 57-58 3,2 |[Byte Count] 3 (0x0003) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 59-59 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 59-59 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"WriteRaw response", RESPONSE("1D") "01 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_WriteRaw (Server) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[Remaining] 0 (0x0000) byte(s)|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"LockingAndX request",
     REQUEST("24") "08 FF 00 0000 0100 01 00 E8030000 0100 0100 1400 D204 10000000 20000000 D304 30000000 40000000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-70 3,2 |--- SMB_LockingAndX (Client) ----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 8 (0x08) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-39 3,2 |[LockType] 0x01 (Shared Lock)|\n"
     "118 1 40-40 3,2 |[Oplock Level] 0|\n"
     "118 1 41-44 3,2 |[Timeout] 1000 (0x000003E8) msec|\n"
     "118 1 45-46 3,2 |[Number of Unlocks] 1 (0x01)|\n"
     "118 1 47-48 3,2 |[Number ofLocks] 1 (0x01)|\n"
     "118 1 49-50 3,2 |[Byte Count] 20 (0x0014) byte(s)|\n"
     "55 1 51-60 3,2 |[Unlocking Range Format - 0]|\n"
     "118 2 51-52 3,2 |[Pid] 0x4D2|\n"
     "118 2 53-56 3,2 |[Offset] 0x0010|\n"
     "118 2 57-60 3,2 |[Length] 0x0020|\n"
     "55 1 61-70 3,2 |[Locking Range Format - 0]|\n"
     "118 2 61-62 3,2 |[Pid] 0x4D3|\n"
     "118 2 63-66 3,2 |[Offset] 0x0030|\n"
     "118 2 67-70 3,2 |[Length] 0x0040|\n"},
    {"LockingAndX request of a large file",
     REQUEST("24") "08 FF 00 0000 0100 10 01 FFFFFFFF 0000 0200 2200 D204 0000 01000000 10000000 00000000 20000000 "
                   "D304 0000 01",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-75 3,2 |--- SMB_LockingAndX (Client) ----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 8 (0x08) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-39 3,2 |[LockType] 0x10 (Large Files)|\n"
     "118 1 40-40 3,2 |[Oplock Level] 1|\n"
     "118 1 41-44 3,2 |[Timeout] 0xFFFFFFFF (Forever)|\n"
     "118 1 45-46 3,2 |[Number of Unlocks] 0 (0x00)|\n"
     "118 1 47-48 3,2 |[Number ofLocks] 2 (0x02)|\n"
     "118 1 49-50 3,2 |[Byte Count] 34 (0x0022) byte(s)|\n"
     "55 1 51-70 3,2 |[LargeFile Locking Range Format - 0]|\n"
     "118 2 51-52 3,2 |[Pid] 0x4D2|\n"
     "118 2 55-58 3,2 |[OffsetHigh] 0x0001|\n"
     "118 2 59-62 3,2 |[OffsetLow] 0x0010|\n"
     "118 2 63-66 3,2 |[LengthHigh] 0x0000|\n"
     "118 2 67-70 3,2 |[LengthLow] 0x0020|\n"
     "55 1 71-90 3,2 |[LargeFile Locking Range Format - 1]|\n"
     "118 2 71-72 3,2 |[Pid] 0x4D3|\n"
     "118 2 75-78 3,2 |[OffsetHigh] 0x0001|\n"
     "118 2 79-82 3,2 |[OffsetLow] 0x0000|\n"
     "118 2 83-86 3,2 |[LengthHigh] 0x0000|\n"
     "118 2 87-90 3,2 |[LengthLow] 0x0000|\n"},
    {"LockingAndX response", RESPONSE("24") "02 FF 00 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LockingAndX (Server) ----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"IoCtl request", REQUEST("27") "0E 0100 5300 0200 0000 0000 2000 0010 E8030000 0000 0000 0000 0000 0000 0100 AA",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-63 3,2 |--- SMB_IoCtl (Client) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 14 (0x0E) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Device Category] 0x0053|\n"
     "118 1 37-38 3,2 |[Device Function] 0x0002|\n"
     "118 1 39-40 3,2 |[Total Parameter Count] 0 (0x0000) byte(s)|\n"
     "118 1 41-42 3,2 |[Total Data Count] 0 (0x0000) byte(s)|\n"
     "118 1 43-44 3,2 |[Max Parameter Count] 32 (0x0020) byte(s)|\n"
     "118 1 45-46 3,2 |[Max Data Count] 4096 (0x1000) byte(s)|\n"
     "118 1 47-50 3,2 |[Timeout] 1000 (0x000003E8) msec|\n"
     "118 1 61-62 3,2 |[Byte Count] 1 (0x0001) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 63-63 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 63-63 1,10 |0000  AA 20  0  0  0  0  0  0                            .|\n"},
    {"IoCtl response", RESPONSE("27") "00 0000 AA",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_IoCtl (Server) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 35-35 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 35-35 1,10 |0000  AA 20  0  0  0  0  0  0                            .|\n"},
    {"ReadAndX request", REQUEST("2E") "0A FF 00 0000 0100 00010000 0010 0000 FFFFFFFF 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-54 3,2 |--- SMB_ReadAndX (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 10 (0x0A) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 43-44 3,2 |[Max Count] 4096 (0x1000) byte(s)|\n"
     "118 1 45-46 3,2 |[Min Count] 0 (0x0000) byte(s)|\n"
     "118 1 53-54 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"ReadAndX request with the high offset",
     REQUEST("2E") "0C FF 00 0000 0100 00010000 0010 0000 FFFFFFFF 0000 01000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-58 3,2 |--- SMB_ReadAndX (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "118 1 43-44 3,2 |[Max Count] 4096 (0x1000) byte(s)|\n"
     "118 1 45-46 3,2 |[Min Count] 0 (0x0000) byte(s)|\n"
     "118 1 53-56 3,2 |[32bits Offset High] 0x00000001|\n"
     "118 1 57-58 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"ReadAndX response", RESPONSE("2E") "0C FF 00 0000 FFFF 0000 0000 0200 3C00 00000000000000000000 0300 EE AABB",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-61 3,2 |--- SMB_ReadAndX (Server) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 39-40 3,2 |[Data Compaction Mode] 0x0000|\n"
     "118 1 43-44 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 45-46 3,2 |[Data Offset] 60 (0x003C) byte(s)|\n"
     "118 1 57-58 3,2 |[Byte Count] 3 (0x0003) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 60-61 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 60-61 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"WriteAndX request", REQUEST("2F") "0C FF 00 0000 0100 00010000 00000000 0900 0200 0000 0200 3B00 0200 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-60 3,2 |--- SMB_WriteAndX (Client) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "55 1 47-48 3,2 |[Write Mode] 0x0009|\n"
     "118 2 47-48 3,2 |    [bit7] Connectionless = 0|\n"
     "118 2 47-48 3,2 |    [bit3] Message Start = 1|\n"
     "118 2 47-48 3,2 |    [bit2] Write Raw = 0|\n"
     "118 2 47-48 3,2 |    [bit1] Return Remaining = 0|\n"
     "118 2 47-48 3,2 |    [bit0] Write Through = 1|\n"
     "118 1 49-50 3,2 |[Remaining] 2 (0x0002) byte(s)|\n"
     "118 1 53-54 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 55-56 3,2 |[Data Offset] 59 (0x003B) byte(s)|\n"
     "118 1 57-58 3,2 |[Byte Count] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 59-60 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 59-60 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"WriteAndX request with the high offset",
     REQUEST("2F") "0E FF 00 0000 0100 00010000 00000000 0900 0200 0000 0200 4000 01000000 0300 EE AABB",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-65 3,2 |--- SMB_WriteAndX (Client) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 14 (0x0E) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "55 1 47-48 3,2 |[Write Mode] 0x0009|\n"
     "118 1 49-50 3,2 |[Remaining] 2 (0x0002) byte(s)|\n"
     "118 1 53-54 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 55-56 3,2 |[Data Offset] 64 (0x0040) byte(s)|\n"
     "118 1 57-60 3,2 |[32bits Offset High] 0x00000001|\n"
     "118 1 61-62 3,2 |[Byte Count] 3 (0x0003) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 64-65 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 64-65 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"WriteAndX request whose data begins in the words",
     REQUEST("2F") "0C FF 00 0000 0100 00010000 00000000 0900 0200 0000 0200 0000 0200 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-60 3,2 |--- SMB_WriteAndX (Client) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "118 1 39-42 3,2 |[File Offset] 256 (0x00000100) byte(s)|\n"
     "55 1 47-48 3,2 |[Write Mode] 0x0009|\n"
     "118 1 49-50 3,2 |[Remaining] 2 (0x0002) byte(s)|\n"
     "118 1 53-54 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "118 1 55-56 3,2 |[Data Offset] 0 (0x0000) byte(s)|\n"
     "118 1 57-58 3,2 |[Byte Count] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 59-60 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 59-60 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"WriteAndX response", RESPONSE("2F") "06 FF 00 0000 0200 0000 00000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-46 3,2 |--- SMB_WriteAndX (Server) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 6 (0x06) word(s)|\n"
     "118 1 37-38 3,2 |[Write Count] 2 (0x0002) byte(s)|\n"
     "118 1 45-46 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"SendSingleBlockMessage request", REQUEST("D0") "00 0F00 04 'ANN' 00 04 'BOB' 00 01 0200 'Hi'",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-49 3,2 |--- SMB_SmbSendSingleBlockMessage (Client) --------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 15 (0x000F) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 36-39 3,2 |[Originator Name] ANN|\n"
     "118 1 40-40 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 41-44 3,2 |[Destination Name] BOB|\n"
     "118 1 45-45 3,2 |[Buffer Format] 1 (Data block)|\n"
     "118 1 46-47 3,2 |[Data Length] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 48-49 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 48-49 1,10 |0000  48 69 20  0  0  0  0  0                            Hi|\n"},
    {"Kept: SendSingleBlockMessage response titled as a request", UTF16_RESPONSE("D0") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_SmbSendSingleBlockMessage (Client) --------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
};
COMMAND_CASES(SmbIo, SmbAnalyze, kIoRows)

}  // namespace

}  // namespace wirelines::test
