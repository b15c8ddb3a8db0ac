#pragma once

#include <optional>
#include <string>
#include <vector>

#include "AUEventListener.h"
#include "AudioUnitProperties.h"
#include "NSObject.h"
#include "jxAURegistration.h"

/// Binds one parameter of an effect to one target. Every change of the parameter, from any source, and every
/// choice of a preset reaches the target as the message `selector` with this binding as argument, on the main
/// run loop in its default mode, at most once per 0.05 seconds. A destroyed binding sends nothing more.
///
/// Values are display values: effect value × customScale + customOffset. Main thread.
class jxAUParam : public NSObject {
 public:
  /// The target is not owned and must outlive the binding. A parameter that does not describe itself is an
  /// assertion failure.
  jxAUParam(const AudioUnitParameter& parameter, NSObject* target, SEL selector);
  ~jxAUParam() override;
  const Class& isa() const override;
  static const Class& record();

  /// The scaled value; that of 0 when the effect refuses to tell.
  double doubleValue() const;
  float floatValue() const;
  /// Clamped to the parameter's range and announced to every listener.
  void setFloatValue(float value);

  float minValue() const { return displayed(_pInfo.minValue); }
  float maxValue() const { return displayed(_pInfo.maxValue); }
  float defaultValue() const { return displayed(_pInfo.defaultValue); }

  const std::string& parameterName() const;
  /// Short unit such as "dB"; empty for units without one.
  std::string unit() const;
  /// Text of a display value: the effect's own if it has any, else whole for counts of frames, else at most
  /// 6 characters. The effect is given the value as it is, without undoing scale and offset.
  std::string stringForValue(float value) const;
  std::string valueString() const;
  std::string minValueString() const { return stringForValue(minValue()); }
  std::string maxValueString() const { return stringForValue(maxValue()); }
  /// Names of an indexed parameter's values; nothing when it is not indexed or has none.
  std::optional<std::vector<std::string>> parameterValueStrings() const;

  /// How it wants to be shown; all false when forced to be linear.
  bool displaysLogarithmical() const;
  bool displaysSquaredRoot() const { return displayKind() == 1; }
  bool displaysSquared() const { return displayKind() == 2; }
  bool displaysExponential() const { return displayKind() == 5; }
  bool isIndexed() const { return _pInfo.unit == kAudioUnitParameterUnit_Indexed; }
  bool isBoolean() const { return _pInfo.unit == kAudioUnitParameterUnit_Boolean; }
  bool isInteger() const { return _pInfo.unit == kAudioUnitParameterUnit_SampleFrames; }

  void setForceLinear(bool linear) { forceLinear = linear; }
  void setCustomScale(double scale) { customScale = scale; }
  void setCustomOffset(double offset) { customOffset = offset; }

  /// Live bindings of the process.
  static unsigned liveCount();

 private:
  /// Counts the live bindings and keeps their one listener while there are any.
  class ListenerUse {
   public:
    ListenerUse();
    ~ListenerUse();
    ListenerUse(const ListenerUse&) = delete;
    ListenerUse& operator=(const ListenerUse&) = delete;
  };

  static void paramEventListenerDispatcher(void* userData, void* object, const AudioUnitEvent* event,
                                           UInt64 hostTime, Float32 value);
  void priv_eventListener_event_value();

  float displayed(Float32 effectValue) const;
  Float32 effectValue() const;
  UInt32 displayKind() const;
  std::optional<std::string> effectsText(const Float32* value) const;
  std::string numberText(float value) const;

  AudioUnitParameter _param;
  AudioUnitParameterInfo _pInfo;
  bool _needsNameRelease = false;
  NSObject* _target;
  SEL _selector;
  double customScale = 1;
  double customOffset = 0;
  bool forceLinear = false;
  std::optional<ListenerUse> listenerUse_;
  std::optional<jxAURegistration> registration_;
};
