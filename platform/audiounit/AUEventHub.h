#pragma once

#include <array>
#include <atomic>
#include <compare>
#include <memory>
#include <mutex>
#include <vector>

#include "AUEventListener.h"
#include "AUEventQueue.h"

/// What changed, told apart by the instance's serial number: an address may belong to another instance by
/// the time that the change is looked at.
struct AUEventKey {
  UInt64 instance = 0;
  AudioUnitEventType type = kAudioUnitEvent_ParameterValueChange;
  UInt32 id = 0;
  AudioUnitScope scope = 0;
  AudioUnitElement element = 0;
  friend auto operator<=>(const AUEventKey&, const AUEventKey&) = default;
};

struct AUAnnouncement {
  AUEventKey key;
  UInt64 senderSerial = 0;  // 0: no listener is left out
  void* sendingObject = nullptr;
};

/// Where announcements of the process meet its listeners. Announcing threads touch only the queue, three
/// atomics and the run loops' wake; all else is under one mutex, which is never held during a dispatch.
class AUEventHub {
 public:
  static AUEventHub& shared();

  /// Any thread, no lock, no allocation.
  void announce(const AUAnnouncement& announcement) noexcept;
  /// Any thread but the audio thread.
  void forgetInstance(UInt64 serial);

  // For listeners. Those that end in "Locked" expect the mutex to be held.
  std::mutex& mutex() { return mutex_; }
  /// Null when listeners use too many different run loops.
  AUEventListener* addListener(std::shared_ptr<AUEventListener> listener);
  /// On return no thread wakes its run loop any more for its sake.
  std::shared_ptr<AUEventListener> removeListener(AUEventListener* listener);
  /// Hands everything in the queue to the registrations that it is for.
  void drainLocked();
  bool hasAnnouncements() const { return announced_.load(); }
  /// Orders first changes.
  UInt64 nextChangeLocked() { return ++changes_; }

 private:
  struct LoopSlot {
    std::atomic<NSRunLoop*> loop{nullptr};
    unsigned listeners = 0;
  };

  LoopSlot* slotFor(NSRunLoop* loop);

  AUEventQueue<AUAnnouncement, 1024> queue_;
  std::atomic<bool> overflowed_{false};
  std::atomic<bool> announced_{false};
  std::atomic<int> wakers_{0};
  std::array<LoopSlot, 16> loops_;

  std::mutex mutex_;
  std::vector<std::shared_ptr<AUEventListener>> listeners_;
  UInt64 changes_ = 0;
};
