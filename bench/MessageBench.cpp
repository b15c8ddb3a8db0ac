#include <benchmark/benchmark.h>

#include "OpaqueCalls.h"

namespace {

constexpr size_t objects = 64;

void virtualCall(benchmark::State& state) {
  const auto counters = makeCounters(objects);
  for (auto _ : state)
    for (const auto& counter : counters) counter->count(counter.get());
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(objects));
}
BENCHMARK(virtualCall)->Name("message/virtual call");

void send(benchmark::State& state) {
  const auto counters = makeCounters(objects);
  const SEL selector = NSSelectorFromString("count:");
  for (auto _ : state)
    for (const auto& counter : counters) counter->performSelector_withObject(selector, counter.get());
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(objects));
}
BENCHMARK(send)->Name("message/send");

}  // namespace
