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

double HostTempo::beat() const {
  return startBeat_ + (NSDate::timeIntervalSinceReferenceDate() - start_) * beatsPerMinute_ / 60;
}

void HostTempo::setTempo(double beatsPerMinute) {
  startBeat_ = beat();
  start_ = NSDate::timeIntervalSinceReferenceDate();
  beatsPerMinute_ = beatsPerMinute;
}

OSStatus HostTempo::beatAndTempo(void* self, Float64* beat, Float64* tempo) {
  const auto& host = *static_cast<const HostTempo*>(self);
  if (beat) *beat = host.beat();
  if (tempo) *tempo = host.beatsPerMinute_;
  return noErr;
}
