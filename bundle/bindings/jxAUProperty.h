#pragma once

#include <optional>

#include "AudioUnitProperties.h"
#include "NSObject.h"
#include "jxAURegistration.h"

/// Binds one property of an effect to one target: every change of the property, and every choice of a
/// preset, reaches the target as the message `selector` with this binding as argument, on the main run loop
/// in its default mode, at most once per 0.05 seconds. A destroyed binding sends nothing more. Held by a
/// std::shared_ptr. Main thread.
class jxAUProperty : public NSObject {
 public:
  /// The target is not owned and must outlive the binding.
  jxAUProperty(const AudioUnitProperty& property, NSObject* target, SEL selector);
  const Class& isa() const override;
  static const Class& record();

  /// The render quality, if that is the property and the effect tells it; nothing for any other property.
  std::optional<UInt32> value() const;
  /// Sets the render quality; nothing for any other property.
  void setValue(UInt32 value);

 private:
  static AUEventListenerRef listener();
  static void propertyEventListenerDispatcher(void* userData, void* object, const AudioUnitEvent* event,
                                              UInt64 hostTime, Float32 value);
  void priv_eventListener_event_value();

  AudioUnitProperty mProperty;
  NSObject* _target;
  SEL _selector;
  jxAURegistration registration_;
};
