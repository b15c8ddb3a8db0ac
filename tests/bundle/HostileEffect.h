#pragma once

#include <algorithm>
#include <limits>
#include <span>
#include <stdexcept>

#include "AUEffectBase.h"
#include "AudioUnitProperties.h"

/// What a hostile effect does wrong.
struct Faults {
  enum class Sound { asItCame, notANumber, refused };

  int failingRead = -1;  // of properties and their sizes, counted from 0
  bool hasLists = true;  // else there are no parameters any more
  float widening = 1;    // of each parameter's range around its middle
  Sound sound = Sound::asItCame;
  int reads = 0;  // so far
};

/// An effect with the parameters of another that breaks its word as `faults` says at the moment.
class HostileEffect : public AUEffectBase {
 public:
  /// Neither is copied.
  HostileEffect(std::span<const AUParameterRow> rows, Faults& faults)
      : AUEffectBase({rows, {}, 500, true, true}), faults_(faults) {}

  OSStatus propertyInfo(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element, UInt32& size,
                        bool& writable) const override {
    if (fails()) return kAudioUnitErr_InvalidProperty;
    const OSStatus status = AUEffectBase::propertyInfo(id, scope, element, size, writable);
    if (id == kAudioUnitProperty_ParameterList && !faults_.hasLists) size = 0;
    return status;
  }
  OSStatus getProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element, void* data,
                       UInt32& size) const override {
    if (fails()) return kAudioUnitErr_InvalidProperty;
    if (id == kAudioUnitProperty_ParameterList && !faults_.hasLists) size = 0;
    const OSStatus status = AUEffectBase::getProperty(id, scope, element, data, size);
    if (status == noErr && id == kAudioUnitProperty_ParameterInfo)
      widen(*static_cast<AudioUnitParameterInfo*>(data));
    return status;
  }
  OSStatus getParameter(AudioUnitParameterID id, Float32& value) const override {
    return faults_.hasLists ? AUEffectBase::getParameter(id, value) : kAudioUnitErr_InvalidParameter;
  }

 private:
  bool fails() const { return faults_.reads++ == faults_.failingRead; }
  void widen(AudioUnitParameterInfo& info) const {
    const float middle = (info.minValue + info.maxValue) / 2;
    info.minValue = middle + (info.minValue - middle) * faults_.widening;
    info.maxValue = middle + (info.maxValue - middle) * faults_.widening;
  }
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const> channels, UInt32 frames) override {
    if (faults_.sound == Faults::Sound::refused) throw std::runtime_error("no sound today");
    if (faults_.sound == Faults::Sound::notANumber)
      for (float* channel : channels) std::fill_n(channel, frames, std::numeric_limits<float>::quiet_NaN());
  }

  Faults& faults_;
};
