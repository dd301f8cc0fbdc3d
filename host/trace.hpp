// Trace files: pcap in all its variants and pcapng, compressed or not, one frame after another.
#pragma once

#include <pcap/pcap.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "failure.hpp"
#include "stream.hpp"

namespace wirelines::host {

struct Frame {
  std::uint64_t number;           // from 1, counting on from one trace to the next
  const std::string* trace;       // the name of the trace, as the user gave it
  const std::uint8_t* data;       // good until the next frame is read
  std::uint32_t length;           // bytes captured
  std::uint32_t original_length;  // bytes the frame had on the wire
  std::int64_t seconds;           // since 1 January 1970 UTC
  std::uint32_t nanoseconds;      // within the second; a damaged trace may have more than fit
  std::uint64_t offset;           // where in the (decompressed) trace its record begins, or blocks before it
};

// One trace. Reading costs the same small memory for any trace.
class Trace {
 public:
  // Opens file `name`, "-" being standard input. Throws Failure when it is no trace of Ethernet frames. Its first frame
  // has the number after `frames_before`. `before_wait` as Stream has it; `name` must stay as long as the trace.
  Trace(const std::string& name, std::uint64_t frames_before, std::function<void()> before_wait);

  // Takes the next frame; false at the end. Throws Failure where the trace is damaged.
  bool next(Frame& frame);

 private:
  struct Close {
    void operator()(pcap_t* pcap) const { pcap_close(pcap); }
  };

  [[nodiscard]] Failure damaged(const std::string& reason, std::uint64_t offset) const;
  [[nodiscard]] std::string shown_name() const;

  const std::string& name_;
  std::uint64_t frames_before_;
  std::uint64_t number_;
  std::unique_ptr<Stream> stream_;
  std::unique_ptr<pcap_t, Close> pcap_;
};

}  // namespace wirelines::host
