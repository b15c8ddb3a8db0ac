#include "NSRunLoop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <utility>

#include "NSException.h"
#include "NSTimer.h"

namespace {

unsigned bit(NSRunLoopMode mode) {
  return 1u << static_cast<unsigned>(mode);
}

int milliseconds(NSTimeInterval seconds) {
  if (seconds <= 0) return 0;
  return seconds > 3600 ? 3600 * 1000 : static_cast<int>(std::ceil(seconds * 1000));
}

// Of the innermost scope. Without a destructor, which would keep an unloaded plug-in's code in memory.
thread_local NSRunLoop* scoped = nullptr;

}  // namespace

NSRunLoop::Scope::Scope(std::shared_ptr<NSRunLoop> loop)
    : loop_(std::move(loop)), before_(std::exchange(scoped, loop_.get())) {}

NSRunLoop::Scope::~Scope() {
  scoped = before_;
}

NSRunLoop& NSRunLoop::currentRunLoop() {
  if (scoped) return *scoped;
  // A window may keep the loop for longer than its thread, but what timers reach may be gone by then.
  struct Own {
    const std::shared_ptr<NSRunLoop> loop = std::make_shared<NSRunLoop>();
    ~Own() { loop->invalidateTimers(); }
  };
  thread_local const Own own;
  return *own.loop;
}

NSRunLoop::NSRunLoop() : wakeDescriptor_(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {}

NSRunLoop::~NSRunLoop() {
  invalidateTimers();
  close(wakeDescriptor_);
}

void NSRunLoop::invalidateTimers() {
  for (const TimerEntry& entry : std::exchange(timers_, {})) entry.timer->invalidate();
}

void NSRunLoop::invalidateTimersOf(const std::function<bool(const NSObject& target)>& isSuch) {
  std::vector<std::shared_ptr<NSTimer>> found;
  for (const TimerEntry& entry : timers_)
    if (entry.timer->target() && isSuch(*entry.timer->target())) found.push_back(entry.timer);
  for (const auto& timer : found) timer->invalidate();
}

void NSRunLoop::addTimer_forMode(std::shared_ptr<NSTimer> timer, NSRunLoopMode mode) {
  for (TimerEntry& entry : timers_) {
    if (entry.timer == timer) {
      entry.modes |= bit(mode);
      return;
    }
  }
  timers_.push_back({std::move(timer), bit(mode)});
}

size_t NSRunLoop::timerCount() const {
  return static_cast<size_t>(std::count_if(timers_.begin(), timers_.end(),
                                           [](const auto& entry) { return entry.timer->isValid(); }));
}

void NSRunLoop::addDescriptor(int fd, std::function<void()> readable) {
  descriptors_.push_back({fd, std::move(readable)});
}

void NSRunLoop::removeDescriptor(int fd) {
  std::erase_if(descriptors_, [fd](const Descriptor& d) { return d.fd == fd; });
}

void NSRunLoop::addObserver(RunLoopObserver& observer, RunLoopObserver::Phase phase) {
  observers_.push_back({&observer, phase});
}

void NSRunLoop::removeObserver(RunLoopObserver& observer) {
  std::erase_if(observers_, [&](const ObserverEntry& entry) { return entry.observer == &observer; });
}

void NSRunLoop::post(std::function<void()> call) {
  {
    const std::lock_guard lock(postedMutex_);
    posted_.push_back(std::move(call));
  }
  wake();
}

void NSRunLoop::wake() noexcept {
  const uint64_t one = 1;
  // Full means that a wake-up is pending already.
  [[maybe_unused]] const ssize_t written = write(wakeDescriptor_, &one, sizeof one);
}

void NSRunLoop::runTurn() {
  serveSources(0);
  serveTimers();
  servePhase(RunLoopObserver::Phase::delivery);
  servePhase(RunLoopObserver::Phase::drawing);
}

void NSRunLoop::run(NSTimeInterval until) {
  stopped_ = false;
  while (!stopped_) {
    const NSTimeInterval now = NSDate::timeIntervalSinceReferenceDate();
    if (now >= until) break;
    serveSources(std::min(nextDue(), until) - now);
    serveTimers();
    servePhase(RunLoopObserver::Phase::delivery);
    servePhase(RunLoopObserver::Phase::drawing);
  }
}

NSTimeInterval NSRunLoop::nextDue() const {
  {
    const std::lock_guard lock(postedMutex_);
    if (!posted_.empty()) return NSDate::timeIntervalSinceReferenceDate();
  }
  NSTimeInterval due = RunLoopObserver::never;
  for (const TimerEntry& entry : timers_)
    if (entry.timer->isValid() && inCurrentMode(entry)) due = std::min(due, entry.timer->dueTime());
  for (const ObserverEntry& entry : observers_) due = std::min(due, entry.observer->nextDue());
  return due;
}

void NSRunLoop::serveSources(NSTimeInterval timeout) {
  std::vector<pollfd> polled{{wakeDescriptor_, POLLIN, 0}};
  for (const Descriptor& d : descriptors_) polled.push_back({d.fd, POLLIN, 0});
  // A signal ends the wait like any source does; its handler posted what it wanted.
  const int ready = poll(polled.data(), polled.size(), milliseconds(timeout));

  std::vector<std::function<void()>> calls;
  if (ready > 0 && polled[0].revents) {
    uint64_t count;
    [[maybe_unused]] const ssize_t got = read(wakeDescriptor_, &count, sizeof count);
  }
  {
    const std::lock_guard lock(postedMutex_);
    calls.swap(posted_);
  }
  for (const auto& call : calls) NSGuardCallback("posted call", call);
  if (ready <= 0) return;
  for (size_t i = 1; i < polled.size(); ++i) {
    if (!polled[i].revents) continue;
    const auto found = std::find_if(descriptors_.begin(), descriptors_.end(),
                                    [&](const Descriptor& d) { return d.fd == polled[i].fd; });
    if (found == descriptors_.end()) continue;
    const auto readable = found->readable;  // may remove itself
    NSGuardCallback("descriptor", readable);
  }
}

void NSRunLoop::serveTimers() {
  const NSTimeInterval now = NSDate::timeIntervalSinceReferenceDate();
  std::vector<std::shared_ptr<NSTimer>> due;
  for (const TimerEntry& entry : timers_)
    if (entry.timer->isValid() && inCurrentMode(entry) && entry.timer->dueTime() <= now)
      due.push_back(entry.timer);
  // Entries stand in order of scheduling, so a stable sort leaves equals in that order.
  std::stable_sort(due.begin(), due.end(),
                   [](const auto& a, const auto& b) { return a->dueTime() < b->dueTime(); });
  for (const auto& timer : due) timer->fire(now);
  std::erase_if(timers_, [](const TimerEntry& entry) { return !entry.timer->isValid(); });
}

void NSRunLoop::servePhase(RunLoopObserver::Phase phase) {
  const NSTimeInterval now = NSDate::timeIntervalSinceReferenceDate();
  // An observer may remove itself or others while it runs: each is looked up again before its turn.
  std::vector<RunLoopObserver*> round;
  for (const ObserverEntry& entry : observers_)
    if (entry.phase == phase) round.push_back(entry.observer);
  for (RunLoopObserver* observer : round) {
    const bool present = std::any_of(observers_.begin(), observers_.end(),
                                     [&](const ObserverEntry& entry) { return entry.observer == observer; });
    if (present) NSGuardCallback("run loop", [&] { observer->runPhase(now); });
  }
}

bool NSRunLoop::inCurrentMode(const TimerEntry& entry) const {
  return entry.modes & bit(mode_);
}
