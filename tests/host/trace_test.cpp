#include "host/trace.hpp"

#include <gtest/gtest.h>
#include <zlib.h>
#include <zstd.h>

#include <vector>

#include "files.hpp"

namespace wirelines::host {
namespace {

std::string gzip(const std::string& bytes) {
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
  std::string out(deflateBound(&stream, bytes.size()) + 64, '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

std::string zstd(const std::string& bytes) {
  std::string out(ZSTD_compressBound(bytes.size()), '\0');
  out.resize(ZSTD_compress(out.data(), out.size(), bytes.data(), bytes.size(), 3));
  return out;
}

// What reading a file of `bytes` comes to: each frame as "number@offset seconds.nanoseconds captured/original", then
// the exit code and message of a failure.
struct Reading {
  std::vector<std::string> frames;
  std::string bytes;  // of all frames
  int exit_code = 0;
  std::string message;
};

Reading read_file(const std::string& path) {
  Reading reading;
  try {
    Trace trace(path, {});
    for (Frame frame{}; trace.next(frame);) {
      reading.frames.push_back(std::to_string(frame.number) + "@" + std::to_string(frame.offset) + " " +
                               std::to_string(frame.seconds) + "." + std::to_string(frame.nanoseconds) + " " +
                               std::to_string(frame.length) + "/" + std::to_string(frame.original_length));
      reading.bytes.append(reinterpret_cast<const char*>(frame.data), frame.length);
    }
  } catch (const Failure& failure) {
    reading.exit_code = failure.exit_code();
    reading.message = failure.what();
    // The folder's name differs from run to run.
    if (const auto at = reading.message.find(path); at != std::string::npos)
      reading.message.replace(at, path.size(), "F");
  }
  return reading;
}

Reading read_bytes(const std::string& bytes) {
  const Folder folder;
  return read_file(folder.file("trace", bytes));
}

const std::string kFrameA = ethernet_frame(60, 'a');
const std::string kFrameB = ethernet_frame(97, 'b');

std::string pcap_trace(TraceForm form = {}) {
  return pcap_header(form) + pcap_record(kFrameA, 1714557600, 123456, 60, form) +
         pcap_record(kFrameB, 4000000000, 999999, 1514, form);
}

std::string pcapng_trace() {
  return pcapng_header() + pcapng_record(kFrameA, 1714557600123456, 60) +
         pcapng_record(kFrameB, 4000000000999999, 1514);
}

TEST(Trace, reads_every_form) {
  const std::vector<std::string> kMicro = {"1@24 1714557600.123456000 60/60", "2@100 4000000000.999999000 97/1514"};
  const std::vector<std::string> kNano = {"1@24 1714557600.123456 60/60", "2@100 4000000000.999999 97/1514"};
  const std::vector<std::string> kNg = {"1@48 1714557600.123456000 60/60", "2@140 4000000000.999999000 97/1514"};
  // Three members in one compressed file; and one that decompresses to more than any buffer.
  const auto parts =
      gzip(pcap_trace().substr(0, 3)) + gzip(pcap_trace().substr(3, 100)) + gzip(pcap_trace().substr(103));
  const auto zstd_parts = zstd(pcap_trace().substr(0, 30)) + zstd(pcap_trace().substr(30));
  const auto skippable = std::string("\x5A\x2A\x4D\x18\x02\x00\x00\x00zz", 10) + zstd(pcap_trace());
  const struct {
    const char* what;
    std::string bytes;
    const std::vector<std::string>& frames;
  } kCases[] = {
      {"little-endian, microseconds", pcap_trace(), kMicro},
      {"big-endian, microseconds", pcap_trace({true, false}), kMicro},
      {"little-endian, nanoseconds", pcap_trace({false, true}), kNano},
      {"big-endian, nanoseconds", pcap_trace({true, true}), kNano},
      {"pcapng", pcapng_trace(), kNg},
      {"gzip", gzip(pcap_trace()), kMicro},
      {"gzip of pcapng", gzip(pcapng_trace()), kNg},
      {"gzip members", parts, kMicro},
      {"zstd", zstd(pcap_trace()), kMicro},
      {"zstd frames", zstd_parts, kMicro},
      {"zstd behind a skippable frame", skippable, kMicro},
  };
  for (const auto& c : kCases) {
    const auto reading = read_bytes(c.bytes);
    EXPECT_EQ(reading.message, "") << c.what;
    EXPECT_EQ(reading.frames, c.frames) << c.what;
    EXPECT_EQ(reading.bytes, kFrameA + kFrameB) << c.what;
  }
}

// Compressed data that become many times the size of every buffer, so that output waits inside the decompressor.
TEST(Trace, reads_long_compressed_traces) {
  auto bytes = pcap_header();
  for (std::uint32_t i = 0; i < 3000; i++) bytes += pcap_record(ethernet_frame(60 + i % 1400, 'z'), i, 0, 1514);
  for (const auto& compressed : {gzip(bytes), zstd(bytes)}) {
    ASSERT_LT(compressed.size(), bytes.size() / 20);
    const auto reading = read_bytes(compressed);
    EXPECT_EQ(reading.message, "");
    EXPECT_EQ(reading.frames.size(), 3000u);
  }
}

// Whether `text` is `pattern`, in which "..." stands for anything.
bool matches(std::string_view text, std::string_view pattern) {
  const auto dots = pattern.find("...");
  if (dots == std::string_view::npos) return text == pattern;
  if (!text.starts_with(pattern.substr(0, dots))) return false;
  for (text.remove_prefix(dots); !text.empty(); text.remove_prefix(1)) {
    if (matches(text, pattern.substr(dots + 3))) return true;
  }
  return pattern.size() == dots + 3;
}

TEST(Trace, tells_what_is_wrong) {
  const auto record = [](std::uint32_t length) {
    return word(1, false) + word(0, false) + word(length, false) + word(length, false) + kFrameA;
  };
  const auto cut = [](const std::string& bytes, std::size_t less) { return bytes.substr(0, bytes.size() - less); };
  auto damaged_gzip = gzip(pcap_trace());
  damaged_gzip[damaged_gzip.size() - 6] ^= 0x55;  // its checksum
  const std::string kFirst = "Its first 1 frame(s) were read; copy the file again, or record it again";
  const std::string kNone = "No frame could be read; copy the file again, or record it again";
  const struct {
    const char* what;
    std::string bytes;
    std::size_t frames;
    std::string message;  // its beginning and end, "..." between
  } kCases[] = {
      {"empty", "", 0, "F: is empty"},
      {"compressed nothing", gzip(""), 0, "F: is empty"},
      {"a text", "#!/bin/sh\necho this is no trace at all\n", 0, "F: is not a pcap or pcapng trace (..."},
      {"three bytes", "\xD4\xC3\xB2", 0, "F: is not a pcap or pcapng trace (..."},
      {"half a file header", pcap_header().substr(0, 20), 0, "F: is not a pcap or pcapng trace (truncated...)"},
      {"record header cut", cut(pcap_trace(), 97 + 7), 1, "F: broken at frame 2, offset 100: truncated..." + kFirst},
      {"record body cut", cut(pcap_trace(), 1), 1, "F: broken at frame 2, offset 100: truncated..." + kFirst},
      {"pcapng block cut", cut(pcapng_trace(), 5), 1, "F: broken at frame 2, offset 140: ..." + kFirst},
      {"absurd length", pcap_header() + record(0x7FFFFFFF), 0, "F: broken at frame 1, offset 24: ..." + kNone},
      {"absurd length, all ones", pcap_header() + record(0xFFFFFFFF), 0, "F: broken at frame 1, offset 24: ..."},
      {"absurd pcapng block", pcapng_header() + word(6, false) + word(0x7FFFFFF0, false) + kFrameA, 0,
       "F: broken at frame 1, offset 48: ..."},
      {"gzip cut", cut(gzip(pcap_trace()), 9), 1, "F: broken at frame ...the compressed data end too early..."},
      {"gzip without its end", cut(gzip(pcap_trace()), 3), 2,
       "F: broken at frame 3, offset 213 of the decompressed data: the compressed data end too early..."},
      {"gzip damaged", damaged_gzip, 2, "F: broken at frame 3...: the gzip data are damaged: incorrect data check..."},
      {"gzip and more", gzip(pcap_trace()) + "garbage", 2, "F: broken at frame 3...: the gzip data are damaged..."},
      {"gzip header only", std::string("\x1F\x8B\x08\x00", 4), 0, "F: the compressed data end too early"},
      {"zstd cut", cut(zstd(pcap_trace()), 3), 0, "F: the compressed data end too early"},
      {"zstd magic only", "\x28\xB5\x2F\xFD", 0, "F: the compressed data end too early"},
      {"zstd damaged", "\x28\xB5\x2F\xFD" + std::string(40, '\xFF'), 0, "F: the zstd data are damaged: ..."},
      {"FDDI", pcap_header({}, 10), 0, "F: link type FDDI (FDDI) cannot be decoded, only Ethernet, Linux cooked ..."},
      {"wireless, in pcapng", pcapng_header(105), 0, "F: link type IEEE802_11 (802.11) cannot be decoded, ..."},
      {"a link type without a name", pcap_header({}, 9999), 0, "F: link type 9999 cannot be decoded, ..."},
      {"interfaces of two link types",
       pcapng_header() + pcapng_record(kFrameA, 1, 60) + pcapng_header(113).substr(28) + pcapng_record(kFrameA, 1, 60),
       1, "F: broken at frame 2, offset 140: an interface has a type..." + kFirst},
  };
  for (const auto& c : kCases) {
    const auto reading = read_bytes(c.bytes);
    EXPECT_EQ(reading.exit_code, EX_DATAERR) << c.what;
    EXPECT_EQ(reading.frames.size(), c.frames) << c.what;
    EXPECT_TRUE(matches(reading.message, c.message)) << c.what << "\n  " << reading.message;
  }
}

TEST(Trace, tells_why_it_cannot_open) {
  const Folder folder;
  auto reading = read_file(folder.path("nowhere"));
  EXPECT_EQ(reading.exit_code, EX_NOINPUT);
  EXPECT_EQ(reading.message, "F: cannot be opened: No such file or directory");
  reading = read_file(folder.path(""));
  EXPECT_EQ(reading.exit_code, EX_NOINPUT);
  EXPECT_EQ(reading.message, "F: is a directory; name the traces in it");
}

}  // namespace
}  // namespace wirelines::host
