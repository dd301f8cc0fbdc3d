#include "output.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace wirelines::host {

void Output::flush() {
  const char* from = buffer_.data();
  auto left = static_cast<std::size_t>(next_ - from);
  next_ = buffer_.data();
  while (left > 0 && error_ == 0) {
    const auto written = write(fd_, from, left);
    if (written >= 0) {
      from += written;
      left -= static_cast<std::size_t>(written);
    } else if (errno == EAGAIN) {  // a pipe that its owner made non-blocking
      pollfd wait{fd_, POLLOUT, 0};
      poll(&wait, 1, -1);
    } else if (errno != EINTR) {
      error_ = errno;
    }
  }
}

void Output::append_in_parts(std::string_view text) {
  while (!text.empty()) {
    if (room() == 0) flush();
    const auto part = text.substr(0, room());
    next_ = std::copy(part.begin(), part.end(), next_);
    text.remove_prefix(part.size());
  }
}

}  // namespace wirelines::host
