#pragma once

using NSTimeInterval = double;  // seconds

/// Where time comes from. The real clock is monotonic; tests and offline drawing use a virtual one.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual NSTimeInterval now() const = 0;
};

/// Seconds since the program's reference date.
class NSDate {
 public:
  /// Monotonic; two reads may be equal. Any thread (the audio thread too).
  static NSTimeInterval timeIntervalSinceReferenceDate();
  /// The clock in force, null for the real one. Not owned. Returns the one before. Set it while nothing runs.
  static Clock* setClock(Clock* clock);
};

class NSRunLoop;

/// A clock that stands still until it is advanced, and is the clock in force while it lives.
class VirtualClock : public Clock {
 public:
  VirtualClock();
  ~VirtualClock() override;
  NSTimeInterval now() const override { return now_; }

  /// Lets `seconds` pass on the loop: the clock jumps from one due time to the next, one turn at each
  /// instant and a last one at the end; nothing sleeps. Descriptors are polled at every turn.
  void advance(NSRunLoop& loop, NSTimeInterval seconds);
  /// Jumps to the next time at which the loop has something to do, which is left to be done. False, and the
  /// clock at `end`, when there is nothing until then.
  bool waitUntil(NSTimeInterval end, const NSRunLoop& loop);

 private:
  NSTimeInterval now_ = 1000;
  Clock* previous_;
};
