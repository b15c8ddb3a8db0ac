#pragma once

#include <deque>

#include "NSEvent.h"
#include "RelativeMotion.h"
#include "X11Connection.h"
#include "X11Events.h"
#include "X11Screens.h"

class X11Window;

/// Presses, drags, wheel and the hidden pointer. The server itself keeps sending a press's motion and release
/// to the window that was pressed. Motion of one turn is one drag, without a press one place.
///
/// Under Xwayland the pointer that is seen belongs to the compositor. It can be put elsewhere only while it
/// is locked, so a pointer that is hidden during a press is locked in its place, and moves by its device
/// alone.
class X11Pointer {
 public:
  X11Pointer(X11Connection& connection, X11Events& events, const X11Screens& screens);
  ~X11Pointer();
  X11Pointer(const X11Pointer&) = delete;
  X11Pointer& operator=(const X11Pointer&) = delete;

  void beginRelativeMotion();
  /// The pointer is shown at the pixel of the root window that is nearest and on a monitor.
  void endRelativeMotion(int rootX, int rootY);

  void handle(XEvent& event);
  /// Tells the drag, or the place, that the motion so far amounts to.
  void endMotion();
  /// The window will send no more: its press, if it has one, is over.
  void lose(Window window);

 private:
  struct Warp {
    unsigned long serial;
    int x;
    int y;
  };

  void pressed(const XButtonEvent& event);
  void released(const XButtonEvent& event);
  void moved(const XMotionEvent& event);
  void rawMoved(XGenericEventCookie& cookie);
  void wheel(const XButtonEvent& event);
  void checkHeld(unsigned state);
  void selectRawMotion(bool select);
  void lock();
  void show();
  void warp(PixelRect to);
  /// Motion up to events with this number is over; what a warp did was none.
  void skipWarps(unsigned long serial);
  int countClicks(const XButtonEvent& event);
  void send(NSEventType type, unsigned state, NSEvent event = {});

  X11Connection& connection_;
  X11Events& events_;
  const X11Screens& screens_;
  RelativeMotion motion_;
  std::deque<Warp> warps_;
  bool hidden_ = false;
  int rawDevice_ = XIAllMasterDevices;  // whose raw motion comes while it is hidden
  Window lockWindow_ = None;            // the window of the press, while the pointer is locked
  Window pressedWindow_ = None;
  XMotionEvent hover_{};  // what is not told yet; its window is None when all is
  unsigned state_ = 0;
  int clicks_ = 0;
  XButtonEvent lastPress_{};
};
