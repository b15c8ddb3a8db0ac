#include "AUEffectBase.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "AUEventListener.h"
#include "AUFlushDenormals.h"
#include "AUOpenInstances.h"

namespace {

std::atomic<UInt64> nextSerial{1};

// 300 dB: whatever is louder, infinite or not a number is no sound and would never leave a feedback loop.
constexpr float loudest = 1e15f;

float withoutFault(float sample) {
  return std::fabs(sample) <= loudest ? sample : 0.0f;
}

// By groups of a fixed size, which the compiler turns into vectors.
void copyWithoutFaults(const float* from, float* to, UInt32 frames) {
  constexpr UInt32 size = 8;
  UInt32 i = 0;
  for (; i + size <= frames; i += size) {
    float group[size];
    std::copy_n(from + i, size, group);
    for (float& sample : group) sample = withoutFault(sample);
    std::copy_n(group, size, to + i);
  }
  for (; i < frames; ++i) to[i] = withoutFault(from[i]);
}

}  // namespace

AUEffectBase::AUEffectBase(const AUEffectTraits& traits)
    : traits_(traits), serial_(nextSerial++), parameters_(traits.parameters) {
  smoothed_.resize(traits.parameters.size());
  for (AudioStreamBasicDescription& format : formats_)
    format = {44100, kAudioFormatLinearPCM, kAudioFormatFlagsNativeFloatPacked, 4, 1, 4, 2, 32, 0};
  AUOpenInstances::add(this);
}

AUEffectBase::~AUEffectBase() {
  AUOpenInstances::remove(this);
}

OSStatus AUEffectBase::initialize() {
  if (initialized_) return noErr;
  const UInt32 in = inputChannels();
  const UInt32 out = outputChannels();
  if (in != out && !(traits_.monoToStereo && in == 1 && out == 2)) return kAudioUnitErr_FormatNotSupported;
  if (formats_[0].mSampleRate != formats_[1].mSampleRate) return kAudioUnitErr_FormatNotSupported;
  for (auto& channel : memory_) channel.assign(maximumFrames_, 0.0f);
  prepare();
  initialized_ = true;
  return reset();
}

OSStatus AUEffectBase::reset() {
  if (!initialized_) return kAudioUnitErr_Uninitialized;
  for (size_t i = 0; i < smoothed_.size(); ++i) {
    smoothed_[i].setSampleRate(sampleRate());
    smoothed_[i].snap(parameters_.valueAt(i));
  }
  clear();
  return noErr;
}

OSStatus AUEffectBase::getParameter(AudioUnitParameterID id, Float32& result) const {
  const size_t index = parameters_.indexOf(id);
  if (index == AUParameterTable::notFound) return kAudioUnitErr_InvalidParameter;
  result = parameters_.valueAt(index);
  return noErr;
}

OSStatus AUEffectBase::setParameter(AudioUnitParameterID id, Float32 newValue) {
  const size_t index = parameters_.indexOf(id);
  if (index == AUParameterTable::notFound) return kAudioUnitErr_InvalidParameter;
  if (!(traits_.parameters[index].flags & kAudioUnitParameterFlag_IsWritable))
    return kAudioUnitErr_PropertyNotWritable;
  if (std::isnan(newValue)) return kAudioUnitErr_InvalidPropertyValue;
  parameters_.setValueAt(index, parameters_.clamped(index, newValue));
  return noErr;
}

void AUEffectBase::setLatency(Float64 seconds) {
  if (latency_.exchange(seconds) != seconds) announcePropertyChange(kAudioUnitProperty_Latency);
}

void AUEffectBase::announcePropertyChange(AudioUnitPropertyID id, AudioUnitScope scope) {
  const auto event = AudioUnitEvent::propertyChange({this, id, scope});
  AUEventListenerNotify(nullptr, nullptr, &event);
}

OSStatus AUEffectBase::render(UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 frames,
                              AudioBufferList& data) {
  if (!initialized_) return kAudioUnitErr_Uninitialized;
  if (frames > maximumFrames_) return kAudioUnitErr_TooManyFramesToProcess;
  const UInt32 outputs = outputChannels();
  if (data.mNumberBuffers != outputs) return paramErr;
  const UInt32 bytes = frames * UInt32{sizeof(float)};
  for (UInt32 c = 0; c < outputs; ++c)
    if (data.mBuffers[c].mData && data.mBuffers[c].mDataByteSize < bytes) return paramErr;

  if (frames > 0) {
    if (const OSStatus status = pullInput(actionFlags, timeStamp, frames)) return status;
    for (size_t i = 0; i < smoothed_.size(); ++i) smoothed_[i].follow(parameters_.valueAt(i));
    float* channels[kAudioMaximumChannels] = {memory_[0].data(), memory_[1].data()};
    const AUFlushDenormals flush;
    process(std::span<float* const>(channels, outputs), frames);
  }

  for (UInt32 c = 0; c < outputs; ++c) {
    AudioBuffer& buffer = data.mBuffers[c];
    buffer.mDataByteSize = bytes;
    if (!buffer.mData)
      buffer.mData = memory_[c].data();
    else
      std::memmove(buffer.mData, memory_[c].data(), bytes);
  }
  return noErr;
}

OSStatus AUEffectBase::pullInput(UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 frames) {
  if (!inputCallback_.inputProc) return kAudioUnitErr_NoConnection;
  AudioBufferList input;
  input.mNumberBuffers = inputChannels();
  for (UInt32 c = 0; c < input.mNumberBuffers; ++c)
    input.mBuffers[c] = {1, frames * UInt32{sizeof(float)}, memory_[c].data()};
  if (const OSStatus status =
          inputCallback_.inputProc(inputCallback_.inputProcRefCon, actionFlags, timeStamp, 0, frames, &input))
    return status;
  for (UInt32 c = 0; c < inputChannels(); ++c)
    if (!input.mBuffers[c].mData) return kAudioUnitErr_NoConnection;
  for (UInt32 c = 0; c < inputChannels(); ++c)
    copyWithoutFaults(static_cast<const float*>(input.mBuffers[c].mData), memory_[c].data(), frames);
  return noErr;
}
