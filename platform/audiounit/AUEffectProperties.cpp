// The properties of an effect: one row for each, then how it is read and written.

#include <algorithm>
#include <cstring>
#include <iterator>

#include "AUEffectBase.h"

struct AUEffectBase::PropertyRow {
  enum Access { readOnly, writable, writableBeforeInitialisation };

  AudioUnitPropertyID id;
  size_t size;
  Access access = readOnly;
  unsigned scopes = global;
  bool elementIsParameter = false;

  static constexpr unsigned global = 1u << kAudioUnitScope_Global;
  static constexpr unsigned input = 1u << kAudioUnitScope_Input;
  static constexpr unsigned output = 1u << kAudioUnitScope_Output;
};

namespace {

template <class T>
OSStatus put(void* data, const T& value) {
  std::memcpy(data, &value, sizeof value);
  return noErr;
}

template <class T>
T take(const void* data) {
  T value;
  std::memcpy(&value, data, sizeof value);
  return value;
}

CFStringRef makeString(const std::string& text) {
  return CFStringCreateWithCString(text.c_str(), kCFStringEncodingUTF8);
}

template <class T>
bool assign(T& field, const T& value) {
  const bool changed = !(field == value);
  field = value;
  return changed;
}

}  // namespace

const AUEffectBase::PropertyRow* AUEffectBase::propertyRow(AudioUnitPropertyID id) const {
  static constexpr PropertyRow rows[] = {
      {kAudioUnitProperty_SampleRate, sizeof(Float64), PropertyRow::writableBeforeInitialisation},
      {kAudioUnitProperty_ParameterList, 0, PropertyRow::readOnly,
       PropertyRow::global | PropertyRow::input | PropertyRow::output},
      {kAudioUnitProperty_ParameterInfo, sizeof(AudioUnitParameterInfo), PropertyRow::readOnly,
       PropertyRow::global, true},
      {kAudioUnitProperty_StreamFormat, sizeof(AudioStreamBasicDescription),
       PropertyRow::writableBeforeInitialisation, PropertyRow::input | PropertyRow::output},
      {kAudioUnitProperty_InPlaceProcessing, sizeof(UInt32)},
      {kAudioUnitProperty_Latency, sizeof(Float64)},
      {kAudioUnitProperty_MaximumFramesPerSlice, sizeof(UInt32), PropertyRow::writableBeforeInitialisation},
      {kAudioUnitProperty_ParameterValueStrings, sizeof(CFArrayRef), PropertyRow::readOnly,
       PropertyRow::global, true},
      {kAudioUnitProperty_TailTime, sizeof(Float64)},
      {kAudioUnitProperty_SetRenderCallback, sizeof(AURenderCallbackStruct), PropertyRow::writable,
       PropertyRow::input},
      {kAudioUnitProperty_FactoryPresets, sizeof(CFArrayRef)},
      {kAudioUnitProperty_RenderQuality, sizeof(UInt32), PropertyRow::writable},
      {kAudioUnitProperty_HostCallbacks, sizeof(HostCallbackInfo), PropertyRow::writable},
      {kAudioUnitProperty_CurrentPreset, sizeof(AUPreset), PropertyRow::writable},
      {kAudioUnitProperty_ParameterStringFromValue, sizeof(AudioUnitParameterStringFromValue),
       PropertyRow::readOnly, PropertyRow::global, true},
      {kAudioUnitProperty_PresentPreset, sizeof(AUPreset), PropertyRow::writable},
  };
  if (id == kAudioUnitProperty_RenderQuality && !traits_.hasRenderQuality) return nullptr;
  const auto found =
      std::find_if(std::begin(rows), std::end(rows), [id](const auto& row) { return row.id == id; });
  return found == std::end(rows) ? nullptr : found;
}

OSStatus AUEffectBase::checkAddress(const PropertyRow& row, AudioUnitScope scope,
                                    AudioUnitElement element) const {
  if (scope > kAudioUnitScope_Output || !(row.scopes & 1u << scope)) return kAudioUnitErr_InvalidScope;
  if (!row.elementIsParameter) return element == 0 ? noErr : kAudioUnitErr_InvalidElement;
  const size_t index = parameters_.indexOf(element);
  if (index == AUParameterTable::notFound) return kAudioUnitErr_InvalidParameter;
  const bool named = !traits_.parameters[index].valueNames.empty();
  return row.id == kAudioUnitProperty_ParameterValueStrings && !named ? kAudioUnitErr_InvalidProperty : noErr;
}

OSStatus AUEffectBase::propertyInfo(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element,
                                    UInt32& size, bool& writable) const {
  const PropertyRow* row = propertyRow(id);
  if (!row) return kAudioUnitErr_InvalidProperty;
  if (const OSStatus status = checkAddress(*row, scope, element)) return status;
  size = static_cast<UInt32>(row->size);
  if (id == kAudioUnitProperty_ParameterList && scope == kAudioUnitScope_Global)
    size = static_cast<UInt32>(traits_.parameters.size() * sizeof(AudioUnitParameterID));
  writable = row->access == PropertyRow::writable ||
             (row->access == PropertyRow::writableBeforeInitialisation && !initialized_);
  return noErr;
}

OSStatus AUEffectBase::getProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element,
                                   void* data, UInt32& size) const {
  UInt32 needed = 0;
  bool writable = false;
  if (const OSStatus status = propertyInfo(id, scope, element, needed, writable)) return status;
  if (size < needed) return kAudioUnitErr_InvalidPropertyValue;
  size = needed;
  switch (id) {
    case kAudioUnitProperty_SampleRate:
      return put(data, sampleRate());
    case kAudioUnitProperty_ParameterList:
      if (scope != kAudioUnitScope_Global) return noErr;
      std::transform(traits_.parameters.begin(), traits_.parameters.end(),
                     static_cast<AudioUnitParameterID*>(data), [](const auto& row) { return row.id; });
      return noErr;
    case kAudioUnitProperty_ParameterInfo:
      return put(data, parameters_.infoAt(parameters_.indexOf(element)));
    case kAudioUnitProperty_StreamFormat:
      return put(data, format(scope));
    case kAudioUnitProperty_InPlaceProcessing:
      return put(data, UInt32{1});
    case kAudioUnitProperty_Latency:
      return put(data, latency_.load());
    case kAudioUnitProperty_MaximumFramesPerSlice:
      return put(data, maximumFrames_);
    case kAudioUnitProperty_ParameterValueStrings:
      return put(data, parameters_.valueStringsAt(parameters_.indexOf(element)));
    case kAudioUnitProperty_TailTime:
      return put(data, tailTime());
    case kAudioUnitProperty_SetRenderCallback:
      return put(data, inputCallback_);
    case kAudioUnitProperty_FactoryPresets: {
      std::vector<std::string> names;
      for (const AUPresetRow& preset : traits_.presets) names.emplace_back(preset.name);
      return put(data, CFArrayCreateWithStrings(names));
    }
    case kAudioUnitProperty_RenderQuality:
      return put(data, renderQuality());
    case kAudioUnitProperty_HostCallbacks:
      return put(data, hostCallbacks_);
    case kAudioUnitProperty_ParameterStringFromValue: {
      auto request = take<AudioUnitParameterStringFromValue>(data);
      const size_t index = parameters_.indexOf(element);
      const Float32 asked = request.inValue ? *request.inValue : parameters_.valueAt(index);
      request.outString = makeString(parameters_.textOfValue(index, asked));
      return put(data, request);
    }
    case kAudioUnitProperty_CurrentPreset:
    case kAudioUnitProperty_PresentPreset:
      return put(data, AUPreset{presetNumber_, makeString(presetName_)});
  }
  return kAudioUnitErr_InvalidProperty;
}

OSStatus AUEffectBase::setProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element,
                                   const void* data, UInt32 size) {
  const PropertyRow* row = propertyRow(id);
  if (!row) return kAudioUnitErr_InvalidProperty;
  if (const OSStatus status = checkAddress(*row, scope, element)) return status;
  if (row->access == PropertyRow::readOnly) return kAudioUnitErr_PropertyNotWritable;
  if (row->access == PropertyRow::writableBeforeInitialisation && initialized_)
    return kAudioUnitErr_Initialized;
  if (size != row->size) return kAudioUnitErr_InvalidPropertyValue;

  bool changed = false;
  switch (id) {
    case kAudioUnitProperty_SampleRate: {
      const auto rate = take<Float64>(data);
      if (!supportsRate(rate)) return kAudioUnitErr_InvalidPropertyValue;
      changed = assign(formats_[0].mSampleRate, rate);
      changed |= assign(formats_[1].mSampleRate, rate);
      break;
    }
    case kAudioUnitProperty_StreamFormat: {
      const auto wanted = take<AudioStreamBasicDescription>(data);
      if (!supportsFormat(wanted)) return kAudioUnitErr_FormatNotSupported;
      changed = assign(formats_[scope == kAudioUnitScope_Output], wanted);
      break;
    }
    case kAudioUnitProperty_MaximumFramesPerSlice: {
      const auto frames = take<UInt32>(data);
      if (frames == 0 || frames > maximumFramesLimit) return kAudioUnitErr_InvalidPropertyValue;
      changed = assign(maximumFrames_, frames);
      break;
    }
    case kAudioUnitProperty_SetRenderCallback:
      changed = assign(inputCallback_, take<AURenderCallbackStruct>(data));
      break;
    case kAudioUnitProperty_RenderQuality: {
      const auto quality = take<UInt32>(data);
      if (quality > kRenderQuality_Max) return kAudioUnitErr_InvalidPropertyValue;
      changed = renderQuality_.exchange(quality) != quality;
      break;
    }
    case kAudioUnitProperty_HostCallbacks:
      changed = assign(hostCallbacks_, take<HostCallbackInfo>(data));
      break;
    case kAudioUnitProperty_CurrentPreset:
    case kAudioUnitProperty_PresentPreset:
      if (const OSStatus status = choosePreset(take<AUPreset>(data), changed)) return status;
      break;
    default:
      return kAudioUnitErr_PropertyNotWritable;
  }
  if (changed) announcePropertyChange(id, scope);
  return noErr;
}

bool AUEffectBase::supportsFormat(const AudioStreamBasicDescription& wanted) const {
  const UInt32 channels = wanted.mChannelsPerFrame;
  const AudioStreamBasicDescription known{
      wanted.mSampleRate, kAudioFormatLinearPCM, kAudioFormatFlagsNativeFloatPacked, 4, 1, 4, channels, 32,
      wanted.mReserved};
  return wanted == known && channels >= 1 && channels <= kAudioMaximumChannels &&
         supportsRate(wanted.mSampleRate);
}

OSStatus AUEffectBase::choosePreset(const AUPreset& preset, bool& changed) {
  std::string name = CFStringGetText(preset.presetName);
  if (preset.presetNumber >= 0) {
    const auto index = static_cast<size_t>(preset.presetNumber);
    if (index >= traits_.presets.size()) return kAudioUnitErr_InvalidPropertyValue;
    name = traits_.presets[index].name;
    changed = parameters_.choose(traits_.presets[index]);
  }
  changed |= assign(presetNumber_, preset.presetNumber);
  changed |= assign(presetName_, name);
  return noErr;
}
