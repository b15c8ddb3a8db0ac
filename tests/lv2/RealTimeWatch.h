#pragma once

#include <cstddef>

/// Calls that an audio thread must not make, counted.
struct RealTimeFaults {
  size_t heapCalls = 0;
  size_t locks = 0;
  size_t systemCalls = 0;
  long lastSystemCall = -1;  // its number

  bool operator==(const RealTimeFaults&) const = default;
};

/// Watches one thread: heap and locks by taking the place of the C library's functions, system calls by a
/// filter of the kernel, under which each becomes a signal; its handler counts it and carries it out. The
/// filter stays for the thread's life, and threads must not be made under it.
class RealTimeWatch {
 public:
  /// On the thread that is to be watched, which should be one made for it. False when the kernel has no
  /// filters.
  static bool install();

  /// What happens between the two is counted.
  void begin();
  void end();

  const RealTimeFaults& seen() const { return seen_; }

 private:
  RealTimeFaults before_, seen_;
};
