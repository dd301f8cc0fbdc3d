#include "spool.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace wirelines::host {

namespace {

Failure no_room(int error) {
  return {EX_IOERR, "the frames cannot be kept in a temporary file: " + error_text(error) +
                        "; another folder for it can be named by the variable TMPDIR"};
}

// Readable for its owner alone, and gone with the last process that has it open.
int open_nameless() {
  std::error_code error;
  auto name = (std::filesystem::temp_directory_path(error) / "wirelines-XXXXXX").string();
  const int fd = error ? -1 : mkostemp(name.data(), O_CLOEXEC);
  if (fd < 0) throw no_room(error ? error.value() : errno);
  unlink(name.c_str());
  return fd;
}

}  // namespace

Spool::Spool(std::shared_ptr<Source> source, int link_type) : source_(std::move(source)) {
  struct CloseDead {
    void operator()(pcap_t* pcap) const { pcap_close(pcap); }
  };
  constexpr int kLongest = 262144;
  const std::unique_ptr<pcap_t, CloseDead> dead(
      pcap_open_dead_with_tstamp_precision(link_type, kLongest, PCAP_TSTAMP_PRECISION_NANO));
  if (!dead) throw std::bad_alloc();
  const int fd = open_nameless();
  FILE* const file = fdopen(fd, "wb");
  if (file == nullptr) throw std::bad_alloc();
  file_.reset(pcap_dump_fopen(dead.get(), file));
  if (!file_) throw no_room(errno);
  path_ = "/proc/self/fd/" + std::to_string(fd);
  if (pcap_dump_flush(file_.get()) != 0) throw no_room(errno);
}

Spool::~Spool() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
}

void Spool::start(std::function<void()> idle) {
  idle_ = std::move(idle);
  thread_ = std::thread(&Spool::run, this);
}

bool Spool::flush() {
  if (idle_) idle_();
  if (pcap_dump_flush(file_.get()) != 0 || std::ferror(pcap_dump_file(file_.get())) != 0) throw no_room(errno);
  return !ending_;
}

void Spool::run() {
  try {
    take_all();
  } catch (const std::exception& problem) {
    problem_ = problem.what();
  }
  try {
    flush();
  } catch (const std::exception& problem) {
    problem_ = problem.what();
  }
  done_ = true;
}

void Spool::take_all() {
  constexpr auto kMostWait = std::chrono::milliseconds(100);
  auto flushed = std::chrono::steady_clock::now();
  for (Frame frame{}; !ending_ && source_->next(frame);) {
    const pcap_pkthdr header{
        .ts = {.tv_sec = static_cast<time_t>(frame.seconds), .tv_usec = static_cast<suseconds_t>(frame.nanoseconds)},
        .caplen = frame.length,
        .len = frame.original_length};
    pcap_dump(reinterpret_cast<u_char*>(file_.get()), &header, frame.data);
    if (frame.number % 256 != 0) continue;
    if (const auto now = std::chrono::steady_clock::now(); now - flushed > kMostWait) {
      flushed = now;
      flush();
    }
  }
}

}  // namespace wirelines::host
