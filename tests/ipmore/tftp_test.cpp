#include "ipmore/tftp.hpp"

#include <gtest/gtest.h>

#include "support/cases.hpp"

namespace wirelines::test {

namespace {

const Case kTftp[] = {
    {"read request", "0001 'file.txt' 00 'octet' 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-16 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 1 (Read request)|\n"
     "95 1 2-9 7,5 |[File Name] file.txt|\n"
     "95 1 11-15 7,5 |[Mode] octet|\n"},
    {"write request with options, the last without its zero byte",
     "0002 'a' 00 'octet' 00 'blksize' 00 '1432' 00 'tsize' 00 '0'",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-29 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 2 (Write request)|\n"
     "95 1 2-2 7,5 |[File Name] a|\n"
     "95 1 4-8 7,5 |[Mode] octet|\n"
     "95 1 10-16 7,5 |[Option] blksize|\n"
     "95 1 18-21 7,5 |[Value] 1432|\n"
     "95 1 23-27 7,5 |[Option] tsize|\n"},
    {"read request of a long name",
     "0001 'images/2023-11-14/the-first-loader-of-all-whose-name-does-not-fit-in-one-line.bin' 00 'octet' 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-89 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 1 (Read request)|\n"
     "95 1 2-65 7,5 |[File Name] images/2023-11-14/the-first-loader-of-all-whose-name-does-not-fi|\n"
     "95 1 66-82 7,5 |            t-in-one-line.bin|\n"
     "95 1 84-88 7,5 |[Mode] octet|\n"},
    {"empty texts show nothing", "0001 00 'octet' 00 00 '7' 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-11 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 1 (Read request)|\n"
     "95 1 3-7 7,5 |[Mode] octet|\n"
     "95 1 10-10 7,5 |[Value] 7|\n"},
    {"mode without its zero byte", "0001 'a' 00 'octet'",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-8 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 1 (Read request)|\n"
     "95 1 2-2 7,5 |[File Name] a|\n"},
    {"data", "0003 0100 'hello'",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-8 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 3 (Data)|\n"
     "95 1 2-3 7,5 |[Block No] 256 (0x100)|\n"
     "95 1 4-8 7,5 |[Data] 5 (0x0005) byte(s)|\n"
     "95 2 4-8 7,5 |0000  68 65 6C 6C 6F 20  0  0                            hello|\n"},
    {"data of no bytes", "0003 0002",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-3 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 3 (Data)|\n"
     "95 1 2-3 7,5 |[Block No] 2 (0x02)|\n"},
    {"half a block number", "0003 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-2 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 3 (Data)|\n"},
    {"acknowledgement, bytes behind it", "0004 0001 FF",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-4 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 4 (Acknowledgment)|\n"
     "95 1 2-3 7,5 |[Block No] 1 (0x01)|\n"},
    {"error", "0005 0001 'no such file' 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-16 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 5 (Error)|\n"
     "95 1 2-3 7,5 |[ErrorCode] 1 (File not found)|\n"
     "95 1 4-15 7,5 |[Error Message] no such file|\n"},
    {"error of code 0", "0005 0000 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-4 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 5 (Error)|\n"
     "95 1 2-3 7,5 |[ErrorCode] 0 (Unknown)|\n"},
    {"half an error code", "0005 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-2 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 5 (Error)|\n"},
    {"option acknowledgement", "0006 'timeout' 00 '1' 00 'tsize' 00",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-17 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 6 (Option Acknowledgment)|\n"
     "95 1 2-8 7,5 |[Option] timeout|\n"
     "95 1 10-10 7,5 |[Value] 1|\n"
     "95 1 12-16 7,5 |[Option] tsize|\n"},
    {"unknown opcode", "0007 0001",
     "65535 65535 0-0 0,0 ||\n"
     "32 0 0-3 7,5 |--- TFTP Packet -----------------------------------------------------------|\n"
     "95 1 0-1 7,5 |[Opcode] 7 (Unknown)|\n"},
    {"one byte", "00",
     "65535 65535 0-0 0,0 ||\n"
     "0 0 0-0 1,10 |---[Data] 1 (0x0001) byte(s) --------------------------------- ASCII ------|\n"
     "63 1 0-0 1,10 |0000  00 20  0  0  0  0  0  0                            .|\n"},
};
LINE_CASES(Tftp, TftpAnalyze, kTftp)

TEST(Tftp, AtMostFiftyOptions) {
  std::string hex = "0006";
  for (int i = 0; i < 60; ++i) hex += "'o' 00 'v' 00";
  const auto bytes = bytes_of(hex);
  const auto lines = decode_and_dump(TftpAnalyze, Bytes(bytes.data(), static_cast<int32_t>(bytes.size())));
  EXPECT_TRUE(lines.ends_with("95 1 198-198 7,5 |[Option] o|\n95 1 200-200 7,5 |[Value] v|\n")) << lines;
}

}  // namespace

}  // namespace wirelines::test
