#include "TestEffect.h"

#include <algorithm>

namespace {

constexpr const char* modes[] = {"soft", "hard"};
constexpr AUParameterRow parameters[] = {
    {0, "gain", kAudioUnitParameterUnit_Generic, -2, 2, 1},
    {1, "mode", kAudioUnitParameterUnit_Indexed, 0, 1, 0, kAUParameterPlain, modes},
    {5, "größe", kAudioUnitParameterUnit_Hertz, 20, 22050, 1000,
     kAudioUnitParameterFlag_DisplayLogarithmic | kAudioUnitParameterFlag_IsReadable |
         kAudioUnitParameterFlag_IsWritable},
    {7, "given away", kAudioUnitParameterUnit_Decibels, -40, 40, 0,
     kAUParameterPlain | kAudioUnitParameterFlag_CFNameRelease},
    {1000, "frames", kAudioUnitParameterUnit_SampleFrames, 0, 1e6, 0, kAUParameterMeter},
};
constexpr AUPresetRow presets[] = {{"Plain"}, {"Half", {{{0, 0.5f}, {5, 440}}}}, {"Over", {{{0, 99}}}}};

}  // namespace

TestEffect::TestEffect()
    : AUEffectBase({.parameters = parameters,
                    .presets = presets,
                    .minimumSampleRate = 500,
                    .monoToStereo = true,
                    .hasRenderQuality = true}) {}

void TestEffect::process(std::span<float* const> channels, UInt32 frames) {
  if (inputChannels() < channels.size()) std::copy_n(channels[0], frames, channels[1]);
  for (UInt32 i = 0; i < frames; ++i) {
    const float gain = smoothed(0).next();
    for (float* channel : channels) channel[i] *= gain;
  }
  volatile float tiny = 1e-20f;
  flushed = tiny * tiny == 0.0f;
  setMeter(1000, static_cast<float>(frames));
}

Unit openTestEffect() {
  const Component component = RegisterComponent(
      testDescription, "Test: AUTest", 0x00010203,
      +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<TestEffect>(); });
  ComponentInstance instance = nullptr;
  OpenAComponent(component, &instance);
  return Unit(instance);
}
