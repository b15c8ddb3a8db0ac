#pragma once

#include <memory>

#include "AUEffectBase.h"
#include "Components.h"

/// A gain with one parameter of every kind: 0 gain (x, smoothed), 1 mode (indexed), 5 a logarithmic one
/// without name string, 7 one whose name goes to the reader, 1000 a meter that shows the frames of the last
/// render. Mono, stereo, mono to stereo.
class TestEffect : public AUEffectBase {
 public:
  TestEffect();
  using AUEffectBase::setLatency;

  /// True when the last render ran with denormals flushed.
  bool flushed = false;

 private:
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const> channels, UInt32 frames) override;
};

struct CloseUnit {
  void operator()(AudioUnit unit) const { CloseComponent(unit); }
};
using Unit = std::unique_ptr<AUEffectBase, CloseUnit>;

/// An instance of the registered TestEffect.
Unit openTestEffect();

inline constexpr ComponentDescription testDescription{FourCharCode("aufx"), FourCharCode("test"),
                                                      FourCharCode("Test")};

template <class T>
OSStatus setGlobal(const Unit& unit, AudioUnitPropertyID id, const T& value, AudioUnitScope scope = 0) {
  return AudioUnitSetProperty(unit.get(), id, scope, 0, &value, sizeof value);
}

/// The property's value, a default one when it cannot be read.
template <class T>
T getProperty(const Unit& unit, AudioUnitPropertyID id, AudioUnitScope scope = 0,
              AudioUnitElement element = 0) {
  T value{};
  UInt32 size = sizeof value;
  AudioUnitGetProperty(unit.get(), id, scope, element, &value, &size);
  return value;
}
