// The built program as a user meets it: what it prints, what it says, how it ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "program.hpp"

namespace wirelines::host {
namespace {

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

TEST_F(Program, lists) {
  folder_.file("trace.pcap.names", "station 0A0B0C0D0E0F beta\ntype 88B5 trial\n");
  EXPECT_EQ(
      run("$W list -N 2- $T").out,
      "    2 19:00:01.000005 beta              01:02:03:04:05:06 Ether  1514 too short, EtherType 0x88B5 trial (cut)\n"
      "    3 19:00:01.999999 beta              01:02:03:04:05:06 Ether    17 EtherType 0x88B5 trial\n");
  EXPECT_EQ(run("$W list -n --utc -c 1 $T $T").out,
            "    1 10:00:00.123456 0a:0b:0c:0d:0e:0f 01:02:03:04:05:06 Ether    15 too short, EtherType 0x88B5\n");
  EXPECT_EQ(run("$W list --color always $T $T - < $T | wc -l").out, "9\n");
}

TEST_F(Program, dumps) {
  EXPECT_EQ(run("$W dump --utc -N 1 $T").out,
            "Frame 1  2024-05-01 10:00:00.123456  15 bytes\n"
            "0000  01 02 03 04 05 06 0A 0B - 0C 0D 0E 0F 88 B5 61     ..............a\n");
}

// What the options choose and change: the first lines, the last, or the numbers of the frames that are shown.
TEST_F(Program, options) {
  folder_.file("trace.pcap.names", "station 0A0B0C0D0E0F sidecar\nstation 010203040506 target\n");
  folder_.file("names", "station 0A0B0C0D0E0F given\n");
  std::filesystem::create_directories(folder_.path("config/wirelines"));
  folder_.file("config/wirelines/names", "station 0A0B0C0D0E0F mine\nstation 010203040506 mine\ntype 88B5 local\n");
  folder_.file("plain.pcap", contents(trace_));
  const auto record = [](std::uint32_t seconds, std::uint32_t fraction) {
    return pcap_record(ethernet_frame(), seconds, fraction, 60);
  };
  // The last frame of late.pcap is earlier than the one before it: it keeps its place there.
  folder_.file("late.pcap", pcap_header() + record(1714557601, 999999) + record(1714557600, 500000));
  folder_.file("early.pcap", pcap_header() + record(1714557599, 999999) + record(1714557601, 4));
  auto tagged = ethernet_frame(30, 'a');
  tagged.insert(12, "\x81\x00\x60\x05", 4);
  folder_.file("tagged.pcap", pcap_header() + pcap_record(tagged, 1714557600, 0, 34));
  const auto datagram = std::string("\x45\x00\x00\x14\x00\x00\x00\x00\x40\x3B\x11\x11", 12) + std::string(8, '\1');
  folder_.file("raw.pcap", pcap_header({}, 101) + pcap_record(datagram, 1, 0, 20));
  folder_.file("ppp.pcap", pcap_header({}, 9) + pcap_record("\xFF\x03\x80\xFD\x01\x01\x01\x04", 1, 0, 8));
  folder_.file("bad.pcap", pcap_header({}, 101) + pcap_record(datagram, 1, 0, 20) + pcap_record(datagram, 2, 0, 21));
  const std::string numbers = " | grep -o '^Frame [0-9]*' | tr -dc '0-9'";
  const std::string source = " | grep -m1 'Source'";
  const struct {
    const char* what;
    std::string command, out;
  } kCases[] = {
      {"all frames", "$W show $T" + numbers, "123"},
      {"a range", "$W show -N 2- $T" + numbers, "23"},
      {"ranges", "$W show --frames 3,1 $T" + numbers, "13"},
      {"a count", "$W show -c 2 $T" + numbers, "12"},
      {"a count of a range", "$W dump -N 2- -c 1 $T" + numbers, "2"},
      {"numbers count on", "$W show -N 3-5 $T $T $T" + numbers, "345"},
      {"-r and FILE", "$W dump -r $T -c 4 $T" + numbers, "1234"},
      {"standard input", "$W show - < $T" + numbers, "123"},
      {"standard input, unnamed", "$W dump < $T" + numbers, "123"},
      {"gzip from a pipe", "gzip -c $T | $W dump -" + numbers, "123"},
      {"reading stops before damage", "head -c 90 $T | $W show -N 1" + numbers, "1"},
      {"several traces are named", "$W show -N 1,4 trace.pcap plain.pcap | grep ^Trace",
       "Trace trace.pcap\nTrace plain.pcap\n"},
      {"the sidecar's names win over the user's", "$W show $T" + source, "  [Source Address] 0A0B0C0D0E0F (sidecar)\n"},
      {"--names wins", "$W show --names names $T" + source, "  [Source Address] 0A0B0C0D0E0F (given)\n"},
      {"names of the user", "$W show $T | grep -m1 Protocol", "  [Protocol Type] 0x88B5 (local)\n"},
      {"the names of every trace", "$W show -N 5,6 plain.pcap trace.pcap | grep Source",
       "  [Source Address] 0A0B0C0D0E0F (sidecar)\n  [Source Address] 0A0B0C0D0E0F (sidecar)\n"},
      {"traces are one in the order of time", "$W list late.pcap $T early.pcap | cut -c -21 | tr -s '\n ' ' '",
       " 1 18:59:59.999999 2 19:00:00.123456 3 19:00:01.000004 4 19:00:01.000005 5 19:00:01.999999"
       " 6 19:00:00.500000 7 19:00:01.999999 "},
      {"of the same time, that of the trace named first", "$W show -N 3 late.pcap $T | grep '^Trace'",
       "Trace late.pcap\n"},
      {"a filter keeps the numbers", "$W show -f 'greater 17' $T" + numbers, "23"},
      {"a filter, by the length on the wire", "$W dump --filter 'len > 1000' -c 1 $T $T" + numbers, "3"},
      {"a filter for the list", "$W list -f 'ether proto 0x88b5 and less 15' $T | cut -c -5", "    1\n"},
      {"a filter for each link type", "$W show -f ip $T raw.pcap" + numbers, "1"},
      {"tags are lifted", "$W show tagged.pcap | grep -e VLAN -e Protocol -e '^  00'",
       "  [Protocol Type] 0x88B5 (local)\n  [VLAN] 5 [Priority] 3 [Drop Eligible] 0 (802.1Q)\n"
       "  0000  61 61 61 61 61 61 61 61 - 61 61 61 61 61 61 61 61  aaaaaaaaaaaaaaaa\n"},
      {"or left alone", "$W show --no-lift tagged.pcap | grep -c -e VLAN -e '\\[Protocol Type\\] 0x8100'", "1\n"},
      {"VLANs in the list", "$W list -n tagged.pcap | cut -c 23-",
       "0a:0b:0c:0d:0e:0f 01:02:03:04:05:06 Ether    34 EtherType 0x88B5, VLAN 5\n"},
      {"a PPP link has no session to list", "$W list -n ppp.pcap | cut -c 59-", "PPP       8 PPP 0x80FD\n"},
      {"a verdict of a cut frame has no colour", "$W show --color always bad.pcap | grep -o '(NG).*' | tr '\\33' '^'",
       "(NG)^[0m\n(NG)\n"},
      {"no names", "$W show -n --names names $T" + source, "  [Source Address] 0A0B0C0D0E0F \n"},
      {"a character set", "$W show -N 2 --charset sjis $T | tail -n 1",
       "  0000  B6 B6 20  0  0  0  0  0                            ｶｶ\n"},
      {"colour when asked for", "$W show -N 1 --color always $T | head -n 3 | tr '\\33' '^'",
       "^[1mFrame 1  2024-05-01 19:00:00.123456  15 bytes^[0m\n"
       "^[1;38;5;32m--- MAC [0A0B0C0D0E0F] --> [010203040506] ---------------------------------^[0m\n"
       "  ^[38;5;30m[Time]^[0m 05/01/2024 19:00:00.123456\n"},
      {"no colour into a pipe", "$W show $T | grep -c $'\\33'", "0\n"},
      {"help", "$W show --help | grep -c -e --frames -e 'Usage: wirelines show'", "2\n"},
      {"version", "$W --version | grep -c '^wirelines [0-9]'", "1\n"},
  };
  for (const auto& c : kCases) {
    const auto result = run(c.command);
    EXPECT_EQ(result.out, c.out) << c.what;
    EXPECT_EQ(result.err, "") << c.what;
  }
}

TEST_F(Program, exit_codes_and_messages) {
  folder_.file("cut.pcap", contents(trace_).substr(0, 100));
  folder_.file("none.pcap", pcap_header());
  run("head -c 2990 '" SOURCE_DIR
      "/examples/lan.pcap' | tee long | gzip > damaged.gz; gzip -c long | head -c 500 > half.gz");
  folder_.file("damaged.zst", "\x28\xB5\x2F\xFD" + std::string(40, '\xFF'));
  folder_.file("cut.pcapng", (pcapng_header() + pcapng_record(ethernet_frame(), 1, 60)).append(9, '\x06'));
  folder_.file("bad.names", "station 010203040506 fine\nhouse 1 two\n");
  folder_.file("\x1B[31m.pcap", "x");
  const struct {
    const char* command;
    int exit_code;
    const char* err;  // its beginning
  } kCases[] = {
      {"$W show $T", 0, ""},
      {"$W show $T | head -n 1; exit ${PIPESTATUS[0]}", 0, ""},
      {"$W show $T $T $T $T $T $T $T $T | true; exit ${PIPESTATUS[0]}", 0, ""},
      {"$W", 64, ""},
      {"$W shw $T", 64,
       "wirelines: 'shw' is not a subcommand; there are: show, list, dump, stats, names, json, classify, capture, "
       "index, view\n"},
      {"$W trace.pcap", 64,
       "wirelines: 'trace.pcap' is not a subcommand; there are: show, list, dump, stats, names, json, classify, "
       "capture, index, view. To see that trace: "},
      {"$W show --colour $T", 64, "wirelines: The following argument was not expected: --colour"},
      {"$W show -N 5-3 $T", 64, "wirelines: --frames: '5-3' ends before it begins"},
      {"$W show -N", 64, "wirelines: --frames"},
      {"$W show -c 0 $T", 64, "wirelines: --count: '0' is not a number of 1 or more (see wirelines show --help)"},
      {"$W show -c -1 $T", 64, "wirelines: --count: '-1' is not a number of 1 or more"},
      {"$W show -c 0x2 $T", 64, "wirelines: --count: '0x2' is"},
      {"$W show -c 18446744073709551616 $T", 64, "wirelines: --count: '18446744073709551616' is"},
      {"$W show -N 0 $T", 64, "wirelines: --frames: "},
      {"$W show -N 1,x $T", 64, "wirelines: --frames: 'x'"},
      {"$W json --lines some $T", 64, "wirelines: --lines: 'some' is none of fields, all, none"},
      {"$W classify -T csv $T", 64, "wirelines: -T: 'csv' is none of tsv, jsonl"},
      {"$W classify --schema sql", 64, "wirelines: --schema: 'sql' is none of clickhouse, json"},
      {"$W stats --top 1000000001 $T", 64, "wirelines: --top: '1000000001' is not a number from 0 to 1000000000"},
      {"$W list --charset ascii $T", 64, "wirelines: The following argument was not expected: "},
      {"$W show -f 'tcp prot 80' trace.pcap", 64, "wirelines: trace.pcap: --filter 'tcp prot 80': can't parse filter"},
      {"$W show - - < $T", 64, "wirelines: FILE: - can be named only once"},
      {"ulimit -n 16; for i in {1..14}; do set -- $@ trace.pcap; done; $W show $@", 64,
       "wirelines: 14 traces are too many: only 16 files may be open at once; "},
      {"$W show -N 1-4 $T cut.pcap", 0, ""},
      {"$W show $T cut.pcap", 65, "wirelines: cut.pcap: broken at frame 3, offset 87: truncated"},
      {"$W show --charset latin1 $T", 64, "wirelines: --charset: 'latin1' is none of ascii, sjis, jis, utf16, euc, "},
      {"$W show --color=red $T", 64, "wirelines: --color: 'red' is none of auto, always, never"},
      {"$W show cut.pcap", 65, "wirelines: cut.pcap: broken at frame 3, offset 87: truncated"},
      {"$W list cut.pcap", 65, "wirelines: cut.pcap: broken at frame 3, offset 87: truncated"},
      {"$W show - < cut.pcap", 65, "wirelines: standard input: broken at frame 3, offset 87: truncated"},
      {"$W list cut.pcapng", 65, "wirelines: cut.pcapng: broken at frame 2, offset 140: "},
      {"$W list damaged.gz", 65, "wirelines: damaged.gz: broken at frame 18, offset 2898 of "},
      {"$W list damaged.zst", 65, "wirelines: damaged.zst: "},
      {"$W list half.gz", 65, "wirelines: half.gz: "},
      {"$W show /dev/null", 65, "wirelines: /dev/null: is empty\n"},
      {"$W show command", 65, "wirelines: command: is not a pcap or pcapng trace"},
      {"$W show $'\\e[31m.pcap'", 65, "wirelines: ?[31m.pcap: is not"},
      {"$W dump nowhere", 66, "wirelines: nowhere: cannot be opened: No such file or directory\n"},
      {"$W dump .", 66, "wirelines: .: is a directory"},
      {"$W show --names nowhere $T", 66, "wirelines: nowhere: cannot be read: No such file or directory\n"},
      {"$W show $T > /dev/full", 74, "wirelines: the output cannot be written: No space left on device\n"},
      {"$W list $T > /dev/full", 74, "wirelines: the output cannot be written: No space left on device\n"},
      {"$W dump $T > /dev/full", 74, "wirelines: the output cannot be written: No space left on device\n"},
      {"$W json $T > /dev/full", 74, "wirelines: the output cannot be written: No space left on device\n"},
      {"$W classify $T > /dev/full", 74, "wirelines: the output cannot be written: No space left on device\n"},
      {"$W stats $T > /dev/full", 74, "wirelines: the output cannot be written: No space left on device\n"},
      {"yes \"$T\" | head -n 300 | xargs -n 300 $W json -q | head -c 1; exit ${PIPESTATUS[2]}", 0, ""},
      {"$W --help > /dev/full", 74, "wirelines: the output cannot be written"},
      {"$W show nowhere $T cut.pcap", 66,
       "wirelines: nowhere: cannot be opened: No such file or directory\nwirelines: cut"},
      {"$W show -N 4- $T", 0, "wirelines: none of the 3 frame(s) was chosen\n"},
      {"$W show -q -N 4- $T", 0, ""},
      {"$W show none.pcap", 0, "wirelines: there are no frames\n"},
      {"$W show --names bad.names $T", 0, "wirelines: bad.names:2: "},
  };
  for (const auto& c : kCases) {
    const auto result = run(c.command);
    EXPECT_EQ(result.exit_code, c.exit_code) << c.command << "\n" << result.err;
    EXPECT_EQ(result.err.substr(0, std::strlen(c.err)), c.err) << c.command;
    EXPECT_EQ(result.err.empty(), *c.err == '\0') << c.command << "\n" << result.err;
  }
  EXPECT_EQ(run("$W show cut.pcap nowhere $T 2>/dev/null | grep -c '^Frame'").out, "5\n") << "what can be read is read";
}

TEST_F(Program, no_permission) {
  if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
  const auto result = run("chmod 0 $T; $W show trace.pcap");
  EXPECT_EQ(result.exit_code, 77);
  EXPECT_EQ(result.err,
            "wirelines: trace.pcap: no permission to read it; its owner or root can grant it: "
            "chmod a+r 'trace.pcap'\n");
}

// A frame is shown as soon as it is there, not when a buffer is full.
TEST_F(Program, shows_frames_as_they_come) {
  const auto result = run(R"(
    mkfifo pipe seen; $W show - < pipe > seen & exec 5> pipe 6< seen
    head -c 55 $T >&5; read -t 10 -r line <&6; echo "$line"
    exec 5>&-; cat <&6 > rest; wait)");
  EXPECT_EQ(result.out, "Frame 1  2024-05-01 19:00:00.123456  15 bytes\n");
}

// Every trace at hand: each frame once, nothing but printable ASCII, and the same again in the readable form. Of the
// samples, nothing is damaged.
TEST_F(Program, real_traces) {
  const auto count = [](const std::string& text, const std::string& begin) {
    int lines = text.starts_with(begin) ? 1 : 0;
    for (auto at = text.find("\n" + begin); at != std::string::npos; at = text.find("\n" + begin, at + 1)) lines++;
    return lines;
  };
  const auto control = [](char c) { return (c >= 0 && c < 0x20 && c != '\n') || c == 0x7F; };
  int samples = 0;
  for (const std::filesystem::path folder : {SOURCE_DIR "/examples", SOURCE_DIR "/../shared/captures"}) {
    if (!std::filesystem::is_directory(folder)) continue;
    const bool sample = folder.filename() == "examples";
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() != ".pcap") continue;
      trace_ = entry.path();
      const auto raw = run("$W show --raw $T");
      const bool refused = !sample && (raw.err.find("cannot be decoded") != std::string::npos ||
                                       raw.err.find("broken at frame") != std::string::npos);
      EXPECT_EQ(raw.exit_code, refused ? 65 : 0) << trace_ << raw.err;
      EXPECT_TRUE(std::none_of(raw.out.begin(), raw.out.end(), [&](char c) { return control(c) || c < 0; })) << trace_;
      const auto frames = count(raw.out, "# frame ");
      EXPECT_TRUE(frames > 0 || refused) << trace_;
      EXPECT_EQ(count(run("$W dump $T").out, "Frame "), frames) << trace_;
      const auto listed = run("$W list $T").out;
      EXPECT_EQ(std::count(listed.begin(), listed.end(), '\n'), frames) << trace_;
      EXPECT_TRUE(std::none_of(listed.begin(), listed.end(), [&](char c) { return control(c) || c < 0; })) << trace_;
      const auto shown = run("$W show $T").out;
      EXPECT_EQ(count(shown, "Frame "), frames) << trace_;
      EXPECT_TRUE(std::none_of(shown.begin(), shown.end(), control)) << trace_;
      if (!sample) continue;
      samples++;
      EXPECT_EQ(raw.err, "") << trace_;
      EXPECT_EQ(listed.find("checksum"), std::string::npos) << trace_;
      EXPECT_EQ(listed.find("(cut)"), std::string::npos) << trace_;
    }
  }
  EXPECT_GT(samples, 0);
}

}  // namespace
}  // namespace wirelines::host
