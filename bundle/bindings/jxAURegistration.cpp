#include "jxAURegistration.h"

#include "AudioUnitProperties.h"

namespace {

AudioUnitEvent presetEvent(AudioUnit unit, AudioUnitPropertyID property) {
  return AudioUnitEvent::propertyChange({unit, property, kAudioUnitScope_Global, 0});
}

}  // namespace

jxAURegistration::jxAURegistration(AUEventListenerRef listener, void* object, const AudioUnitEvent& own,
                                   AudioUnit unit)
    : listener_(listener),
      object_(object),
      events_{own, presetEvent(unit, kAudioUnitProperty_CurrentPreset),
              presetEvent(unit, kAudioUnitProperty_PresentPreset)} {
  for (const AudioUnitEvent& event : events_) AUEventListenerAddEventType(listener_, object_, &event);
}

jxAURegistration::~jxAURegistration() {
  for (const AudioUnitEvent& event : events_) AUEventListenerRemoveEventType(listener_, object_, &event);
}
