// The built program, run as a user runs it.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <iterator>
#include <string>

#include "files.hpp"

namespace wirelines::host {

struct Result {
  int exit_code;
  std::string out;
  std::string err;
};

inline std::string contents(const std::string& path) {
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
    const auto line = std::string("bash '") + folder_.path("command") + "' > '" + folder_.path("out") + "' 2> '" +
                      folder_.path("err") + "' < /dev/null";
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(folder_.path("out")), contents(folder_.path("err"))};
  }

  Folder folder_;
  std::string trace_;
};

}  // namespace wirelines::host
