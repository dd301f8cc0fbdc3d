#include "smb/smb_rows.hpp"

namespace wirelines::test {

namespace {

const Case kSessionRows[] = {
    {"Negotiate request", REQUEST("72") "00 1B00 02 'PC NETWORK PROGRAM 1.0' 00 02 'X' 00 EEEE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-61 3,2 |--- SMB_Negotiate (Client) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 27 (0x001B) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 2 (Dialect)|\n"
     "118 1 36-58 3,2 |[Dialect Index 0] PC NETWORK PROGRAM 1.0|\n"
     "118 1 60-61 3,2 |[Dialect Index 1] X|\n"
     "118 1 63-63 3,2 |[Dialect Index 2] \\xEE|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 62-63 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 62-63 1,10 |0000  EE EE 20  0  0  0  0  0                            ..|\n"},
    {"Negotiate request with another buffer format", REQUEST("72") "00 0300 04 'A' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-37 3,2 |--- SMB_Negotiate (Client) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 3 (0x0003) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 4 (ASCII)|\n"},
    {"Negotiate request of 3 bytes", REQUEST("72") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Negotiate (Client) ------------------------------------------------|\n"
     "118 1 32-34 3,2 |0000  00 00 00 20  0  0  0  0                            ...|\n"},
    {"Negotiate request with 21 dialects",
     REQUEST("72") "00 2A00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 "
                   "02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' 00 02 'D' "
                   "00 02 'D' 00 02 'D' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-76 3,2 |--- SMB_Negotiate (Client) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 42 (0x002A) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 2 (Dialect)|\n"
     "118 1 36-37 3,2 |[Dialect Index 0] D|\n"
     "118 1 39-40 3,2 |[Dialect Index 1] D|\n"
     "118 1 42-43 3,2 |[Dialect Index 2] D|\n"
     "118 1 45-46 3,2 |[Dialect Index 3] D|\n"
     "118 1 48-49 3,2 |[Dialect Index 4] D|\n"
     "118 1 51-52 3,2 |[Dialect Index 5] D|\n"
     "118 1 54-55 3,2 |[Dialect Index 6] D|\n"
     "118 1 57-58 3,2 |[Dialect Index 7] D|\n"
     "118 1 60-61 3,2 |[Dialect Index 8] D|\n"
     "118 1 63-64 3,2 |[Dialect Index 9] D|\n"
     "118 1 66-67 3,2 |[Dialect Index 10] D|\n"
     "118 1 69-70 3,2 |[Dialect Index 11] D|\n"
     "118 1 72-73 3,2 |[Dialect Index 12] D|\n"
     "118 1 75-76 3,2 |[Dialect Index 13] D|\n"
     "118 1 78-79 3,2 |[Dialect Index 14] D|\n"
     "118 1 81-82 3,2 |[Dialect Index 15] D|\n"
     "118 1 84-85 3,2 |[Dialect Index 16] D|\n"
     "118 1 87-88 3,2 |[Dialect Index 17] D|\n"
     "118 1 90-91 3,2 |[Dialect Index 18] D|\n"
     "118 1 93-94 3,2 |[Dialect Index 19] D|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 77-97 1,10 |---[Data] 21 (0x0015) byte(s) -------------------------------- ASCII ------|\n"
     "63 1 77-92 1,10 |0000  02 44 00 02 44 00 02 44 - 00 02 44 00 02 44 00 02  .D..D..D..D..D..|\n"
     "63 1 93-97 1,10 |0010  44 00 02 44 00 20  0  0                            D..D.|\n"},
    {"Negotiate response of one word", RESPONSE("72") "01 FFFF 0000 'Z'",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_Negotiate (Server) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[Dairect Index] 65535 (0xFFFF)|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 37-37 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 37-37 1,10 |0000  5A 20  0  0  0  0  0  0                            Z|\n"},
    {"Kept: LAN Manager key at byte 35",
     RESPONSE("72") "0D 0200 0300 0040 3200 0100 0200 78563412 BD6D 9F27 C4FF 0800 0000 1100 010203040506 "
                    "1112131415161718 'WG' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-77 3,2 |--- SMB_Negotiate (Server) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 13 (0x0D) word(s)|\n"
     "118 1 33-34 3,2 |[Dairect Index] 2 (0x0002)|\n"
     "118 1 35-36 3,2 |[Security Mode] 0x03 [share=0/user=1] 1 [challeng/response authentication] 1|\n"
     "118 1 37-38 3,2 |[Max Buffer Size] 16384 (0x4000) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Mpx Count] 50|\n"
     "118 1 41-42 3,2 |[Max Nor Vcs] 1|\n"
     "118 1 43-44 3,2 |[Raw Mode] 0x0002 [Read Raw] 0 [Write Raw] 1|\n"
     "118 1 45-48 3,2 |[Session Key] 0x12345678|\n"
     "118 1 49-50 3,2 |[Serve Time] 13:45:58|\n"
     "118 1 51-52 3,2 |[Serve Date] 1999/12/31|\n"
     "118 1 53-54 3,2 |[Server Time Zone] 65476|\n"
     "118 1 55-56 3,2 |[Encryption Key Length] 8 byte(s)|\n"
     "118 1 59-60 3,2 |[Byte Count] 17 (0x0011) byte(s)|\n"
     "55 1 67-74 3,2 |[Encryption Key] 8 (0x0008) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 67-74 1,10 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 67-74 1,10 |0000  11 12 13 14 15 16 17 18 -                          ........|\n"
     "118 1 75-77 3,2 |[Domain Name] WG|\n"},
    {"Negotiate response of 13 words, a byte too short",
     RESPONSE("72") "0D 0200 0300 0040 3200 0100 0200 78563412 BD6D 9F27 C4FF 0000 0000 0600 010203040506",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-66 3,2 |--- SMB_Negotiate (Server) ------------------------------------------------|\n"
     "118 1 32-47 3,2 |0000  0D 02 00 03 00 00 40 32 - 00 01 00 02 00 78 56 34  ......@2.....xV4|\n"
     "118 1 48-63 3,2 |0010  12 BD 6D 9F 27 C4 FF 00 - 00 00 00 06 00 01 02 03  ..m.'...........|\n"
     "118 1 64-66 3,2 |0020  04 05 06 20  0  0  0  0                            ...|\n"},
    {"Negotiate response with a key and an unaligned UTF-16 domain",
     UTF16_RESPONSE("72") "11 0500 03 3200 0100 04110000 00000100 DB74F319 FDE30000 0005B57D968DC001 20FE 08 0E00 "
                          "1112131415161718 5700 4700 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-82 3,2 |--- SMB_Negotiate (Server) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 17 (0x11) word(s)|\n"
     "118 1 33-34 3,2 |[Dairect Index] 5 (0x0005)|\n"
     "55 1 35-35 3,2 |[Security Mode] 0x03|\n"
     "118 2 35-35 3,2 |    [bit1] 1 = encrypt passwords|\n"
     "118 2 35-35 3,2 |    [bit0] 1 = user|\n"
     "118 1 36-37 3,2 |[Max Mpx Count] 50|\n"
     "118 1 38-39 3,2 |[Max Nor Vcs] 1|\n"
     "118 1 40-43 3,2 |[Max Buffer Size] 4356 (0x00001104) byte(s)|\n"
     "118 1 44-47 3,2 |[Max Raw Size] 65536 (0x00010000) byte(s)|\n"
     "118 1 48-51 3,2 |[Session Key] 0x19F374DB|\n"
     "55 1 52-55 3,2 |[Capabilities] 0x0000E3FD|\n"
     "118 2 52-55 3,2 |    [bit31] CAP_EXTENDED_SECURITY = 0|\n"
     "118 2 52-55 3,2 |    [bit30] CAP_COMPRESSED_DATA = 0|\n"
     "118 2 52-55 3,2 |    [bit29] CAP_BULK_TRANSFER = 0|\n"
     "118 2 52-55 3,2 |    [bit14] CAP_LARGE_READX = 1|\n"
     "118 2 52-55 3,2 |    [bit12] CAP_DFS = 0|\n"
     "118 2 52-55 3,2 |    [bit9] CAP_NT_FIND = 1|\n"
     "118 2 52-55 3,2 |    [bit8] CAP_LOCK_AND_READ = 1|\n"
     "118 2 52-55 3,2 |    [bit7] CAP_LEVEL_2_COPLOCKS = 1|\n"
     "118 2 52-55 3,2 |    [bit6] CAP_STATUS32 = 1|\n"
     "118 2 52-55 3,2 |    [bit5] CAP_RPC_REMOTE_APIS = 1|\n"
     "118 2 52-55 3,2 |    [bit4] CAP_NT_SMBS = 1|\n"
     "118 2 52-55 3,2 |    [bit3] CAP_LARGE_FILES = 1|\n"
     "118 2 52-55 3,2 |    [bit2] CAP_UNICODE = 1|\n"
     "118 2 52-55 3,2 |    [bit1] CAP_MPX_MODE = 0|\n"
     "118 2 52-55 3,2 |    [bit0] CAP_RAW_MODE = 1|\n"
     "118 1 56-63 3,2 |[System Time] 02/03/2001 04:05:06|\n"
     "118 1 64-65 3,2 |[Server Time Zone] 65056 (0xFE20)|\n"
     "118 1 66-66 3,2 |[Encryption Key length] 8 byte(s)|\n"
     "118 1 67-68 3,2 |[Byte Count] 14 (0x000E) byte(s)|\n"
     "55 1 69-76 3,2 |[Encryption Key] 8 (0x0008) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 69-76 1,10 |---[Data] 8 (0x0008) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 69-76 1,10 |0000  11 12 13 14 15 16 17 18 -                          ........|\n"
     "118 1 77-82 3,2 |[Domain Name] WG|\n"},
    {"Negotiate response without a blob",
     UTF16_RESPONSE("72") "11 0500 00 3200 0100 04110000 00000100 DB74F319 00000080 00000000 67452301 20FE 00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-68 3,2 |--- SMB_Negotiate (Server) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 17 (0x11) word(s)|\n"
     "118 1 33-34 3,2 |[Dairect Index] 5 (0x0005)|\n"
     "55 1 35-35 3,2 |[Security Mode] 0x00|\n"
     "118 1 36-37 3,2 |[Max Mpx Count] 50|\n"
     "118 1 38-39 3,2 |[Max Nor Vcs] 1|\n"
     "118 1 40-43 3,2 |[Max Buffer Size] 4356 (0x00001104) byte(s)|\n"
     "118 1 44-47 3,2 |[Max Raw Size] 65536 (0x00010000) byte(s)|\n"
     "118 1 48-51 3,2 |[Session Key] 0x19F374DB|\n"
     "55 1 52-55 3,2 |[Capabilities] 0x80000000|\n"
     "118 1 56-63 3,2 |[System Time] 0x0123456700000000|\n"
     "118 1 64-65 3,2 |[Server Time Zone] 65056 (0xFE20)|\n"
     "118 1 66-66 3,2 |[Encryption Key length] 0 byte(s)|\n"
     "118 1 67-68 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "118 1 0-0 0,0 |[Security Blob] None|\n"},
    {"Negotiate response of no words", RESPONSE("72") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Negotiate (Server) ------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 33-34 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 33-34 1,10 |0000  00 00 20  0  0  0  0  0                            ..|\n"},
    {"SessionSetupAndX request with a blob",
     UTF16_REQUEST(
         "73") "0C FF 00 0000 0411 3200 0000 DB74F319 0400 00000000 D4020080 0F00 60480606 00 4F005300 0000 4C00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-73 3,2 |--- SMB_SessionSetupAndX (Client) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 37-38 3,2 |[Max Buffer Size] 4356 (0x1104) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Mpx Count] 50|\n"
     "118 1 41-42 3,2 |[Vc No] 0 (first)|\n"
     "118 1 43-46 3,2 |[Session Key] 0x19F374DB|\n"
     "118 1 47-47 3,2 |[Security Blob Length] 4 (0x0004) byte(s)|\n"
     "55 1 53-56 3,2 |[Capabilities] 0x800002D4|\n"
     "118 2 53-56 3,2 |    [bit9] NT FIND = 1|\n"
     "118 2 53-56 3,2 |    [bit7] LEVEL2 OPLOCKS = 1|\n"
     "118 2 53-56 3,2 |    [bit6] STATUS32 = 1|\n"
     "118 2 53-56 3,2 |    [bit4] NT SMBS = 1|\n"
     "118 2 53-56 3,2 |    [bit3] LARGE FILES = 0|\n"
     "118 2 53-56 3,2 |    [bit2] UNICODE = 1|\n"
     "118 1 57-58 3,2 |[Byte Count] 15 (0x000F) byte(s)|\n"
     "55 1 59-62 3,2 |[Security Blob] 4 (0x0004) byte(s)|\n"
     "118 2 59-62 3,2 |0000  60 48 06 06 20  0  0  0                            `H..|\n"
     "118 1 64-69 3,2 |[Native OS] OS|\n"
     "118 1 70-73 3,2 |[Native LAN Manager] L|\n"},
    {"SessionSetupAndX request with a blob cut short",
     UTF16_REQUEST("73") "0C FF 00 0000 0411 3200 0000 DB74F319 0400 00000000 00000000 0F00 6048",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-60 3,2 |--- SMB_SessionSetupAndX (Client) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 12 (0x0C) word(s)|\n"
     "118 1 37-38 3,2 |[Max Buffer Size] 4356 (0x1104) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Mpx Count] 50|\n"
     "118 1 41-42 3,2 |[Vc No] 0 (first)|\n"
     "118 1 43-46 3,2 |[Session Key] 0x19F374DB|\n"
     "118 1 47-47 3,2 |[Security Blob Length] 4 (0x0004) byte(s)|\n"
     "55 1 53-56 3,2 |[Capabilities] 0x00000000|\n"
     "118 1 57-58 3,2 |[Byte Count] 15 (0x000F) byte(s)|\n"
     "55 1 59-60 3,2 |[Security Blob] 2 (0x0002) byte(s)|\n"
     "118 2 59-60 3,2 |0000  60 48 20  0  0  0  0  0                            `H|\n"},
    {"SessionSetupAndX request of 10 words",
     REQUEST("73") "0A FF 00 0000 9605 0100 0000 01100080 0200 00000000 0B00 AABB 'ME' 00 'WG' 00 'D' 00 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-65 3,2 |--- SMB_SessionSetupAndX (Client) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 10 (0x0A) word(s)|\n"
     "118 1 37-38 3,2 |[Max Buffer Size] 1430 (0x0596) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Mpx Count] 1|\n"
     "118 1 41-42 3,2 |[Vc No] 0 (first)|\n"
     "118 1 43-46 3,2 |[Session Key] 0x80001001|\n"
     "118 1 47-48 3,2 |[ANSI Password Length] 2 (0x0002) byte(s)|\n"
     "118 1 53-54 3,2 |[Byte Count] 11 (0x000B) byte(s)|\n"
     "55 1 55-56 3,2 |[ANSI Password] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 55-56 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 55-56 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"
     "118 1 57-59 3,2 |[Account] ME|\n"
     "118 1 60-62 3,2 |[Primary Domain] WG|\n"
     "118 1 63-64 3,2 |[Native OS] D|\n"
     "118 1 65-65 3,2 |[Native LAN Manager] |\n"},
    {"SessionSetupAndX request of 13 words",
     REQUEST("73") "0D FF 00 0000 9605 0100 0100 01100080 0000 0200 00000000 04000000 0500 AABB 'ME' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-65 3,2 |--- SMB_SessionSetupAndX (Client) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 13 (0x0D) word(s)|\n"
     "118 1 37-38 3,2 |[Max Buffer Size] 1430 (0x0596) byte(s)|\n"
     "118 1 39-40 3,2 |[Max Mpx Count] 1|\n"
     "118 1 41-42 3,2 |[Vc No] 1 (additional)|\n"
     "118 1 43-46 3,2 |[Session Key] 0x80001001|\n"
     "118 1 47-48 3,2 |[ANSI Password Length] 0 (0x0000) byte(s)|\n"
     "118 1 49-50 3,2 |[Unicode Password Length] 2 (0x0002) byte(s)|\n"
     "55 1 55-58 3,2 |[Capabilities] 0x00000004|\n"
     "118 1 59-60 3,2 |[Byte Count] 5 (0x0005) byte(s)|\n"
     "118 1 0-0 3,2 |[ANSI Password] None|\n"
     "55 1 61-62 3,2 |[Unicode Password] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 61-62 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 61-62 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"
     "118 1 63-65 3,2 |[Account] ME|\n"},
    {"SessionSetupAndX request too short", REQUEST("73") "0A FF 00 0000 9605 0100 0000 01100080 0000 00000000 09",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-53 3,2 |--- SMB_SessionSetupAndX (Client) -----------------------------------------|\n"
     "118 1 32-47 3,2 |0000  0A FF 00 00 00 96 05 01 - 00 00 00 01 10 00 80 00  ................|\n"
     "118 1 48-53 3,2 |0010  00 00 00 00 00 09 20  0                            ......|\n"},
    {"SessionSetupAndX response", RESPONSE("73") "03 FF 00 0000 0100 0600 'OS' 00 'L' 00 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-46 3,2 |--- SMB_SessionSetupAndX (Server) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 3 (0x03) word(s)|\n"
     "55 1 37-38 3,2 |[Request Mode] 0x0001|\n"
     "118 2 37-38 3,2 |    [bit0] logged in as GUEST = 1|\n"
     "118 1 39-40 3,2 |[Byte Count] 6 (0x0006) byte(s)|\n"
     "118 1 41-43 3,2 |[Native OS] OS|\n"
     "118 1 44-45 3,2 |[Native LAN Manager] L|\n"
     "118 1 46-46 3,2 |[Primary Domain] |\n"},
    {"SessionSetupAndX response with a blob",
     UTF16_RESPONSE("73") "04 FF 00 0000 0000 0300 0700 A10730 4F00 0000 4C00 FFFF",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-49 3,2 |--- SMB_SessionSetupAndX (Server) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 4 (0x04) word(s)|\n"
     "55 1 37-38 3,2 |[Request Mode] 0x0000|\n"
     "118 1 39-39 3,2 |[Security Blob Length] 3 (0x0003) byte(s)|\n"
     "55 1 43-45 3,2 |[Security Blob] 3 (0x0003) byte(s)|\n"
     "118 2 43-45 3,2 |0000  A1 07 30 20  0  0  0  0                            ..0|\n"
     "118 1 41-42 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 46-49 3,2 |[Native OS] O|\n"
     "118 1 50-53 3,2 |[Native LAN Manager] L?|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 50-53 1,10 |---[Data] 4 (0x0004) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 50-53 1,10 |0000  4C 00 FF FF 20  0  0  0                            L...|\n"},
    {"SessionSetupAndX response with an empty blob", RESPONSE("73") "04 FF 00 0000 0000 0000 0000 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-42 3,2 |--- SMB_SessionSetupAndX (Server) -----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 4 (0x04) word(s)|\n"
     "55 1 37-38 3,2 |[Request Mode] 0x0000|\n"
     "118 1 39-39 3,2 |[Security Blob Length] 0 (0x0000) byte(s)|\n"
     "118 1 0-0 0,0 |[Security Blob] None|\n"
     "118 1 41-42 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "118 1 43-43 3,2 |[Native OS] \\xEE|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 43-43 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 43-43 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"LogOffAndX request", REQUEST("74") "02 FF 00 0000 0000 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 39-39 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 39-39 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"LogOffAndX response", RESPONSE("74") "02 FF 00 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_LogOffAndX (Server) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "118 1 37-38 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"LogOffAndX response too short", RESPONSE("74") "02 FF 00 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-37 3,2 |--- SMB_LogOffAndX (Server) -----------------------------------------------|\n"
     "118 1 32-37 3,2 |0000  02 FF 00 00 00 00 20  0                            ......|\n"},
    {"TreeConnectAndX request", REQUEST("75") "04 FF 00 0000 0100 0100 1000 00 '\\\\S\\IPC$' 00 'LPT1:' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-58 3,2 |--- SMB_TreeConnectAndX (Client) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 4 (0x04) word(s)|\n"
     "55 1 37-38 3,2 |[Flags] 0x0001|\n"
     "118 2 37-38 3,2 |    [bit0] disconnect Tid = 1|\n"
     "118 1 39-40 3,2 |[Encryption Key Length] 1 byte(s)|\n"
     "118 1 41-42 3,2 |[Byte Count] 16 (0x0010) byte(s)|\n"
     "55 1 43-43 3,2 |[Encryption Key] 1 (0x0001) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 43-43 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 43-43 1,10 |0000  00 20  0  0  0  0  0  0                            .|\n"
     "118 1 44-52 3,2 |[Path] \\x5C\\x5CS\\x5CIPC$|\n"
     "118 1 53-58 3,2 |[Service] LPT1:|\n"},
    {"TreeConnectAndX request in UTF-16, the service too",
     UTF16_REQUEST("75") "04 FF 00 0000 0000 0000 0F00 00 5C005300 0000 4100 3A00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-55 3,2 |--- SMB_TreeConnectAndX (Client) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 4 (0x04) word(s)|\n"
     "55 1 37-38 3,2 |[Flags] 0x0000|\n"
     "118 1 39-40 3,2 |[Encryption Key Length] 0 byte(s)|\n"
     "118 1 41-42 3,2 |[Byte Count] 15 (0x000F) byte(s)|\n"
     "118 1 44-49 3,2 |[Path] \\x5CS|\n"
     "118 1 50-55 3,2 |[Service] A:|\n"},
    {"TreeConnectAndX response", RESPONSE("75") "03 FF 00 0000 0300 0900 'A:' 00 'NTFS' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-48 3,2 |--- SMB_TreeConnectAndX (Server) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 3 (0x03) word(s)|\n"
     "118 1 39-40 3,2 |[Byte Count] 9 (0x0009) byte(s)|\n"
     "55 1 37-38 3,2 |[Optional Support] 0x0003|\n"
     "118 2 37-38 3,2 |    [bit1] share is in dfs = 1|\n"
     "118 2 37-38 3,2 |    [bit0] support search bits = 1|\n"
     "118 1 41-43 3,2 |[Service] A:|\n"
     "118 1 44-48 3,2 |[Native File System] NTFS|\n"},
    {"TreeConnectAndX response of two words", RESPONSE("75") "02 FF 00 0000 0400 'IPC' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-42 3,2 |--- SMB_TreeConnectAndX (Server) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "55 1 33-36 3,2 |[Word Parameters]|\n"
     "118 2 33-36 3,2 |0x00FF 0x0000 |\n"
     "118 1 37-38 3,2 |[Byte Count] 4 (0x0004) byte(s)|\n"
     "55 1 39-42 3,2 |[Byte Parameters]|\n"
     "118 2 39-42 3,2 |0000  49 50 43 00 20  0  0  0                            IPC.|\n"},
    {"TreeDisconnect request", REQUEST("71") "00 0000 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_TreeDisconnect (Client) -------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 35-35 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 35-35 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"TreeDisconnect response with words and bytes",
     RESPONSE("71") "09 0100 0200 0300 0400 0500 0600 0700 0800 0900 0200 AABB EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-54 3,2 |--- SMB_TreeDisconnect (Server) -------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 9 (0x09) word(s)|\n"
     "55 1 33-50 3,2 |[Word Parameters]|\n"
     "118 2 33-48 3,2 |0x0001 0x0002 0x0003 0x0004 0x0005 0x0006 0x0007 0x0008 |\n"
     "118 2 49-50 3,2 |0x0009 |\n"
     "118 1 51-52 3,2 |[Byte Count] 2 (0x0002) byte(s)|\n"
     "55 1 53-54 3,2 |[Byte Parameters]|\n"
     "118 2 53-54 3,2 |0000  AA BB 20  0  0  0  0  0                            ..|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 55-55 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 55-55 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"Echo request", REQUEST("2B") "01 0300 0200 F0F1",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-38 3,2 |--- SMB_Echo (Client) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[Echo Count] 3 (0x0003)|\n"
     "118 1 35-36 3,2 |[Byte Count] 2 (0x0002) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 37-38 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 37-38 1,10 |0000  F0 F1 20  0  0  0  0  0                            ..|\n"},
    {"Echo response", RESPONSE("2B") "01 0300 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_Echo (Server) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[Sequence No] 3 (0x0003)|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
};
COMMAND_CASES(SmbSession, SmbAnalyze, kSessionRows)

}  // namespace

}  // namespace wirelines::test
