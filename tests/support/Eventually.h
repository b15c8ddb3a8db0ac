#pragma once

#include <chrono>
#include <functional>
#include <thread>

/// Waits until a condition holds, at most so many seconds; whether it does.
inline bool eventually(const std::function<bool()>& holds, double seconds = 5) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (!holds()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}
