#include "NSDate.h"

#include <algorithm>
#include <chrono>

#include "NSAssertionHandler.h"
#include "NSRunLoop.h"

namespace {

Clock* theClock = nullptr;

NSTimeInterval monotonicSeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace

NSTimeInterval NSDate::timeIntervalSinceReferenceDate() {
  return theClock ? theClock->now() : monotonicSeconds();
}

Clock* NSDate::setClock(Clock* clock) {
  Clock* previous = theClock;
  theClock = clock;
  return previous;
}

VirtualClock::VirtualClock() : previous_(NSDate::setClock(this)) {}

VirtualClock::~VirtualClock() {
  NSDate::setClock(previous_);
}

bool VirtualClock::waitUntil(NSTimeInterval end, const NSRunLoop& loop) {
  const NSTimeInterval due = loop.nextDue();
  const bool isBefore = due <= end + 1e-9;  // sums of the same steps may differ by their rounding
  now_ = std::max(now_, isBefore ? due : end);
  return isBefore;
}

void VirtualClock::advance(NSRunLoop& loop, NSTimeInterval seconds) {
  const NSTimeInterval end = now_ + seconds;
  int turnsAtThisInstant = 0;
  loop.runTurn();
  NSTimeInterval before = now_;
  for (; waitUntil(end, loop); before = now_) {
    turnsAtThisInstant = now_ > before ? 0 : turnsAtThisInstant + 1;
    if (turnsAtThisInstant > 1000)
      NSAssertionHandler::currentHandler().handleFailureInMethod("advance", nullptr, "NSDate", __LINE__,
                                                                 "something is due again in every turn");
    loop.runTurn();
  }
  if (end > before) loop.runTurn();
}
