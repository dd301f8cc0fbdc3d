#include "recorder.hpp"

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <ctime>
#include <filesystem>

#include "failure.hpp"

namespace wirelines::host {

namespace {

constexpr std::uint64_t kFileHeader = 24;
constexpr std::uint64_t kRecordHeader = 16;
constexpr std::uint64_t kBuffer = 1U << 20U;  // holds more than the longest frame

FILE* open_file(const std::string& name) {
  if (name == "-") return fdopen(STDOUT_FILENO, "wb");
  const int fd = open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  return fd >= 0 ? fdopen(fd, "wb") : nullptr;
}

}  // namespace

TraceFile::TraceFile(const std::string& name, pcap_t* pcap) : name_(name), buffer_(kBuffer) {
  FILE* const file = open_file(name);
  if (file == nullptr) {
    const int error = errno;
    const auto what = name + ": cannot be written: " + error_text(error);
    if (error != EACCES && error != EPERM) throw Failure(EX_IOERR, what);
    throw Failure(EX_NOPERM, what + "; it is written as user " + std::to_string(geteuid()) +
                                 ", see --user, or choose another folder with -w");
  }
  if (std::setvbuf(file, buffer_.data(), _IOFBF, buffer_.size()) != 0) throw std::bad_alloc();
  dumper_.reset(pcap_dump_fopen(pcap, file));
  if (!dumper_) throw Failure(EX_IOERR, name + ": " + pcap_geterr(pcap));
  size_ = kFileHeader;
  flush();
}

// Never lets the buffer overflow: what reaches the file between two flushes would be no whole frames.
void TraceFile::write(const pcap_pkthdr& header, const std::uint8_t* data) {
  const auto size = kRecordHeader + header.caplen;
  if (size_ - flushed_size_ + size > buffer_.size()) flush();
  if (broken_) return;
  pcap_dump(reinterpret_cast<u_char*>(dumper_.get()), &header, data);
  size_ += size;
  frames_++;
}

void TraceFile::flush() {
  if (broken_ || size_ == flushed_size_) return;
  if (pcap_dump_flush(dumper_.get()) != 0) return broken(errno);
  flushed_size_ = size_;
  flushed_frames_ = frames_;
}

void TraceFile::broken(int error) {
  broken_ = true;
  FILE* const file = pcap_dump_file(dumper_.get());
  __fpurge(file);  // closing it would try again
  reader_gone_ = error == EPIPE;
  if (reader_gone_) return;
  const auto what = name_ + ": cannot be written: " + error_text(error) + "; ";
  struct stat status {};
  if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode)) {
    throw Failure(EX_IOERR, what + std::to_string(flushed_frames_) + " frame(s) were written");
  }
  const bool whole = ftruncate(fileno(file), static_cast<off_t>(flushed_size_)) == 0;
  if (flushed_size_ == 0) unlink(name_.c_str());
  throw Failure(EX_IOERR,
                what + (flushed_size_ == 0 ? "nothing of it is kept"
                                           : "its first " + std::to_string(flushed_frames_) + " frame(s) are kept" +
                                                 (whole ? "" : ", the rest is damaged")));
}

Recorder::Recorder(const RecordOptions& options, pcap_t* pcap)
    : options_(options), pcap_(pcap), nanoseconds_(pcap_get_tstamp_precision(pcap) == PCAP_TSTAMP_PRECISION_NANO) {
  open_next();
}

void Recorder::write(const Frame& frame) {
  if (full(frame)) {
    file_->flush();
    open_next();
  }
  if (file_->frames() == 0) start_ = frame.seconds;
  const pcap_pkthdr header{.ts = {frame.seconds, frame.nanoseconds / (nanoseconds_ ? 1 : 1000)},
                           .caplen = frame.length,
                           .len = frame.original_length};
  file_->write(header, frame.data);
}

// A clock that is set back begins a new file, too.
bool Recorder::full(const Frame& frame) const {
  if (file_->frames() == 0) return false;
  return (options_.size > 0 && file_->size() + kRecordHeader + frame.length > options_.size) ||
         (options_.seconds > 0 && static_cast<std::uint64_t>(frame.seconds - start_) >= options_.seconds);
}

// trace.pcap becomes trace_00001_20260521103000.pcap and so on when there may be several.
void Recorder::open_next() {
  std::string name = options_.file;
  if (options_.size > 0 || options_.seconds > 0) {
    const std::filesystem::path path = name;
    const auto now = std::time(nullptr);
    std::tm local{};
    std::array<char, 64> suffix{};
    std::array<char, 32> time{};
    (void)std::strftime(time.data(), time.size(), "%Y%m%d%H%M%S", localtime_r(&now, &local));
    (void)std::snprintf(suffix.data(), suffix.size(), "_%05llu_%s", static_cast<unsigned long long>(++opened_),
                        time.data());
    name = (path.parent_path() / path.stem()).string() + suffix.data() + path.extension().string();
  }
  if (options_.files > 0 && names_.size() == options_.files) {
    if (unlink(names_.front().c_str()) != 0) {
      complain(names_.front() + ": cannot be removed: " + error_text(errno));
    }
    names_.pop_front();
  }
  file_ = std::make_unique<TraceFile>(name, pcap_);
  if (options_.files > 0) names_.push_back(name);
}

}  // namespace wirelines::host
