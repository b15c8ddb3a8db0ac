#pragma once

#include <array>
#include <atomic>
#include <cstddef>

/// A bounded first-in first-out queue from many threads to one. push: any thread, without lock or
/// allocation; pop: one thread at a time. Capacity: a power of two.
///
/// Each cell carries the number of the turn that may use it: n for the writer of entry n, n + 1 for its
/// reader, n + Capacity for the writer that comes round again. (D. Vyukov's bounded queue.)
template <class Entry, size_t Capacity>
class AUEventQueue {
  static_assert((Capacity & (Capacity - 1)) == 0);

 public:
  AUEventQueue() {
    for (size_t i = 0; i < Capacity; ++i) cells_[i].turn.store(i, std::memory_order_relaxed);
  }

  /// False when it is full.
  bool push(const Entry& entry) noexcept {
    size_t at = tail_.load(std::memory_order_relaxed);
    while (true) {
      Cell& cell = cells_[at % Capacity];
      const size_t turn = cell.turn.load(std::memory_order_acquire);
      if (turn == at) {
        if (!tail_.compare_exchange_weak(at, at + 1, std::memory_order_relaxed)) continue;
        cell.entry = entry;
        cell.turn.store(at + 1, std::memory_order_release);
        return true;
      }
      if (turn < at) return false;
      at = tail_.load(std::memory_order_relaxed);
    }
  }

  /// False when nothing is ready, which may be for a writer that is still at it.
  bool pop(Entry& entry) noexcept {
    Cell& cell = cells_[head_ % Capacity];
    if (cell.turn.load(std::memory_order_acquire) != head_ + 1) return false;
    entry = cell.entry;
    cell.turn.store(head_ + Capacity, std::memory_order_release);
    ++head_;
    return true;
  }

 private:
  struct Cell {
    std::atomic<size_t> turn;
    Entry entry{};
  };

  std::array<Cell, Capacity> cells_;
  alignas(64) std::atomic<size_t> tail_{0};
  alignas(64) size_t head_ = 0;
};
