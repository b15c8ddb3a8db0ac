#include "AUEventRegistrations.h"

#include <algorithm>

#include "NSException.h"

namespace {

std::atomic<UInt64> lastSerial{0};

// Clock readings are sums of intervals: two that are meant to be equal differ by their rounding.
constexpr NSTimeInterval sameInstant = 1e-9;

bool sameEvent(const AudioUnitEvent& a, const AudioUnitEvent& b) {
  const AudioUnitParameter& p = a.mArgument.mParameter;
  const AudioUnitParameter& q = b.mArgument.mParameter;
  return a.mEventType == b.mEventType && p.mAudioUnit == q.mAudioUnit && p.mParameterID == q.mParameterID &&
         p.mScope == q.mScope && p.mElement == q.mElement;
}

Float32 valueAtDelivery(const AudioUnitEvent& event) {
  Float32 value = 0;
  const AudioUnitParameter& p = event.mArgument.mParameter;
  if (event.mEventType == kAudioUnitEvent_ParameterValueChange)
    AudioUnitGetParameter(p.mAudioUnit, p.mParameterID, p.mScope, p.mElement, &value);
  return value;
}

}  // namespace

AUEventListener::AUEventListener(AUEventListenerProc dispatch, void* userData, NSRunLoop& runLoop,
                                 NSRunLoopMode mode, NSTimeInterval interval)
    : dispatch_(dispatch),
      userData_(userData),
      runLoop_(runLoop),
      mode_(mode),
      interval_(interval),
      serial_(++lastSerial) {}

void AUEventListener::add(void* object, const AudioUnitEvent& event, const AUEventKey& key) {
  AUEventHub& hub = AUEventHub::shared();
  const std::lock_guard lock(hub.mutex());
  hub.drainLocked();  // what was announced before now is not for this registration
  const bool known = std::any_of(registrations_.begin(), registrations_.end(),
                                 [&](const Registration& r) { return r.object == object && r.key == key; });
  if (!known) registrations_.push_back({++lastRegistration_, object, event, key});
}

void AUEventListener::remove(void* object, const AudioUnitEvent& event) {
  const std::lock_guard lock(AUEventHub::shared().mutex());
  // By the address that the caller knows: the instance itself may be gone.
  std::erase_if(registrations_,
                [&](const Registration& r) { return r.object == object && sameEvent(r.event, event); });
}

void AUEventListener::mark(Registration& registration) {
  if (registration.firstChange == 0) registration.firstChange = AUEventHub::shared().nextChangeLocked();
}

void AUEventListener::markLocked(const AUAnnouncement& announcement) {
  for (Registration& registration : registrations_) {
    const bool sender =
        announcement.senderSerial == serial_ && announcement.sendingObject == registration.object;
    if (registration.key == announcement.key && !sender) mark(registration);
  }
}

void AUEventListener::markAllLocked() {
  for (Registration& registration : registrations_) mark(registration);
}

void AUEventListener::forgetInstanceLocked(UInt64 instance) {
  std::erase_if(registrations_, [instance](const Registration& r) { return r.key.instance == instance; });
}

AUEventListener::Registration* AUEventListener::waiting(UInt64 serial) {
  const auto found = std::find_if(registrations_.begin(), registrations_.end(),
                                  [serial](const Registration& r) { return r.serial == serial; });
  return found != registrations_.end() && found->firstChange != 0 ? &*found : nullptr;
}

std::vector<UInt64> AUEventListener::dueInOrder(NSTimeInterval now) const {
  std::vector<const Registration*> due;
  for (const Registration& r : registrations_)
    if (r.firstChange != 0 && r.earliest <= now + sameInstant) due.push_back(&r);
  std::sort(due.begin(), due.end(),
            [](const Registration* a, const Registration* b) { return a->firstChange < b->firstChange; });
  std::vector<UInt64> serials;
  for (const Registration* r : due) serials.push_back(r->serial);
  return serials;
}

void AUEventListener::runPhase(NSTimeInterval now) {
  const auto alive = shared_from_this();  // a dispatch may dispose it
  AUEventHub& hub = AUEventHub::shared();
  std::unique_lock lock(hub.mutex());
  hub.drainLocked();
  // A dispatch may add, remove, close and dispose at will: each registration is looked up again when its
  // turn comes.
  for (const UInt64 serial : dueInOrder(now)) {
    if (runLoop_.currentMode() != mode_) break;
    Registration* registration = waiting(serial);
    if (!registration) continue;
    registration->firstChange = 0;
    registration->earliest = now + interval_;
    const AudioUnitEvent event = registration->event;
    void* const object = registration->object;
    const Float32 value = valueAtDelivery(event);
    lock.unlock();
    NSGuardCallback("event listener",
                    [&] { dispatch_(userData_, object, &event, static_cast<UInt64>(now * 1e9), value); });
    lock.lock();
  }
}

NSTimeInterval AUEventListener::nextDue() const {
  AUEventHub& hub = AUEventHub::shared();
  if (hub.hasAnnouncements()) return NSDate::timeIntervalSinceReferenceDate();
  if (runLoop_.currentMode() != mode_) return never;
  const std::lock_guard lock(hub.mutex());
  NSTimeInterval due = never;
  for (const Registration& r : registrations_)
    if (r.firstChange != 0) due = std::min(due, std::max(r.earliest, 0.0));
  return due;
}
