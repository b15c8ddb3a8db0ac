#include "X11Pointer.h"

#include <cstdlib>
#include <string_view>
#include <utility>

#include "X11Keyboard.h"
#include "X11Window.h"

namespace {

constexpr Time doubleClickTime = 400;  // milliseconds
constexpr int doubleClickReach = 4;    // pixels

/// The device of Xwayland that tells the hand's motion, also while the pointer is locked; 0 when there is
/// none.
int relativeDevice(XConnection* x) {
  int count = 0;
  XIDeviceInfo* devices = XIQueryDevice(x, XIAllDevices, &count);
  int found = 0;
  for (int i = 0; i < count && !found; ++i)
    if (std::string_view(devices[i].name).starts_with("xwayland-relative-pointer"))
      found = devices[i].deviceid;
  if (devices) XIFreeDeviceInfo(devices);
  return found;
}

}  // namespace

X11Pointer::X11Pointer(X11Connection& connection, X11Events& events, const X11Screens& screens)
    : connection_(connection), events_(events), screens_(screens) {
  motion_.setScreens(screens.monitors());
  events.setPointer(*this);
}

X11Pointer::~X11Pointer() {
  show();
}

void X11Pointer::beginRelativeMotion() {
  if (hidden_) return;
  hidden_ = true;
  XFixesHideCursor(connection_.x(), connection_.root());
  motion_.setScreens(screens_.monitors());
  lock();
  motion_.setExtent(lockWindow_ == None ? RelativeMotion::Extent::unbounded : RelativeMotion::Extent::locked);
  selectRawMotion(true);
}

void X11Pointer::endRelativeMotion(int rootX, int rootY) {
  if (!hidden_) return;
  warp(screens_.nearest(rootX, rootY));
  show();
}

void X11Pointer::show() {
  if (!hidden_) return;
  hidden_ = false;
  XFixesShowCursor(connection_.x(), connection_.root());
  motion_.setExtent(RelativeMotion::Extent::bounded);
  selectRawMotion(false);
  rawDevice_ = XIAllMasterDevices;
}

void X11Pointer::lock() {
  if (!connection_.isXwayland() || pressedWindow_ == None) return;
  const int device = relativeDevice(connection_.x());
  if (!device) return;
  // That a hidden pointer is confined to a window is how Xwayland is asked to lock it.
  constexpr unsigned events = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
  if (XGrabPointer(connection_.x(), pressedWindow_, False, events, GrabModeAsync, GrabModeAsync,
                   pressedWindow_, None, CurrentTime) != GrabSuccess)
    return;
  lockWindow_ = pressedWindow_;
  rawDevice_ = device;
}

void X11Pointer::selectRawMotion(bool select) {
  if (connection_.inputOpcode()) {
    unsigned char bits[XIMaskLen(XI_RawMotion)] = {};
    if (select) XISetMask(bits, XI_RawMotion);
    XIEventMask mask{rawDevice_, sizeof bits, bits};
    XISelectEvents(connection_.x(), connection_.root(), &mask, 1);
  }
  XFlush(connection_.x());
}

void X11Pointer::warp(PixelRect to) {
  XConnection* x = connection_.x();
  const unsigned long serial = NextRequest(x);
  if (lockWindow_ == None) {
    XWarpPointer(x, None, connection_.root(), 0, 0, 0, 0, to.x, to.y);
  } else {
    // Xwayland hands on to the compositor only what is told in places of the window that has the pointer.
    const int left = lastPress_.x_root - lastPress_.x, top = lastPress_.y_root - lastPress_.y;
    XUngrabPointer(x, CurrentTime);
    XWarpPointer(x, None, std::exchange(lockWindow_, None), 0, 0, 0, 0, to.x - left, to.y - top);
  }
  // Some servers do not obey: where the pointer is now is what further motion starts from.
  Window root = None;
  Window child = None;
  int rootX = to.x;
  int rootY = to.y;
  int localX = 0;
  int localY = 0;
  unsigned state = 0;
  XQueryPointer(x, connection_.root(), &root, &child, &rootX, &rootY, &localX, &localY, &state);
  warps_.push_back({serial, rootX, rootY});
}

void X11Pointer::skipWarps(unsigned long serial) {
  while (!warps_.empty() && warps_.front().serial <= serial) {
    motion_.place(warps_.front().x, warps_.front().y);
    warps_.pop_front();
  }
}

void X11Pointer::handle(XEvent& event) {
  switch (event.type) {
    case ButtonPress:
      pressed(event.xbutton);
      break;
    case ButtonRelease:
      released(event.xbutton);
      break;
    case MotionNotify:
      moved(event.xmotion);
      break;
    case GenericEvent:
      rawMoved(event.xcookie);
      break;
    case EnterNotify:
    case LeaveNotify:
      if (event.xcrossing.mode == NotifyNormal) checkHeld(event.xcrossing.state);
      break;
    default:
      break;
  }
}

void X11Pointer::pressed(const XButtonEvent& event) {
  X11Window* window = events_.find(event.window);
  if (!window) return;
  checkHeld(event.state);
  window->noteCorner(event.x_root - event.x, event.y_root - event.y);
  if (event.button >= 4 && event.button <= 7) wheel(event);
  if (event.button != Button1) return;
  lose(pressedWindow_);
  skipWarps(event.serial);
  motion_.place(event.x_root, event.y_root);
  motion_.take();
  clicks_ = countClicks(event);
  lastPress_ = event;
  state_ = event.state;
  pressedWindow_ = event.window;
  send(NSEventType::leftMouseDown, event.state);
}

int X11Pointer::countClicks(const XButtonEvent& event) {
  const bool again = event.window == lastPress_.window && event.time - lastPress_.time <= doubleClickTime &&
                     std::abs(event.x_root - lastPress_.x_root) <= doubleClickReach &&
                     std::abs(event.y_root - lastPress_.y_root) <= doubleClickReach;
  return again ? clicks_ + 1 : 1;
}

void X11Pointer::released(const XButtonEvent& event) {
  if (event.button != Button1 || pressedWindow_ == None) return;
  skipWarps(event.serial);
  motion_.moved(event.x_root, event.y_root);
  state_ = event.state;
  endMotion();
  send(NSEventType::leftMouseUp, event.state);
  pressedWindow_ = None;
}

void X11Pointer::moved(const XMotionEvent& event) {
  if (pressedWindow_ != None && !(event.state & Button1Mask)) endMotion();
  checkHeld(event.state);
  if (pressedWindow_ == None) {
    hover_ = event;
    return;
  }
  skipWarps(event.serial);
  motion_.moved(event.x_root, event.y_root);
  state_ = event.state;
}

void X11Pointer::rawMoved(XGenericEventCookie& cookie) {
  if (cookie.extension != connection_.inputOpcode() || !XGetEventData(connection_.x(), &cookie)) return;
  if (cookie.evtype == XI_RawMotion && hidden_) {
    const auto& raw = *static_cast<const XIRawEvent*>(cookie.data);
    const double* value = raw.valuators.values;
    double axes[2] = {0, 0};
    for (int axis = 0; axis < 2 && axis < raw.valuators.mask_len * 8; ++axis)
      if (XIMaskIsSet(raw.valuators.mask, axis)) axes[axis] = *value++;
    motion_.raw(axes[0], axes[1]);
  }
  XFreeEventData(connection_.x(), &cookie);
}

void X11Pointer::wheel(const XButtonEvent& event) {
  if (pressedWindow_ != None) return;
  const X11Window* window = events_.find(event.window);
  NSEvent notch{.type = NSEventType::scrollWheel,
                .locationInWindow = window->placeOfRootPixel(event.x_root, event.y_root),
                .modifierFlags = modifierFlags(event.state),
                .characters = {}};
  switch (event.button) {
    case 4:
      notch.deltaY = 1;
      break;
    case 5:
      notch.deltaY = -1;
      break;
    case 6:
      notch.deltaX = 1;
      break;
    default:
      notch.deltaX = -1;
      break;
  }
  events_.tell(event.window, [notch](DisplayClient& client) { client.displayEvent(notch); });
}

void X11Pointer::checkHeld(unsigned state) {
  if (!(state & Button1Mask)) lose(pressedWindow_);
}

void X11Pointer::lose(Window window) {
  if (window == None || window != pressedWindow_) return;
  pressedWindow_ = None;
  events_.tell(window, [](DisplayClient& client) { client.displayLostPointer(); });
}

void X11Pointer::endMotion() {
  if (const X11Window* window = events_.find(std::exchange(hover_.window, None))) {
    const NSPoint place = window->placeOfRootPixel(hover_.x_root, hover_.y_root);
    events_.tell(window->id(), [place](DisplayClient& client) { client.displayPointerMoved(place); });
  }
  if (pressedWindow_ == None) return;
  const RelativeMotion::Delta motion = motion_.take();
  if (motion.x == 0 && motion.y == 0) return;
  NSEvent drag;
  drag.deltaX = static_cast<float>(motion.x / screens_.scale());
  drag.deltaY = static_cast<float>(motion.y / screens_.scale());
  send(NSEventType::leftMouseDragged, state_, drag);
}

void X11Pointer::send(NSEventType type, unsigned state, NSEvent event) {
  const X11Window* window = events_.find(pressedWindow_);
  if (!window) return;
  event.type = type;
  event.locationInWindow = window->placeOfRootPixel(motion_.x(), motion_.y());
  event.modifierFlags = modifierFlags(state);
  event.clickCount = clicks_;
  events_.tell(pressedWindow_, [event](DisplayClient& client) { client.displayEvent(event); });
}
