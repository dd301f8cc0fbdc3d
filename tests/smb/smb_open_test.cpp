#include "smb/smb_rows.hpp"

namespace wirelines::test {

namespace {

const Case kOpenRows[] = {
    {"CreateDirectory request", REQUEST("00") "00 0600 04 '\\NEW' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-40 3,2 |--- SMB_CreateDirectory (Client) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 6 (0x0006) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 36-40 3,2 |[Directory] \\x5CNEW|\n"},
    {"CreateDirectory response", RESPONSE("00") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_CreateDirectory (Server) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"DeleteDirectory request in UTF-16", UTF16_REQUEST("01") "00 0700 04 5C004400 0000 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-41 3,2 |--- SMB_DeleteDirectory (Client) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 36-41 3,2 |[Directory] \\x5CD|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 42-42 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 42-42 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"DeleteDirectory response with more behind it", RESPONSE("01") "00 0000 AABB",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_DeleteDirectory (Server) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 35-36 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 35-36 1,10 |0000  AA BB 20  0  0  0  0  0                            ..|\n"},
    {"CheckDirectory request", REQUEST("10") "00 0300 04 '\\' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-37 3,2 |--- SMB_CheckDirectory (Client) -------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 3 (0x0003) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 36-37 3,2 |[Directory] \\x5C|\n"},
    {"CheckDirectory response", RESPONSE("10") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_CheckDirectory (Server) -------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Open request", REQUEST("02") "02 4200 1600 0700 04 'A.TXT' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-45 3,2 |--- SMB_Open (Client) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 2 (0x02) word(s)|\n"
     "55 1 33-34 3,2 |[Desired Access] 0x0042|\n"
     "118 2 33-34 3,2 |    [bit14] Write through Mode = 0 (Enabled)|\n"
     "118 2 33-34 3,2 |    [bit12] Cach Mode = 0 (Caching Permitted)|\n"
     "118 2 33-34 3,2 |    [bit10-8] Reference Mode = 0 (Unknown)|\n"
     "118 2 33-34 3,2 |    [bit6-4] Sharing Mode = 4 (Deny None)|\n"
     "118 2 33-34 3,2 |    [bit2-0] Access Mode = 2 (Read/Write)|\n"
     "55 1 35-36 3,2 |[File Attributes] 0x0016|\n"
     "118 2 35-36 3,2 |    [bit5] Archive = 0|\n"
     "118 2 35-36 3,2 |    [bit4] Directory = 1|\n"
     "118 2 35-36 3,2 |    [bit3] Volume = 0|\n"
     "118 2 35-36 3,2 |    [bit2] System = 1|\n"
     "118 2 35-36 3,2 |    [bit1] Hidden = 1|\n"
     "118 2 35-36 3,2 |    [bit0] Read Only = 0|\n"
     "118 1 37-38 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 39-39 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 40-45 3,2 |[File Name] A.TXT|\n"},
    {"Open response", RESPONSE("02") "07 0100 2000 00000000 0F000000 3455 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-48 3,2 |--- SMB_Open (Server) -----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 7 (0x07) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "55 1 35-36 3,2 |[File Attributes] 0x0020|\n"
     "118 2 35-36 3,2 |    [bit5] Archive = 1|\n"
     "118 2 35-36 3,2 |    [bit4] Directory = 0|\n"
     "118 2 35-36 3,2 |    [bit3] Volume = 0|\n"
     "118 2 35-36 3,2 |    [bit2] System = 0|\n"
     "118 2 35-36 3,2 |    [bit1] Hidden = 0|\n"
     "118 2 35-36 3,2 |    [bit0] Read Only = 0|\n"
     "118 1 37-40 3,2 |[Last Write] 0x00000000|\n"
     "118 1 41-44 3,2 |[File Size] 15 (0x0000000F) byte(s)|\n"
     "55 1 45-46 3,2 |[Desired Access] 0x5534|\n"
     "118 2 45-46 3,2 |    [bit14] Write through Mode = 1 (Disabled)|\n"
     "118 2 45-46 3,2 |    [bit12] Cach Mode = 1 (Do not Cache)|\n"
     "118 2 45-46 3,2 |    [bit10-8] Reference Mode = 5 (Unknown)|\n"
     "118 2 45-46 3,2 |    [bit6-4] Sharing Mode = 3 (Deny Wite/Execute)|\n"
     "118 2 45-46 3,2 |    [bit2-0] Access Mode = 4 (Unknown)|\n"
     "118 1 47-48 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Open response a byte too short", RESPONSE("02") "07 0100 2000 00000000 0F000000 4200 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-47 3,2 |--- SMB_Open (Server) -----------------------------------------------------|\n"
     "118 1 32-47 3,2 |0000  07 01 00 20 00 00 00 00 - 00 0F 00 00 00 42 00 00  ... .........B..|\n"},
    {"Kept: leap days of a close fall in 1973", REQUEST("04") "03 0100 8B71F105 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-40 3,2 |--- SMB_Close (Client) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 3 (0x03) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-38 3,2 |[Last Write] 02/29/1973 01:02:03|\n"
     "118 1 39-40 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Close response", RESPONSE("04") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Close (Server) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Close request without a time", REQUEST("04") "03 0100 FFFFFFFF 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-40 3,2 |--- SMB_Close (Client) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 3 (0x03) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-38 3,2 |[Last Write] 0xFFFFFFFF|\n"
     "118 1 39-40 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Flush request", REQUEST("05") "01 0100 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_Flush (Client) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Flush response", RESPONSE("05") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Flush (Server) ----------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Delete request", REQUEST("06") "01 0600 0700 04 'A.TXT' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-43 3,2 |--- SMB_Delete (Client) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "55 1 33-34 3,2 |[Search Attributes] 0x0006|\n"
     "118 1 35-36 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 37-37 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 38-43 3,2 |[File Name] A.TXT|\n"},
    {"Delete response", RESPONSE("06") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Delete (Server) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Rename request in UTF-16", UTF16_REQUEST("07") "01 0600 1100 04 4230 3DD8 00DE 0000 04 EE 4200 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-51 3,2 |--- SMB_Rename (Client) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "55 1 33-34 3,2 |[Search Attributes] 0x0006|\n"
     "118 1 35-36 3,2 |[Byte Count] 17 (0x0011) byte(s)|\n"
     "118 1 37-37 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 38-45 3,2 |[Old File Name] \\x82\\xA0??|\n"
     "118 1 46-46 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 48-51 3,2 |[New File Name] B|\n"},
    {"Rename request that ends before its names", REQUEST("07") "01 0600 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_Rename (Client) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "55 1 33-34 3,2 |[Search Attributes] 0x0006|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Rename request that ends at the byte to skip", UTF16_REQUEST("07") "01 0600 0700 04 4100 0000 04 EE",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-43 3,2 |--- SMB_Rename (Client) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "55 1 33-34 3,2 |[Search Attributes] 0x0006|\n"
     "118 1 35-36 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 37-37 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 38-41 3,2 |[Old File Name] A|\n"
     "118 1 42-42 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 43-43 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 43-43 1,10 |0000  EE 20  0  0  0  0  0  0                            .|\n"},
    {"Rename request that ends inside a name", UTF16_REQUEST("07") "01 0600 0400 04 4100 42",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-40 3,2 |--- SMB_Rename (Client) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "55 1 33-34 3,2 |[Search Attributes] 0x0006|\n"
     "118 1 35-36 3,2 |[Byte Count] 4 (0x0004) byte(s)|\n"
     "118 1 37-37 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 38-40 3,2 |[Old File Name] A|\n"},
    {"Rename response", RESPONSE("07") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Rename (Server) ---------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Kept: QueryInfomation request", REQUEST("08") "00 0700 04 'A.TXT' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-41 3,2 |--- SMB_QueryInfomation (Client) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 35-35 3,2 |[Buffer Format] 4 (ASCII)|\n"
     "118 1 36-41 3,2 |[File Name] A.TXT|\n"},
    {"QueryInfomation response", RESPONSE("08") "0A 2000 80510100 0F000000 00000000000000000000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-54 3,2 |--- SMB_QueryInfomation (Server) ------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 10 (0x0A) word(s)|\n"
     "55 1 33-34 3,2 |[File Attributes] 0x0020|\n"
     "118 1 35-38 3,2 |[Last Write] 01/02/1970 00:00:00|\n"
     "118 1 39-42 3,2 |[File Size] 15 (0x0000000F) byte(s)|\n"
     "118 1 53-54 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"QueryInformation2 request", REQUEST("23") "01 0100 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_QueryInformation2 (Client) ----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[File Handle] 0x0001|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"Kept: QueryInformation2 response with one conversion that is none and units of two seconds",
     RESPONSE("23") "0B 9F27 BD6D 9F27 BD6D 9F27 BD6D 0F000000 00100000 2000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-56 3,2 |--- SMB_QueryInformation2 (Server) ----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 11 (0x0B) word(s)|\n"
     "118 1 33-36 3,2 |[Created] 12/%0.2/31 1999:13:45|\n"
     "118 1 37-40 3,2 |[Created] 12/31/1999 13:45:29|\n"
     "118 1 41-44 3,2 |[Last Written Time] 1999/12/31 13:45:29|\n"
     "118 1 45-48 3,2 |[End of File] 15 (0x0000000F) byte(s)|\n"
     "118 1 49-52 3,2 |[Allocation Size] 4096 (0x00001000) byte(s)|\n"
     "55 1 53-54 3,2 |[File Attributes] 0x0020|\n"
     "118 1 55-56 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"QueryInformation2 response without times",
     RESPONSE("23") "0B 0000 0000 0000 0000 0000 0000 0F000000 00100000 2000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-56 3,2 |--- SMB_QueryInformation2 (Server) ----------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 11 (0x0B) word(s)|\n"
     "118 1 33-36 3,2 |[Created] 00/00/0000 00:00:00|\n"
     "118 1 37-40 3,2 |[Last Accessed Time] 00/00/0000 00:00:00|\n"
     "118 1 41-44 3,2 |[Last Written Time] 0000/00/00 00:00:00|\n"
     "118 1 45-48 3,2 |[End of File] 15 (0x0000000F) byte(s)|\n"
     "118 1 49-52 3,2 |[Allocation Size] 4096 (0x00001000) byte(s)|\n"
     "55 1 53-54 3,2 |[File Attributes] 0x0020|\n"
     "118 1 55-56 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"OpenAndX request",
     REQUEST("2D") "0F FF 00 0000 0700 0200 1600 2000 00000000 1200 00000000 00000000 00000000 0600 'A.TXT' 00",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-70 3,2 |--- SMB_OpenAndX (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 15 (0x0F) word(s)|\n"
     "55 1 37-38 3,2 |[Flags] 0x0007|\n"
     "118 2 37-38 3,2 |    [bit2] batch oplock requested = 1|\n"
     "118 2 37-38 3,2 |    [bit1] exclusive oplock request = 1|\n"
     "118 2 37-38 3,2 |    [bit0] return additional info = 1|\n"
     "55 1 39-40 3,2 |[Desired Access] 0x0002|\n"
     "118 2 39-40 3,2 |    [bit14] Write through Mode = 0 (Enabled)|\n"
     "118 2 39-40 3,2 |    [bit12] Cach Mode = 0 (Caching Permitted)|\n"
     "118 2 39-40 3,2 |    [bit10-8] Reference Mode = 0 (Unknown)|\n"
     "118 2 39-40 3,2 |    [bit6-4] Sharing Mode = 0 (Compatibility mode)|\n"
     "118 2 39-40 3,2 |    [bit2-0] Access Mode = 2 (Read/Write)|\n"
     "55 1 41-42 3,2 |[Search Attributes] 0x0016|\n"
     "55 1 43-44 3,2 |[File Attributes] 0x0020|\n"
     "118 2 43-44 3,2 |    [bit5] Archive = 1|\n"
     "118 2 43-44 3,2 |    [bit4] Directory = 0|\n"
     "118 2 43-44 3,2 |    [bit3] Volume = 0|\n"
     "118 2 43-44 3,2 |    [bit2] System = 0|\n"
     "118 2 43-44 3,2 |    [bit1] Hidden = 0|\n"
     "118 2 43-44 3,2 |    [bit0] Read Only = 0|\n"
     "118 1 45-48 3,2 |[Created] 01/01/1970 00:00:00|\n"
     "55 1 49-50 3,2 |[Open Function] 0x0012|\n"
     "118 2 49-50 3,2 |    [bit4] Create = 1 (Create file if it does not exist)|\n"
     "118 2 49-50 3,2 |    [bit1-0] Open = 2 (Truncate file if it exists)|\n"
     "118 1 51-54 3,2 |[Allocation Size] 0 (0x00000000) byte(s)|\n"
     "118 1 63-64 3,2 |[Byte Count] 6 (0x0006) byte(s)|\n"
     "118 1 65-70 3,2 |[File Name] A.TXT|\n"},
    {"OpenAndX response of a pipe",
     RESPONSE("2D") "0F FF 00 0000 0100 2000 00000000 00000000 0200 0200 FFC5 0200 78563412 0000 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-64 3,2 |--- SMB_OpenAndX (Server) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 15 (0x0F) word(s)|\n"
     "118 1 37-38 3,2 |[File Handle] 0x0001|\n"
     "55 1 39-40 3,2 |[File Attributes] 0x0020|\n"
     "118 2 39-40 3,2 |    [bit5] Archive = 1|\n"
     "118 2 39-40 3,2 |    [bit4] Directory = 0|\n"
     "118 2 39-40 3,2 |    [bit3] Volume = 0|\n"
     "118 2 39-40 3,2 |    [bit2] System = 0|\n"
     "118 2 39-40 3,2 |    [bit1] Hidden = 0|\n"
     "118 2 39-40 3,2 |    [bit0] Read Only = 0|\n"
     "118 1 41-44 3,2 |[Last Write] 0x00000000|\n"
     "118 1 45-48 3,2 |[File Size] 0 (0x00000000) byte(s)|\n"
     "55 1 49-50 3,2 |[Desired Access] 0x0002|\n"
     "118 2 49-50 3,2 |    [bit14] Write through Mode = 0 (Enabled)|\n"
     "118 2 49-50 3,2 |    [bit12] Cach Mode = 0 (Caching Permitted)|\n"
     "118 2 49-50 3,2 |    [bit10-8] Reference Mode = 0 (Unknown)|\n"
     "118 2 49-50 3,2 |    [bit6-4] Sharing Mode = 0 (Compatibility mode)|\n"
     "118 2 49-50 3,2 |    [bit2-0] Access Mode = 2 (Read/Write)|\n"
     "118 1 51-52 3,2 |[File Type] 2 (Named pipe in message mode)|\n"
     "55 1 53-54 3,2 |[IPC State] 0xC5FF|\n"
     "118 2 53-54 3,2 |    [bit31] Blocking = 1 (Reads/writes return immediately) |\n"
     "118 2 53-54 3,2 |    [bit30] EndPoint = 1 (Server end of pipe) |\n"
     "118 2 53-54 3,2 |    [bit11-10] PipeType = 1 (Message pipe)|\n"
     "118 2 53-54 3,2 |    [bit9-8] ReadMode = 1 (Messages are to be read from the pipe) |\n"
     "118 2 53-54 3,2 |    [bit7-0] Icount = 255 |\n"
     "55 1 55-56 3,2 |[Action] 0x0002|\n"
     "118 2 55-56 3,2 |    [bit4] Create = 0 (Fail if it does not exist)|\n"
     "118 2 55-56 3,2 |    [bit1-0] Open = 2 (Truncate file if it exists)|\n"
     "118 1 57-60 3,2 |[Server FID] 0x12345678|\n"
     "118 1 63-64 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"NtCreateAndX request",
     UTF16_REQUEST("A2") "18 FF 00 0000 00 0400 0E000000 00000000 89001200 0010000002000000 80000000 03000000 01000000 "
                         "60100000 00000000 03 0700 EE 5C004100 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-89 3,2 |--- SMB_NtCreateAndX (Client) ---------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 24 (0x18) word(s)|\n"
     "118 1 38-39 3,2 |[File Name Length] 4 (0x0004) byte(s)|\n"
     "55 1 40-43 3,2 |[Create Flags] 0x0000000E|\n"
     "118 2 40-43 3,2 |    [bit3] create directory = 1|\n"
     "118 2 40-43 3,2 |    [bit2] request patch oplock = 1|\n"
     "118 2 40-43 3,2 |    [bit1] request oplock = 1|\n"
     "118 1 44-47 3,2 |[Root Directory FID] 0x00000000|\n"
     "55 1 48-51 3,2 |[Access Mask] 0x00120089|\n"
     "118 2 48-51 3,2 |    [bit31] Generic Read = 0|\n"
     "118 2 48-51 3,2 |    [bit30] Generic Write = 0|\n"
     "118 2 48-51 3,2 |    [bit29] Generic Execute = 0|\n"
     "118 2 48-51 3,2 |    [bit28] Generic All = 0|\n"
     "118 2 48-51 3,2 |    [bit25] Maximum Allowed = 0|\n"
     "118 2 48-51 3,2 |    [bit24] System Security = 0|\n"
     "118 2 48-51 3,2 |    [bit20] Synchronize = 1|\n"
     "118 2 48-51 3,2 |    [bit19] Write Owner = 0|\n"
     "118 2 48-51 3,2 |    [bit18] Write DAC = 0|\n"
     "118 2 48-51 3,2 |    [bit17] Read Control = 1|\n"
     "118 2 48-51 3,2 |    [bit16] Delete = 0|\n"
     "118 2 48-51 3,2 |    [bit8] Write Attributes = 0|\n"
     "118 2 48-51 3,2 |    [bit7] Read Attributes = 1|\n"
     "118 2 48-51 3,2 |    [bit6] Delete Child = 0|\n"
     "118 2 48-51 3,2 |    [bit5] Execute = 0|\n"
     "118 2 48-51 3,2 |    [bit4] Write EA = 0|\n"
     "118 2 48-51 3,2 |    [bit3] Read EA = 1|\n"
     "118 2 48-51 3,2 |    [bit2] Append = 0|\n"
     "118 2 48-51 3,2 |    [bit1] Write = 0|\n"
     "118 2 48-51 3,2 |    [bit0] Read = 1|\n"
     "118 1 52-59 3,2 |[Initial Allocation Size] 0x0000000200001000|\n"
     "55 1 60-63 3,2 |[File Attributes] 0x00000080|\n"
     "118 2 60-63 3,2 |    [bit31] Write Through = 0|\n"
     "118 2 60-63 3,2 |    [bit29] No Buffering = 0|\n"
     "118 2 60-63 3,2 |    [bit28] Random Access = 0|\n"
     "118 2 60-63 3,2 |    [bit27] Sequential Scan = 0|\n"
     "118 2 60-63 3,2 |    [bit26] Delete on Close = 0|\n"
     "118 2 60-63 3,2 |    [bit25] Backup = 0|\n"
     "118 2 60-63 3,2 |    [bit24] Posix = 0|\n"
     "118 2 60-63 3,2 |    [bit14] Encrypted = 0|\n"
     "118 2 60-63 3,2 |    [bit13] Content Indexed = 0|\n"
     "118 2 60-63 3,2 |    [bit12] Offline = 0|\n"
     "118 2 60-63 3,2 |    [bit11] Compressed = 0|\n"
     "118 2 60-63 3,2 |    [bit10] Repares Point = 0|\n"
     "118 2 60-63 3,2 |    [bit9] Spares = 0|\n"
     "118 2 60-63 3,2 |    [bit8] Temporary = 0|\n"
     "118 2 60-63 3,2 |    [bit7] Normal = 1|\n"
     "118 2 60-63 3,2 |    [bit6] Device = 0|\n"
     "118 2 60-63 3,2 |    [bit5] Archive = 0|\n"
     "118 2 60-63 3,2 |    [bit4] Directory = 0|\n"
     "118 2 60-63 3,2 |    [bit3] Volume ID = 0|\n"
     "118 2 60-63 3,2 |    [bit2] System = 0|\n"
     "118 2 60-63 3,2 |    [bit1] Hidden = 0|\n"
     "118 2 60-63 3,2 |    [bit0] Read Only = 0|\n"
     "55 1 64-67 3,2 |[Share Access] 0x00000003|\n"
     "118 2 64-67 3,2 |    [bit2] Delete = 0|\n"
     "118 2 64-67 3,2 |    [bit1] Write = 1|\n"
     "118 2 64-67 3,2 |    [bit0] Read = 1|\n"
     "118 1 68-71 3,2 |[Create Disposition] 0x00000001 (CREATE_NEW)|\n"
     "55 1 72-75 3,2 |[Create Options] 0x00001060|\n"
     "118 2 72-75 3,2 |    [bit12] Delete on Close = 1|\n"
     "118 2 72-75 3,2 |    [bit11] Random Access = 0|\n"
     "118 2 72-75 3,2 |    [bit10] 8.3 Only = 0|\n"
     "118 2 72-75 3,2 |    [bit9] No EA Knowledge = 0|\n"
     "118 2 72-75 3,2 |    [bit6] Non Directory = 1|\n"
     "118 2 72-75 3,2 |    [bit5] Sync I/O Nonalert = 1|\n"
     "118 2 72-75 3,2 |    [bit4] Sync I/O Alert = 0|\n"
     "118 2 72-75 3,2 |    [bit2] Sequential Only = 0|\n"
     "118 2 72-75 3,2 |    [bit1] Write Through = 0|\n"
     "118 2 72-75 3,2 |    [bit0] Directory = 0|\n"
     "118 1 76-79 3,2 |[Impersonation Level] 0x00000000 |\n"
     "55 1 80-80 3,2 |[Security Flags] 0x03|\n"
     "118 2 80-80 3,2 |    [bit1] effective only = 1|\n"
     "118 2 80-80 3,2 |    [bit0] context tracking = 1|\n"
     "118 1 81-82 3,2 |[Byte Count] 7 (0x0007) byte(s)|\n"
     "118 1 84-89 3,2 |[File Name] \\x5CA|\n"},
    {"NtCreateAndX response",
     RESPONSE("A2") "22 FF 00 0000 01 0100 01000000 0005B57D968DC001 0005B57D968DC001 0005B57D968DC001 "
                    "0000000000000000 20000000 0010000000000000 0F00000001000000 0000 0700 01 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-102 3,2 |--- SMB_NtCreateAndX (Server) ---------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 34 (0x22) word(s)|\n"
     "118 1 37-37 3,2 |[Oplock] 1 (Exclusive oplock granted)|\n"
     "118 1 38-39 3,2 |[File Handle] 0x0001|\n"
     "118 1 40-43 3,2 |[Create Action] 0x00000001|\n"
     "118 1 44-51 3,2 |[Creation Time] 02/03/2001 04:05:06|\n"
     "118 1 52-59 3,2 |[Last Accessed Time] 02/03/2001 04:05:06|\n"
     "118 1 60-67 3,2 |[Last Written Time] 02/03/2001 04:05:06|\n"
     "118 1 68-75 3,2 |[Last Changed Time] 00/00/0000 00:00:00|\n"
     "55 1 76-79 3,2 |[File Attributes] 0x00000020|\n"
     "118 1 80-87 3,2 |[Allocation Size] 0x0000000000001000 byte(s)|\n"
     "118 1 88-95 3,2 |[End of File] 0x000000010000000F byte(s)|\n"
     "118 1 96-97 3,2 |[File Type] 0 (Disk file or directory)|\n"
     "118 1 98-99 3,2 |[Device State] 0x0007|\n"
     "118 1 100-100 3,2 |[Is Directory] 0x01 (Directory)|\n"
     "118 1 101-102 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"FindClose2 request", REQUEST("34") "01 0100 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-36 3,2 |--- SMB_FindClose2 (Client) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 1 (0x01) word(s)|\n"
     "118 1 33-34 3,2 |[SID] 0x0001|\n"
     "118 1 35-36 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"FindClose2 response", RESPONSE("34") "00 0000",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_FindClose2 (Server) -----------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
    {"NtCancel request", REQUEST("A4") "00 0000 82",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_NtCancel (Client) -------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"
     "65535 65535 0-0 0,0 ||\n"
     "0 0 35-35 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 35-35 1,10 |0000  82 20  0  0  0  0  0  0                            .|\n"},
    {"NtCancel response", RESPONSE("A4") "00 0000 82",
     "65535 65535 0-0 0,0 ||\n"
     "55 0 32-34 3,2 |--- SMB_Unknown -----------------------------------------------------------|\n"
     "118 1 32-32 3,2 |[Word Count] 0 (0x00) word(s)|\n"
     "118 1 33-34 3,2 |[Byte Count] 0 (0x0000) byte(s)|\n"},
};
COMMAND_CASES(SmbOpen, SmbAnalyze, kOpenRows)

}  // namespace

}  // namespace wirelines::test
