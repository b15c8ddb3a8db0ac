#include <algorithm>
#include <utility>

#include "X11Window.h"
#include "X11WindowSetup.h"

void X11Window::setKeyboardWanted(bool wanted) {
  if (wanted == keyboardWanted_) return;
  keyboardWanted_ = wanted;
  if (wanted)
    takeKeyboard();
  else
    returnKeyboard();
}

void X11Window::setForeignPressesWanted(bool wanted) {
  if (wanted == holdsPointer_ || isGone_) return;
  XConnection* x = connection_.x();
  // Our own windows get their events as ever; everything else comes to this one.
  constexpr unsigned events = ButtonPressMask | ButtonReleaseMask | PointerMotionMask;
  holdsPointer_ = wanted && XGrabPointer(x, id_, True, events, GrabModeAsync, GrabModeAsync, None, None,
                                         CurrentTime) == GrabSuccess;
  if (!wanted) XUngrabPointer(x, CurrentTime);
  XFlush(x);
}

void X11Window::takeKeyboard() {
  // A titled window gets the keyboard from the window manager.
  const bool isManaged = !isEmbedded() && !options_.borderless && connection_.hasWindowManager();
  if (isGone_ || isFocused_ || isManaged) return;
  selectKeys(true);
  Window before = None;
  int revert = 0;
  XGetInputFocus(connection_.x(), &before, &revert);
  const bool refused = connection_.errors().refused(
      [&] { XSetInputFocus(connection_.x(), id_, RevertToParent, CurrentTime); });
  // It is refused to windows that are not on the screen yet: see MapNotify.
  if (!refused && before != id_) focusBefore_ = before;
}

void X11Window::returnKeyboard() {
  keyboardWanted_ = false;
  const Window before = std::exchange(focusBefore_, None);
  selectKeys(false);
  if (before == None) return;
  Window now = None;
  int revert = 0;
  XGetInputFocus(connection_.x(), &now, &revert);
  if (now != id_) return;
  const auto focus = [&](Window window) {
    return !connection_.errors().refused(
        [&] { XSetInputFocus(connection_.x(), window, RevertToParent, CurrentTime); });
  };
  if (!focus(before) && isEmbedded()) focus(options_.parent.handle);
}

void X11Window::selectKeys(bool select) {
  // While the pointer is over it, an embedded window would get the keys that are meant for its host.
  if (!isEmbedded() || isGone_) return;
  XSelectInput(connection_.x(), id_, select ? x11WindowEvents | KeyPressMask : x11WindowEvents);
}

void X11Window::handleFocus(const XFocusChangeEvent& event) {
  // A grab of the keyboard (a window manager's key) is no change of focus, nor is the pointer over a window.
  if (event.mode == NotifyGrab || event.mode == NotifyUngrab || event.detail == NotifyPointer ||
      event.detail == NotifyInferior)
    return;
  const bool focused = event.type == FocusIn;
  if (std::exchange(isFocused_, focused) == focused) return;
  events_.tell(id_, [focused](DisplayClient& client) { client.displayChangedKeyboard(focused); });
}

bool X11Window::isSurrounding(Window window) const {
  return std::find(surroundings_.begin(), surroundings_.end(), window) != surroundings_.end();
}

void X11Window::watchSurroundings(bool watch) {
  const std::vector<Window> before = std::exchange(surroundings_, {});
  if (watch && isEmbedded())
    for (Window at = parentOf(connection_, id_); at != None && at != connection_.root();
         at = parentOf(connection_, at))
      surroundings_.push_back(at);
  for (const Window window : surroundings_)
    if (!events_.find(window)) XSelectInput(connection_.x(), window, StructureNotifyMask);
  for (const Window window : before) {
    const bool needed = events_.find(window) ||
                        std::any_of(events_.windows().begin(), events_.windows().end(),
                                    [&](const X11Window* other) { return other->isSurrounding(window); });
    if (!needed) XSelectInput(connection_.x(), window, NoEventMask);
  }
}
