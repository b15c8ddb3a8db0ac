#pragma once

#include <memory>

#include "MenuView.h"
#include "NSEvent.h"
#include "NSPopUpButton.h"
#include "NSRunLoop.h"

class NSWindow;

/// An open menu: its window, what pointer and keys do with it, and its end. At most one is open in the
/// process; while it is, all events of all windows are its own, and the run loop is in the event-tracking
/// mode. A press beside it closes it and does nothing else. Main thread.
class MenuTracking {
 public:
  /// Null while no menu is open.
  static MenuTracking* current() { return current_.get(); }
  /// Opens the button's menu, if it lists anything and the button is in a visible window. `press` is the
  /// press that does it, whose drags and release are the menu's; null: a key or code.
  static void open(NSPopUpButton& button, const NSEvent* press);
  /// Closes it without a choice, if it is open.
  static void close();
  /// The same if its button is in that tree, or its button or itself in that window.
  static void closeIn(const NSView& tree);
  static void closeIn(const NSWindow& window);
  static bool isOpenFor(const NSPopUpButton& button);
  /// The menu of a button in that window.
  static bool isOpenIn(const NSWindow& window);

  /// An event of any window.
  void handle(const NSEvent& event, const NSWindow& window);
  /// The pointer is at this place of the screen, with no button held.
  void pointerMoved(NSPoint place) { pointTo(place, false); }
  /// The button of the pointer was let go unseen.
  void pointerLost() { pressPlace_.reset(); }

  /// Where a panel of that size stands: below the button; above, where it would leave the screen; over it
  /// and shortened, where there is too little room. Screen points.
  static NSRect panelFrame(NSSize wanted, NSRect button, NSRect screen);

  /// For open alone.
  struct Passkey {
   private:
    friend MenuTracking;
    explicit Passkey() = default;
  };
  MenuTracking(Passkey, NSPopUpButton& button);

 private:
  void show();
  void keyDown(const NSEvent& event);
  void moveHighlight(int by);
  void highlightInitial(const std::string& letter);
  void pointTo(NSPoint place, bool held);
  void release(NSPoint place);
  void choose();
  NSPoint inView(NSPoint place) const;

  static std::shared_ptr<MenuTracking> current_;

  std::shared_ptr<NSPopUpButton> button_;
  NSWindow& owner_;  // the menu closes before it goes
  std::shared_ptr<MenuView> view_;
  std::shared_ptr<NSWindow> window_;
  std::optional<NSPoint> pressPlace_;  // of the button held down; screen points
  bool hasMoved_ = false;              // since the press that opened the menu
  bool isPointerInside_ = false;
  std::shared_ptr<NSRunLoop> loop_ = NSRunLoop::currentRunLoop().shared_from_this();
  NSRunLoopMode modeBefore_ = loop_->currentMode();
};
