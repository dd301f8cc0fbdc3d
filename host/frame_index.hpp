// Where the frames of a trace begin: each 64th of them, so that any frame of a large trace is at hand at once.
#pragma once

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "trace.hpp"

namespace wirelines::host {

class FrameIndex {
 public:
  static constexpr std::uint64_t kStep = 64;  // from one indexed frame to the next

  // Of file `trace`, which is not compressed; no frame yet. Throws Failure when it is no file that can be opened.
  explicit FrameIndex(const std::string& trace);

  // Takes the next frame. Throws Failure when the trace is not laid out as it should be.
  void add(const Frame& frame);

  [[nodiscard]] std::uint64_t frames() const { return frames_; }

  // The place from which reading meets the frame of this number, or that of this offset, within kStep frames; for one
  // behind the last frame, from where reading goes on. Throws Failure when the trace has other bytes there by now.
  [[nodiscard]] TracePlace before_frame(std::uint64_t number) const;
  [[nodiscard]] TracePlace before_offset(std::uint64_t offset) const;

  // The index that is kept beside a trace, if there is one. It serves a trace that has grown since, too. Throws Failure
  // when it is damaged, or belongs to what the trace was before.
  static std::optional<FrameIndex> load(const std::string& trace);
  void save() const;
  static std::string file_of(const std::string& trace) { return trace + ".wlx"; }

 private:
  // A file that is read at any place.
  class File {
   public:
    explicit File(const std::string& name);

    // Fewer than `count` bytes at the end of the file.
    [[nodiscard]] std::string read(std::uint64_t offset, std::size_t count) const;

    std::uint64_t size, time;  // and when it was last changed

   private:
    mutable std::ifstream stream_;
  };

  // An indexed frame: its offset, and the sum of the bytes there.
  struct Point {
    std::uint64_t offset, sum;
  };
  // A block of pcapng that those behind it need: an interface, or the head of a section.
  struct Head {
    std::uint64_t offset, size, is_section;
  };

  void pass_blocks();
  [[nodiscard]] TracePlace place(std::size_t point) const;
  [[nodiscard]] std::uint64_t sum(std::uint64_t offset, std::uint64_t count) const;
  [[nodiscard]] std::uint64_t first_sum() const { return sum(0, std::min(end_, kSummed)); }
  [[nodiscard]] std::uint64_t last_sum() const { return sum(end_ - std::min(end_, kSummed), std::min(end_, kSummed)); }
  [[nodiscard]] Failure another_trace() const;

  static constexpr std::uint64_t kSummed = 4096;  // bytes at the beginning and at the end

  std::string trace_;
  File file_;
  bool pcapng_;
  bool big_endian_ = false;  // the section of pcapng
  std::uint64_t frames_ = 0;
  std::uint64_t end_ = 0;  // of the last frame
  std::vector<Point> points_;
  std::vector<Head> heads_;
};

}  // namespace wirelines::host
