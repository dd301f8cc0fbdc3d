// Frames one after another, and where they come from: trace files, which are pcap in all its variants or pcapng,
// compressed or not.
#pragma once

#include <pcap/pcap.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "failure.hpp"
#include "stream.hpp"

namespace wirelines::host {

struct Frame {
  std::uint64_t number;           // from 1; where several traces are read as one, numbered through
  const std::string* trace;       // the name of the trace, as the user gave it
  const std::uint8_t* data;       // good until the next frame is read
  std::uint32_t length;           // bytes captured
  std::uint32_t original_length;  // bytes the frame had on the wire
  std::int64_t seconds;           // since 1 January 1970 UTC
  std::uint32_t nanoseconds;      // within the second; a damaged trace may have more than fit
  std::uint64_t offset;           // where in the (decompressed) trace its record begins, or blocks before it
  int link_type = DLT_EN10MB;     // as libpcap names it
};

// Nanoseconds since 1970. What a damaged trace may say besides is taken for the nearest time that fits.
[[nodiscard]] constexpr std::int64_t time_of(const Frame& frame) {
  constexpr std::int64_t kLast = 9'000'000'000;
  return std::clamp<std::int64_t>(frame.seconds, 0, kLast) * 1'000'000'000 + frame.nanoseconds;
}

class Source {
 public:
  Source() = default;
  Source(const Source&) = delete;
  Source& operator=(const Source&) = delete;
  virtual ~Source() = default;

  // Takes the next frame; false at the end. Throws Failure where there should be more.
  virtual bool next(Frame& frame) = 0;

  // Whether the filter lets the frame through, where next() does not leave it out already.
  [[nodiscard]] virtual bool matches(const Frame& /*frame*/) const { return true; }
};

// Throws Failure when frames of this link type (DLT_...) cannot be decoded; `name` is what has them.
void need_link_type(const std::string& name, int type);

// Where to begin reading a trace, found by an index of its frames.
struct TracePlace {
  std::uint64_t number = 1;  // of the first frame
  std::uint64_t offset = 0;  // where its record begins; 0: at the beginning of the trace
  std::string head;          // what has to be read before it: the file's header, or blocks of pcapng
};

// One trace. Reading costs the same small memory for any trace.
class Trace : public Source {
 public:
  // Opens file `name`, "-" being standard input. Throws Failure when it is no trace of frames that can be decoded.
  // `before_wait` as Stream has it; `name` must stay as long as the trace. Reading begins at `place`.
  Trace(const std::string& name, std::function<void()> before_wait, const TracePlace& place = {});

  // Whether offsets are those of the decompressed data.
  [[nodiscard]] bool compressed() const { return stream_->compressed(); }

  // From now on, matches() goes by this BPF expression. Throws Failure when libpcap does not understand it.
  void set_filter(const std::string& expression);
  [[nodiscard]] bool matches(const Frame& frame) const override;

  bool next(Frame& frame) override;

  // Whether it can be read from any place: it is a file, and not compressed.
  [[nodiscard]] bool seekable() const { return stream_->seekable(); }
  [[nodiscard]] int link_type() const { return pcap_datalink(pcap_.get()); }

 private:
  struct Close {
    void operator()(pcap_t* pcap) const { pcap_close(pcap); }
  };
  struct FreeFilter {
    void operator()(bpf_program* filter) const {
      pcap_freecode(filter);
      delete filter;
    }
  };

  [[nodiscard]] Failure damaged(const std::string& reason, std::uint64_t offset) const;
  [[nodiscard]] std::string shown_name() const;

  const std::string& name_;
  std::uint64_t number_ = 0;   // of the last frame, in this trace
  std::uint64_t begin_ = 0;    // where reading begins; 0: at the beginning
  std::uint64_t skipped_ = 0;  // bytes between what was read first and where reading went on
  std::unique_ptr<Stream> stream_;
  std::vector<char> read_ahead_ = std::vector<char>(131072);  // stays as long as pcap_
  std::unique_ptr<pcap_t, Close> pcap_;
  std::unique_ptr<bpf_program, FreeFilter> filter_;  // null: every frame matches
};

}  // namespace wirelines::host
