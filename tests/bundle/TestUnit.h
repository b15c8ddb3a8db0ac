#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "AUEffectBase.h"
#include "AUEventListener.h"
#include "Components.h"

/// An effect without sound and with the parameters that a test gives it.
class SilentEffect : public AUEffectBase {
 public:
  explicit SilentEffect(std::span<const AUParameterRow> rows, std::span<const AUPresetRow> presets = {})
      : AUEffectBase({.parameters = rows, .presets = presets}) {}

 private:
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const>, UInt32) override {}
};

struct CloseUnit {
  void operator()(AudioUnit unit) const { CloseComponent(unit); }
};
using Unit = std::unique_ptr<AUEffectBase, CloseUnit>;

Unit openUnit(Component component);
/// The rows of `testParameters` with three presets, opened as any other effect. The component's name is
/// "Test: AUBench".
Unit openTestUnit();

/// Identifiers of the parameters of openTestUnit.
enum TestParameter : AudioUnitParameterID {
  gainParameter,    // 0 to 10, default 2, a plain number
  freqParameter,    // 20 to 20000 Hz, default 200, logarithmic; its name is "größe", only in Mac Roman
  framesParameter,  // 0 to 44100 sample frames
  modeParameter,    // indexed 0 to 2: "soft", "hard", "off", with value strings
  givenParameter,   // dB, -12 to 12; who reads the description releases the name
  textParameter,    // ms, 0 to 1000, default 5; value strings of the effect
};

AudioUnitParameter addressOf(const Unit& unit, AudioUnitParameterID id);
Float32 valueOf(const Unit& unit, AudioUnitParameterID id);
/// As a host does it: every listener hears of it.
void hostSets(const Unit& unit, AudioUnitParameterID id, Float32 value);
