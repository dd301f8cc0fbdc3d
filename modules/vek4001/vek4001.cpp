// The message module: texts by code, to the host's handler or to standard error. Nothing here allocates.
#include "vek4001.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <mutex>
#include <string_view>

namespace {

struct Handler {
  ErrMessageHandler call = nullptr;
  void* context = nullptr;
};

// The two words change together, so they are copied out under a lock; the handler itself runs outside of it and may
// call back into this module.
std::mutex g_mutex;
constinit Handler g_handler;

// A zero-terminated line on the stack; what does not fit is dropped.
class Text {
 public:
  void add(std::string_view piece) {
    const auto taken = piece.substr(0, buffer_.size() - 1 - size_);
    taken.copy(buffer_.data() + size_, taken.size());
    size_ += taken.size();
  }
  void add(std::int32_t number) {
    std::array<char, 12> digits{};
    const char* end = std::to_chars(digits.begin(), digits.end(), number).ptr;
    add(std::string_view(digits.data(), static_cast<std::size_t>(end - digits.begin())));
  }
  [[nodiscard]] const char* c_str() const { return buffer_.data(); }
  [[nodiscard]] std::size_t size() const { return size_; }

 private:
  std::array<char, 128> buffer_{};
  std::size_t size_ = 0;
};

void add_message(Text& text, std::int32_t code) {
  switch (code) {
    case VEK4001_OUT_OF_MEMORY: return text.add("Memory is exhausted: not everything could be decoded.");
    default: break;
  }
  text.add("Error ");
  text.add(code);
  text.add(".");
}

// One write, so that the lines of several threads do not mix. There is nobody to tell when it fails.
void write_to_stderr(const Text& line) {
  while (write(STDERR_FILENO, line.c_str(), line.size()) < 0 && errno == EINTR) {
  }
}

}  // namespace

void ErrMessage(int32_t code) {
  Handler handler;
  {
    const std::lock_guard lock(g_mutex);
    handler = g_handler;
  }
  Text text;
  if (handler.call != nullptr) {
    add_message(text, code);
    handler.call(code, text.c_str(), handler.context);
    return;
  }
  const int kept_errno = errno;
  text.add("wirelines: ");
  add_message(text, code);
  text.add("\n");
  write_to_stderr(text);
  errno = kept_errno;
}

void SetErrMessageHandler(ErrMessageHandler handler, void* context) {
  const std::lock_guard lock(g_mutex);
  g_handler = {handler, context};
}
