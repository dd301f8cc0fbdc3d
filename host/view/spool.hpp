// Frames that come only once, kept in a file without a name, from which they can be read at any place.
#pragma once

#include <pcap/pcap.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "host/trace.hpp"

namespace wirelines::host {

class Spool {
 public:
  // For the frames of `source`, which have that link type. Throws Failure when there is no room for the file.
  Spool(std::shared_ptr<Source> source, int link_type);
  ~Spool();
  Spool(const Spool&) = delete;
  Spool& operator=(const Spool&) = delete;

  // Takes all frames, on a thread of its own, where `idle` is called every now and then.
  void start(std::function<void()> idle);

  // Under which the file can be opened, as long as this object is there.
  [[nodiscard]] const std::string& path() const { return path_; }

  // To be called by the source when it has nothing for the moment; false when no more is wanted. Throws Failure.
  bool flush();

  [[nodiscard]] bool done() const { return done_; }

  // Why the source broke off; empty when it did not. Only when done.
  [[nodiscard]] const std::string& problem() const { return problem_; }

 private:
  struct Close {
    void operator()(pcap_dumper_t* dumper) const { pcap_dump_close(dumper); }
  };

  void run();
  void take_all();

  std::shared_ptr<Source> source_;
  std::function<void()> idle_;
  std::unique_ptr<pcap_dumper_t, Close> file_;
  std::string path_;
  std::string problem_;
  std::atomic<bool> done_ = false;
  std::atomic<bool> ending_ = false;
  std::thread thread_;
};

}  // namespace wirelines::host
