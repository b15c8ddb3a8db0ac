#include "HostTempo.h"

#include "AudioUnitProperties.h"
#include "NSDate.h"

namespace {

void setCallbacks(AudioUnit unit, const HostCallbackInfo& callbacks) {
  AudioUnitSetProperty(unit, kAudioUnitProperty_HostCallbacks, kAudioUnitScope_Global, 0, &callbacks,
                       sizeof callbacks);
}

}  // namespace

HostTempo::HostTempo(AudioUnit unit, double beatsPerMinute)
    : unit_(unit), beatsPerMinute_(beatsPerMinute), start_(NSDate::timeIntervalSinceReferenceDate()) {
  setCallbacks(unit, {.hostUserData = this, .beatAndTempoProc = &beatAndTempo});
}

HostTempo::~HostTempo() {
  setCallbacks(unit_, {});
}

OSStatus HostTempo::beatAndTempo(void* self, Float64* beat, Float64* tempo) {
  const auto& host = *static_cast<const HostTempo*>(self);
  if (beat) *beat = (NSDate::timeIntervalSinceReferenceDate() - host.start_) * host.beatsPerMinute_ / 60;
  if (tempo) *tempo = host.beatsPerMinute_;
  return noErr;
}
