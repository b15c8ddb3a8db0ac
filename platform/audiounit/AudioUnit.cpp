#include "AudioUnit.h"

#include "AUEffectBase.h"
#include "AUOpenInstances.h"
#include "NSLog.h"

namespace {

// Effects and input callbacks throw nothing in the ordinary way; what does come out of one ends here.
template <class Function>
OSStatus guarded(OSStatus failure, Function&& function) noexcept {
  try {
    return function();
  } catch (const std::exception& error) {
    NSLogOnce(std::string("audio unit failed: ") + error.what());
  } catch (...) {
    NSLogOnce("audio unit failed");
  }
  return failure;
}

OSStatus check(AudioUnit unit) {
  if (!unit) return paramErr;
  return AUOpenInstances::contains(unit) ? noErr : badComponentInstance;
}

OSStatus checkGlobal(AudioUnit unit, AudioUnitScope scope, AudioUnitElement element) {
  if (const OSStatus status = check(unit)) return status;
  if (scope != kAudioUnitScope_Global) return kAudioUnitErr_InvalidScope;
  return element == 0 ? noErr : kAudioUnitErr_InvalidElement;
}

}  // namespace

OSStatus AudioUnitInitialize(AudioUnit unit) {
  if (const OSStatus status = check(unit)) return status;
  return guarded(kAudioUnitErr_FailedInitialization, [&] { return unit->initialize(); });
}

OSStatus AudioUnitUninitialize(AudioUnit unit) {
  if (const OSStatus status = check(unit)) return status;
  unit->uninitialize();
  return noErr;
}

OSStatus AudioUnitReset(AudioUnit unit, AudioUnitScope scope, AudioUnitElement element) {
  if (const OSStatus status = checkGlobal(unit, scope, element)) return status;
  return unit->reset();
}

OSStatus AudioUnitGetPropertyInfo(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                                  AudioUnitElement element, UInt32* dataSize, Boolean* writable) {
  if (const OSStatus status = check(unit)) return status;
  UInt32 size = 0;
  bool canBeWritten = false;
  if (const OSStatus status = unit->propertyInfo(property, scope, element, size, canBeWritten)) return status;
  if (dataSize) *dataSize = size;
  if (writable) *writable = canBeWritten;
  return noErr;
}

OSStatus AudioUnitGetProperty(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                              AudioUnitElement element, void* data, UInt32* ioSize) {
  if (!data || !ioSize) return paramErr;
  if (const OSStatus status = check(unit)) return status;
  return unit->getProperty(property, scope, element, data, *ioSize);
}

OSStatus AudioUnitSetProperty(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                              AudioUnitElement element, const void* data, UInt32 size) {
  if (!data) return paramErr;
  if (const OSStatus status = check(unit)) return status;
  return unit->setProperty(property, scope, element, data, size);
}

OSStatus AudioUnitGetParameter(AudioUnit unit, AudioUnitParameterID parameter, AudioUnitScope scope,
                               AudioUnitElement element, Float32* value) {
  if (const OSStatus status = checkGlobal(unit, scope, element)) return status;
  return value ? unit->getParameter(parameter, *value) : paramErr;
}

OSStatus AudioUnitSetParameter(AudioUnit unit, AudioUnitParameterID parameter, AudioUnitScope scope,
                               AudioUnitElement element, Float32 value, UInt32) {
  if (const OSStatus status = checkGlobal(unit, scope, element)) return status;
  return unit->setParameter(parameter, value);
}

OSStatus AudioUnitRender(AudioUnit unit, UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 bus,
                         UInt32 frames, AudioBufferList* data) {
  if (!data) return paramErr;
  if (const OSStatus status = check(unit)) return status;
  if (bus != 0) return kAudioUnitErr_InvalidElement;
  return guarded(paramErr, [&] { return unit->render(actionFlags, timeStamp, frames, *data); });
}
