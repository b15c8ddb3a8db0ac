#include "jxAUwrapper.h"

#include <cmath>

#include "Class.h"
#include "MacRoman.h"
#include "NSAssertionHandler.h"

const Class& jxAUwrapper::isa() const {
  return record();
}

const Class& jxAUwrapper::record() {
  static const Class c = Class::of<jxAUwrapper>("jxAUwrapper", NSObject::record())
                             .answers<&jxAUwrapper::callbacksChanged>("callbacksChanged");
  return c;
}

std::shared_ptr<jxAUwrapper> jxAUwrapper::wrapperWithAU(AudioUnit unit) {
  return std::make_shared<jxAUwrapper>(unit);
}

UInt32 jxAUwrapper::auVersion() {
  if (mAU && auVersion_ == 0) auVersion_ = static_cast<UInt32>(GetComponentVersion(mAU));
  return auVersion_;
}

std::string jxAUwrapper::auName() const {
  if (!mAU) return {};
  const std::unique_ptr<char*, decltype(&DisposeHandle)> handle(NewHandle(0), &DisposeHandle);
  if (GetComponentInfo(mAU, nullptr, handle.get(), nullptr, nullptr) != noErr)
    NSAssertionHandler::currentHandler().handleFailureInMethod("auName", this, "jxAUwrapper", 76,
                                                               "Getting the AU name failed");
  HLock(handle.get());
  const char* bytes = *handle;
  std::string name(bytes + 1, static_cast<unsigned char>(bytes[0]));
  HUnlock(handle.get());

  if (const size_t colon = name.find(':'); colon != std::string::npos) name.erase(0, colon + 1);
  if (name.starts_with(" AU")) name.erase(1, 2);
  return foundation::utf8FromMacRoman(name);
}

AudioUnitParameter jxAUwrapper::globalParameter(SInt32 identifier) const {
  return {mAU, static_cast<AudioUnitParameterID>(identifier), kAudioUnitScope_Global, 0};
}

AudioUnitProperty jxAUwrapper::globalProperty(SInt32 identifier) const {
  return {mAU, static_cast<AudioUnitPropertyID>(identifier), kAudioUnitScope_Global, 0};
}

void jxAUwrapper::perpareHostCallbacks() {
  callbacksChanged();
  hostCallbackProperty = std::make_shared<jxAUProperty>(globalProperty(kAudioUnitProperty_HostCallbacks),
                                                        this, NSSelectorFromString("callbacksChanged"));
}

void jxAUwrapper::callbacksChanged() {
  UInt32 size = sizeof mHostCallbackInfo;
  if (AudioUnitGetProperty(mAU, kAudioUnitProperty_HostCallbacks, kAudioUnitScope_Global, 0,
                           &mHostCallbackInfo, &size) != noErr)
    mHostCallbackInfo = {};
}

double jxAUwrapper::auTempo() {
  double told = tempo;
  if (mHostCallbackInfo.beatAndTempoProc)
    mHostCallbackInfo.beatAndTempoProc(mHostCallbackInfo.hostUserData, nullptr, &told);
  if (told > 0 && std::isfinite(told)) tempo = told;
  return tempo;
}
