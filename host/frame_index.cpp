#include "frame_index.hpp"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "replace_file.hpp"

namespace wirelines::host {

namespace fs = std::filesystem;

namespace {

constexpr std::uint64_t kMagic = 0x31584449454E4C57;  // "WLNEIDX1"; in another byte order it is another number
constexpr std::uint64_t kPcapHeader = 24;
constexpr std::uint64_t kRecordHeader = 16;  // what is summed at a point: any record has so many bytes

constexpr std::uint32_t kSectionBlock = 0x0A0D0D0A;
constexpr std::uint32_t kInterfaceBlock = 1;
constexpr std::uint32_t kOrderMagic = 0x1A2B3C4D;
constexpr std::uint64_t kSmallestBlock = 12;

// FNV-1a: not against those who mean ill, who could write any trace anyway.
std::uint64_t sum_of(std::string_view bytes) {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const char c : bytes) sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  return sum;
}

std::uint32_t word_at(std::string_view bytes, std::size_t offset, bool big_endian) {
  std::uint32_t word = 0;
  for (std::size_t i = 0; i < 4; i++) {
    word |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[offset + i])) << 8 * (big_endian ? 3 - i : i);
  }
  return word;
}

bool is_packet(std::uint32_t block) {
  return block == 2 || block == 3 || block == 6;  // old, simple, enhanced
}

}  // namespace

FrameIndex::File::File(const std::string& name) {
  std::error_code error;
  const auto status = fs::status(name, error);
  if (fs::exists(status) && !fs::is_regular_file(status)) {
    throw Failure(EX_USAGE, name + ": is no regular file; only of such an index is made");
  }
  stream_.rdbuf()->pubsetbuf(nullptr, 0);  // what is read lies far apart
  stream_.open(name, std::ios::binary);
  if (!stream_) {
    const int reason = errno;
    throw Failure(reason == EACCES ? EX_NOPERM : EX_NOINPUT, name + ": cannot be opened: " + error_text(reason));
  }
  size = fs::file_size(name);
  time = static_cast<std::uint64_t>(fs::last_write_time(name).time_since_epoch().count());
}

std::string FrameIndex::File::read(std::uint64_t offset, std::size_t count) const {
  std::string bytes(count, '\0');
  stream_.clear();
  stream_.seekg(static_cast<std::streamoff>(offset));
  stream_.read(bytes.data(), static_cast<std::streamsize>(count));
  bytes.resize(static_cast<std::size_t>(stream_.gcount()));
  return bytes;
}

FrameIndex::FrameIndex(const std::string& trace) : trace_(trace), file_(trace) {
  pcapng_ = file_.read(0, 4) == "\x0A\x0D\x0D\x0A";
  if (!pcapng_) end_ = kPcapHeader;
}

void FrameIndex::add(const Frame& frame) {
  if (frames_ % kStep == 0) points_.push_back({frame.offset, sum(frame.offset, kRecordHeader)});
  frames_++;
  if (pcapng_) {
    pass_blocks();
  } else {
    end_ = frame.offset + kRecordHeader + frame.length;
  }
}

// Goes on to the end of the next block that holds a frame.
void FrameIndex::pass_blocks() {
  while (true) {
    const auto begin = file_.read(end_, kSmallestBlock);
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    if (begin.size() == kSmallestBlock) {
      type = word_at(begin, 0, false);
      if (type == kSectionBlock) big_endian_ = word_at(begin, 8, false) != kOrderMagic;
      type = word_at(begin, 0, big_endian_);
      size = word_at(begin, 4, big_endian_);
    }
    if (size < kSmallestBlock) {
      throw Failure(EX_DATAERR, trace_ + ": has no block where one should be, at offset " + std::to_string(end_));
    }
    if (type == kSectionBlock || type == kInterfaceBlock) heads_.push_back({end_, size, type == kSectionBlock});
    end_ += size;
    if (is_packet(type)) return;
  }
}

TracePlace FrameIndex::before_frame(std::uint64_t number) const {
  if (points_.empty()) return {};
  return place(std::min<std::uint64_t>((number - 1) / kStep, points_.size() - 1));
}

TracePlace FrameIndex::before_offset(std::uint64_t offset) const {
  const auto behind = std::upper_bound(points_.begin(), points_.end(), offset,
                                       [](std::uint64_t value, const Point& point) { return value < point.offset; });
  return behind == points_.begin() ? TracePlace{} : place(static_cast<std::size_t>(behind - points_.begin()) - 1);
}

TracePlace FrameIndex::place(std::size_t point) const {
  const auto [offset, its_sum] = points_[point];
  if (sum(offset, kRecordHeader) != its_sum) throw another_trace();
  if (point == 0) return {};
  TracePlace place{.number = point * kStep + 1, .offset = offset, .head = {}};
  if (!pcapng_) place.head = file_.read(0, kPcapHeader);
  const auto end = std::lower_bound(heads_.begin(), heads_.end(), offset,
                                    [](const Head& head, std::uint64_t value) { return head.offset < value; });
  auto head = end;
  while (head != heads_.begin() && (head == end || head->is_section == 0)) head--;
  for (; head != end; head++) place.head += file_.read(head->offset, head->size);
  return place;
}

std::uint64_t FrameIndex::sum(std::uint64_t offset, std::uint64_t count) const {
  return sum_of(file_.read(offset, count));
}

Failure FrameIndex::another_trace() const {
  return {EX_DATAERR, file_of(trace_) + ": is not the index of " + in_quotes(trace_) + " as it is now"};
}

// The file: words in the machine's own byte order; the numbers that follow the magic one, the points, the heads, and
// the sum of all that.
namespace {
enum Word : std::size_t { kMagicWord, kSize, kTime, kFrames, kEnd, kFirstSum, kLastSum, kPoints, kHeads, kWords };
}

void FrameIndex::save() const {
  std::vector<std::uint64_t> words(kWords);
  words[kMagicWord] = kMagic;
  words[kSize] = file_.size;
  words[kTime] = file_.time;
  words[kFrames] = frames_;
  words[kEnd] = end_;
  words[kFirstSum] = first_sum();
  words[kLastSum] = last_sum();
  words[kPoints] = points_.size();
  words[kHeads] = heads_.size();
  for (const auto& point : points_) words.insert(words.end(), {point.offset, point.sum});
  for (const auto& head : heads_) words.insert(words.end(), {head.offset, head.size, head.is_section});
  const auto bytes = [&words] {
    return std::string_view(reinterpret_cast<const char*>(words.data()), words.size() * 8);
  };
  words.push_back(sum_of(bytes()));
  replace_file(file_of(trace_), bytes());
}

std::optional<FrameIndex> FrameIndex::load(const std::string& trace) {
  const auto name = file_of(trace);
  if (std::error_code error; !fs::exists(name, error)) return {};
  const File file(name);
  const auto bytes = file.read(0, file.size);
  std::vector<std::uint64_t> words(bytes.size() / 8);
  bytes.copy(reinterpret_cast<char*>(words.data()), words.size() * 8);
  const bool whole = words.size() > kWords && bytes.size() % 8 == 0 && words[kMagicWord] == kMagic &&
                     words.back() == sum_of(std::string_view(bytes).substr(0, bytes.size() - 8)) &&
                     words[kPoints] < words.size() && words[kHeads] < words.size() &&
                     words.size() == kWords + 2 * words[kPoints] + 3 * words[kHeads] + 1;
  if (!whole) throw Failure(EX_DATAERR, name + ": is damaged, or no index of frames");

  FrameIndex index(trace);
  index.frames_ = words[kFrames];
  index.end_ = words[kEnd];
  const auto* word = words.data() + kWords;
  for (auto left = words[kPoints]; left > 0; left--, word += 2) index.points_.push_back({word[0], word[1]});
  for (auto left = words[kHeads]; left > 0; left--, word += 3) index.heads_.push_back({word[0], word[1], word[2]});

  const auto size = index.file_.size;
  const bool same = size == words[kSize] ? index.file_.time == words[kTime] : size > words[kSize];
  if (!same || index.first_sum() != words[kFirstSum] || index.last_sum() != words[kLastSum]) {
    throw index.another_trace();
  }
  return index;
}

}  // namespace wirelines::host
