// usage: bench_instructions field|hex|frame ROUNDS      does one workload that many times, for callgrind to count
#include <cstdlib>
#include <string_view>

#include "workloads.hpp"

int main(int argc, char** argv) {
  if (argc != 3) return 64;
  const std::string_view workload = argv[1];
  const long rounds = std::atol(argv[2]);
  const auto frame = wirelines::bench::tcp_frame(160);
  for (long i = 0; i < rounds; ++i) {
    LineList list{};
    if (workload == "field") {
      wirelines::bench::field_lines(list, wirelines::Bytes(wirelines::bench::kHeader, 20));
      wirelines::bench::field_lines(list, wirelines::Bytes(wirelines::bench::kHeader, 20));
      wirelines::bench::field_lines(list, wirelines::Bytes(wirelines::bench::kHeader, 20));
    } else if (workload == "hex") {
      HexOutput(&list, frame.data(), 160, WIRELINES_ASCII);
    } else {
      AnalyzeOutput(&list, frame.data(), static_cast<int32_t>(frame.size()), 1700000000, 0, WIRELINES_ASCII);
    }
    DelDspBuffer(&list);
  }
  return 0;
}
