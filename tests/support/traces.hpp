// Frames of traces: of the samples in examples/, and of the traces in ../shared/captures when they are there.
#pragma once

#include <pcap/pcap.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

#include "core/bytes.hpp"

namespace wirelines::test {

inline constexpr const char* kTraces = SOURCE_DIR "/../shared/captures";
inline constexpr const char* kSamples = SOURCE_DIR "/examples";

inline bool traces_there() {
  return std::filesystem::is_directory(kTraces);
}

// Calls `use(place, frame, time)` with each frame of each trace, from a heap copy of exactly its size. Returns how many
// there were, or -1 when a trace could not be read.
template <typename Use>
int for_each_trace_frame(Use use, const char* folder = kTraces) {
  int frames = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".pcap") continue;
    char error[PCAP_ERRBUF_SIZE];
    pcap_t* const trace = pcap_open_offline(entry.path().string().c_str(), error);
    if (trace == nullptr) return -1;
    pcap_pkthdr* header = nullptr;
    const u_char* data = nullptr;
    for (int number = 1; pcap_next_ex(trace, &header, &data) == 1; ++number, ++frames) {
      const auto copy = std::make_unique<uint8_t[]>(header->caplen);
      std::memcpy(copy.get(), data, header->caplen);
      use(entry.path().filename().string() + " frame " + std::to_string(number),
          Bytes(copy.get(), static_cast<int32_t>(header->caplen)), header->ts);
    }
    pcap_close(trace);
  }
  return frames;
}

}  // namespace wirelines::test
