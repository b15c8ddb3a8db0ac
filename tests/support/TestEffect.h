#pragma once

#include <memory>
#include <vector>

#include "AUEffectBase.h"
#include "Components.h"

/// Identifiers of the parameters of a TestEffect.
enum TestParameter : AudioUnitParameterID {
  gainParameter,    // 0 to 10, default 2, a plain number; what the effect does, smoothed
  freqParameter,    // 20 to 20000 Hz, default 200, logarithmic; its name is "größe", only in Mac Roman
  framesParameter,  // 0 to 44100 sample frames, default 0
  modeParameter,    // indexed 0 to 2, default 0: "soft", "hard", "off", with value strings
  givenParameter,   // dB, -12 to 12, default 0, "given away": who reads the description releases the name
  textParameter,    // ms, 0 to 1000, default 5; value strings of the effect
  meterParameter = 1000,   // 0 to 20 dB, only to be read: written by setMeter alone
  absentParameter = 9999,  // there is none
};

/// A gain with one parameter of every kind. Presets: "Plain"; "Loud" with gain 9 and 440 Hz; "Over", whose
/// gain of 99 is beyond the range. Mono, stereo, mono to stereo, from 500 Hz; with render quality.
class TestEffect : public AUEffectBase {
 public:
  TestEffect() : TestEffect(std::make_shared<Rows>(testRows())) {}

  /// The meter is found by another identifier from now on, which has to be above the others. Announced.
  void setMeterId(AudioUnitParameterID id);
  /// True when the last render ran with denormals flushed.
  bool flushed = false;

 private:
  using Rows = std::vector<AUParameterRow>;
  static Rows testRows();
  explicit TestEffect(const std::shared_ptr<Rows>& rows);
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const> channels, UInt32 frames) override;

  std::shared_ptr<Rows> rows_;
};

struct CloseUnit {
  void operator()(AudioUnit unit) const { CloseComponent(unit); }
};
/// An open instance, closed with this.
using Unit = std::unique_ptr<AUEffectBase, CloseUnit>;

Unit openUnit(Component component);
/// An instance of the registered TestEffect. The component's name is "Test: AUTest", its version 0x00010203.
Unit openTestEffect();
inline constexpr ComponentDescription testDescription{FourCharCode("aufx"), FourCharCode("test"),
                                                      FourCharCode("Test")};

AudioUnitParameter addressOf(const Unit& unit, AudioUnitParameterID id);
/// NaN when there is no such parameter.
Float32 valueOf(const Unit& unit, AudioUnitParameterID id);
/// As a host does it: every listener hears of it.
void hostSets(const Unit& unit, AudioUnitParameterID id, Float32 value);

template <class T>
OSStatus setGlobal(const Unit& unit, AudioUnitPropertyID id, const T& value,
                   AudioUnitScope scope = kAudioUnitScope_Global) {
  return AudioUnitSetProperty(unit.get(), id, scope, 0, &value, sizeof value);
}

/// The property's value, a default one when it cannot be read.
template <class T>
T getProperty(const Unit& unit, AudioUnitPropertyID id, AudioUnitScope scope = kAudioUnitScope_Global,
              AudioUnitElement element = 0) {
  T value{};
  UInt32 size = sizeof value;
  AudioUnitGetProperty(unit.get(), id, scope, element, &value, &size);
  return value;
}
