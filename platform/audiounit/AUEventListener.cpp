#include "AUEventListener.h"

#include <algorithm>

#include "AUEffectBase.h"
#include "AUEventRegistrations.h"
#include "AUOpenInstances.h"

namespace {

AUEventKey keyOf(const AudioUnitEvent& event) {
  const AudioUnitParameter& p = event.mArgument.mParameter;  // of the same shape as a property's address
  return {p.mAudioUnit->serial(), event.mEventType, p.mParameterID, p.mScope, p.mElement};
}

bool namesInstance(const AudioUnitEvent* event) {
  const AudioUnit unit = event ? event->mArgument.mParameter.mAudioUnit : nullptr;
  return unit && AUOpenInstances::contains(unit);
}

}  // namespace

OSStatus AUEventListenerCreate(AUEventListenerProc dispatch, void* userData, CFRunLoopRef runLoop,
                               NSRunLoopMode mode, NSTimeInterval interval, NSTimeInterval granularity,
                               AUEventListenerRef* listener) {
  if (!dispatch || !runLoop || !listener) return paramErr;
  AUEventListener* added = AUEventHub::shared().addListener(std::make_shared<AUEventListener>(
      dispatch, userData, *runLoop, mode, std::max({interval, granularity, 0.0})));
  if (!added) return paramErr;
  runLoop->addObserver(*added, RunLoopObserver::Phase::delivery);
  *listener = added;
  return noErr;
}

OSStatus AUListenerDispose(AUEventListenerRef listener) {
  if (!listener) return paramErr;
  const auto removed = AUEventHub::shared().removeListener(listener);
  if (!removed) return paramErr;
  removed->runLoop().removeObserver(*removed);
  return noErr;
}

OSStatus AUEventListenerAddEventType(AUEventListenerRef listener, void* object, const AudioUnitEvent* event) {
  if (!listener || !namesInstance(event)) return paramErr;
  listener->add(object, *event, keyOf(*event));
  return noErr;
}

OSStatus AUEventListenerRemoveEventType(AUEventListenerRef listener, void* object,
                                        const AudioUnitEvent* event) {
  if (!listener || !event) return paramErr;
  listener->remove(object, *event);
  return noErr;
}

OSStatus AUParameterSet(AUEventListenerRef sender, void* sendingObject, const AudioUnitParameter* parameter,
                        Float32 value, UInt32 bufferOffsetInFrames) {
  if (!parameter) return paramErr;
  if (const OSStatus status =
          AudioUnitSetParameter(parameter->mAudioUnit, parameter->mParameterID, parameter->mScope,
                                parameter->mElement, value, bufferOffsetInFrames))
    return status;
  const auto event = AudioUnitEvent::parameterChange(*parameter);
  return AUEventListenerNotify(sender, sendingObject, &event);
}

OSStatus AUEventListenerNotify(AUEventListenerRef sender, void* sendingObject, const AudioUnitEvent* event) {
  if (!namesInstance(event)) return paramErr;
  AUEventHub::shared().announce({keyOf(*event), sender ? sender->serial() : 0, sendingObject});
  return noErr;
}
