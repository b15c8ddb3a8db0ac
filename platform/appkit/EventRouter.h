#pragma once

#include <memory>

#include "NSEvent.h"
#include "NSView.h"

/// Brings a window's events to its views, or, while a menu is open, to that. A press belongs to the view
/// under it: that view gets all drags and exactly one release, also when the gesture breaks (Escape, hiding,
/// removal, pointer lost).
class EventRouter {
 public:
  explicit EventRouter(NSWindow& window) : window_(window) {}

  void handle(const NSEvent& event);
  /// Delivers the release at the last known place, if a gesture is under way.
  void endGesture();
  /// The same, if the pressed view is in that subtree.
  void endGestureIn(const NSView& tree);
  bool isPressed() const { return pressed_ != nullptr; }

 private:
  void press(const NSEvent& event);
  void release(const NSEvent& event);
  NSView* viewAt(NSPoint place) const;

  NSWindow& window_;
  std::shared_ptr<NSView> pressed_;  // held while its gesture lasts
  NSEvent last_;
};
