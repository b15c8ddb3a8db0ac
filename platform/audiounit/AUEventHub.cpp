#include "AUEventHub.h"

#include <algorithm>
#include <thread>

#include "AUEventRegistrations.h"

AUEventHub& AUEventHub::shared() {
  static AUEventHub hub;
  return hub;
}

void AUEventHub::announce(const AUAnnouncement& announcement) noexcept {
  if (!queue_.push(announcement)) overflowed_.store(true);
  if (announced_.exchange(true)) return;
  // A loop may be on its way out: removeListener empties its slot and then waits for the wakers.
  ++wakers_;
  for (const LoopSlot& slot : loops_)
    if (NSRunLoop* loop = slot.loop.load()) loop->wake();
  --wakers_;
}

void AUEventHub::drainLocked() {
  // Lowered before the queue is emptied: whoever announces from here on wakes the loops again.
  announced_.exchange(false);
  AUAnnouncement announcement;
  while (queue_.pop(announcement))
    for (const auto& listener : listeners_) listener->markLocked(announcement);
  if (overflowed_.exchange(false))
    for (const auto& listener : listeners_) listener->markAllLocked();
}

void AUEventHub::forgetInstance(UInt64 serial) {
  const std::lock_guard lock(mutex_);
  for (const auto& listener : listeners_) listener->forgetInstanceLocked(serial);
}

AUEventHub::LoopSlot* AUEventHub::slotFor(NSRunLoop* loop) {
  const auto found =
      std::find_if(loops_.begin(), loops_.end(), [loop](const LoopSlot& slot) { return slot.loop == loop; });
  return found == loops_.end() ? nullptr : &*found;
}

AUEventListener* AUEventHub::addListener(std::shared_ptr<AUEventListener> listener) {
  const std::lock_guard lock(mutex_);
  LoopSlot* slot = slotFor(&listener->runLoop());
  if (!slot) slot = slotFor(nullptr);
  if (!slot) return nullptr;
  ++slot->listeners;
  slot->loop = &listener->runLoop();
  listeners_.push_back(std::move(listener));
  return listeners_.back().get();
}

std::shared_ptr<AUEventListener> AUEventHub::removeListener(AUEventListener* listener) {
  const std::lock_guard lock(mutex_);
  const auto found = std::find_if(listeners_.begin(), listeners_.end(),
                                  [listener](const auto& known) { return known.get() == listener; });
  if (found == listeners_.end()) return nullptr;
  const std::shared_ptr<AUEventListener> removed = *found;
  listeners_.erase(found);
  removed->forgetAllLocked();
  LoopSlot* slot = slotFor(&removed->runLoop());
  if (--slot->listeners == 0) {
    slot->loop = nullptr;
    while (wakers_ != 0) std::this_thread::yield();
  }
  return removed;
}
