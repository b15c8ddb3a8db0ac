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
  const auto [first, last] = ofObjects_.equal_range(object);
  const bool known =
      std::any_of(first, last, [&](const auto& entry) { return entry.second->first.first == key; });
  if (known) return;
  const auto added =
      registrations_.try_emplace({key, ++lastRegistration_}, Registration{object, event}).first;
  ofObjects_.emplace(object, added);
}

void AUEventListener::remove(void* object, const AudioUnitEvent& event) {
  const std::lock_guard lock(AUEventHub::shared().mutex());
  // By the address that the caller knows: the instance itself may be gone.
  auto [next, end] = ofObjects_.equal_range(object);
  while (next != end) {
    const Registrations::iterator registration = (next++)->second;
    if (sameEvent(registration->second.event, event)) erase(registration);
  }
}

void AUEventListener::erase(Registrations::iterator registration) {
  const auto [first, last] = ofObjects_.equal_range(registration->second.object);
  ofObjects_.erase(
      std::find_if(first, last, [registration](const auto& entry) { return entry.second == registration; }));
  waiting_.erase(registration->second.firstChange);
  registrations_.erase(registration);
}

void AUEventListener::mark(Registrations::iterator registration) {
  UInt64& firstChange = registration->second.firstChange;
  if (firstChange != 0) return;
  firstChange = AUEventHub::shared().nextChangeLocked();
  waiting_.emplace(firstChange, registration);
}

void AUEventListener::markLocked(const AUAnnouncement& announcement) {
  for (auto r = registrations_.lower_bound({announcement.key, 0});
       r != registrations_.end() && r->first.first == announcement.key; ++r) {
    const bool sender =
        announcement.senderSerial == serial_ && announcement.sendingObject == r->second.object;
    if (!sender) mark(r);
  }
}

void AUEventListener::markAllLocked() {
  for (auto r = registrations_.begin(); r != registrations_.end(); ++r) mark(r);
}

void AUEventListener::forgetInstanceLocked(UInt64 instance) {
  auto r = registrations_.lower_bound({AUEventKey{.instance = instance, .type = {}}, 0});
  while (r != registrations_.end() && r->first.first.instance == instance) erase(r++);
}

void AUEventListener::forgetAllLocked() {
  waiting_.clear();
  ofObjects_.clear();
  registrations_.clear();
}

std::vector<UInt64> AUEventListener::dueInOrder(NSTimeInterval now) const {
  std::vector<UInt64> due;
  for (const auto& [change, registration] : waiting_)
    if (registration->second.earliest <= now + sameInstant) due.push_back(change);
  return due;
}

void AUEventListener::runPhase(NSTimeInterval now) {
  const auto alive = shared_from_this();  // a dispatch may dispose it
  AUEventHub& hub = AUEventHub::shared();
  std::unique_lock lock(hub.mutex());
  hub.drainLocked();
  // A dispatch may add, remove, close and dispose at will: each registration is looked up again when its
  // turn comes.
  for (const UInt64 change : dueInOrder(now)) {
    if (runLoop_.currentMode() != mode_) break;
    const auto found = waiting_.find(change);
    if (found == waiting_.end()) continue;
    Registration& registration = found->second->second;
    void* const object = registration.object;
    waiting_.erase(found);
    registration.firstChange = 0;
    registration.earliest = now + interval_;
    const AudioUnitEvent event = registration.event;
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
  for (const auto& [change, registration] : waiting_)
    due = std::min(due, std::max(registration->second.earliest, 0.0));
  return due;
}
