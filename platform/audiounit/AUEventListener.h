#pragma once

#include "AudioUnit.h"
#include "NSRunLoop.h"

/// Who hears of changes of parameters and properties, and when.
///
/// A change may be announced from any thread, also the audio thread: it is put into a bounded queue
/// without lock or allocation, and the run loop is woken once for all that waits. It is delivered on the
/// listener's run loop, never by the call that announces it:
///
/// - Each registration (an object and an event) is served on its own. The first change after a pause is
///   delivered in the next turn; during a stream at most one per interval; always one after the last.
/// - The value that is passed is the parameter's at the time of delivery, that is the latest.
/// - Registrations that are due in the same turn are served in the order of their first changes.
/// - Nothing is delivered while the loop is in another mode; changes wait, merged.
/// - When the queue is full, every registration is served once: one notice too many, none too few.
/// - An exception in a dispatch is logged; the others are served.
///
/// Functions on listeners belong to the thread of their run loop. They may be called from inside a
/// dispatch, also to remove the object that is being served or to dispose the listener itself.

using CFRunLoopRef = NSRunLoop*;
inline CFRunLoopRef CFRunLoopGetCurrent() {
  return &NSRunLoop::currentRunLoop();
}

enum AudioUnitEventType : UInt32 {
  kAudioUnitEvent_ParameterValueChange = 0,
  kAudioUnitEvent_PropertyChange = 3,
};

struct AudioUnitEvent {
  AudioUnitEventType mEventType = kAudioUnitEvent_ParameterValueChange;
  union Argument {
    AudioUnitParameter mParameter;  // of a parameter change
    AudioUnitProperty mProperty;    // of a property change
    Argument() : mParameter() {}
  } mArgument;

  static AudioUnitEvent parameterChange(const AudioUnitParameter& parameter) {
    AudioUnitEvent event;
    event.mArgument.mParameter = parameter;
    return event;
  }
  static AudioUnitEvent propertyChange(const AudioUnitProperty& property) {
    AudioUnitEvent event;
    event.mEventType = kAudioUnitEvent_PropertyChange;
    event.mArgument.mProperty = property;
    return event;
  }
};

/// `object` is the registration's, `hostTime` the time of delivery in nanoseconds, `value` the
/// parameter's value (0 for properties). `event` is good for the call only.
using AUEventListenerProc = void (*)(void* userData, void* object, const AudioUnitEvent* event,
                                     UInt64 hostTime, Float32 value);

class AUEventListener;
using AUEventListenerRef = AUEventListener*;

/// `interval` in seconds. Changes are always merged to the latest value, so a granularity finer than the
/// interval brings no further calls; the larger of the two is the time between two deliveries. The run loop
/// must outlive the listener.
OSStatus AUEventListenerCreate(AUEventListenerProc dispatch, void* userData, CFRunLoopRef runLoop,
                               NSRunLoopMode mode, NSTimeInterval interval, NSTimeInterval granularity,
                               AUEventListenerRef* listener);
OSStatus AUListenerDispose(AUEventListenerRef listener);

/// Registers `object` (a mere identity, never looked into) for an event of an open instance. Adding the
/// same pair again changes nothing. A null instance is paramErr.
OSStatus AUEventListenerAddEventType(AUEventListenerRef listener, void* object, const AudioUnitEvent* event);
/// Takes away that pair and what waits for it; the instance may have been closed meanwhile.
OSStatus AUEventListenerRemoveEventType(AUEventListenerRef listener, void* object,
                                        const AudioUnitEvent* event);

/// AudioUnitSetParameter, then tells every registration of the parameter but that of the sending listener
/// with the sending object (null listener: nobody is left out). Any thread.
OSStatus AUParameterSet(AUEventListenerRef sender, void* sendingObject, const AudioUnitParameter* parameter,
                        Float32 value, UInt32 bufferOffsetInFrames);

/// Announces a change that has happened, as AUParameterSet and AudioUnitSetProperty do. Any thread.
OSStatus AUEventListenerNotify(AUEventListenerRef sender, void* sendingObject, const AudioUnitEvent* event);
