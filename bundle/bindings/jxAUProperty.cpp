#include "jxAUProperty.h"

#include "Class.h"

const Class& jxAUProperty::isa() const {
  return record();
}

const Class& jxAUProperty::record() {
  static const Class c = Class::of<jxAUProperty>("jxAUProperty", NSObject::record());
  return c;
}

/// The one listener of all property bindings, from the first of them to the end of the process.
AUEventListenerRef jxAUProperty::listener() {
  static AUEventListenerRef shared = [] {
    AUEventListenerRef made = nullptr;
    AUEventListenerCreate(&propertyEventListenerDispatcher, nullptr, CFRunLoopGetCurrent(),
                          kCFRunLoopDefaultMode, kjxNotificationInterval, kjxNotificationInterval, &made);
    return made;
  }();
  return shared;
}

jxAUProperty::jxAUProperty(const AudioUnitProperty& property, NSObject* target, SEL selector)
    : mProperty(property),
      _target(target),
      _selector(selector),
      registration_(listener(), this, AudioUnitEvent::propertyChange(property), property.mAudioUnit) {}

void jxAUProperty::propertyEventListenerDispatcher(void*, void* object, const AudioUnitEvent*, UInt64,
                                                   Float32) {
  static_cast<jxAUProperty*>(object)->priv_eventListener_event_value();
}

void jxAUProperty::priv_eventListener_event_value() {
  const auto self = shared(this);  // the target may drop its binding in answer
  if (_target) _target->performSelector_withObject(_selector, this);
}

std::optional<UInt32> jxAUProperty::value() const {
  if (mProperty.mPropertyID != kAudioUnitProperty_RenderQuality) return std::nullopt;
  UInt32 quality = 0;
  UInt32 size = sizeof quality;
  const OSStatus status = AudioUnitGetProperty(mProperty.mAudioUnit, mProperty.mPropertyID, mProperty.mScope,
                                               mProperty.mElement, &quality, &size);
  return status == noErr ? std::optional(quality) : std::nullopt;
}

void jxAUProperty::setValue(UInt32 value) {
  if (mProperty.mPropertyID == kAudioUnitProperty_RenderQuality)
    AudioUnitSetProperty(mProperty.mAudioUnit, mProperty.mPropertyID, mProperty.mScope, mProperty.mElement,
                         &value, sizeof value);
}
