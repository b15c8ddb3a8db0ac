#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "Display.h"
#include "NSRunLoop.h"
#include "X11Connection.h"

class X11Clipboard;
class X11Pointer;
class X11Window;

/// The connection as a source of the run loop. Events are turned into notices, and these are delivered one by
/// one, each to a window that still lives: a client may close any window, or the display, from inside one.
class X11Events : private RunLoopObserver {
 public:
  X11Events(X11Connection& connection, X11Clipboard& clipboard);
  ~X11Events();
  void setPointer(X11Pointer& handler) { pointer_ = &handler; }
  X11Pointer& pointer() const { return *pointer_; }

  void add(X11Window& window) { windows_.push_back(&window); }
  void remove(X11Window& window);
  /// Null when it is none of ours.
  X11Window* find(Window id) const;
  const std::vector<X11Window*>& windows() const { return windows_; }
  /// The window will see no more of a press that it has.
  void losePress(Window window);

  /// To be told to the window's client in this turn, in order.
  void tell(Window window, std::function<void(DisplayClient&)> notice);

 private:
  struct Notice {
    Window window;
    std::function<void(DisplayClient&)> tell;
  };

  // Xlib may have read events while it waited for an answer: then nothing is readable any more.
  void runPhase(NSTimeInterval now) override;
  NSTimeInterval nextDue() const override;

  void handleWaiting();
  void translate(XEvent& event);
  void translateKey(const XKeyEvent& event);
  /// False when the display died meanwhile.
  bool deliver();

  X11Connection& connection_;
  X11Clipboard& clipboard_;
  X11Pointer* pointer_ = nullptr;
  NSRunLoop& loop_;
  std::vector<X11Window*> windows_;
  std::deque<Notice> notices_;
  std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};
