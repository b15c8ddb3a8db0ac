#include "jxAUParam.h"

#include <algorithm>

#include "Class.h"
#include "NSAssertionHandler.h"
#include "NSImageUtils.h"
#include "NumberText.h"

namespace {

// The one listener of all bindings, there while any binding lives.
AUEventListenerRef theListener = nullptr;
unsigned theCount = 0;

}  // namespace

jxAUParam::ListenerUse::ListenerUse() {
  if (theCount++ == 0)
    AUEventListenerCreate(&paramEventListenerDispatcher, nullptr, CFRunLoopGetCurrent(),
                          kCFRunLoopDefaultMode, kjxNotificationInterval, kjxNotificationInterval,
                          &theListener);
}

jxAUParam::ListenerUse::~ListenerUse() {
  if (--theCount > 0) return;
  AUListenerDispose(theListener);
  theListener = nullptr;
}

const Class& jxAUParam::isa() const {
  return record();
}

const Class& jxAUParam::record() {
  static const Class c = Class::of<jxAUParam>("jxAUParam", NSObject::record());
  return c;
}

jxAUParam::jxAUParam(const AudioUnitParameter& parameter, NSObject* target, SEL selector)
    : _param(parameter), _target(target), _selector(selector) {
  UInt32 size = sizeof _pInfo;
  if (AudioUnitGetProperty(_param.mAudioUnit, kAudioUnitProperty_ParameterInfo, _param.mScope,
                           _param.mParameterID, &_pInfo, &size) != noErr)
    NSAssertionHandler::currentHandler().handleFailureInMethod(
        "initForAUParam:target:selector:", this, "jxAUParam", 50, "Error getting AudioUnitParameterInfo");

  if (!(_pInfo.flags & kAudioUnitParameterFlag_HasCFNameString)) {
    _pInfo.cfNameString = CFStringCreateWithCString(_pInfo.name, kCFStringEncodingMacRoman);
    _needsNameRelease = true;
  } else {
    _needsNameRelease = _pInfo.flags & kAudioUnitParameterFlag_CFNameRelease;
  }
  listenerUse_.emplace();
  registration_.emplace(theListener, this, AudioUnitEvent::parameterChange(_param), _param.mAudioUnit);
}

jxAUParam::~jxAUParam() {
  if (_needsNameRelease) CFRelease(_pInfo.cfNameString);
}

unsigned jxAUParam::liveCount() {
  return theCount;
}

void jxAUParam::paramEventListenerDispatcher(void*, void* object, const AudioUnitEvent*, UInt64, Float32) {
  static_cast<jxAUParam*>(object)->priv_eventListener_event_value();
}

void jxAUParam::priv_eventListener_event_value() {
  const auto self = shared(this);  // the target may drop its binding in answer
  if (_target) _target->performSelector_withObject(_selector, this);
}

float jxAUParam::displayed(Float32 effectValue) const {
  return static_cast<float>(effectValue * customScale + customOffset);
}

Float32 jxAUParam::effectValue() const {
  Float32 value = 0;
  AudioUnitGetParameter(_param.mAudioUnit, _param.mParameterID, _param.mScope, _param.mElement, &value);
  return value;
}

double jxAUParam::doubleValue() const {
  return effectValue() * customScale + customOffset;
}

float jxAUParam::floatValue() const {
  const auto scaled = static_cast<float>(effectValue() * customScale);
  return static_cast<float>(scaled + customOffset);
}

void jxAUParam::setFloatValue(float value) {
  auto effect = static_cast<Float32>((value - customOffset) / customScale);
  effect = std::min(_pInfo.maxValue, std::max(_pInfo.minValue, effect));
  AUParameterSet(nullptr, this, &_param, effect, 0);
}

const std::string& jxAUParam::parameterName() const {
  return CFStringGetText(_pInfo.cfNameString);
}

std::string jxAUParam::unit() const {
  switch (_pInfo.unit) {
    case kAudioUnitParameterUnit_Percent:
      return "%";
    case kAudioUnitParameterUnit_Seconds:
      return "sec";
    case kAudioUnitParameterUnit_SampleFrames:
      return "smp";
    case kAudioUnitParameterUnit_Rate:
      return "x";
    case kAudioUnitParameterUnit_Hertz:
      return "Hz";
    case kAudioUnitParameterUnit_Cents:
      return "cnt";
    case kAudioUnitParameterUnit_Decibels:
      return "dB";
    case kAudioUnitParameterUnit_EqualPowerCrossfade:
      return "%";
    case kAudioUnitParameterUnit_Octaves:
      return "8va";
    case kAudioUnitParameterUnit_Milliseconds:
      return "ms";
    default:
      return "";
  }
}

std::optional<std::string> jxAUParam::effectsText(const Float32* value) const {
  if (!(_pInfo.flags & kAudioUnitParameterFlag_ValuesHaveStrings)) return std::nullopt;
  AudioUnitParameterStringFromValue request{_param.mParameterID, value, nullptr};
  UInt32 size = sizeof request;
  if (AudioUnitGetProperty(_param.mAudioUnit, kAudioUnitProperty_ParameterStringFromValue, _param.mScope,
                           _param.mParameterID, &request, &size) != noErr ||
      !request.outString)
    return std::nullopt;
  std::string text = CFStringGetText(request.outString);
  CFRelease(request.outString);
  return text;
}

std::string jxAUParam::numberText(float value) const {
  return isInteger() ? foundation::fixedText(value, 0) : stringWithNiceFloatValue_digits(value, 6);
}

std::string jxAUParam::stringForValue(float value) const {
  const auto text = effectsText(&value);
  return text ? *text : numberText(value);
}

std::string jxAUParam::valueString() const {
  const auto text = effectsText(nullptr);
  return text ? *text : numberText(floatValue());
}

std::optional<std::vector<std::string>> jxAUParam::parameterValueStrings() const {
  if (!isIndexed()) return std::nullopt;
  CFArrayRef list = nullptr;
  UInt32 size = sizeof list;
  if (AudioUnitGetProperty(_param.mAudioUnit, kAudioUnitProperty_ParameterValueStrings, _param.mScope,
                           _param.mParameterID, &list, &size) != noErr ||
      !list)
    return std::nullopt;
  std::vector<std::string> names;
  for (size_t i = 0; i < CFArrayGetCount(list); ++i)
    names.push_back(CFStringGetText(CFArrayGetStringAtIndex(list, i)));
  CFRelease(list);
  return names;
}

bool jxAUParam::displaysLogarithmical() const {
  return !forceLinear && (_pInfo.flags & kAudioUnitParameterFlag_DisplayLogarithmic);
}

UInt32 jxAUParam::displayKind() const {
  return forceLinear ? 0 : (_pInfo.flags & kAudioUnitParameterFlag_DisplayMask) >> 16;
}
