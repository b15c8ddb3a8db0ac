#pragma once

#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "AUEventHub.h"

/// One listener: its registrations, what waits for them, and their delivery as a part of its run loop's
/// turn.
class AUEventListener : public RunLoopObserver, public std::enable_shared_from_this<AUEventListener> {
 public:
  AUEventListener(AUEventListenerProc dispatch, void* userData, NSRunLoop& runLoop, NSRunLoopMode mode,
                  NSTimeInterval interval);

  NSRunLoop& runLoop() const { return runLoop_; }
  /// Never used twice in a process, never 0.
  UInt64 serial() const { return serial_; }

  void add(void* object, const AudioUnitEvent& event, const AUEventKey& key);
  void remove(void* object, const AudioUnitEvent& event);

  void runPhase(NSTimeInterval now) override;
  NSTimeInterval nextDue() const override;

  // For the hub, which holds its mutex.
  void markLocked(const AUAnnouncement& announcement);
  void markAllLocked();
  void forgetInstanceLocked(UInt64 instance);
  void forgetAllLocked();

 private:
  struct Registration {
    void* object;
    AudioUnitEvent event;
    UInt64 firstChange = 0;                                              // 0: nothing waits
    NSTimeInterval earliest = -std::numeric_limits<double>::infinity();  // of the next delivery
  };
  /// By what it is for, so that those of one event stand together, then in order of registration.
  using Registrations = std::map<std::pair<AUEventKey, UInt64>, Registration>;

  void mark(Registrations::iterator registration);
  void erase(Registrations::iterator registration);
  std::vector<UInt64> dueInOrder(NSTimeInterval now) const;

  const AUEventListenerProc dispatch_;
  void* const userData_;
  NSRunLoop& runLoop_;
  const NSRunLoopMode mode_;
  const NSTimeInterval interval_;
  const UInt64 serial_;
  UInt64 lastRegistration_ = 0;
  Registrations registrations_;
  std::multimap<void*, Registrations::iterator> ofObjects_;
  std::map<UInt64, Registrations::iterator> waiting_;  // by their first change
};
