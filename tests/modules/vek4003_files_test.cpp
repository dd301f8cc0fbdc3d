// Files of names: reading each format, and saving.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "modules/allocation.hpp"
#include "modules/vek4003_test.hpp"

namespace fs = std::filesystem;
using namespace std::string_literals;

namespace {

class Vek4003Files : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "vek4003-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    NickNameClear();
  }
  void TearDown() override {
    NickNameClear();
    fs::remove_all(folder_);
  }

  [[nodiscard]] std::string path(const std::string& name) const { return (folder_ / name).string(); }

  [[nodiscard]] std::string write_file(const std::string& name, std::string_view text) const {
    std::ofstream(path(name), std::ios::binary) << text;
    return path(name);
  }

  [[nodiscard]] std::string read_file(const std::string& name) const {
    std::ifstream in(path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }

  [[nodiscard]] std::ptrdiff_t file_count() const { return std::distance(fs::directory_iterator(folder_), {}); }

  [[nodiscard]] mode_t mode(const std::string& name) const {
    struct stat status {};
    EXPECT_EQ(stat(path(name).c_str(), &status), 0);
    return status.st_mode & 07777;
  }

  fs::path folder_;
};

// What a load told, as "count|line: reason|line: reason".
std::string load(const std::string& file, NickNameFormat format) {
  std::string problems;
  const auto count = NickNameLoad(
      file.c_str(), format,
      [](const char*, std::int32_t line, const char* reason, void* context) {
        static_cast<std::string*>(context)->append("|").append(std::to_string(line)).append(": ").append(reason);
      },
      &problems);
  return std::to_string(count) + problems;
}

struct Case {
  const char* label;
  NickNameFormat format;
  std::string text;
  std::string told;
  std::string names;
};

const std::string kStationProblem = "the key is not a MAC address of twelve hexadecimal digits or six groups";

const Case kCases[] = {
    {"empty", NICKNAME_OWN, "", "0", ""},
    {"blank lines and comments", NICKNAME_OWN, "\n \t\n# all\n  # indented\n\r\n", "0", ""},
    {"every kind", NICKNAME_OWN,
     "type 0x88b5 lab\nsap E0/e0 ipx\nport 80 web\nip6 ::1 self\nip 127.0.0.1 self\nstation 01:23:45:67:89:ab desk\n",
     "6", "station 0123456789AB desk\nip 127.0.0.1 self\nip6 ::1 self\nport 80 web\nsap E0E0 ipx\ntype 88B5 lab\n"},
    {"blanks inside, around and before a comment", NICKNAME_OWN,
     "\t port\t80 \t my  web server \t# not this\nport 81 C# and #\nport 82 a#b", "3",
     "port 80 my  web server\nport 81 C# and\nport 82 a#b\n"},
    {"line ends", NICKNAME_OWN, "port 1 a\r\nport 2 b\r\n\r\nport 3 c\r", "3", "port 1 a\nport 2 b\nport 3 c\n"},
    {"byte order mark", NICKNAME_OWN, "\xEF\xBB\xBFport 1 a\n", "1", "port 1 a\n"},
    {"the last line counts", NICKNAME_OWN, "port 1 a\nport 1 b\n", "1", "port 1 b\n"},
    {"bad lines", NICKNAME_OWN,
     "port 1 a\nhost 1.2.3.4 b\nPORT 2 b\nport\nport 2\nport 70000 b\nport 2 # b\nport 2 b\rc\nport 2 b\0c\nport 3 d"s,
     "2|2: the line does not begin with station, ip, ip6, port, sap or type"
     "|3: the line does not begin with station, ip, ip6, port, sap or type"
     "|4: the key is not a port number from 0 to 65535"
     "|5: the name is empty"
     "|6: the key is not a port number from 0 to 65535"
     "|7: the name is empty"
     "|8: the name holds a control byte"
     "|9: the line holds a NUL byte",
     "port 1 a\nport 3 d\n"},
    {"names too long", NICKNAME_OWN,
     "station 0123456789AB " + std::string(32, 'x') + "\nip 1.2.3.4 " + std::string(36, 'x') + "\n",
     "0|1: the name is longer than 31 bytes|2: the name is longer than 35 bytes", ""},
    {"longest line", NICKNAME_OWN, "port 1 a" + std::string(8192 - 8, ' ') + "\nport 2 b\n", "2",
     "port 1 a\nport 2 b\n"},
    {"a line longer than that", NICKNAME_OWN, "port 1 a" + std::string(8193 - 8, ' ') + "\nport 2 b\n",
     "1|1: the line is longer than 8192 bytes", "port 2 b\n"},
    {"much longer, without an end", NICKNAME_OWN, "port 1 a\nport 2 b" + std::string(200000, 'x'),
     "1|2: the line is longer than 8192 bytes", "port 1 a\n"},
    {"hosts", NICKNAME_HOSTS,
     "127.0.0.1\tlocalhost loopback\n::1 ip6-localhost\nfe80::1 gate#way\n127.0.0.1 again # the first counts\n", "3",
     "ip 127.0.0.1 localhost\nip6 ::1 ip6-localhost\nip6 fe80::1 gate\n"},
    {"bad hosts", NICKNAME_HOSTS, "127.1 a\nfe80::1%eth0 b\n10.0.0.1\n10.0.0.2 #\nname 10.0.0.3\n",
     "0|1: the key is not an IPv4 address|2: the key is not an IPv6 address|3: the name is empty"
     "|4: the name is empty|5: the key is not an IPv4 address",
     ""},
    {"ethers", NICKNAME_ETHERS, "8:0:20:1:2:3 sun\n08-00-20-01-02-04 moon trailing\n8:0:20:1:2:3 second\n", "2",
     "station 080020010203 sun\nstation 080020010204 moon\n"},
    {"bad ethers", NICKNAME_ETHERS, "8:0:20:1:2 sun\nsun 8:0:20:1:2:3\n08:00:20:01:02:03\n",
     "0|1: " + kStationProblem + "|2: " + kStationProblem + "|3: the name is empty", ""},
    {"services", NICKNAME_SERVICES,
     "domain 53/tcp\ndomain2 53/udp nameserver\nshell 514/TCP cmd # no passwords\nsyslog 514/udp\nzip 6/ddp\n"
     "ntp\t123/UDP\n",
     "3", "port 53 domain\nport 123 ntp\nport 514 shell\n"},
    {"bad services", NICKNAME_SERVICES, "a\nb 80\nc 80/\nd /tcp\ne 65536/tcp\nf tcp/80\n80/tcp g\nh x/ddp\n",
     "0|1: the name is not followed by port/protocol|2: the name is not followed by port/protocol"
     "|3: the name is not followed by port/protocol|4: the key is not a port number from 0 to 65535"
     "|5: the key is not a port number from 0 to 65535|6: the key is not a port number from 0 to 65535"
     "|7: the name is not followed by port/protocol|8: the key is not a port number from 0 to 65535",
     ""},
};

TEST_F(Vek4003Files, EachFormatIsReadAndBadLinesAreTold) {
  for (const auto& c : kCases) {
    SCOPED_TRACE(c.label);
    NickNameClear();
    const auto file = write_file("names", c.text);
    EXPECT_EQ(load(file, c.format), c.told);
    EXPECT_EQ(all_names(), c.names);
    const auto without_listener = NickNameLoad(file.c_str(), c.format, nullptr, nullptr);
    EXPECT_EQ(std::to_string(without_listener), c.told.substr(0, c.told.find('|')));
  }
}

TEST_F(Vek4003Files, FilesThatCannotBeRead) {
  NickNameAdd(NICKNAME_PORT, "80", "kept");
  EXPECT_EQ(load(path("missing"), NICKNAME_OWN), "-1|0: cannot be read: No such file or directory");
  EXPECT_EQ(load(path(""), NICKNAME_HOSTS), "-1|0: cannot be read: Is a directory");
  EXPECT_EQ(NickNameLoad(nullptr, NICKNAME_OWN, nullptr, nullptr), -1);
  EXPECT_EQ(all_names(), "port 80 kept\n");
}

TEST_F(Vek4003Files, TheFileReadLastWins) {
  EXPECT_EQ(load(write_file("a", "10.0.0.1 first\n10.0.0.2 other\n"), NICKNAME_HOSTS), "2");
  EXPECT_EQ(load(write_file("b", "10.0.0.1 second\n10.0.0.1 third\n"), NICKNAME_HOSTS), "1");
  EXPECT_EQ(all_names(), "ip 10.0.0.1 second\nip 10.0.0.2 other\n");
}

TEST_F(Vek4003Files, ManyNamesComeBackAsTheyWereSaved) {
  std::string text = "# Names for wirelines, one a line: kind key name\n";
  for (int i = 0; i < 20000; ++i) text += "port " + std::to_string(i) + " \xE3\x81\x82 no. " + std::to_string(i) + "\n";
  text += "sap AAAA a/b \"c\" 'd' \\e\ntype 0800 C#\n";
  EXPECT_EQ(load(write_file("a", text), NICKNAME_OWN), "20002");
  const auto before = all_names();
  EXPECT_EQ(reason_text(NickNameSave(path("b").c_str())), "");
  EXPECT_EQ(read_file("b"), text);
  NickNameClear();
  EXPECT_EQ(load(path("b"), NICKNAME_OWN), "20002");
  EXPECT_EQ(all_names(), before);
}

TEST_F(Vek4003Files, SavingKeepsPermissionsAndLinks) {
  NickNameAdd(NICKNAME_PORT, "80", "web");
  const auto old_mask = umask(027);
  EXPECT_EQ(reason_text(NickNameSave(path("new").c_str())), "");
  umask(old_mask);
  EXPECT_EQ(mode("new"), 0640U);

  ASSERT_EQ(chmod(path("new").c_str(), 0604), 0);
  fs::create_directory(folder_ / "sub");
  fs::create_symlink("../new", folder_ / "sub/link");
  fs::create_symlink("sub/link", folder_ / "link");
  fs::create_symlink("sub/later", folder_ / "dangling");
  fs::create_symlink("circle", folder_ / "circle");
  NickNameAdd(NICKNAME_PORT, "81", "more");
  const auto text = "# Names for wirelines, one a line: kind key name\nport 80 web\nport 81 more\n"s;
  EXPECT_EQ(reason_text(NickNameSave(path("link").c_str())), "");
  EXPECT_EQ(read_file("new"), text);
  EXPECT_EQ(mode("new"), 0604U);
  EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
  EXPECT_TRUE(fs::is_symlink(folder_ / "sub/link"));

  EXPECT_EQ(reason_text(NickNameSave(path("dangling").c_str())), "");
  EXPECT_TRUE(fs::is_symlink(folder_ / "dangling"));
  EXPECT_EQ(read_file("sub/later"), text);

  EXPECT_EQ(reason_text(NickNameSave(path("circle").c_str())), "cannot be followed: Too many levels of symbolic links");
  EXPECT_EQ(file_count(), 5);
}

TEST_F(Vek4003Files, SavingInTheWorkingFolderNeedsNoPath) {
  const auto old_folder = fs::current_path();
  fs::current_path(folder_);
  const auto longest = std::string(255, 'n');
  const auto reason = reason_text(NickNameSave(longest.c_str()));
  fs::current_path(old_folder);
  EXPECT_EQ(reason, "");
  EXPECT_EQ(read_file(longest), "# Names for wirelines, one a line: kind key name\n");
  EXPECT_EQ(file_count(), 1);
}

TEST_F(Vek4003Files, FilesThatCannotBeSaved) {
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  EXPECT_EQ(reason_text(NickNameSave(nullptr)), "there is no file name");
  EXPECT_EQ(reason_text(NickNameSave("")), "there is no file name");
  EXPECT_EQ(reason_text(NickNameSave(folder_.c_str())), "cannot be replaced: Is a directory");
  EXPECT_EQ(reason_text(NickNameSave(path("fifo").c_str())), "cannot be replaced: it is not a regular file");
  EXPECT_EQ(reason_text(NickNameSave(path("none/names").c_str())),
            "cannot create a file beside it: No such file or directory");
  EXPECT_EQ(file_count(), 1);
}

TEST_F(Vek4003Files, AReadOnlyFileStays) {
  if (geteuid() == 0) GTEST_SKIP() << "root may write everything";
  const auto file = write_file("names", "port 80 old\n");
  ASSERT_EQ(chmod(file.c_str(), 0444), 0);
  EXPECT_EQ(reason_text(NickNameSave(file.c_str())), "cannot be written: Permission denied");
  EXPECT_EQ(read_file("names"), "port 80 old\n");
}

// A disk that is full after the first bytes.
TEST_F(Vek4003Files, AFailedSaveLeavesTheOldFile) {
  for (int port = 0; port < 1000; ++port) NickNameAdd(NICKNAME_PORT, std::to_string(port).c_str(), "new");
  const auto file = write_file("names", "port 80 old\n");
  rlimit old_limit{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old_limit), 0);
  const auto old_signal = std::signal(SIGXFSZ, SIG_IGN);
  rlimit small = old_limit;
  small.rlim_cur = 4096;
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const auto reason = reason_text(NickNameSave(file.c_str()));
  setrlimit(RLIMIT_FSIZE, &old_limit);
  (void)std::signal(SIGXFSZ, old_signal);
  EXPECT_EQ(reason, "cannot write the file beside it: File too large");
  EXPECT_EQ(read_file("names"), "port 80 old\n");
  EXPECT_EQ(file_count(), 1);
}

TEST_F(Vek4003Files, ExhaustedMemoryLeavesNamesAndFilesAsTheyWere) {
  SKIP_IF_ALLOCATIONS_HIDDEN();
  std::string all_new = "ip 10.0.0.1 host\n";
  for (int port = 80; port < 120; ++port) all_new += "port " + std::to_string(port) + " new\n";  // the table grows
  const auto source = write_file("source", all_new);
  const auto target = write_file("target", "old\n");
  NickNameAdd(NICKNAME_PORT, "80", "kept");
  int load_failures = 0;
  for (;; ++load_failures) {
    std::string told(200, ' ');  // room, so that the listener itself allocates nothing
    told.clear();
    g_allocations_left = load_failures;
    const auto count = NickNameLoad(
        source.c_str(), NICKNAME_OWN,
        [](const char*, std::int32_t, const char* reason, void* context) {
          static_cast<std::string*>(context)->append(reason);
        },
        &told);
    g_allocations_left = -1;
    if (count == 41) break;
    ASSERT_EQ(count, -1);
    ASSERT_EQ(told, "memory is exhausted");
    ASSERT_EQ(all_names(), "port 80 kept\n");
  }
  EXPECT_GT(load_failures, 3);
  EXPECT_EQ(all_names(), all_new);

  int save_failures = 0;
  for (;; ++save_failures) {
    g_allocations_left = save_failures;
    const char* reason = NickNameSave(target.c_str());
    g_allocations_left = -1;
    if (reason == nullptr) break;
    ASSERT_STREQ(reason, "memory is exhausted");
    ASSERT_EQ(read_file("target"), "old\n");
    ASSERT_EQ(file_count(), 2);
  }
  EXPECT_GT(save_failures, 3);
  EXPECT_NE(read_file("target"), "old\n");
}

}  // namespace
