#include "trace.hpp"

#include <fcntl.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include "lift.hpp"
#include "stream_file.hpp"

namespace wirelines::host {

namespace {

constexpr std::string_view kStandardInput = "-";

// Standard input is handed on as it is: it may be a pipe, a file or a terminal.
int open_trace(const std::string& name) {
  if (name == kStandardInput) return STDIN_FILENO;
  const int fd = open(name.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd >= 0) return fd;
  const int error = errno;
  if (error == EACCES || error == EPERM) {
    throw Failure(EX_NOPERM,
                  name + ": no permission to read it; its owner or root can grant it: chmod a+r " + in_quotes(name));
  }
  throw Failure(EX_NOINPUT, name + ": cannot be opened: " + error_text(error));
}

}  // namespace

void need_link_type(const std::string& name, int type) {
  if (can_lift(type)) return;
  const char* type_name = pcap_datalink_val_to_name(type);
  const char* description = pcap_datalink_val_to_description(type);
  throw Failure(EX_DATAERR,
                name + ": link type " + (type_name != nullptr ? type_name : std::to_string(type)) +
                    (description != nullptr ? " (" + std::string(description) + ")" : "") +
                    " cannot be decoded, only Ethernet, Linux cooked captures, raw IP, PPP and BSD loopback; "
                    "capture on an Ethernet interface");
}

Trace::Trace(const std::string& name, std::function<void()> before_wait, const TracePlace& place) : name_(name) {
  const int fd = open_trace(name);
  stream_ = std::make_unique<Stream>(fd, std::move(before_wait));
  struct stat status {};
  if (fstat(fd, &status) == 0 && S_ISDIR(status.st_mode)) {
    throw Failure(EX_NOINPUT, shown_name() + ": is a directory; name the traces in it");
  }
  if (stream_->empty()) {
    const auto& problem = stream_->problem();
    throw Failure(EX_DATAERR, shown_name() + ": " + (problem.empty() ? "is empty" : problem));
  }

  if (place.offset > 0 && stream_->begin_with(place.head, place.offset)) {
    number_ = place.number - 1;
    begin_ = place.offset;
    skipped_ = place.offset - place.head.size();
  }

  FILE* file = stream_file(*stream_, read_ahead_);
  if (file == nullptr) throw std::bad_alloc();
  __fsetlocking(file, FSETLOCKING_BYCALLER);  // one thread reads it: each frame takes three calls, which need no lock

  std::array<char, PCAP_ERRBUF_SIZE> error{};
  pcap_.reset(pcap_fopen_offline_with_tstamp_precision(file, PCAP_TSTAMP_PRECISION_NANO, error.data()));
  if (!pcap_) {
    (void)std::fclose(file);
    const auto reason = stream_->problem().empty() ? std::string(error.data()) : stream_->problem();
    throw Failure(EX_DATAERR, shown_name() + ": is not a pcap or pcapng trace (" + reason + ")");
  }
  need_link_type(shown_name(), pcap_datalink(pcap_.get()));
}

bool Trace::next(Frame& frame) {
  // Of what stands before its place, libpcap may not have read everything yet.
  const auto offset = std::max(begin_, static_cast<std::uint64_t>(ftello(pcap_file(pcap_.get()))) + skipped_);
  pcap_pkthdr* header = nullptr;
  const u_char* data = nullptr;
  const int result = pcap_next_ex(pcap_.get(), &header, &data);
  if (result != 1) {
    // A stream that breaks off looks like a cut or a finished file to libpcap; only the stream knows why.
    if (!stream_->problem().empty()) throw damaged(stream_->problem(), offset);
    if (result != PCAP_ERROR_BREAK) throw damaged(pcap_geterr(pcap_.get()), offset);
    return false;
  }
  // libpcap takes the 32 bits of a pcap file as signed; no frame was captured before 1970.
  const std::int64_t seconds = header->ts.tv_sec;
  frame = {.number = ++number_,
           .trace = &name_,
           .data = data,
           .length = header->caplen,
           .original_length = header->len,
           .seconds = seconds < 0 ? static_cast<std::uint32_t>(seconds) : seconds,
           .nanoseconds = static_cast<std::uint32_t>(header->ts.tv_usec),  // libpcap was asked for nanoseconds
           .offset = offset,
           .link_type = pcap_datalink(pcap_.get())};
  return true;
}

void Trace::set_filter(const std::string& expression) {
  auto filter = std::make_unique<bpf_program>();
  if (pcap_compile(pcap_.get(), filter.get(), expression.c_str(), 1, PCAP_NETMASK_UNKNOWN) != 0) {
    throw Failure(EX_USAGE, shown_name() + ": --filter " + in_quotes(expression) + ": " + pcap_geterr(pcap_.get()));
  }
  filter_.reset(filter.release());
}

bool Trace::matches(const Frame& frame) const {
  if (!filter_) return true;
  const pcap_pkthdr header{.ts = {}, .caplen = frame.length, .len = frame.original_length};
  return pcap_offline_filter(filter_.get(), &header, frame.data) != 0;
}

Failure Trace::damaged(const std::string& reason, std::uint64_t offset) const {
  return {
      EX_DATAERR,
      shown_name() + ": broken at frame " + std::to_string(number_ + 1) + ", offset " + std::to_string(offset) +
          (stream_->compressed() ? " of the decompressed data" : "") + ": " + reason + ". " +
          (number_ == 0 ? "No frame could be read" : "Its first " + std::to_string(number_) + " frame(s) were read") +
          "; copy the file again, or record it again"};
}

std::string Trace::shown_name() const {
  return name_ == kStandardInput ? "standard input" : name_;
}

}  // namespace wirelines::host
