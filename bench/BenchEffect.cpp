#include "BenchEffect.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "AudioUnitProperties.h"

namespace {

Component componentOf(const std::string& code) {
  const ComponentDescription effects{.componentType = FourCharCode("aufx")};
  Component component = FindNextComponent(nullptr, &effects);
  while (component && effectCode(component) != code) component = FindNextComponent(component, &effects);
  if (!component) throw std::runtime_error("there is no effect " + code);
  return component;
}

template <class T>
void setProperty(AudioUnit unit, AudioUnitPropertyID id, AudioUnitScope scope, const T& value) {
  if (AudioUnitSetProperty(unit, id, scope, 0, &value, sizeof value) != noErr)
    throw std::runtime_error("a property cannot be set: " + std::to_string(id));
}

}  // namespace

Float32 partOf(const EffectParameter& parameter, float part) {
  const float value = parameter.minValue + part * (parameter.maxValue - parameter.minValue);
  return parameter.valueNames.empty() ? value : std::round(value);
}

Float32 automated(const EffectParameter& parameter, size_t index, int step) {
  const int half = 37 + 11 * static_cast<int>(index % 20);
  const int phase = step % (2 * half);
  return partOf(parameter, static_cast<float>(std::min(phase, 2 * half - phase)) / static_cast<float>(half));
}

BenchEffect::BenchEffect(const std::string& code)
    : unit_(openEffect(componentOf(code))), parameters_(effectParameters(unit_.get())) {
  std::erase_if(parameters_, [](const EffectParameter& p) { return !p.isWritable(); });
}

const EffectParameter& BenchEffect::parameter(AudioUnitParameterID id) const {
  const auto found =
      std::find_if(parameters_.begin(), parameters_.end(), [id](const auto& p) { return p.id == id; });
  if (found == parameters_.end()) throw std::runtime_error("there is no parameter " + std::to_string(id));
  return *found;
}

Float32 BenchEffect::value(AudioUnitParameterID id) const {
  Float32 value = 0;
  AudioUnitGetParameter(unit(), id, kAudioUnitScope_Global, 0, &value);
  return value;
}

void BenchEffect::set(AudioUnitParameterID id, Float32 value) {
  AudioUnitSetParameter(unit(), id, kAudioUnitScope_Global, 0, value, 0);
}

void BenchEffect::setAll(float part) {
  for (const EffectParameter& p : parameters_) set(p.id, partOf(p, part));
}

void BenchEffect::initialize(Float64 sampleRate, UInt32 inputs, UInt32 outputs, UInt32 maximumFrames) {
  AudioStreamBasicDescription format{
      sampleRate, kAudioFormatLinearPCM, kAudioFormatFlagsNativeFloatPacked, 4, 1, 4, inputs, 32, 0};
  setProperty(unit(), kAudioUnitProperty_StreamFormat, kAudioUnitScope_Input, format);
  format.mChannelsPerFrame = outputs;
  setProperty(unit(), kAudioUnitProperty_StreamFormat, kAudioUnitScope_Output, format);
  setProperty(unit(), kAudioUnitProperty_MaximumFramesPerSlice, kAudioUnitScope_Global, maximumFrames);
  setProperty(unit(), kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input,
              AURenderCallbackStruct{&supply, this});
  if (AudioUnitInitialize(unit()) != noErr) throw std::runtime_error("an effect cannot be initialised");
  output_.assign(outputs, std::vector<float>(maximumFrames));
}

OSStatus BenchEffect::supply(void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32,
                             AudioBufferList* data) {
  const auto* effect = static_cast<const BenchEffect*>(self);
  for (UInt32 c = 0; c < data->mNumberBuffers; ++c)
    data->mBuffers[c].mData = const_cast<float*>(effect->input_[c]);  // only read
  return noErr;
}

void BenchEffect::render(const float* const* input, UInt32 frames) {
  AudioBufferList data;
  data.mNumberBuffers = static_cast<UInt32>(output_.size());
  for (UInt32 c = 0; c < data.mNumberBuffers; ++c)
    data.mBuffers[c] = {1, frames * UInt32{sizeof(float)}, output_[c].data()};
  const AudioTimeStamp time{time_, 0, kAudioTimeStampSampleTimeValid};
  UInt32 flags = 0;
  input_ = input;
  if (AudioUnitRender(unit(), &flags, &time, 0, frames, &data) != noErr)
    throw std::runtime_error("an effect cannot be rendered");
  time_ += frames;
}
