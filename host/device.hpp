// Frames live from an interface.
#pragma once

#include <pcap/pcap.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "output.hpp"
#include "trace.hpp"

namespace wirelines::host {

constexpr std::uint32_t kLongestFrame = 262144;  // what libpcap takes at most of a frame

struct LiveOptions {
  std::string interface;  // empty: not live
  std::uint32_t snaplen = kLongestFrame;
  bool no_promiscuous = false;
  std::uint32_t buffer = 16;  // the kernel's, in MB
  std::uint32_t seconds = 0;  // after which to end; 0: never
  std::string user;           // whom root becomes; empty: as give_up_rights finds
};

// An interface, as long as the capture goes on: SIGINT, SIGTERM and SIGHUP end it, a second one the program.
class Device : public Source {
 public:
  enum class Use { kDecode, kRecord };

  // Opens the interface, gives up all rights that this took, and sets the BPF expression. Throws Failure, for kDecode
  // also when the frames cannot be decoded. `options` must stay as long as the device.
  Device(const LiveOptions& options, const std::string& filter, Use use);

  // Calls this whenever no frame is there at the moment: the time to show what there was. It returns whether more are
  // wanted.
  void before_wait(std::function<bool()> call) { before_wait_ = std::move(call); }

  // Waits for the next frame; false at the end. What came before the end was asked for is still handed out. Throws
  // Failure when the interface goes away.
  bool next(Frame& frame) override;

  // Says to standard error how many frames were `done` of those that came; only what was lost when `quiet`.
  void tell_counts(std::uint64_t frames, std::string_view done, bool quiet);

  // Frames that were lost so far.
  [[nodiscard]] std::uint64_t dropped();

  [[nodiscard]] pcap_t* pcap() const { return pcap_.get(); }
  [[nodiscard]] bool nanoseconds() const { return nanoseconds_; }

 private:
  using SteadyTime = std::chrono::steady_clock::time_point;
  struct Close {
    void operator()(pcap_t* pcap) const { pcap_close(pcap); }
  };

  void create();
  void activate();
  void set_filter(const std::string& expression);
  void notice_end();
  bool wait();
  void count();

  const LiveOptions& options_;
  std::unique_ptr<pcap_t, Close> pcap_;
  unsigned index_ = 0;  // of the interface; 0 for any and the like, which cannot go down
  bool nanoseconds_ = false;
  std::function<bool()> before_wait_ = [] { return true; };
  std::uint64_t number_ = 0;  // of the last frame

  bool failed_ = false;
  SteadyTime end_ = SteadyTime::max();  // --seconds
  bool ending_ = false;
  std::chrono::nanoseconds last_frame_time_{};  // when ending: frames after it are not wanted
  SteadyTime patience_;                         // when ending: until then

  // As libpcap counts, in 32 bits, at the last time of asking; and in all.
  pcap_stat last_{};
  std::uint64_t received_ = 0, dropped_ = 0, dropped_by_interface_ = 0;
};

// Writes the interfaces that there are, one a line.
void list_interfaces(Output& out);

}  // namespace wirelines::host
