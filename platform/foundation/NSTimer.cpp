#include "NSTimer.h"

#include <algorithm>
#include <cmath>

#include "NSException.h"
#include "NSRunLoop.h"

std::shared_ptr<NSTimer> NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
    NSTimeInterval interval, NSObject* target, SEL selector, std::shared_ptr<NSObject> userInfo,
    bool repeats) {
  auto timer = std::make_shared<NSTimer>(interval, target, selector, std::move(userInfo), repeats);
  NSRunLoop::currentRunLoop().addTimer_forMode(timer, NSDefaultRunLoopMode);
  return timer;
}

NSTimer::NSTimer(NSTimeInterval interval, NSObject* target, SEL selector, std::shared_ptr<NSObject> userInfo,
                 bool repeats)
    : start_(NSDate::timeIntervalSinceReferenceDate()),
      interval_(std::max(interval, 0.0001)),
      due_(start_ + interval_),
      target_(target->shared_from_this()),
      selector_(selector),
      userInfo_(std::move(userInfo)),
      repeats_(repeats) {}

void NSTimer::invalidate() {
  target_ = nullptr;
  userInfo_ = nullptr;
}

void NSTimer::fire(NSTimeInterval now) {
  const auto self = shared(this);
  const auto target = target_;
  if (!target) return;
  // The grid's next point is fixed before the tick, so that the callback may read or end it.
  if (repeats_) {
    double ticks = std::floor((now - start_) / interval_ + 1e-9) + 1;
    due_ = start_ + ticks * interval_;
    // After a long uptime the clock is coarser than that allowance.
    while (due_ <= now) due_ = start_ + ++ticks * interval_;
  }
  NSGuardCallback("timer", [&] { target->performSelector_withObject(selector_, this); });
  if (!repeats_) invalidate();
}
