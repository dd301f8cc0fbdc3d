// Several threads put out what one does, in the same order, and end as it does.
#include "host/crew.hpp"

#include <sys/resource.h>
#include <vek4001.h>

#include <filesystem>
#include <vector>

#include "host/walk.hpp"
#include "program.hpp"

namespace wirelines::host {
namespace {

// The sample traces, and where they are the captures beside the project.
std::vector<std::string> samples() {
  std::vector<std::string> paths;
  for (const std::string folder : {SOURCE_DIR "/examples", SOURCE_DIR "/../shared/captures"}) {
    if (!std::filesystem::exists(folder)) continue;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      if (entry.path().extension() == ".pcap") paths.push_back(entry.path());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

class Jobs : public Program {
 protected:
  // The records of all samples of Ethernet, over and over up to `size` bytes: many batches.
  std::string long_trace(const std::string& name, std::size_t size) {
    std::string records;
    for (const auto& path : samples()) {
      const auto bytes = contents(path);
      if (bytes.substr(0, 4) == word(0xA1B2C3D4, false) && bytes.substr(20, 4) == word(1, false)) {
        records += bytes.substr(24);
      }
    }
    std::ofstream file(folder_.path(name), std::ios::binary);
    file << pcap_header();
    for (std::size_t written = 0; written < size; written += records.size()) file << records;
    return folder_.path(name);
  }
};

TEST_F(Jobs, put_out_the_same) {
  long_trace("long.pcap", 400'000);
  const auto all = contents(folder_.path("long.pcap"));
  folder_.file("cut.pcap", all.substr(0, all.size() - 1));
  folder_.file("half.pcap", all.substr(0, all.size() / 2 + 7));
  std::string several;
  for (const auto& path : samples()) several += " '" + path + "'";
  const std::string kCommands[] = {
      "show" + several,
      "show --raw" + several,
      "show --color always long.pcap",
      "show long.pcap half.pcap cut.pcap",
      "list" + several,
      "list -N 100-700,900- -f 'udp' long.pcap half.pcap",
      "json --lines all long.pcap",
      "json" + several,
      "json -c 300 long.pcap",
      "classify" + several,
      "classify -T jsonl cut.pcap",
      "dump -c 1000 long.pcap",
      "show -Y udp long.pcap half.pcap",
      "show -Y udp -c 150 long.pcap half.pcap",
      "list -Y 'udp and tcp' long.pcap",
      "list - < half.pcap",
      "list nowhere.pcap long.pcap",
  };
  for (const auto& command : kCommands) {
    const auto one = run("$W " + command + " -j 1 2>&1");
    EXPECT_FALSE(one.out.empty()) << command;
    for (const std::string jobs : {"2", "4"}) {
      const auto many = run("$W " + command + " -j " + jobs + " 2>&1");  // so that the place of messages counts
      EXPECT_EQ(many.exit_code, one.exit_code) << command;
      EXPECT_TRUE(many.out == one.out) << command << " -j " << jobs;
    }
  }
}

TEST_F(Jobs, end_as_one_does) {
  long_trace("long.pcap", 800'000);
  auto result = run("$W show -j 4 long.pcap | head -n 1; exit ${PIPESTATUS[0]}");
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "");
  result = run("$W show -j 4 long.pcap > /dev/full");
  EXPECT_EQ(result.exit_code, EX_IOERR);
  // What there is shows before more is waited for, and nothing is waited for when enough frames are there.
  result = run("timeout 1 $W list -j 4 - < <(cat $T; sleep 5)");
  EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 3);
  for (const std::string choice : {"-c 3", "-N 1-3", "-c 3 -Y 'frame.number < 9'"}) {
    result = run("timeout 4 $W list -j 4 " + choice + " - < <(cat $T; sleep 5)");
    EXPECT_EQ(result.exit_code, 0) << choice;
  }
  for (const std::string wrong : {"0", "65", "x", "-1"}) {
    result = run("$W list -j " + wrong + " $T");
    EXPECT_EQ(result.exit_code, EX_USAGE) << wrong;
    EXPECT_NE(result.err.find("--jobs"), std::string::npos) << result.err;
  }
}

// Peak memory of a command in KB.
long peak_memory(const std::vector<std::string>& arguments) {
  const pid_t child = fork();
  if (child == 0) {
    std::vector<char*> argv = {const_cast<char*>(PROGRAM)};
    for (const auto& argument : arguments) argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    if (std::freopen("/dev/null", "w", stdout) != nullptr) execv(PROGRAM, argv.data());
    _exit(1);
  }
  int status = 0;
  rusage usage{};
  EXPECT_EQ(wait4(child, &status, 0, &usage), child);
  EXPECT_EQ(status, 0);
  return usage.ru_maxrss;
}

TEST_F(Jobs, memory_does_not_grow_with_the_trace) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer needs memory of its own";
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
  GTEST_SKIP() << "a sanitizer needs memory of its own";
#endif
#endif
  // With threads, each batch keeps room for the longest text it ever held, and chance has a part in which that is. So
  // much is let pass; to keep the frames themselves would take twice that.
  const auto once = long_trace("once.pcap", 8'000'000);
  const auto often = long_trace("often.pcap", 40'000'000);
  for (const std::string command : {"show", "list", "json", "stats"}) {
    for (const std::string jobs : {"1", "4"}) {
      std::vector<std::string> arguments = {command, once};
      if (command != "stats") arguments.insert(arguments.end(), {"-j", jobs});
      const auto little = peak_memory(arguments);
      arguments[1] = often;
      EXPECT_LT(peak_memory(arguments), little + (jobs == "1" ? 1000 : 16000)) << command << " -j " << jobs;
    }
  }
}

class Grumbler : public Visitor {
 public:
  explicit Grumbler(bool throws) : throws_(throws) {}
  void visit(const Frame&) override {
    if (throws_) throw std::bad_alloc();
    ErrMessage(VEK4001_OUT_OF_MEMORY);
  }

 private:
  bool throws_;
};

TEST_F(Jobs, exhausted_memory_is_told_once) {
  InputOptions options;
  options.files = {long_trace("long.pcap", 100'000)};
  Output out(STDERR_FILENO);
  for (const unsigned jobs : {1U, 3U}) {
    options.jobs = jobs;
    testing::internal::CaptureStderr();
    EXPECT_EQ(walk(options, out, {[](Output&) { return std::make_unique<Grumbler>(false); }, {}}), EX_OSERR);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "wirelines: Memory is exhausted: not everything could be decoded.\n");
    EXPECT_THROW(walk(options, out, {[](Output&) { return std::make_unique<Grumbler>(true); }, {}}), std::bad_alloc);
  }
}

}  // namespace
}  // namespace wirelines::host
