// usage: bench_classify TRACE...      frames a second through CheckPacket, every checksum verified, and its time beside
// that of a bare 64-bit sum over the same bytes
#include <pcap/pcap.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <vector>

#include "wirelines.h"

namespace {

constexpr int kRounds = 25;

struct Frames {
  std::vector<uint8_t> bytes;
  std::vector<std::pair<std::size_t, int32_t>> frames;  // where each begins, and its length
};

bool load(Frames& all, const char* file) {
  char error[PCAP_ERRBUF_SIZE];
  pcap_t* const trace = pcap_open_offline(file, error);
  if (trace == nullptr) {
    std::fprintf(stderr, "bench_classify: %s\n", error);
    return false;
  }
  pcap_pkthdr* header = nullptr;
  const u_char* data = nullptr;
  while (pcap_next_ex(trace, &header, &data) == 1) {
    all.frames.emplace_back(all.bytes.size(), static_cast<int32_t>(header->caplen));
    all.bytes.insert(all.bytes.end(), data, data + header->caplen);
  }
  pcap_close(trace);
  return true;
}

uint64_t sum(const uint8_t* data, int32_t length) {
  uint64_t total = 0;
  int32_t i = 0;
  for (; i + 8 <= length; i += 8) {
    uint64_t word = 0;
    std::memcpy(&word, data + i, 8);
    total += word;
  }
  for (; i < length; ++i) total += data[i];
  return total;
}

// Processor time of one round over all frames, in nanoseconds a frame.
template <typename Work>
double time_of(const Frames& all, Work work) {
  const auto now = [] {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return 1e9 * static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec);
  };
  const double begin = now();
  for (const auto& [offset, length] : all.frames) work(all.bytes.data() + offset, length);
  return (now() - begin) / static_cast<double>(all.frames.size());
}

}  // namespace

int main(int argc, char** argv) {
  Frames all;
  for (int i = 1; i < argc; ++i) {
    if (!load(all, argv[i])) return 66;
  }
  if (all.frames.empty()) {
    std::fputs("usage: bench_classify TRACE...\n", stderr);
    return 64;
  }
  uint64_t wrong = 0;
  uint64_t total = 0;
  double classify = 1e300;
  double bare = 1e300;
  for (int round = 0; round < kRounds; ++round) {  // in turn, and the best of each: other work disturbs both alike
    classify = std::min(classify, time_of(all, [&wrong](const uint8_t* frame, int32_t length) {
                          PacketSummary summary{};
                          CheckPacket(frame, length, &summary);
                          wrong += summary.errorFlags != 0 ? 1 : 0;
                        }));
    bare =
        std::min(bare, time_of(all, [&total](const uint8_t* frame, int32_t length) { total += sum(frame, length); }));
  }
  std::printf("%zu frames, %zu bytes, %llu with a wrong checksum\n", all.frames.size(), all.bytes.size(),
              static_cast<unsigned long long>(wrong / kRounds));
  std::printf("CheckPacket %.1f ns a frame, %.2f million frames/s; %.2f times a bare 64-bit sum (check %llx)\n",
              classify, 1e3 / classify, classify / bare, static_cast<unsigned long long>(total));
  return 0;
}
