// wirelines names: what it prints, and what it leaves in a file.
#include <gtest/gtest.h>

#include "program.hpp"

namespace wirelines::host {
namespace {

class NamesCommand : public Program {
 protected:
  NamesCommand() {
    std::filesystem::create_directories(folder_.path("config/wirelines"));
    own_ = folder_.path("config/wirelines/names");
  }
  std::string own_;
};

// One change of a file: what it holds afterwards.
TEST_F(NamesCommand, changes_one_line) {
  const struct {
    const char* what;
    const char* before;
    const char* command;
    const char* after;
  } kCases[] = {
      {"a new name comes last", "# mine\nport 1 a\n\n", "add type 88b5 local", "# mine\nport 1 a\n\ntype 88B5 local\n"},
      {"the last line had no end", "port 1 a", "add ip6 FE80:0:0:0:0:0:0:1 b", "port 1 a\nip6 fe80::1 b\n"},
      {"an empty file", "", "add sap e0/e0 ipx", "sap E0E0 ipx\n"},
      {"a name is replaced, its key and comment stay", "ip 1.2.3.4 x\n station\t00:00:5e:00:53:1  old name \t# why\n",
       "add station 00005E005301 'new name'", "ip 1.2.3.4 x\n station\t00:00:5e:00:53:1  new name \t# why\n"},
      {"the line that counts is the last", "port 1 a\nport 1 b\n", "add port 1 c", "port 1 a\nport 1 c\n"},
      {"a '#' in a name is no comment", "port 1 a#b\n", "add port 1 c#d", "port 1 c#d\n"},
      {"a line without a name", "port 1\nport 2 # two\n", "add port 2 b", "port 1\nport 2 b # two\n"},
      {"a line without a name that just ends", "port 1", "add port 1 b", "port 1 b"},
      {"line ends of another system", "port 1 a\r\nport 2 b\r\n", "add port 1 c", "port 1 c\r\nport 2 b\r\n"},
      {"line ends of another system, added", "port 1 a\r\n", "add port 2 b", "port 1 a\r\nport 2 b\r\n"},
      {"a byte order mark", "\xEF\xBB\xBFport 1 a\n", "add port 1 b", "\xEF\xBB\xBFport 1 b\n"},
      {"a name in UTF-8", "", "add port 1 '\xE3\x83\xAB x'", "port 1 \xE3\x83\xAB x\n"},
      {"a name like a subcommand or an option", "", "add port 1 show; $W names add port 2 -- -n",
       "port 1 show\nport 2 -n\n"},
      {"a key commented out is none", "#port 1 a\n# port 1 a\n", "add port 1 b", "#port 1 a\n# port 1 a\nport 1 b\n"},
      {"all lines of a key go", "port 1 a\n# keep\nport 1 b # not\nport 11 c\n", "remove port 1",
       "# keep\nport 11 c\n"},
      {"bad lines stay", "house 1 x\nport 70000 y\nport 1 a\n", "remove port 1", "house 1 x\nport 70000 y\n"},
      {"an import", "ip 192.0.2.1 old # here\n", "import hosts hosts",
       "ip 192.0.2.1 gate # here\nip6 2001:db8::1 gate6\n"},
      {"an import of standard input", "port 80 web\n", "import services - < services",
       "port 80 http\nport 53 domain\n"},
      {"ethers", "", "import ethers ethers", "station 00005E005301 router\n"},
  };
  folder_.file("hosts", "# hosts\n192.0.2.1 gate alias\n2001:db8::1 gate6\n192.0.2.1 second\n");
  folder_.file("services", "http 80/tcp www\nhttp 80/udp\ndomain 53/udp\nx 9/sctp\n");
  folder_.file("ethers", "0:0:5e:0:53:1 router\n");
  for (const auto& c : kCases) {
    folder_.file("config/wirelines/names", c.before);
    const auto result = run(std::string("$W names ") + c.command);
    EXPECT_EQ(result.exit_code, 0) << c.what;
    EXPECT_EQ(result.err, "") << c.what;
    EXPECT_EQ(contents(own_), c.after) << c.what;
    EXPECT_EQ(run("ls -A config/wirelines").out, "names\n") << c.what << ": nothing is left over";
  }
}

// A line of 8192 bytes or with a NUL is passed over when names are read: a name put there would be lost.
TEST_F(NamesCommand, leaves_lines_that_are_never_read) {
  const auto unread = "port 1 a #" + std::string(8192, 'x') + "\nport 1 b" + std::string(1, '\0') + "\n";
  folder_.file("config/wirelines/names", unread);
  run("$W names add port 1 c");
  EXPECT_EQ(contents(own_), unread + "port 1 c\n");
}

TEST_F(NamesCommand, makes_and_replaces_files) {
  const std::string heading = "# Names for wirelines, one a line: kind key name\n";
  EXPECT_EQ(run("rm -r config; umask 022; $W names add port 1 a && stat -c %a config/wirelines/names").out, "644\n");
  EXPECT_EQ(contents(own_), heading + "port 1 a\n");
  EXPECT_EQ(run("chmod 600 config/wirelines/names; $W names add port 1 b; stat -c %a config/wirelines/names").out,
            "600\n");
  EXPECT_EQ(
      run("mkdir far; ln -s far/names link; $W names add --file link port 2 c; readlink link; tail -n 1 far/names").out,
      "far/names\nport 2 c\n")
      << "a link stays, even one that led nowhere";
  EXPECT_EQ(run("for i in {1..20}; do $W names add --file many port $i n & done; wait; grep -c ^port many").out, "20\n")
      << "changes at the same time";
}

TEST_F(NamesCommand, lists_and_finds) {
  folder_.file("config/wirelines/names",
               "port 80 mine\nstation 00005E005302 b\nip 192.0.2.10 ten\nip 192.0.2.9 nine\n");
  folder_.file("trace.pcap.names", "station 00-00-5E-00-53-01 side\nport 80 side\n");
  folder_.file("given", "port 80 first\nport 80 given\nsap 8000 \xE3\x83\xAB\n");
  folder_.file("given\x1B", "port 7 \xC2\x9B\n");
  const std::string own = "  # " + own_;
  const struct {
    const char* command;
    std::string out;
  } kCases[] = {
      {"list --trace trace.pcap --names given",
       "station 00005E005301 side   # trace.pcap.names\n"
       "station 00005E005302 b    " +
           own +
           "\n"
           "ip      192.0.2.9    nine " +
           own +
           "\n"
           "ip      192.0.2.10   ten  " +
           own +
           "\n"
           "port    80           given  # given\n"
           "sap     8000         \xE3\x83\xAB     # given\n"},
      {"which 80 --trace trace.pcap --names given",
       "port    80 given  # given\n"
       "port    80 side   # trace.pcap.names (hidden)\n"
       "port    80 mine " +
           own + " (hidden)\n"},
      {"which 00:00:5e:00:53:2 --names given", "station 00005E005302 b" + own + "\n"},
      {"which 8000 --names given", "sap     8000 \xE3\x83\xAB  # given\n"},
      {"which 7 --names $'given\\e'", "port    7 ?  # given?\n"},
      {"list --names given > all; $W names check all; rm config/wirelines/names; $W names list --names all | head -n 1",
       "station 00005E005302 b      # all\n"},
  };
  for (const auto& c : kCases) {
    const auto result = run(std::string("$W names ") + c.command);
    EXPECT_EQ(result.out, c.out) << c.command;
    EXPECT_EQ(result.err, "") << c.command;
    EXPECT_EQ(result.exit_code, 0) << c.command;
  }
}

TEST_F(NamesCommand, shows_names_in_utf_8) {
  folder_.file("config/wirelines/names",
               "station 0A0B0C0D0E0F \xE3\x83\xAB caf\xC3\xA9\nstation 010203040506 \xC3\xA9\xDE\n");
  EXPECT_EQ(run("$W show -N 1 $T | grep Address").out,
            "  [Destination Address] 010203040506 (\xEF\xBE\x83\xEF\xBD\xA9\xEF\xBE\x9E)\n"
            "  [Source Address] 0A0B0C0D0E0F (\xE3\x83\xAB caf?)\n")
      << "what is not UTF-8 is code page 932 already";
}

TEST_F(NamesCommand, exit_codes_and_messages) {
  const std::string before = "port 1 a\nhouse 1 2\nip 1.2.3.4\n";
  folder_.file("config/wirelines/names", before);
  folder_.file("hosts", "1.2.3.4 " + std::string(36, 'x') + "\n");
  const struct {
    const char* command;
    int exit_code;
    const char* out;
    const char* err;
  } kCases[] = {
      {"$W names", 64, "", "wirelines: A subcommand is required (see wirelines names --help)\n"},
      {"$W names add port 1", 64, "", "wirelines: NAME is required (see wirelines names add --help)\n"},
      {"$W names add ports 1 x", 64, "", "wirelines: 'ports' is none of station, ip, ip6, port, sap, type\n"},
      {"$W names add ip 1.2.3 x", 64, "", "wirelines: '1.2.3': the key is not an IPv4 address\n"},
      {"$W names add port 1 ' x'", 64, "", "wirelines: ' x': the name begins or ends with a blank\n"},
      {"$W names add port 1 $'a\\nport 2 b'", 64, "", "wirelines: 'a?port 2 b': the name holds a control byte\n"},
      {"$W names remove port x", 64, "", "wirelines: 'x': the key is not a port number from 0 to 65535\n"},
      {"$W names remove port 2 --file config/wirelines/names", 66, "",
       "wirelines: config/wirelines/names: has no name for port '2'\n"},
      {"$W names remove port 2 --file none/names; ls none 2>&1 | wc -l", 0, "1\n",
       "wirelines: none/names: cannot be read: No such file or directory\n"},
      {"$W names import lmhosts hosts", 64, "", "wirelines: 'lmhosts' is none of hosts, ethers, services\n"},
      {"$W names import hosts nowhere", 66, "", "wirelines: nowhere: cannot be read: No such file or directory\n"},
      {"$W names import hosts hosts --file f", 65, "f: 0 name(s) added, 0 replaced\n",
       "wirelines: hosts:1: the name is longer than 35 bytes\n"},
      {"$W names check | grep -o names:.:", 0, "names:2:\nnames:3:\n", ""},
      {"$W names check config/wirelines/names", 65,
       "config/wirelines/names:2: the line does not begin with station, ip, ip6, port, sap or type\n"
       "config/wirelines/names:3: the name is empty\n",
       ""},
      {"$W names check - < config/wirelines/names | cut -c -13", 0, "/dev/stdin:2:\n/dev/stdin:3:\n", ""},
      {"$W names check .", 66, "", "wirelines: .: cannot be read: Is a directory\n"},
      {"$W names which house", 64, "", "wirelines: 'house' is a key of no kind\n"},
      {"$W names which 2 2>&1 | tail -n 1", 0, "wirelines: no file has a name for '2'\n", ""},
      {"$W names list --names nowhere", 66, "", "wirelines: nowhere: cannot be read: No such file or directory\n"},
      {"$W names list > /dev/full 2> message; echo $?; tail -n 1 message", 0,
       "74\nwirelines: the output cannot be written: No space left on device\n", ""},
      {"$W names add --file /dev/null port 1 x", 66, "", "wirelines: /dev/null: is not a regular file\n"},
      {"$W names add --file hosts/names port 1 x", 74, "", "wirelines: hosts: cannot be written: Not a directory\n"},
      {"env -u HOME -u XDG_CONFIG_HOME $W names add port 1 x", 64, "",
       "wirelines: there is no home folder for a file of names; --file names another one\n"},
  };
  for (const auto& c : kCases) {
    const auto result = run(c.command);
    EXPECT_EQ(result.exit_code, c.exit_code) << c.command;
    EXPECT_EQ(result.out, c.out) << c.command;
    EXPECT_EQ(result.err, c.err) << c.command;
  }
  EXPECT_EQ(contents(own_), before) << "none of them changes the file";
}

// As another user, where root may write everything.
TEST_F(NamesCommand, no_permission) {
  if (geteuid() == 0) GTEST_SKIP() << "root may write everything";
  EXPECT_EQ(run("echo port 1 a > locked; chmod 400 locked; $W names add --file locked port 1 b").exit_code, 77);
  EXPECT_EQ(contents(folder_.path("locked")), "port 1 a\n");
  EXPECT_EQ(run("mkdir shut; chmod 500 shut; $W names add --file shut/names port 1 b").exit_code, 77);
  EXPECT_EQ(run("chmod 0 locked; $W names check locked").exit_code, 77);
}

}  // namespace
}  // namespace wirelines::host
