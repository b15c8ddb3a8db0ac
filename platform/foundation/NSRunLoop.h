#pragma once

#include <functional>
#include <limits>
#include <memory>
#include <mutex>
#include <vector>

#include "NSDate.h"

class NSObject;
class NSTimer;

/// What the loop is doing: ordinary work, an open menu, a modal panel. Timers and listeners are served
/// only in the modes that they were added for.
enum class NSRunLoopMode { defaultMode, eventTracking, modalPanel };
inline constexpr NSRunLoopMode NSDefaultRunLoopMode = NSRunLoopMode::defaultMode;
inline constexpr NSRunLoopMode NSEventTrackingRunLoopMode = NSRunLoopMode::eventTracking;
inline constexpr NSRunLoopMode NSModalPanelRunLoopMode = NSRunLoopMode::modalPanel;
inline constexpr NSRunLoopMode kCFRunLoopDefaultMode = NSDefaultRunLoopMode;

/// Work that a turn does after its events and timers: first all deliveries, then all drawing.
class RunLoopObserver {
 public:
  enum class Phase { delivery, drawing };
  static constexpr NSTimeInterval never = std::numeric_limits<double>::infinity();

  virtual ~RunLoopObserver() = default;
  virtual void runPhase(NSTimeInterval now) = 0;
  /// When it wants to run next: `never`, or a time that may be past.
  virtual NSTimeInterval nextDue() const = 0;
};

/// One loop per thread. A host either runs it (run) or pumps it (runTurn, from its idle callback).
/// One turn: posted calls and readable descriptors, then due timers, then deliveries, then one drawing
/// pass. There is never a nested loop. All operations belong to the loop's thread, but for post and wake.
class NSRunLoop : public std::enable_shared_from_this<NSRunLoop> {
 public:
  /// The loop of the innermost Scope, else the thread's own, which lives as long as the thread, and longer
  /// for whoever keeps a reference.
  static NSRunLoop& currentRunLoop();

  /// Makes a loop the thread's current one for the scope's life. For plug-ins: the thread is the host's, and
  /// a loop of the thread's own would outlive the plug-in's code. Scopes nest; the loop is kept.
  class Scope {
   public:
    explicit Scope(std::shared_ptr<NSRunLoop> loop);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    std::shared_ptr<NSRunLoop> loop_;
    NSRunLoop* before_;
  };

  NSRunLoop();
  ~NSRunLoop();
  NSRunLoop(const NSRunLoop&) = delete;
  NSRunLoop& operator=(const NSRunLoop&) = delete;

  NSRunLoopMode currentMode() const { return mode_; }
  /// Enters or leaves event tracking while a menu is open.
  void setCurrentMode(NSRunLoopMode mode) { mode_ = mode; }

  /// Adding a timer again adds the mode; in three modes it still ticks once a period.
  void addTimer_forMode(std::shared_ptr<NSTimer> timer, NSRunLoopMode mode);
  size_t timerCount() const;
  /// Ends all. A timer and its target often hold each other, and this lets both go; as does the end of the
  /// loop's thread.
  void invalidateTimers();
  /// Ends those whose target is such a one, so that nothing holds it any more.
  void invalidateTimersOf(const std::function<bool(const NSObject& target)>& isSuch);

  /// Calls `readable` in each turn in which the descriptor can be read. Not owned.
  void addDescriptor(int fd, std::function<void()> readable);
  void removeDescriptor(int fd);

  /// The observer is not owned; it removes itself before it dies, also from inside a turn.
  void addObserver(RunLoopObserver& observer, RunLoopObserver::Phase phase);
  void removeObserver(RunLoopObserver& observer);

  /// Runs the call at the beginning of the next turn. Any thread but the audio thread.
  void post(std::function<void()> call);
  /// Ends a wait. Any thread; neither locks nor allocates.
  void wake() noexcept;

  /// Does everything that is due and returns.
  void runTurn();
  /// Earliest time at which something is due: now or earlier when something waits already, `never` when
  /// only descriptors or posts can bring work.
  NSTimeInterval nextDue() const;
  /// Waits and turns until stop(); with a limit at most until that time.
  void run(NSTimeInterval until = RunLoopObserver::never);
  void stop() { stopped_ = true; }

 private:
  struct TimerEntry {
    std::shared_ptr<NSTimer> timer;
    unsigned modes;
  };
  struct Descriptor {
    int fd;
    std::function<void()> readable;
  };
  struct ObserverEntry {
    RunLoopObserver* observer;
    RunLoopObserver::Phase phase;
  };

  void serveSources(NSTimeInterval timeout);
  void serveTimers();
  void servePhase(RunLoopObserver::Phase phase);
  bool inCurrentMode(const TimerEntry& entry) const;

  NSRunLoopMode mode_ = NSDefaultRunLoopMode;
  bool stopped_ = false;
  int wakeDescriptor_;
  std::vector<TimerEntry> timers_;
  std::vector<Descriptor> descriptors_;
  std::vector<ObserverEntry> observers_;
  mutable std::mutex postedMutex_;
  std::vector<std::function<void()>> posted_;
};
