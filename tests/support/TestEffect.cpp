#include "TestEffect.h"

#include <algorithm>
#include <limits>

#include "AUEventListener.h"

namespace {

constexpr const char* modes[] = {"soft", "hard", "off"};
constexpr UInt32 unnamed = kAudioUnitParameterFlag_IsReadable | kAudioUnitParameterFlag_IsWritable;
constexpr AUPresetRow presets[] = {
    {"Plain"}, {"Loud", {{{gainParameter, 9}, {freqParameter, 440}}}}, {"Over", {{{gainParameter, 99}}}}};

}  // namespace

std::vector<AUParameterRow> TestEffect::testRows() {
  return {{gainParameter, "gain", kAudioUnitParameterUnit_Generic, 0, 10, 2},
          {freqParameter, "größe", kAudioUnitParameterUnit_Hertz, 20, 20000, 200,
           unnamed | kAudioUnitParameterFlag_DisplayLogarithmic},
          {framesParameter, "frames", kAudioUnitParameterUnit_SampleFrames, 0, 44100, 0},
          {modeParameter, "mode", kAudioUnitParameterUnit_Indexed, 0, 2, 0,
           kAUParameterPlain | kAudioUnitParameterFlag_ValuesHaveStrings, modes},
          {givenParameter, "given away", kAudioUnitParameterUnit_Decibels, -12, 12, 0,
           kAUParameterPlain | kAudioUnitParameterFlag_CFNameRelease},
          {textParameter, "text", kAudioUnitParameterUnit_Milliseconds, 0, 1000, 5,
           kAUParameterPlain | kAudioUnitParameterFlag_ValuesHaveStrings},
          {meterParameter, "meter", kAudioUnitParameterUnit_Decibels, 0, 20, 0, kAUParameterMeter}};
}

TestEffect::TestEffect(const std::shared_ptr<Rows>& rows)
    : AUEffectBase({.parameters = *rows,
                    .presets = presets,
                    .minimumSampleRate = 500,
                    .monoToStereo = true,
                    .hasRenderQuality = true}),
      rows_(rows) {}

void TestEffect::setMeterId(AudioUnitParameterID id) {
  rows_->back().id = id;
  announcePropertyChange(kAudioUnitProperty_ParameterList);
}

void TestEffect::process(std::span<float* const> channels, UInt32 frames) {
  if (inputChannels() < channels.size()) std::copy_n(channels[0], frames, channels[1]);
  for (UInt32 i = 0; i < frames; ++i) {
    const float gain = smoothed(gainParameter).next();
    for (float* channel : channels) channel[i] *= gain;
  }
  volatile float tiny = 1e-20f;
  flushed = tiny * tiny == 0.0f;
}

Unit openUnit(Component component) {
  AudioUnit unit = nullptr;
  OpenAComponent(component, &unit);
  return Unit(unit);
}

Unit openTestEffect() {
  return openUnit(RegisterComponent(
      testDescription, "Test: AUTest", 0x00010203,
      +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<TestEffect>(); }));
}

AudioUnitParameter addressOf(const Unit& unit, AudioUnitParameterID id) {
  return {unit.get(), id, kAudioUnitScope_Global, 0};
}

Float32 valueOf(const Unit& unit, AudioUnitParameterID id) {
  Float32 value = std::numeric_limits<float>::quiet_NaN();
  AudioUnitGetParameter(unit.get(), id, kAudioUnitScope_Global, 0, &value);
  return value;
}

void hostSets(const Unit& unit, AudioUnitParameterID id, Float32 value) {
  const AudioUnitParameter address = addressOf(unit, id);
  AUParameterSet(nullptr, nullptr, &address, value, 0);
}
