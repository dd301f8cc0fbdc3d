// Eight threads at once, each with the same frames in an order of its own: what each gets is what one thread gets
// alone.
#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <string>
#include <thread>
#include <vector>

#include "support/samples.hpp"
#include "vek4003.h"
#include "wirelines.h"

namespace wirelines::test {

namespace {

constexpr std::size_t kThreads = 8;
constexpr uint32_t kModes = 7;

void append(std::string& out, const void* bytes, std::size_t size) {
  out.append(static_cast<const char*>(bytes), size);
}

// All that the library tells of a frame; `list` is given back for another thread to free.
std::string all_of(const std::vector<uint8_t>& frame, uint32_t mode, LineList& list) {
  const auto length = static_cast<int32_t>(frame.size());
  std::string out;
  const uint32_t top = AnalyzeOutput(&list, frame.data(), length, 1700000000, 0, mode);
  append(out, &top, sizeof top);
  for (int32_t i = 0; i < list.count; ++i) {
    const auto& line = *static_cast<const DisplayLine*>(list.data[i]);
    append(out, &line.protocolCode, sizeof line - offsetof(DisplayLine, protocolCode));
    out += line.text;
  }
  PacketSummary summary{};
  CheckPacket(frame.data(), length, &summary);
  append(out, &summary, sizeof summary);
  out += PortToName(summary.dstPort, 17);
  return out;
}

TEST(Threads, EightGetWhatOneGets) {
  NickNameAdd(NICKNAME_PORT, "53", "names");
  const auto& frames = samples();
  ASSERT_FALSE(frames.empty());
  std::vector<std::string> alone;
  for (std::size_t i = 0; i < frames.size(); ++i) {
    LineList list{};
    alone.push_back(all_of(frames[i].bytes, static_cast<uint32_t>(i % kModes), list));
    DelDspBuffer(&list);
  }

  std::atomic<int> others = 0;
  std::vector<LineList> handed_over(kThreads * frames.size());
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t k = 0; k < frames.size(); ++k) {
        const std::size_t i = (k + t * frames.size() / kThreads) % frames.size();
        auto& list = handed_over[t * frames.size() + i];
        if (all_of(frames[i].bytes, static_cast<uint32_t>(i % kModes), list) != alone[i]) ++others;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(others, 0);

  // Lines are freed by other threads than made them, while their slabs are still in use.
  threads.clear();
  for (std::size_t t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t i = t; i < handed_over.size(); i += kThreads) DelDspBuffer(&handed_over[i]);
    });
  }
  for (auto& thread : threads) thread.join();
}

}  // namespace

}  // namespace wirelines::test
