// Live captures over a pair of virtual interfaces, in a network namespace that goes away with this process.
#include <gtest/gtest.h>
#include <linux/if_packet.h>
#include <net/if.h>
#include <sched.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <sstream>
#include <thread>
#include <utility>
#include <vector>

#include "host/trace.hpp"
#include "program.hpp"
#ifdef VIEWER
#include "viewer.hpp"
#endif

namespace wirelines::host {
namespace {

const std::string kNobody = "setpriv --reuid=65534 --regid=65534 --clear-groups ";
const std::string kNoDrops = ", 0 dropped by the kernel, 0 dropped by the interface\n";

bool soon(const std::function<bool()>& condition) {
  for (int i = 0; i < 1000 && !condition(); i++) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  return condition();
}

// Frame `number` of a test, told apart by it.
std::string numbered(std::uint32_t number, std::size_t size = 60) {
  auto frame = ethernet_frame(size, static_cast<char>('a' + number % 26));
  return frame.replace(14, 4, word(number, true));
}

std::vector<std::string> frames_of(const std::string& path) {
  std::vector<std::string> frames;
  Trace trace(path, {});
  for (Frame frame{}; trace.next(frame);) {
    frames.emplace_back(reinterpret_cast<const char*>(frame.data), frame.length);
  }
  return frames;
}

// Frames are sent from v0 and captured at v1.
class Live : public Program {
 protected:
  void SetUp() override {
    if (geteuid() != 0 || unshare(CLONE_NEWNET) != 0) GTEST_SKIP() << "needs root and network namespaces";
    const auto result =
        run("echo 1 > /proc/sys/net/ipv6/conf/default/disable_ipv6;"
            "ip link add v0 type veth peer name v1 && ip link set v0 up && ip link set v1 up");
    if (result.exit_code != 0) GTEST_SKIP() << "needs ip (iproute2) and virtual interfaces: " << result.err;
    setenv("ASAN_OPTIONS", "detect_leaks=0", 1);  // the leak checker cannot look into a process that changed its user
    socket_ = socket(AF_PACKET, SOCK_RAW, 0);
    sockaddr_ll v0{};
    v0.sll_family = AF_PACKET;
    v0.sll_ifindex = static_cast<int>(if_nametoindex("v0"));
    ASSERT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&v0), sizeof v0), 0);
  }
  void TearDown() override {
    if (pid_ > 0) end(SIGKILL);
    if (socket_ >= 0) close(socket_);
  }

  void send(std::uint32_t first, std::uint32_t count, std::size_t size = 60) const {
    for (auto number = first; number < first + count; number++) {
      const auto frame = numbered(number, size);
      ASSERT_EQ(::send(socket_, frame.data(), frame.size(), 0), static_cast<ssize_t>(frame.size()));
    }
  }

  // Starts a command line and waits until its program, "exec $W ...", captures.
  void start(const std::string& command) {
    setenv("W", PROGRAM, 1);
    folder_.file("command", "cd '" + folder_.path("") + "'; exec > out 2> err < /dev/null; " + command);
    pid_ = fork();
    if (pid_ == 0) {
      execlp("bash", "bash", folder_.path("command").c_str(), nullptr);
      _exit(127);
    }
    // Signals are caught when everything else is ready.
    constexpr auto kCaught = 1U << (SIGINT - 1) | 1U << (SIGTERM - 1) | 1U << (SIGHUP - 1);
    ASSERT_TRUE(soon([&] {
      const auto caught = std::strtoull(status("SigCgt").c_str(), nullptr, 16);
      return status("NoNewPrivs") == "1" && (caught & kCaught) == kCaught;
    })) << contents(folder_.path("err"));
  }

  // What /proc says of the program, without blanks.
  std::string status(const std::string& key) const {
    std::istringstream lines(contents("/proc/" + std::to_string(pid_) + "/status"));
    for (std::string line; std::getline(lines, line);) {
      if (!line.starts_with(key + ":")) continue;
      std::erase_if(line, [](char c) { return c == ' ' || c == '\t'; });
      return line.substr(key.size() + 1);
    }
    return "";
  }

  // Waits for the program's end, after a signal if one is given.
  Result end(int signal = 0) {
    if (signal != 0) kill(pid_, signal);
    int status = 0;
    waitpid(std::exchange(pid_, -1), &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_.path("out")), contents(folder_.path("err"))};
  }

  // The files of a ring, in the order of their numbers.
  std::vector<std::string> files(const std::string& prefix) const {
    std::vector<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path(""))) {
      if (entry.path().filename().string().starts_with(prefix)) found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
  }

  int socket_ = -1;
  pid_t pid_ = -1;
};

TEST_F(Live, captures_every_byte_until_a_signal) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    start("exec $W capture -i v1 -w live.pcap -f 'ether proto 0x88b5 and not ether[17] = 2'");
    for (std::uint32_t i = 0; i < 4; i++) send(i, 1, 60 + i * 484);
    const auto result = end(signal);
    EXPECT_EQ(result.exit_code, 0) << signal;
    EXPECT_EQ(result.err,
              "wirelines: capturing to live.pcap; Ctrl-C ends it\n"
              "wirelines: 3 frame(s) captured, 3 received by the filter" +
                  kNoDrops);
    const auto trace = folder_.path("live.pcap");
    EXPECT_EQ(frames_of(trace), (std::vector{numbered(0), numbered(1, 544), numbered(3, 1512)})) << signal;
    EXPECT_EQ(contents(trace).substr(0, 4), word(0xA1B23C4D, false)) << "nanoseconds";
  }
}

TEST_F(Live, ends_by_itself) {
  start("exec $W capture -q -i v1 -s 20 -c 2 -w two.pcap");
  send(0, 5);
  EXPECT_EQ(end().err, "");
  EXPECT_EQ(frames_of(folder_.path("two.pcap")), (std::vector{numbered(0, 20), numbered(1, 20)}));

  start("exec $W capture -q -i v1 --seconds 1");
  send(7, 1);
  EXPECT_EQ(end().exit_code, 0);
  ASSERT_EQ(files("v1_").size(), 1u);
  EXPECT_EQ(frames_of(files("v1_")[0]), std::vector{numbered(7)});
}

TEST_F(Live, rotates_without_losing_a_frame) {
  constexpr std::uint32_t kCount = 5000;
  const struct {
    const char *limit, *prefix;
    std::size_t files;
    std::uint32_t first;  // that is left
  } kCases[] = {
      {"--file-size 1", "all_", 6, 0}, {"--file-size 1 --files 2", "ring_", 2, 3936},  // 984 frames a file
  };
  for (const auto& c : kCases) {
    start(std::string("exec $W capture -q -i v1 ") + c.limit + " -w " + c.prefix + "x.pcap");
    send(0, kCount, 1000);
    EXPECT_EQ(end(SIGINT).err, "") << c.limit;
    std::uint32_t next = c.first;
    const auto found = files(c.prefix);
    EXPECT_EQ(found.size(), c.files) << c.limit;
    for (const auto& file : found) {
      EXPECT_LE(std::filesystem::file_size(file), 1'000'000u);
      for (const auto& frame : frames_of(file)) ASSERT_EQ(frame, numbered(next++, 1000)) << file;
    }
    EXPECT_EQ(next, kCount) << c.limit;
  }

  start("exec $W capture -q -i v1 --file-seconds 1 -w time.pcap");
  send(0, 2);
  std::this_thread::sleep_for(std::chrono::milliseconds(2100));
  send(2, 1);
  EXPECT_EQ(end(SIGINT).exit_code, 0);
  const auto found = files("time_0000");
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(frames_of(found[0]).size(), 2u);
  EXPECT_EQ(frames_of(found[1]), std::vector{numbered(2)});
}

TEST_F(Live, is_shown_as_it_comes) {
  const struct {
    const char *command, *first;
  } kCases[] = {
      {"list -i v1 -f 'ether[17] != 1' --utc", "    1 "},
      {"json -i v1 --lines none", "{\"v\":1,\"frame\":1,"},
      {"classify -i v1", "v1\t1\t0\t"},
  };
  for (const auto& c : kCases) {
    const auto lines = [&] {
      const auto out = contents(folder_.path("out"));
      return std::count(out.begin(), out.end(), '\n');
    };
    start(std::string("exec $W ") + c.command);
    send(0, 1);
    EXPECT_TRUE(soon([&] { return lines() == 1; })) << c.command;
    send(2, 1);
    EXPECT_TRUE(soon([&] { return lines() == 2; })) << c.command;
    const auto result = end(SIGINT);
    EXPECT_EQ(result.exit_code, 0) << c.command;
    EXPECT_TRUE(result.out.starts_with(c.first)) << result.out;
    EXPECT_EQ(result.err, "wirelines: 2 frame(s) shown, 2 received by the filter" + kNoDrops) << c.command;
  }
}

TEST_F(Live, ends_quietly_when_the_reader_has_gone) {
  for (const std::string command : {"capture -i v1 -w -", "list -i v1"}) {
    start("mkfifo -m 666 pipe; head -c 30 < pipe & exec $W " + command + " > pipe; wait");
    send(0, 1);
    ASSERT_TRUE(soon([&] { return contents(folder_.path("out")).size() == 30; })) << command;
    send(1, 1);
    const auto result = end();
    EXPECT_EQ(result.exit_code, 0) << command;
    EXPECT_EQ(result.err, "") << command;
    std::filesystem::remove(folder_.path("pipe"));
  }
}

TEST_F(Live, tells_of_dropped_frames_even_when_quiet) {
  start("exec $W capture -q -i v1 --buffer 1 -w live.pcap");
  kill(pid_, SIGSTOP);
  send(0, 5000, 1514);
  kill(pid_, SIGCONT);
  const auto result = end(SIGINT);
  const auto kept = frames_of(folder_.path("live.pcap")).size();
  EXPECT_LT(kept, 5000u);
  EXPECT_EQ(result.err, "wirelines: " + std::to_string(5000 - kept) +
                            " frame(s) lost: the kernel's buffer was full; a greater --buffer than 1 or a narrower "
                            "--filter may help\n");
  EXPECT_EQ(result.exit_code, 0);
}

TEST_F(Live, gives_up_its_rights) {
  std::filesystem::permissions(folder_.path(""), std::filesystem::perms::all);
  const std::string sudo = "SUDO_UID=4321 SUDO_GID=321 ";
  // As the program's file gives its capability to whoever runs it.
  const std::string capable =
      "exec setpriv --reuid=4321 --regid=321 --groups=321 --inh-caps=+net_raw --ambient-caps=+net_raw ";
  struct Case {
    std::string command, uid, gid;
  };
  std::vector<Case> cases = {
      {"exec $W list -i v1", "65534", "65534"},
      {"exec $W capture -i v1 -w live.pcap", "0", "0"},
      {sudo + "exec $W capture -i v1 -w sudo.pcap", "4321", "321"},
      {sudo + "exec $W list -i v1 --user daemon", "1", "1"},
  };
  if (run(kNobody + "test -x $W").exit_code == 0) {
    cases.push_back({capable + "$W list -i v1", "4321", "321"});
    cases.push_back({capable + "$W capture -i v1 -w capable.pcap", "4321", "321"});
  }
  for (const auto& c : cases) {
    start(c.command);
    EXPECT_EQ(status("Uid"), c.uid + c.uid + c.uid + c.uid) << c.command;
    EXPECT_EQ(status("Gid"), c.gid + c.gid + c.gid + c.gid) << c.command;
    EXPECT_EQ(status("Groups"), c.gid == "0" ? status("Groups") : c.gid) << c.command;
    for (const auto* set : {"CapPrm", "CapEff", "CapInh", "CapAmb"}) {
      EXPECT_EQ(status(set), std::string(16, '0')) << c.command << " " << set;
    }
    EXPECT_EQ(end(SIGINT).exit_code, 0) << c.command;
  }
  struct stat status {};
  ASSERT_EQ(stat(folder_.path("sudo.pcap").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, 4321u);
}

TEST_F(Live, ends_when_the_interface_goes) {
  const struct {
    const char *command, *message;
  } kCases[] = {
      {"ip link set v1 down", "wirelines: v1: the capture ended: the interface went down\n"},
      {"ip link delete v1", "wirelines: v1: the capture ended: The interface disappeared\n"},
  };
  for (const auto& c : kCases) {
    ASSERT_EQ(run("ip link set v1 up").exit_code, 0);
    start("exec $W capture -i v1 -w live.pcap");
    send(1, 3);
    ASSERT_EQ(std::system(c.command), 0);
    const auto result = end();
    EXPECT_EQ(result.exit_code, EX_NOINPUT) << c.command;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("3 frame(s) captured, 3 received"), std::string::npos) << result.err;
    EXPECT_EQ(frames_of(folder_.path("live.pcap")).size(), 3u) << c.command;
  }
}

TEST_F(Live, keeps_what_a_full_disk_holds) {
  ASSERT_EQ(unshare(CLONE_NEWNS), 0);
  const auto mounted = run("mount --make-rprivate / && mkdir full && mount -t tmpfs -o size=64k none full");
  if (mounted.exit_code != 0) GTEST_SKIP() << "needs a mount of its own: " << mounted.err;
  start("exec $W capture -i v1 -w full/a");
  send(0, 10, 1000);
  EXPECT_TRUE(soon([&] { return contents(folder_.path("full/a")).size() == 24 + 10 * 1016; }));
  send(10, 100, 1000);
  const auto result = end();
  EXPECT_EQ(result.exit_code, EX_IOERR);
  EXPECT_NE(result.err.find("full/a: cannot be written: No space left on device; its first 10 frame(s) are kept\n"),
            std::string::npos)
      << result.err;
  EXPECT_EQ(frames_of(folder_.path("full/a")).size(), 10u);
  EXPECT_EQ(run("umount full").exit_code, 0);
}

TEST_F(Live, says_what_is_wrong) {
  if (run(kNobody + "test -x $W").exit_code != 0) GTEST_SKIP() << "the build folder is closed to other users";
  const struct {
    std::string command;
    int exit_code;
    std::string message;
  } kCases[] = {
      {kNobody + "$W list -i v1", EX_NOPERM,
       "v1: no permission to capture; run it with sudo, or let all who may run it capture: sudo setcap cap_net_raw=ep "
       "'" +
           std::filesystem::canonical(PROGRAM).string() + "'\n"},
      {kNobody + "$W capture -i nowhere", EX_NOINPUT, "there is no interface 'nowhere'; there are: "},
      {"$W list -i nowhere", EX_NOINPUT, "there is no interface 'nowhere'; there are: v"},
      {"$W list -i lo", EX_NOINPUT, "lo: the interface is down; to bring it up: sudo ip link set lo up\n"},
      {"$W list -i nflog", EX_DATAERR, "nflog: link type NFLOG"},
      {"$W list -i v1 -f 'foo bar'", EX_USAGE, "--filter 'foo bar': "},
      {"$W list -i v1 $T", EX_USAGE, "-i: frames come from an interface or from traces, not both"},
      {"$W list -i v1 --bogus", EX_USAGE, "The following argument was not expected: --bogus"},
      {"$W list --buffer 5 $T", EX_USAGE, "--buffer: -i NAME, an interface, is required"},
      {"$W list -i v1 --user who-is-this", EX_USAGE, "--user: there is no user 'who-is-this'"},
      {kNobody + "$W capture", EX_USAGE, "-i NAME: the interface, one of those that -D lists, is required"},
      {"$W capture -i v1 -s 0", EX_USAGE, "--snaplen: "},
      {"$W capture -i v1 --files 3", EX_USAGE, "--files: needs --file-size or --file-seconds"},
      {"$W capture -i v1 -w - --file-size 3", EX_USAGE, "-w: standard output is only one file"},
      {"$W capture -i v1 -w /dev/full", EX_IOERR, "/dev/full: cannot be written: No space left on device"},
      {"$W capture -i v1 -w nowhere/x", EX_IOERR, "nowhere/x: cannot be written: No such file or directory"},
      {"$W capture -i v1 --user nobody -w x", EX_NOPERM,
       "x: cannot be written: Permission denied; it is written as user"},
  };
  for (const auto& c : kCases) {
    const auto result = run("timeout 20 " + c.command);
    EXPECT_EQ(result.exit_code, c.exit_code) << c.command;
    EXPECT_TRUE(result.err.starts_with("wirelines: " + c.message)) << c.command << "\n  " << result.err;
  }
  const auto list = run("$W capture -D");
  EXPECT_EQ(list.exit_code, 0);
  EXPECT_NE(list.out.find("v1              up\n"), std::string::npos) << list.out;
}

#ifdef VIEWER
TEST_F(Live, view_follows_and_pauses) {
  run("ip link set lo up");
  Viewer viewer("--assets . -i v1 -f 'ether proto 0x88b5' 2> '" + folder_.path("err") + "'");
  const auto frames = [&viewer](int wanted) {
    viewer.wait("state", [wanted](const nlohmann::json& state) { return state["frames"] == wanted; });
  };
  EXPECT_EQ(viewer.get("state")["live"], true);
  send(0, 5);
  frames(5);
  EXPECT_EQ(viewer.get("rows")["complete"], false);
  EXPECT_EQ(viewer.get("frame?n=5")["bytes"].get<std::string>().substr(28, 8), "00000004");
  viewer.send("POST", "pause", {{"paused", true}});
  send(5, 3);
  std::this_thread::sleep_for(std::chrono::milliseconds(500));
  EXPECT_EQ(viewer.get("rows")["total"], 5);
  viewer.send("POST", "pause", {{"paused", false}});
  frames(8);
  EXPECT_EQ(viewer.end(), 0);
  EXPECT_EQ(contents(folder_.path("err")), "wirelines: 8 frame(s) shown, 8 received by the filter" + kNoDrops);
}
#endif

}  // namespace
}  // namespace wirelines::host
