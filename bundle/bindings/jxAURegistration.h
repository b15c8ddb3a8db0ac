#pragma once

#include <array>

#include "AUEventListener.h"
#include "NSDate.h"

/// Seconds between two notices of one parameter or property to one binding.
inline constexpr NSTimeInterval kjxNotificationInterval = 0.05;

/// A binding's registrations with a listener: its own event and the two of the effect's preset, after which
/// everything may have another value. Withdrawn when this is destroyed; nothing queued arrives afterwards.
/// Main thread.
class jxAURegistration {
 public:
  /// The listener must outlive this; `object` is what it hands to its dispatch function.
  jxAURegistration(AUEventListenerRef listener, void* object, const AudioUnitEvent& own, AudioUnit unit);
  ~jxAURegistration();
  jxAURegistration(const jxAURegistration&) = delete;
  jxAURegistration& operator=(const jxAURegistration&) = delete;

 private:
  AUEventListenerRef listener_;
  void* object_;
  std::array<AudioUnitEvent, 3> events_;
};
