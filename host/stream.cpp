#include "stream.hpp"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <utility>

#include "failure.hpp"

namespace wirelines::host {

void Stream::EndInflate::operator()(z_stream* stream) const {
  inflateEnd(stream);
  delete stream;
}

Stream::Stream(int fd, std::function<void()> before_wait) : fd_(fd), before_wait_(std::move(before_wait)) {
  find_kind();
}

Stream::~Stream() {
  if (fd_ != STDIN_FILENO) close(fd_);
}

// Magic bytes decide, not the name. A zstd file may also begin with a skippable frame, whose first byte varies.
void Stream::find_kind() {
  while (file_bytes_.size() < 4 && fill_file()) {
  }
  const auto magic = file_bytes_.substr(0, 4);
  if (magic.substr(0, 2) == "\x1F\x8B") {
    kind_ = Kind::kGzip;
    auto stream = std::make_unique<z_stream>();
    if (inflateInit2(stream.get(), 16 + MAX_WBITS) != Z_OK) throw std::bad_alloc();
    gzip_.reset(stream.release());
  } else if (magic == "\x28\xB5\x2F\xFD" ||
             (magic.size() == 4 && (magic[0] & 0xF0) == 0x50 && magic.substr(1) == "\x2A\x4D\x18")) {
    kind_ = Kind::kZstd;
    zstd_.reset(ZSTD_createDStream());
    if (!zstd_) throw std::bad_alloc();
  }
}

// A pipe has no position, and data that begin elsewhere have another one.
int Stream::whole_file() const {
  const bool whole = kind_ == Kind::kPlain && offset_ == 0 &&
                     lseek(fd_, 0, SEEK_CUR) == static_cast<off_t>(file_bytes_.size() + bytes_.size());
  return whole ? fd_ : -1;
}

bool Stream::begin_with(std::string head, std::uint64_t offset) {
  if (kind_ != Kind::kPlain || lseek(fd_, static_cast<off_t>(offset), SEEK_SET) < 0) return false;
  head_ = std::move(head);
  file_bytes_ = {};
  bytes_ = head_;
  return true;
}

// Standard input may be handed on in the middle, and has no name by which to be opened again.
bool Stream::seekable() const {
  struct stat status {};
  return !compressed() && fd_ != STDIN_FILENO && fstat(fd_, &status) == 0 && S_ISREG(status.st_mode);
}

// Gets more bytes of the file behind those that are left; false at its end.
bool Stream::fill_file() {
  if (!file_bytes_.empty()) std::memmove(file_buffer_.data(), file_bytes_.data(), file_bytes_.size());
  pollfd wait{fd_, POLLIN, 0};
  if (before_wait_ && poll(&wait, 1, 0) == 0) before_wait_();
  ssize_t got = 0;
  do {
    got = ::read(fd_, file_buffer_.data() + file_bytes_.size(), file_buffer_.size() - file_bytes_.size());
  } while (got < 0 && errno == EINTR);
  if (got < 0) problem_ = "it cannot be read: " + error_text(errno);
  file_bytes_ = {file_buffer_.data(), file_bytes_.size() + static_cast<std::size_t>(std::max<ssize_t>(got, 0))};
  return got > 0;
}

// Makes bytes ready; false when there are no more.
bool Stream::fill() {
  if (kind_ == Kind::kPlain) {
    if (file_bytes_.empty()) fill_file();
    bytes_ = std::exchange(file_bytes_, {});
    return !bytes_.empty();
  }
  while (problem_.empty()) {
    const bool more = !file_bytes_.empty() || fill_file();
    if (!more && !unfinished_) return false;
    // Without more bytes, too: the decompressor may still hold what did not fit into the buffer.
    bytes_ = {buffer_.data(), kind_ == Kind::kGzip ? inflate_some() : zstd_some()};
    if (!bytes_.empty()) return true;
    if (!more && problem_.empty()) problem_ = "the compressed data end too early";
  }
  return false;
}

// Both take from file_bytes_ and return the bytes that they put into the buffer. A file may hold several compressed
// members one after another.
std::size_t Stream::inflate_some() {
  gzip_->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(file_bytes_.data()));
  gzip_->avail_in = static_cast<uInt>(file_bytes_.size());
  gzip_->next_out = reinterpret_cast<Bytef*>(buffer_.data());
  gzip_->avail_out = static_cast<uInt>(buffer_.size());
  const int result = inflate(gzip_.get(), Z_NO_FLUSH);
  file_bytes_.remove_prefix(file_bytes_.size() - gzip_->avail_in);
  unfinished_ = result != Z_STREAM_END;
  if (result == Z_STREAM_END) {
    inflateReset(gzip_.get());
  } else if (result != Z_OK && result != Z_BUF_ERROR) {
    problem_ = "the gzip data are damaged" + (gzip_->msg != nullptr ? ": " + std::string(gzip_->msg) : std::string());
  }
  return buffer_.size() - gzip_->avail_out;
}

std::size_t Stream::zstd_some() {
  ZSTD_inBuffer in{file_bytes_.data(), file_bytes_.size(), 0};
  ZSTD_outBuffer out{buffer_.data(), buffer_.size(), 0};
  const auto result = ZSTD_decompressStream(zstd_.get(), &out, &in);
  file_bytes_.remove_prefix(in.pos);
  unfinished_ = result != 0;
  if (ZSTD_isError(result) != 0) problem_ = "the zstd data are damaged: " + std::string(ZSTD_getErrorName(result));
  return out.pos;
}

std::size_t Stream::read(char* to, std::size_t size) {
  if (empty()) return 0;
  const auto part = std::min(size, bytes_.size());
  std::memcpy(to, bytes_.data(), part);
  bytes_.remove_prefix(part);
  offset_ += part;
  return part;
}

bool Stream::empty() {
  return bytes_.empty() && !fill();
}

}  // namespace wirelines::host
