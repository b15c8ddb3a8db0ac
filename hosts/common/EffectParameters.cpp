#include "EffectParameters.h"

#include "AUUnitText.h"
#include "AudioUnitProperties.h"
#include "MacRoman.h"

namespace {

std::vector<AudioUnitParameterID> parameterList(AudioUnit unit) {
  UInt32 size = 0;
  if (AudioUnitGetPropertyInfo(unit, kAudioUnitProperty_ParameterList, kAudioUnitScope_Global, 0, &size,
                               nullptr))
    return {};
  std::vector<AudioUnitParameterID> ids(size / sizeof(AudioUnitParameterID));
  if (ids.empty() || AudioUnitGetProperty(unit, kAudioUnitProperty_ParameterList, kAudioUnitScope_Global, 0,
                                          ids.data(), &size))
    return {};
  return ids;
}

std::string takeName(const AudioUnitParameterInfo& info) {
  if (!(info.flags & kAudioUnitParameterFlag_HasCFNameString)) return foundation::utf8FromMacRoman(info.name);
  const std::string name = CFStringGetText(info.cfNameString);
  if (info.flags & kAudioUnitParameterFlag_CFNameRelease) CFRelease(info.cfNameString);
  return name;
}

std::vector<std::string> valueNames(AudioUnit unit, AudioUnitParameterID id) {
  std::vector<std::string> names;
  CFArrayRef list = nullptr;
  UInt32 size = sizeof list;
  if (AudioUnitGetProperty(unit, kAudioUnitProperty_ParameterValueStrings, kAudioUnitScope_Global, id, &list,
                           &size))
    return names;
  for (size_t i = 0; i < CFArrayGetCount(list); ++i)
    names.push_back(CFStringGetText(CFArrayGetStringAtIndex(list, i)));
  CFRelease(list);
  return names;
}

}  // namespace

bool EffectParameter::isWritable() const {
  return flags & kAudioUnitParameterFlag_IsWritable;
}

std::vector<EffectParameter> effectParameters(AudioUnit unit) {
  std::vector<EffectParameter> parameters;
  for (const AudioUnitParameterID id : parameterList(unit)) {
    AudioUnitParameterInfo info;
    UInt32 size = sizeof info;
    if (AudioUnitGetProperty(unit, kAudioUnitProperty_ParameterInfo, kAudioUnitScope_Global, id, &info,
                             &size))
      continue;
    Float32 value = 0;
    AudioUnitGetParameter(unit, id, kAudioUnitScope_Global, 0, &value);
    parameters.push_back({id, takeName(info), AUUnitText(info.unit), info.minValue, info.maxValue,
                          info.defaultValue, value, info.flags, valueNames(unit, id)});
  }
  return parameters;
}
