#include "X11Events.h"

#include <algorithm>

#include "NSException.h"
#include "X11Clipboard.h"
#include "X11Keyboard.h"
#include "X11Pointer.h"
#include "X11Window.h"

X11Events::X11Events(X11Connection& connection, X11Clipboard& clipboard)
    : connection_(connection), clipboard_(clipboard), loop_(NSRunLoop::currentRunLoop()) {
  loop_.addDescriptor(ConnectionNumber(connection_.x()), [this] { handleWaiting(); });
  loop_.addObserver(*this, RunLoopObserver::Phase::delivery);
}

X11Events::~X11Events() {
  loop_.removeObserver(*this);
  loop_.removeDescriptor(ConnectionNumber(connection_.x()));
}

void X11Events::remove(X11Window& window) {
  losePress(window.id());
  std::erase(windows_, &window);
}

void X11Events::losePress(Window window) {
  pointer_->lose(window);
}

X11Window* X11Events::find(Window id) const {
  const auto found =
      std::find_if(windows_.begin(), windows_.end(), [id](const X11Window* w) { return w->id() == id; });
  return found == windows_.end() ? nullptr : *found;
}

void X11Events::tell(Window window, std::function<void(DisplayClient&)> notice) {
  notices_.push_back({window, std::move(notice)});
}

void X11Events::runPhase(NSTimeInterval) {
  handleWaiting();
}

NSTimeInterval X11Events::nextDue() const {
  return XPending(connection_.x()) ? 0 : never;
}

void X11Events::handleWaiting() {
  // Those that come in meanwhile wait for the next turn, so that a flood does not stop timers and drawing.
  const int waiting = XPending(connection_.x());
  if (waiting == 0) return;
  for (int i = 0; i < waiting && XEventsQueued(connection_.x(), QueuedAlready); ++i) {
    XEvent event;
    XNextEvent(connection_.x(), &event);
    if (event.type != MotionNotify && event.type != GenericEvent) {
      pointer_->endMotion();
      if (!deliver()) return;
    }
    translate(event);
    if (!deliver()) return;
  }
  pointer_->endMotion();
  for (X11Window* window : windows_) window->endTurn();
  deliver();
}

void X11Events::translate(XEvent& event) {
  if (event.type == MappingNotify) {
    XRefreshKeyboardMapping(&event.xmapping);
    return;
  }
  if (event.type == KeyPress) translateKey(event.xkey);
  pointer_->handle(event);
  clipboard_.handle(event);
  for (X11Window* window : windows_) window->handle(event);
}

void X11Events::translateKey(const XKeyEvent& event) {
  const X11Window* window = find(event.window);
  std::optional<NSEvent> key = keyDownEvent(event);
  if (!window || !key) return;
  key->locationInWindow = window->placeOfRootPixel(event.x_root, event.y_root);
  tell(event.window, [down = *key](DisplayClient& client) { client.displayEvent(down); });
}

bool X11Events::deliver() {
  const std::weak_ptr<bool> alive = alive_;
  while (!notices_.empty()) {
    const Notice notice = std::move(notices_.front());
    notices_.pop_front();
    const X11Window* window = find(notice.window);
    if (!window) continue;
    DisplayClient& client = window->client();
    NSGuardCallback("display", [&] { notice.tell(client); });
    if (alive.expired()) return false;
  }
  return true;
}
