#include "EffectPresets.h"

#include "AudioUnitProperties.h"

std::vector<std::string> effectPresets(AudioUnit unit) {
  std::vector<std::string> names;
  CFArrayRef presets = nullptr;
  UInt32 size = sizeof presets;
  if (AudioUnitGetProperty(unit, kAudioUnitProperty_FactoryPresets, kAudioUnitScope_Global, 0, &presets,
                           &size))
    return names;
  for (size_t i = 0; i < CFArrayGetCount(presets); ++i)
    names.push_back(CFStringGetText(CFArrayGetStringAtIndex(presets, i)));
  CFRelease(presets);
  return names;
}

OSStatus chooseEffectPreset(AudioUnit unit, SInt32 number) {
  const AUPreset preset{number, nullptr};
  return AudioUnitSetProperty(unit, kAudioUnitProperty_PresentPreset, kAudioUnitScope_Global, 0, &preset,
                              sizeof preset);
}
