#include "EffectBench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include "RegisterEffects.h"

namespace {

constexpr ComponentDescription ours{FourCharCode("aufx"), 0, FourCharCode("Tovn")};

std::string codeOf(Component component) {
  ComponentDescription d;
  GetComponentInfo(component, &d, nullptr, nullptr, nullptr);
  std::string code;
  for (int shift = 24; shift >= 0; shift -= 8) code += static_cast<char>(d.componentSubType >> shift & 0xFF);
  return code;
}

template <class T>
bool setProperty(AudioUnit unit, AudioUnitPropertyID id, AudioUnitScope scope, const T& value) {
  return AudioUnitSetProperty(unit, id, scope, 0, &value, sizeof value) == noErr;
}

}  // namespace

EffectBench::EffectBench(const std::string& code, const Setup& setup) : setup_(setup) {
  RegisterEffects();
  Component component = FindNextComponent(nullptr, &ours);
  while (component && codeOf(component) != code) component = FindNextComponent(component, &ours);
  AudioUnit unit = nullptr;
  if (OpenAComponent(component, &unit) != noErr) return;
  const auto format = [&](UInt32 channels) {
    return AudioStreamBasicDescription{setup.sampleRate,
                                       kAudioFormatLinearPCM,
                                       kAudioFormatFlagsNativeFloatPacked,
                                       4,
                                       1,
                                       4,
                                       channels,
                                       32,
                                       0};
  };
  const bool ready =
      setProperty(unit, kAudioUnitProperty_StreamFormat, kAudioUnitScope_Input, format(setup.inputs)) &&
      setProperty(unit, kAudioUnitProperty_StreamFormat, kAudioUnitScope_Output, format(setup.outputs)) &&
      setProperty(unit, kAudioUnitProperty_MaximumFramesPerSlice, kAudioUnitScope_Global,
                  setup.maximumFrames) &&
      setProperty(unit, kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input,
                  AURenderCallbackStruct{&supply, this}) &&
      AudioUnitInitialize(unit) == noErr;
  if (ready)
    unit_ = unit;
  else
    CloseComponent(unit);
}

EffectBench::~EffectBench() {
  CloseComponent(unit_);
}

void EffectBench::set(AudioUnitParameterID id, Float32 value) {
  EXPECT_EQ(AudioUnitSetParameter(unit_, id, kAudioUnitScope_Global, 0, value, 0), noErr);
}

std::vector<std::pair<AudioUnitParameterID, AudioUnitParameterInfo>> EffectBench::parameters() const {
  UInt32 size = 0;
  AudioUnitGetPropertyInfo(unit_, kAudioUnitProperty_ParameterList, 0, 0, &size, nullptr);
  std::vector<UInt32> ids(size / sizeof(UInt32));
  AudioUnitGetProperty(unit_, kAudioUnitProperty_ParameterList, 0, 0, ids.data(), &size);
  std::vector<std::pair<AudioUnitParameterID, AudioUnitParameterInfo>> all;
  for (const AudioUnitParameterID id : ids) {
    AudioUnitParameterInfo info;
    size = sizeof info;
    AudioUnitGetProperty(unit_, kAudioUnitProperty_ParameterInfo, 0, id, &info, &size);
    all.emplace_back(id, info);
  }
  return all;
}

void EffectBench::setQuality(UInt32 quality) {
  EXPECT_TRUE(setProperty(unit_, kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, quality));
}

Float64 EffectBench::seconds(AudioUnitPropertyID id) const {
  Float64 seconds = -1;
  UInt32 size = sizeof seconds;
  EXPECT_EQ(AudioUnitGetProperty(unit_, id, kAudioUnitScope_Global, 0, &seconds, &size), noErr);
  return seconds;
}

void EffectBench::reset() {
  EXPECT_EQ(AudioUnitReset(unit_, kAudioUnitScope_Global, 0), noErr);
}

OSStatus EffectBench::supply(void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32,
                             AudioBufferList* data) {
  const auto& bench = *static_cast<const EffectBench*>(self);
  for (UInt32 c = 0; c < data->mNumberBuffers; ++c)
    data->mBuffers[c].mData = const_cast<float*>((*bench.input_)[c].data() + bench.position_);
  return noErr;
}

EffectBench::Samples EffectBench::render(const Samples& input, std::span<const UInt32> blocks) {
  const size_t frames = input[0].size();
  Samples output(setup_.outputs, std::vector<float>(frames));
  input_ = &input;
  position_ = 0;
  for (size_t block = 0; position_ < frames; ++block) {
    const auto run = static_cast<UInt32>(std::min<size_t>(blocks[block % blocks.size()], frames - position_));
    AudioBufferList list;
    list.mNumberBuffers = setup_.outputs;
    for (UInt32 c = 0; c < setup_.outputs; ++c) list.mBuffers[c] = {1, run * 4, output[c].data() + position_};
    UInt32 flags = 0;
    const AudioTimeStamp time{static_cast<Float64>(position_), 0, kAudioTimeStampSampleTimeValid};
    EXPECT_EQ(AudioUnitRender(unit_, &flags, &time, 0, run, &list), noErr);
    position_ += run;
  }
  return output;
}

EffectBench::Samples EffectBench::renderAround(const Samples& input, size_t at,
                                               const std::function<void()>& change) {
  Samples before, after;
  for (const auto& channel : input) {
    const auto cut = channel.begin() + static_cast<std::ptrdiff_t>(at);
    before.emplace_back(channel.begin(), cut);
    after.emplace_back(cut, channel.end());
  }
  Samples output = render(before, 512);
  change();
  const Samples rest = render(after, 512);
  for (size_t c = 0; c < output.size(); ++c)
    output[c].insert(output[c].end(), rest[c].begin(), rest[c].end());
  return output;
}

std::vector<std::string> effectCodes() {
  RegisterEffects();
  std::vector<std::string> codes;
  for (Component c = FindNextComponent(nullptr, &ours); c; c = FindNextComponent(c, &ours))
    codes.push_back(codeOf(c));
  return codes;
}

EffectBench::Samples noise(UInt32 channels, size_t frames, float level) {
  std::mt19937 random(20);
  EffectBench::Samples samples(channels, std::vector<float>(frames));
  for (auto& channel : samples)
    for (float& sample : channel) sample = level * (static_cast<float>(random() >> 8) / 8388608.0f - 1.0f);
  return samples;
}

EffectBench::Samples sine(double frequency, double level, size_t frames, double rate) {
  const double amplitude = std::pow(10, level / 20);
  const double turn = 2 * std::numbers::pi * frequency / rate;
  EffectBench::Samples samples(2, std::vector<float>(frames));
  for (size_t i = 0; i < frames; ++i)
    samples[0][i] = samples[1][i] = static_cast<float>(amplitude * std::sin(turn * static_cast<double>(i)));
  return samples;
}

void setAll(EffectBench& bench, std::initializer_list<std::pair<AudioUnitParameterID, double>> values) {
  for (const auto& [id, value] : values) bench.set(id, static_cast<Float32>(value));
}

double largestBend(const std::vector<float>& samples, size_t from) {
  double bend = 0;
  for (size_t i = std::max<size_t>(from, 2); i < samples.size(); ++i)
    bend = std::max<double>(bend, std::fabs(samples[i] - 2 * samples[i - 1] + samples[i - 2]));
  return bend;
}
