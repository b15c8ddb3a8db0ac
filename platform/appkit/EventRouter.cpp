#include "EventRouter.h"

#include <utility>

#include "MenuTracking.h"
#include "NSWindow.h"

void EventRouter::handle(const NSEvent& event) {
  if (MenuTracking* menu = MenuTracking::current()) return menu->handle(event, window_);
  switch (event.type) {
    case NSEventType::leftMouseDown:
      press(event);
      break;
    case NSEventType::leftMouseDragged:
      if (!pressed_) break;
      last_ = event;
      std::shared_ptr<NSView>(pressed_)->mouseDragged(event);
      break;
    case NSEventType::leftMouseUp:
      release(event);
      break;
    case NSEventType::scrollWheel:
      if (NSView* view = pressed_ ? nullptr : viewAt(event.locationInWindow))
        std::static_pointer_cast<NSView>(view->shared_from_this())->scrollWheel(event);
      break;
    case NSEventType::keyDown:
      if (pressed_ && event.key == NSKey::escape && !window_.isTyping())
        endGesture();
      else
        window_.keyDown(event);
      break;
  }
}

void EventRouter::press(const NSEvent& event) {
  endGesture();
  NSView* view = viewAt(event.locationInWindow);
  if (window_.isTyping() && view != window_.firstResponder()) {
    if (!window_.makeFirstResponder(nullptr)) return;
    view = viewAt(event.locationInWindow);  // the end of editing may have changed the tree
  }
  if (!view) return;
  pressed_ = std::static_pointer_cast<NSView>(view->shared_from_this());
  last_ = event;
  std::shared_ptr<NSView>(pressed_)->mouseDown(event);
}

void EventRouter::release(const NSEvent& event) {
  if (const auto view = std::exchange(pressed_, nullptr)) view->mouseUp(event);
}

void EventRouter::endGesture() {
  NSEvent up = last_;
  up.type = NSEventType::leftMouseUp;
  up.deltaX = up.deltaY = 0;
  release(up);
}

void EventRouter::endGestureIn(const NSView& tree) {
  if (pressed_ && pressed_->isDescendantOf(tree)) endGesture();
}

NSView* EventRouter::viewAt(NSPoint place) const {
  NSView* root = window_.contentView();
  return root ? root->hitTest(place) : nullptr;
}
