#include "Figures.h"
#include "OpaqueCalls.h"
#include "WorkTime.h"

namespace {

constexpr size_t objects = 64;
constexpr int rounds = 100;

void sends(benchmark::State& state) {
  const auto counters = makeCounters(objects);
  const SEL selector = NSSelectorFromString("count:");
  const auto repeat = [&](const auto& call) {
    return secondsOf([&] {
      for (int round = 0; round < rounds; ++round)
        for (const auto& counter : counters) call(*counter);
    });
  };
  takeTurns(
      state, [&] { return repeat([&](Counter& c) { c.performSelector_withObject(selector, &c); }); },
      [&] { return repeat([](Counter& c) { c.count(&c); }); });
}

}  // namespace

void addMessages(RatioTable& table) {
  table.add({{"message", "send by name / virtual call", 0, 20}}, sends);
}
