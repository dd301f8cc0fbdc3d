// Trace files that are being written.
#pragma once

#include <pcap/pcap.h>

#include <cstdint>
#include <cstdio>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "trace.hpp"

namespace wirelines::host {

// One pcap file, "-" being standard output. After each flush it holds whole frames.
class TraceFile {
 public:
  // `pcap` tells the link type and the unit of times. Throws Failure, as all others do.
  TraceFile(const std::string& name, pcap_t* pcap);
  TraceFile(const TraceFile&) = delete;
  TraceFile& operator=(const TraceFile&) = delete;

  void write(const pcap_pkthdr& header, const std::uint8_t* data);

  // When it cannot be written, the file is cut behind the last whole flush, the failure tells what it holds, and
  // nothing more is written.
  void flush();

  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] std::uint64_t size() const { return size_; }
  [[nodiscard]] std::uint64_t frames() const { return frames_; }

  // Standard output is a pipe that nobody reads any more, which is no failure.
  [[nodiscard]] bool reader_gone() const { return reader_gone_; }

 private:
  struct Close {
    void operator()(pcap_dumper_t* dumper) const { pcap_dump_close(dumper); }
  };

  void broken(int error);

  std::string name_;
  std::vector<char> buffer_;  // the FILE's
  std::unique_ptr<pcap_dumper_t, Close> dumper_;
  std::uint64_t size_ = 0, frames_ = 0;
  std::uint64_t flushed_size_ = 0, flushed_frames_ = 0;
  bool broken_ = false, reader_gone_ = false;
};

struct RecordOptions {
  std::string file;
  std::uint64_t size = 0;     // bytes a file; 0: no limit
  std::uint64_t seconds = 0;  // time a file, by its frames; 0: no limit
  std::uint64_t files = 0;    // of which the oldest is removed; 0: all are kept
};

// The frames of a capture, in one file or, with a limit, in one after another.
class Recorder {
 public:
  // Opens the first file. Throws Failure, as write() and flush() do.
  Recorder(const RecordOptions& options, pcap_t* pcap);

  void write(const Frame& frame);
  void flush() { file_->flush(); }

  [[nodiscard]] bool reader_gone() const { return file_->reader_gone(); }
  [[nodiscard]] const std::string& file_name() const { return file_->name(); }

 private:
  [[nodiscard]] bool full(const Frame& frame) const;
  void open_next();

  const RecordOptions& options_;
  pcap_t* pcap_;
  bool nanoseconds_;
  std::uint64_t opened_ = 0;
  std::deque<std::string> names_;  // of the files that are there, the current one last; only where some are removed
  std::unique_ptr<TraceFile> file_;
  std::int64_t start_ = 0;  // seconds of the current file's first frame
};

}  // namespace wirelines::host
