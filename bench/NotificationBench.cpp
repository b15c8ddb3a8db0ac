#include <benchmark/benchmark.h>

#include "AUEventListener.h"
#include "BenchEditor.h"
#include "NSRunLoop.h"

namespace {

constexpr int bindings = 100;

void count(void* userData, void*, const AudioUnitEvent*, UInt64, Float32) {
  ++*static_cast<long*>(userData);
}

/// One change, delivered to the last of many registrations of one listener.
void notifyLast(benchmark::State& state) {
  VirtualClock clock;
  long delivered = 0;
  AUEventListenerRef listener = nullptr;
  AUEventListenerCreate(&count, &delivered, CFRunLoopGetCurrent(), kCFRunLoopDefaultMode, 0.05, 0.05,
                        &listener);
  std::vector<AudioUnit> units;
  for (int i = 0; i < bindings; ++i) {
    units.push_back(openEffect("sdly"));
    const AudioUnitEvent event =
        AudioUnitEvent::parameterChange({units.back(), 0, kAudioUnitScope_Global, 0});
    AUEventListenerAddEventType(listener, &units, &event);
  }
  const AudioUnitParameter last{units.back(), 0, kAudioUnitScope_Global, 0};
  float value = 0;
  for (auto _ : state) {
    value = value < 44100 ? value + 1 : 0;
    AUParameterSet(nullptr, nullptr, &last, value, 0);
    clock.advance(NSRunLoop::currentRunLoop(), 0.05);
  }
  state.counters["delivered"] = static_cast<double>(delivered);
  AUListenerDispose(listener);
  for (AudioUnit unit : units) CloseComponent(unit);
}
BENCHMARK(notifyLast)->Name("notification/to the last of 100");

/// The same turns with nothing to tell.
void idle(benchmark::State& state) {
  VirtualClock clock;
  for (auto _ : state) clock.advance(NSRunLoop::currentRunLoop(), 0.05);
}
BENCHMARK(idle)->Name("notification/turns alone");

}  // namespace
