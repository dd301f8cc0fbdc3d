// An index of frames finds each as reading from the beginning does, or says that it does not belong to the trace.
#include <gtest/gtest.h>

#include <vector>

#include "host/frame_index.hpp"
#include "program.hpp"

namespace wirelines::host {
namespace {

struct Record {
  std::uint64_t number, offset;
  std::int64_t seconds;
  std::uint32_t nanoseconds;
  std::string bytes;

  explicit Record(const Frame& frame)
      : number(frame.number),
        offset(frame.offset),
        seconds(frame.seconds),
        nanoseconds(frame.nanoseconds),
        bytes(reinterpret_cast<const char*>(frame.data), frame.length) {}
  bool operator==(const Record&) const = default;
};

std::vector<Record> read_all(const std::string& path) {
  std::vector<Record> records;
  Trace trace(path, {});
  for (Frame frame{}; trace.next(frame);) records.emplace_back(frame);
  return records;
}

FrameIndex indexed(const std::string& path) {
  FrameIndex index(path);
  Trace trace(path, {});
  for (Frame frame{}; trace.next(frame);) index.add(frame);
  return index;
}

constexpr std::uint32_t kFrames = 300;

std::string frame_of(std::uint32_t number) {
  return ethernet_frame(60 + number % 7, static_cast<char>('a' + number % 26));
}

std::string pcap_of(TraceForm form, std::uint32_t frames = kFrames) {
  auto bytes = pcap_header(form);
  for (std::uint32_t i = 1; i <= frames; i++) bytes += pcap_record(frame_of(i), 1000 + i, i, 1500, form);
  return bytes;
}

// An interface whose times count in units of 10 to the power of -`digits` seconds.
std::string interface(char digits) {
  return pcapng_block(1, word(1, false, 2) + word(0, false, 2) + word(0, false) + word(9, false, 2) +
                             word(1, false, 2) + std::string{digits, 0, 0, 0} + word(0, false));
}

// Two sections of several interfaces with different units of time, which come one by one, and blocks of other kinds.
std::string pcapng_of() {
  const auto section = pcapng_header().substr(0, 28);
  const auto comment = pcapng_block(0x0BAD, "no frame");
  auto bytes = section + comment + interface(3);
  std::uint32_t interfaces = 1;
  for (std::uint32_t i = 1; i <= kFrames; i++) {
    if (i == 100) bytes += comment + interface(9);
    if (i == 170) bytes += section + interface(6) + comment;
    if (i == 100 || i == 200) interfaces = 2;
    if (i == 170) interfaces = 1;
    if (i == 200) bytes += interface(0);
    auto record = pcapng_record(frame_of(i), 5000 + i, 1500);
    record.replace(8, 4, word(i % interfaces, false));
    bytes += record + (i % 50 == 0 ? comment : "");
  }
  return bytes;
}

TEST(Index, finds_every_frame) {
  const struct {
    const char* what;
    std::string bytes;
  } kCases[] = {
      {"little-endian, microseconds", pcap_of({false, false})},
      {"big-endian, microseconds", pcap_of({true, false})},
      {"little-endian, nanoseconds", pcap_of({false, true})},
      {"big-endian, nanoseconds", pcap_of({true, true})},
      {"pcapng", pcapng_of()},
  };
  for (const auto& c : kCases) {
    const Folder folder;
    const auto path = folder.file("trace", c.bytes);
    const auto records = read_all(path);
    ASSERT_EQ(records.size(), kFrames) << c.what;
    indexed(path).save();
    const auto index = FrameIndex::load(path);
    ASSERT_TRUE(index) << c.what;
    EXPECT_EQ(index->frames(), kFrames);
    for (const auto& record : records) {
      for (const auto& place : {index->before_frame(record.number), index->before_offset(record.offset)}) {
        Trace trace(path, {}, place);
        Frame frame{};
        auto steps = FrameIndex::kStep;
        do {
          ASSERT_TRUE(trace.next(frame)) << c.what << record.number;
          // Not only the wanted frame: all on the way to it.
          ASSERT_TRUE(Record(frame) == records[frame.number - 1]) << c.what << " " << frame.number;
        } while (frame.number != record.number && --steps > 0);
        EXPECT_EQ(frame.number, record.number) << c.what;
      }
    }
  }
}

// Whether there is an index that can be used, or why there is none.
std::string state(const std::string& path) {
  try {
    const auto index = FrameIndex::load(path);
    if (!index) return "none";
    static_cast<void>(index->before_frame(200));
    return "good";
  } catch (const Failure& failure) {
    return std::string(failure.what()).substr(path.size());
  }
}

TEST(Index, knows_its_trace) {
  const Folder folder;
  const auto bytes = pcap_of({});
  const auto path = folder.file("trace", bytes);
  EXPECT_EQ(state(path), "none");
  indexed(path).save();
  EXPECT_EQ(state(path), "good");
  const auto time = std::filesystem::last_write_time(path);
  const auto index = contents(FrameIndex::file_of(path));

  const std::string kOther = ".wlx: is not the index of '" + path + "' as it is now";
  const auto with = [&bytes](std::size_t offset) {
    auto other = bytes;
    other[offset] ^= 1;
    return other;
  };
  const auto point = read_all(path)[192].offset;  // the one before frame 200
  const struct {
    const char* what;
    std::string bytes;
    bool same_time;
    std::string state;
  } kCases[] = {
      {"the same, with its time", bytes, true, "good"},
      {"the same, written anew", bytes, false, kOther},
      {"shorter", bytes.substr(0, bytes.size() - 80), true, kOther},
      {"grown", bytes + pcap_record(frame_of(301), 1301, 301, 1500), false, "good"},
      {"grown, another one at its beginning", with(30) + "more", false, kOther},
      {"grown, another one at its end", with(bytes.size() - 1) + "more", false, kOther},
      {"other bytes where the frame begins", with(point + 9), true, kOther},
  };
  for (const auto& c : kCases) {
    folder.file("trace", c.bytes);
    if (c.same_time) std::filesystem::last_write_time(path, time);
    EXPECT_EQ(state(path), c.state) << c.what;
  }

  folder.file("trace", bytes);
  std::filesystem::last_write_time(path, time);
  for (std::size_t i = 0; i < index.size(); i++) {
    auto damaged = index;
    damaged[i] ^= 0x10;
    folder.file("trace.wlx", damaged);
    EXPECT_EQ(state(path), ".wlx: is damaged, or no index of frames") << "byte " << i;
    folder.file("trace.wlx", index.substr(0, i));
    EXPECT_EQ(state(path), ".wlx: is damaged, or no index of frames") << i << " bytes";
  }
}

TEST_F(Program, indexes) {
  // Frame 150 cannot be read: only an index leads past it. Its time is kept, as nobody would.
  auto bytes = pcap_of({});
  auto path = folder_.file("big.pcap", bytes);
  auto result = run("$W index big.pcap");
  EXPECT_EQ(result.exit_code, 0);
  EXPECT_EQ(result.err, "wirelines: big.pcap.wlx: 300 frame(s)\n");
  const auto time = std::filesystem::last_write_time(path);
  const auto wanted = run("$W show -N 290-295,300 big.pcap").out;
  const auto offset = read_all(path)[294].offset;
  bytes.replace(read_all(path)[149].offset + 8, 4, "\xFF\xFF\xFF\x7F");
  folder_.file("big.pcap", bytes);
  std::filesystem::last_write_time(path, time);
  EXPECT_EQ(run("$W show -N 290-295,300 big.pcap").out, wanted);
  EXPECT_EQ(run("$W show -N 10,300 big.pcap").exit_code, EX_DATAERR);
  const auto at = " --at big.pcap:" + std::to_string(offset);
  EXPECT_EQ(run("$W json --lines none" + at + " | grep -o '\"frame\":295,.*\"offset\":" + std::to_string(offset) + "'")
                .exit_code,
            0);

  folder_.file("cut.pcap", pcap_of({}).substr(0, 20000));
  result = run("$W index cut.pcap; echo $?; $W list -N 200 cut.pcap | cut -c -5; gzip -c $T > t.gz");
  EXPECT_EQ(result.out, "65\n  200\n");
  const auto record = read_all(trace_)[1].offset;
  const auto second = std::to_string(record);
  const struct {
    std::string command;
    int exit_code;
    std::string out, err;  // their beginnings
  } kCases[] = {
      {"$W index t.gz", 64, "", "wirelines: t.gz: is compressed, so that"},
      {"$W index nowhere big.pcap -q", 66, "", "wirelines: nowhere: cannot be opened: No such file or directory\n"},
      {"$W index /dev/null", 64, "", "wirelines: /dev/null: is no regular file"},
      {"$W index $T && touch $T && $W list -N 65- $T", 0, "",
       "wirelines: " + trace_ + ".wlx: 3 frame(s)\nwirelines: " + trace_ + ".wlx: is not the index of '" + trace_ +
           "' as it is now; going without it (wirelines index " + trace_ + " makes a new one)\n"},
      {"rm -f trace.pcap.wlx; $W show --at trace.pcap:" + second, 0, "Frame 2  ", ""},
      {"$W show --at t.gz:" + second, 0, "Frame 2  ", ""},
      {"$W show --at -:" + second + " < $T", 0, "Frame 2  ", ""},
      {"$W dump --at trace.pcap:25", 64, "", "wirelines: trace.pcap: no frame begins at offset 25\n"},
      {"$W show --at trace.pcap:0", 64, "", "wirelines: trace.pcap: no frame begins at offset 0\n"},
      {"$W show --at trace.pcap:99999", 64, "", "wirelines: trace.pcap: no frame begins at offset 99999"},
      {"$W show --at trace.pcap", 64, "", "wirelines: --at: 'trace.pcap' is not FILE:OFFSET"},
      {"$W show --at trace.pcap:1x", 64, "", "wirelines: --at: 'trace.pcap:1x' is not FILE:OFFSET"},
      {"$W show --at trace.pcap:24 -N 1", 64, "", "wirelines: --at: names the trace and the frame itself"},
      {"$W show --at trace.pcap:24 $T", 64, "", "wirelines: --at: names the trace and the frame itself"},
      {"$W show --at nowhere:24", 66, "", "wirelines: nowhere: cannot be opened"},
  };
  for (const auto& c : kCases) {
    result = run(c.command);
    EXPECT_EQ(result.exit_code, c.exit_code) << c.command << "\n" << result.err;
    EXPECT_EQ(result.out.substr(0, c.out.empty() ? std::string::npos : c.out.size()), c.out) << c.command;
    EXPECT_EQ(result.err.substr(0, c.err.empty() ? std::string::npos : c.err.size()), c.err) << c.command;
  }
}

}  // namespace
}  // namespace wirelines::host
