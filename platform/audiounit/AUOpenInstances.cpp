#include "AUOpenInstances.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>
#include <stdexcept>

#include "NSLog.h"

namespace {

constexpr size_t slots = 4096;
using Slot = std::atomic<uintptr_t>;

// Open addressing: an effect is in the first slots from its home that are not free.
constexpr uintptr_t isFree = 0, wasTaken = 1;
std::array<Slot, slots> table;
std::mutex changes;

uintptr_t keyOf(const AUEffectBase* effect) {
  return reinterpret_cast<uintptr_t>(effect);
}

Slot& slot(uintptr_t key, size_t step) {
  return table[(key / 64 + step) % slots];
}

Slot* find(uintptr_t key) noexcept {
  for (size_t step = 0; step < slots; ++step) {
    const uintptr_t here = slot(key, step).load(std::memory_order_acquire);
    if (here == key) return &slot(key, step);
    if (here == isFree) break;
  }
  return nullptr;
}

}  // namespace

void AUOpenInstances::add(const AUEffectBase* effect) {
  const std::lock_guard lock(changes);
  const uintptr_t key = keyOf(effect);
  for (size_t step = 0; step < slots; ++step) {
    Slot& here = slot(key, step);
    if (here > wasTaken) continue;
    here.store(key, std::memory_order_release);
    return;
  }
  throw std::length_error("more effects are open than " + std::to_string(slots));
}

void AUOpenInstances::remove(const AUEffectBase* effect) {
  const std::lock_guard lock(changes);
  if (Slot* found = find(keyOf(effect))) found->store(wasTaken, std::memory_order_release);
}

bool AUOpenInstances::contains(const AUEffectBase* effect) noexcept {
  if (find(keyOf(effect))) return true;
  NSLogOnce("An effect is used that is closed; its host should close the editor first.");
  return false;
}
