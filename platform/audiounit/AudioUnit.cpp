#include "AudioUnit.h"

#include "AUEffectBase.h"
#include "NSLog.h"

namespace {

// Effects and input callbacks throw nothing in the ordinary way; what does come out of one ends here.
template <class Function>
OSStatus guarded(OSStatus failure, Function&& function) noexcept {
  try {
    return function();
  } catch (const std::exception& error) {
    NSLog(std::string("audio unit failed: ") + error.what());
  } catch (...) {
    NSLog("audio unit failed");
  }
  return failure;
}

OSStatus checkGlobal(AudioUnit unit, AudioUnitScope scope, AudioUnitElement element) {
  if (!unit) return paramErr;
  if (scope != kAudioUnitScope_Global) return kAudioUnitErr_InvalidScope;
  return element == 0 ? noErr : kAudioUnitErr_InvalidElement;
}

}  // namespace

OSStatus AudioUnitInitialize(AudioUnit unit) {
  if (!unit) return paramErr;
  return guarded(kAudioUnitErr_FailedInitialization, [&] { return unit->initialize(); });
}

OSStatus AudioUnitUninitialize(AudioUnit unit) {
  if (!unit) return paramErr;
  unit->uninitialize();
  return noErr;
}

OSStatus AudioUnitReset(AudioUnit unit, AudioUnitScope scope, AudioUnitElement element) {
  if (const OSStatus status = checkGlobal(unit, scope, element)) return status;
  return unit->reset();
}

OSStatus AudioUnitGetPropertyInfo(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                                  AudioUnitElement element, UInt32* dataSize, Boolean* writable) {
  if (!unit) return paramErr;
  UInt32 size = 0;
  bool canBeWritten = false;
  if (const OSStatus status = unit->propertyInfo(property, scope, element, size, canBeWritten)) return status;
  if (dataSize) *dataSize = size;
  if (writable) *writable = canBeWritten;
  return noErr;
}

OSStatus AudioUnitGetProperty(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                              AudioUnitElement element, void* data, UInt32* ioSize) {
  if (!unit || !data || !ioSize) return paramErr;
  return unit->getProperty(property, scope, element, data, *ioSize);
}

OSStatus AudioUnitSetProperty(AudioUnit unit, AudioUnitPropertyID property, AudioUnitScope scope,
                              AudioUnitElement element, const void* data, UInt32 size) {
  if (!unit || !data) return paramErr;
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
  if (!unit || !data) return paramErr;
  if (bus != 0) return kAudioUnitErr_InvalidElement;
  return guarded(paramErr, [&] { return unit->render(actionFlags, timeStamp, frames, *data); });
}
