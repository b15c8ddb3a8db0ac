#include "NSDate.h"

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

void VirtualClock::advance(NSRunLoop& loop, NSTimeInterval seconds) {
  const NSTimeInterval end = now_ + seconds;
  int turnsAtThisInstant = 0;
  while (true) {
    loop.runTurn();
    const NSTimeInterval due = loop.nextDue();
    if (due > end + 1e-9) break;  // sums of the same steps may differ by their rounding
    turnsAtThisInstant = due > now_ ? 0 : turnsAtThisInstant + 1;
    if (turnsAtThisInstant > 1000)
      NSAssertionHandler::currentHandler().handleFailureInMethod("advance", nullptr, "NSDate", __LINE__,
                                                                 "something is due again in every turn");
    if (due > now_) now_ = due;
  }
  if (end > now_) {
    now_ = end;
    loop.runTurn();
  }
}
