// The bytes of a file or pipe, decompressed as they come where they are compressed.
#pragma once

#include <zlib.h>
#include <zstd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace wirelines::host {

class Stream {
 public:
  // Reads from `fd` and closes it in the end. `before_wait` is called before each read that would have to wait for a
  // pipe: the moment to show what is there.
  Stream(int fd, std::function<void()> before_wait);
  ~Stream();
  Stream(const Stream&) = delete;
  Stream& operator=(const Stream&) = delete;

  // Stores what is there, up to `size` bytes and at least one; none only at the end, or where the data break off.
  std::size_t read(char* to, std::size_t size);

  // Before anything was taken: gives `head` first and then the file's bytes from `offset` on. False when that cannot be
  // done, and nothing has changed: the data are compressed or come from a pipe.
  bool begin_with(std::string head, std::uint64_t offset);

  // Whether nothing is left.
  bool empty();

  // Bytes taken so far, and whether they are those of the file itself or decompressed ones.
  [[nodiscard]] std::uint64_t offset() const { return offset_; }
  [[nodiscard]] bool compressed() const { return kind_ != Kind::kPlain; }

  // The descriptor when the data are all of a file, as it stands, and nothing was taken; otherwise -1.
  [[nodiscard]] int whole_file() const;

  // Whether they are those of a file that can be read from any place.
  [[nodiscard]] bool seekable() const;

  // Why the data broke off; empty as long as they did not.
  [[nodiscard]] const std::string& problem() const { return problem_; }

 private:
  enum class Kind { kPlain, kGzip, kZstd };
  struct EndInflate {
    void operator()(z_stream* stream) const;
  };
  struct FreeZstd {
    void operator()(ZSTD_DStream* stream) const { ZSTD_freeDStream(stream); }
  };

  void find_kind();
  bool fill_file();
  bool fill();
  std::size_t inflate_some();
  std::size_t zstd_some();

  int fd_;
  std::function<void()> before_wait_;
  Kind kind_ = Kind::kPlain;
  std::unique_ptr<z_stream, EndInflate> gzip_;
  std::unique_ptr<ZSTD_DStream, FreeZstd> zstd_;
  bool unfinished_ = false;  // inside a compressed member, so that the end of the file would come too early
  std::uint64_t offset_ = 0;
  std::string problem_;

  std::string head_;             // behind bytes_ at first, when begin_with gave one
  std::string_view file_bytes_;  // read from the file and not used yet
  std::string_view bytes_;       // ready to be taken
  std::array<char, 131072> file_buffer_;
  std::array<char, 131072> buffer_;  // decompressed
};

}  // namespace wirelines::host
