// The built program as a user meets it: what it prints, what it says, how it ends.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <vector>

#include "files.hpp"

namespace wirelines::host {
namespace {

struct Result {
  int exit_code;
  std::string out;
  std::string err;
};

std::string contents(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class Program : public testing::Test {
 protected:
  Program() {
    setenv("TZ", "Asia/Tokyo", 1);
    setenv("XDG_CONFIG_HOME", folder_.path("config").c_str(), 1);
    unsetenv("NO_COLOR");
    setenv("TERM", "xterm", 1);
    trace_ = folder_.file("trace.pcap", pcap_header() + pcap_record(ethernet_frame(15, 'a'), 1714557600, 123456, 15) +
                                            pcap_record(ethernet_frame(16, '\xB6'), 1714557601, 5, 1514) +
                                            pcap_record(ethernet_frame(17, 'c'), 1714557601, 999999, 17));
  }

  // Runs a command line of the shell in which $W is the program and $T the trace.
  Result run(const std::string& command) {
    setenv("W", PROGRAM, 1);
    setenv("T", trace_.c_str(), 1);
    folder_.file("command", "cd '" + folder_.path("") + "'; " + command);
    const auto line = std::string(BASH) + " '" + folder_.path("command") + "' > '" + folder_.path("out") + "' 2> '" +
                      folder_.path("err") + "' < /dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_.path("out")), contents(folder_.path("err"))};
  }

  Folder folder_;
  std::string trace_;
};

TEST_F(Program, shows_a_frame) {
  EXPECT_EQ(run("$W show -N 2 $T").out,
            "Frame 2  2024-05-01 19:00:01.000005  16 bytes (cut at capture from 1514 bytes)\n"
            "--- MAC [0A0B0C0D0E0F] --> [010203040506] ---------------------------------\n"
            "  [Time] 05/01/2024 19:00:01.000005\n"
            "  [Length] 16 (0x0010) byte(s)\n"
            "  [Destination Address] 010203040506 \n"
            "  [Source Address] 0A0B0C0D0E0F \n"
            "\n"
            "--- Data Link [Ethernet_II] -----------------------------------------------\n"
            "  [Frame Type] Ethernet_II\n"
            "  [Protocol Type] 0x88B5 \n"
            "\n"
            "---[Data] 2 (0x0002) byte(s) --------------------------------- ASCII ------\n"
            "  0000  B6 B6 20  0  0  0  0  0                            ..\n");
}

TEST_F(Program, shows_the_raw_form) {
  EXPECT_EQ(run("$W show -N 2 --raw --utc --charset sjis $T").out,
            "# frame 2 length 16 top 0\n"
            "10 0 0-11 2,9 |--- MAC [0A0B0C0D0E0F] --> [010203040506] ---------------------------------|\n"
            "73 1 4294967295-4294967295 2,9 |[Time] 05/01/2024 10:00:01.000005|\n"
            "73 1 0-0 2,9 |[Length] 16 (0x0010) byte(s)|\n"
            "73 1 0-5 2,9 |[Destination Address] 010203040506 |\n"
            "73 1 6-11 2,9 |[Source Address] 0A0B0C0D0E0F |\n"
            "65535 65535 0-0 0,0 ||\n"
            "12 0 12-13 4,9 |--- Data Link [Ethernet_II] -----------------------------------------------|\n"
            "75 1 12-13 4,9 |[Frame Type] Ethernet_II|\n"
            "75 1 12-13 4,9 |[Protocol Type] 0x88B5 |\n"
            "65535 65535 0-0 0,0 ||\n"
            "0 0 14-15 1,10 |---[Data] 2 (0x0002) byte(s) --------------------------------- SJIS -------|\n"
            "63 1 14-15 1,10 |0000  B6 B6 20  0  0  0  0  0                            \\xB6\\xB6|\n");
}

TEST_F(Program, dumps) {
  EXPECT_EQ(run("$W dump --utc -N 1 $T").out,
            "Frame 1  2024-05-01 10:00:00.123456  15 bytes\n"
            "0000  01 02 03 04 05 06 0A 0B - 0C 0D 0E 0F 88 B5 61     ..............a\n");
}
}  // namespace
}  // namespace wirelines::host
