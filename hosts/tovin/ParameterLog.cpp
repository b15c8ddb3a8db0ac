#include "ParameterLog.h"

#include <iostream>

#include "AudioUnitProperties.h"
#include "EffectParameters.h"
#include "NumberText.h"

namespace {

AudioUnitEvent parameterEvent(AudioUnit unit, AudioUnitParameterID id) {
  return AudioUnitEvent::parameterChange({unit, id, kAudioUnitScope_Global, 0});
}

}  // namespace

ParameterLog::ParameterLog(AudioUnit unit, bool prints) : unit_(unit), prints_(prints) {
  AUEventListenerCreate(&dispatch, this, CFRunLoopGetCurrent(), kCFRunLoopDefaultMode, 0, 0, &listener_);
  for (const EffectParameter& p : effectParameters(unit)) {
    values_[p.id] = p.value;
    const AudioUnitEvent event = parameterEvent(unit, p.id);
    AUEventListenerAddEventType(listener_, this, &event);
  }
  // A preset is one notice, whatever it changed.
  for (const AudioUnitPropertyID preset :
       {kAudioUnitProperty_CurrentPreset, kAudioUnitProperty_PresentPreset}) {
    const AudioUnitEvent event = AudioUnitEvent::propertyChange({unit, preset, kAudioUnitScope_Global, 0});
    AUEventListenerAddEventType(listener_, this, &event);
  }
}

ParameterLog::~ParameterLog() {
  AUListenerDispose(listener_);
}

void ParameterLog::announceAll() const {
  for (const auto& [id, value] : values_) {
    const AudioUnitEvent event = parameterEvent(unit_, id);
    AUEventListenerNotify(nullptr, nullptr, &event);
  }
}

void ParameterLog::dispatch(void* userData, void*, const AudioUnitEvent* event, UInt64, Float32 value) {
  auto& log = *static_cast<ParameterLog*>(userData);
  if (event->mEventType == kAudioUnitEvent_ParameterValueChange) {
    log.changed(event->mArgument.mParameter.mParameterID, value);
    return;
  }
  for (const EffectParameter& p : effectParameters(log.unit_)) log.changed(p.id, p.value);
}

void ParameterLog::changed(AudioUnitParameterID id, Float32 value) {
  Float32& last = values_[id];
  if (value == last) return;
  last = value;
  if (prints_) std::cout << id << ' ' << foundation::exactText(value) << std::endl;
}
