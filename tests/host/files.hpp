// Files for the host's tests: a folder of their own, and traces made byte by byte.
#pragma once

#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace wirelines::host {

// A folder that goes away with its owner.
class Folder {
 public:
  Folder() {
    std::string name = std::filesystem::temp_directory_path() / "wirelines-test-XXXXXX";
    path_ = mkdtemp(name.data());
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  std::string path(const std::string& name) const { return path_ + "/" + name; }

  // Writes a file and returns its path.
  std::string file(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
    return path(name);
  }

 private:
  std::string path_;
};

struct TraceForm {
  bool big_endian = false;
  bool nanoseconds = false;
};

inline std::string word(std::uint32_t value, bool big_endian, int size = 4) {
  std::string bytes;
  for (int i = 0; i < size; i++) {
    bytes.push_back(static_cast<char>(value >> 8 * (big_endian ? size - 1 - i : i)));
  }
  return bytes;
}

inline std::string pcap_header(TraceForm form = {}, std::uint32_t link_type = 1) {
  const bool big = form.big_endian;
  return word(form.nanoseconds ? 0xA1B23C4D : 0xA1B2C3D4, big) + word(2, big, 2) + word(4, big, 2) + word(0, big) +
         word(0, big) + word(262144, big) + word(link_type, big);
}

inline std::string pcap_record(const std::string& frame, std::uint32_t seconds, std::uint32_t fraction,
                               std::uint32_t original_length, TraceForm form = {}) {
  const bool big = form.big_endian;
  return word(seconds, big) + word(fraction, big) + word(static_cast<std::uint32_t>(frame.size()), big) +
         word(original_length, big) + frame;
}

// pcapng: section header, one interface, and a frame.
inline std::string pcapng_block(std::uint32_t type, const std::string& body) {
  const auto padded = body + std::string((4 - body.size() % 4) % 4, '\0');
  const auto length = word(static_cast<std::uint32_t>(padded.size() + 12), false);
  return word(type, false) + length + padded + length;
}

inline std::string pcapng_header(std::uint32_t link_type = 1) {
  return pcapng_block(0x0A0D0D0A, word(0x1A2B3C4D, false) + word(1, false, 2) + word(0, false, 2) +
                                      word(0xFFFFFFFF, false) + word(0xFFFFFFFF, false)) +
         pcapng_block(1, word(link_type, false, 2) + word(0, false, 2) + word(0, false));
}

inline std::string pcapng_record(const std::string& frame, std::uint64_t microseconds, std::uint32_t original_length) {
  return pcapng_block(6, word(0, false) + word(static_cast<std::uint32_t>(microseconds >> 32), false) +
                             word(static_cast<std::uint32_t>(microseconds), false) +
                             word(static_cast<std::uint32_t>(frame.size()), false) + word(original_length, false) +
                             frame);
}

// An Ethernet II frame of an EtherType that nobody decodes, filled up with `fill`.
inline std::string ethernet_frame(std::size_t size = 60, char fill = 'x') {
  std::string frame = "\x01\x02\x03\x04\x05\x06\x0A\x0B\x0C\x0D\x0E\x0F\x88\xB5";
  frame.resize(size, fill);
  return frame;
}

}  // namespace wirelines::host
