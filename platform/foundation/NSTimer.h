#pragma once

#include "NSDate.h"
#include "NSObject.h"

/// Sends `selector` to its target, with itself as argument, once or repeatedly, in the turns of the run
/// loops that it was added to. While valid it holds its target and `userInfo` strongly. Main thread.
class NSTimer : public NSObject {
 public:
  /// A new timer, added to the current run loop in the default mode. The interval is in seconds, the
  /// first tick comes one interval from now; an interval of 0 or less counts as 0.0001.
  static std::shared_ptr<NSTimer> scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
      NSTimeInterval interval, NSObject* target, SEL selector, std::shared_ptr<NSObject> userInfo,
      bool repeats);

  NSTimer(NSTimeInterval interval, NSObject* target, SEL selector, std::shared_ptr<NSObject> userInfo,
          bool repeats);

  /// Ends it at once, also from inside its own callback; a second time does nothing.
  void invalidate();
  bool isValid() const { return target_ != nullptr; }
  NSObject* userInfo() const { return userInfo_.get(); }
  /// Null once it has ended.
  NSObject* target() const { return target_.get(); }

  NSTimeInterval dueTime() const { return due_; }
  /// Ticks once. A repeating timer keeps its grid (start + n × interval): ticks missed by `now` are
  /// dropped. A one-shot timer is invalid when this returns. Called by the run loop.
  void fire(NSTimeInterval now);

 private:
  NSTimeInterval start_;
  NSTimeInterval interval_;
  NSTimeInterval due_;
  std::shared_ptr<NSObject> target_;
  SEL selector_;
  std::shared_ptr<NSObject> userInfo_;
  bool repeats_;
};
