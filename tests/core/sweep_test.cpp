// Real traces, when they are there: every frame in every character set, from a heap copy of exactly its size.
#include <gtest/gtest.h>
#include <pcap/pcap.h>

#include <cstring>
#include <filesystem>
#include <memory>

#include "core/format.hpp"
#include "wirelines.h"

namespace wirelines::test {

namespace {

constexpr const char* kTraces = SOURCE_DIR "/../shared/captures";

TEST(Sweep, EveryFrameOfEveryTraceInEveryMode) {
  if (!std::filesystem::is_directory(kTraces)) GTEST_SKIP() << "no traces at " << kTraces;
  int frames = 0;
  for (const auto& entry : std::filesystem::directory_iterator(kTraces)) {
    if (entry.path().extension() != ".pcap") continue;
    char error[PCAP_ERRBUF_SIZE];
    pcap_t* const trace = pcap_open_offline(entry.path().c_str(), error);
    ASSERT_NE(trace, nullptr) << error;
    pcap_pkthdr* header = nullptr;
    const u_char* data = nullptr;
    while (pcap_next_ex(trace, &header, &data) == 1) {
      ++frames;
      const auto copy = std::make_unique<uint8_t[]>(header->caplen);
      std::memcpy(copy.get(), data, header->caplen);
      for (uint32_t mode = 0; mode < 7; ++mode) {
        LineList list{};
        const uint32_t top =
            AnalyzeOutput(&list, copy.get(), static_cast<int32_t>(header->caplen),
                          static_cast<uint32_t>(header->ts.tv_sec), static_cast<uint32_t>(header->ts.tv_usec), mode);
        ASSERT_LT(top, static_cast<uint32_t>(list.count)) << entry.path();
        for (int32_t i = 0; i < list.count; ++i) {
          ASSERT_LE(std::strlen(static_cast<DisplayLine*>(list.data[i])->text), kMaxText) << entry.path();
        }
        ASSERT_EQ(static_cast<DisplayLine*>(list.data[top])->level, 0U) << entry.path();
        DelDspBuffer(&list);
      }
    }
    pcap_close(trace);
  }
  EXPECT_GT(frames, 0);
}

}  // namespace

}  // namespace wirelines::test
