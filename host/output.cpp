#include "output.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

namespace wirelines::host {

void Output::flush() {
  if (fd_ == kMemory) return;
  write_all(text());
  clear();
}

void Output::append(const Output& other) {
  flush();
  write_all(other.text());
}

void Output::write_all(std::string_view text) {
  while (!text.empty() && error_ == 0) {
    const auto written = write(fd_, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno == EAGAIN) {  // a pipe that its owner made non-blocking
      pollfd wait{fd_, POLLOUT, 0};
      poll(&wait, 1, -1);
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
}

void Output::make_room(std::size_t size) {
  if (fd_ != kMemory) return flush();
  const auto used = text().size();
  const auto grown_size = std::max(size_ * 2, used + size);
  auto grown = std::make_unique_for_overwrite<char[]>(grown_size);
  std::memcpy(grown.get(), buffer_.get(), used);
  buffer_ = std::move(grown);
  size_ = grown_size;
  next_ = buffer_.get() + used;
}

void Output::append_in_parts(std::string_view text) {
  while (!text.empty()) {
    if (room() == 0) make_room(1);
    const auto part = text.substr(0, room());
    next_ = std::copy(part.begin(), part.end(), next_);
    text.remove_prefix(part.size());
  }
}

}  // namespace wirelines::host
