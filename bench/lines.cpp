// Time and allocations of a field line, a hex line and a frame.
#include <benchmark/benchmark.h>

#include "workloads.hpp"

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __wrap_malloc(std::size_t size);
void* __wrap_realloc(void* block, std::size_t size);
}

namespace {

int64_t allocations = 0;

using wirelines::Bytes;

// Reports time and allocations for each of `units` in an iteration.
void per_unit(benchmark::State& state, int64_t allocations_before, double units) {
  using benchmark::Counter;
  const auto iterations = static_cast<double>(state.iterations());
  state.counters["allocations"] = static_cast<double>(allocations - allocations_before) / iterations / units;
  state.counters["time"] =
      Counter(iterations * units, Counter::kIsRate | Counter::kInvert, benchmark::Counter::OneK::kIs1000);
}

void field_line(benchmark::State& state) {
  const auto before = allocations;
  for (auto _ : state) {
    LineList list{};
    for (int i = 0; i < 5; ++i) wirelines::bench::field_lines(list, Bytes(wirelines::bench::kHeader, 20));
    DelDspBuffer(&list);
  }
  per_unit(state, before, 5.0 * wirelines::bench::kFieldLines);
}
BENCHMARK(field_line);

void hex_line(benchmark::State& state) {
  std::vector<uint8_t> data(1440);
  for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<uint8_t>(i * 11);
  const auto before = allocations;
  for (auto _ : state) {
    LineList list{};
    HexOutput(&list, data.data(), static_cast<int32_t>(data.size()), static_cast<uint32_t>(state.range(0)));
    DelDspBuffer(&list);
  }
  per_unit(state, before, 90);
}
BENCHMARK(hex_line)->ArgName("mode")->DenseRange(0, 5);

void frame(benchmark::State& state) {
  const auto bytes = wirelines::bench::tcp_frame(static_cast<std::size_t>(state.range(0)));
  const auto before = allocations;
  int32_t lines = 0;
  for (auto _ : state) {
    LineList list{};
    AnalyzeOutput(&list, bytes.data(), static_cast<int32_t>(bytes.size()), 1700000000, 0, WIRELINES_ASCII);
    lines = list.count;
    DelDspBuffer(&list);
  }
  per_unit(state, before, 1);
  state.counters["lines"] = lines;
}
BENCHMARK(frame)->ArgName("payload")->Arg(0)->Arg(100)->Arg(1460);

}  // namespace

void* __wrap_malloc(std::size_t size) {
  ++allocations;
  return __real_malloc(size);
}

void* __wrap_realloc(void* block, std::size_t size) {
  ++allocations;
  return __real_realloc(block, size);
}

BENCHMARK_MAIN();
