#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "DamageList.h"
#include "Display.h"
#include "EventRouter.h"
#include "NSColor.h"
#include "NSRunLoop.h"
#include "NSView.h"
#include "Overhang.h"
#include "WindowSurface.h"

inline constexpr unsigned NSBorderlessWindowMask = 0;
inline constexpr unsigned NSTitledWindowMask = 1;
enum class NSBackingStoreType { buffered };
inline constexpr NSBackingStoreType NSBackingStoreBuffered = NSBackingStoreType::buffered;

/// A window on a display and its tree of views. Its frame is that of its content, in screen
/// points. A borderless window that is shown for a view belongs to that view's window while it is shown: it
/// is a layer in that window where it fits, else a floating window; one that ignores the mouse is a layer
/// with overhangs beyond the edges. Damage is drawn once a turn. Main thread.
class NSWindow : public NSObject, private DisplayClient, private RunLoopObserver {
 public:
  /// Without a display it is shown on that of the view that it is shown for, or not at all.
  NSWindow(NSRect contentRect, unsigned styleMask, NSBackingStoreType backing, bool defer,
           Display* display = nullptr);
  ~NSWindow() override;
  const Class& isa() const override;
  static const Class& record();

  NSView* contentView() const { return contentView_.get(); }
  /// The view's frame becomes the window's content.
  void setContentView(std::shared_ptr<NSView> view);

  NSRect frame() const { return frame_; }
  /// A shown window is redrawn once at its new size.
  void setFrame(NSRect frame);
  void setContentSize(NSSize size) { setFrame({frame_.origin, size}); }
  void setFrameOrigin(NSPoint origin) { setFrame({origin, frame_.size}); }
  NSPoint convertBaseToScreen(NSPoint point) const;

  void setTitle(std::string title) { title_ = std::move(title); }
  void setOpaque(bool opaque) { opaque_ = opaque; }
  void setBackgroundColor(std::shared_ptr<NSColor> color);
  void setIgnoresMouseEvents(bool ignores) { ignoresMouse_ = ignores; }
  /// A native window that this one is embedded in; before it is shown.
  void setParentWindow(NativeWindow native) { parent_ = native; }

  /// Shows it without taking the keyboard. A sender that is a view makes the window belong to its window.
  virtual void orderFront(NSObject* sender);
  void makeKeyAndOrderFront();
  virtual void orderOut(NSObject* sender);
  /// Hides it and what belongs to it, and tells the delegate "windowWillClose:" once.
  void close();
  bool isVisible() const { return visible_; }
  void setDelegate(NSObject* delegate) { delegate_ = delegate; }

  /// Null stands for the window itself. False when the present one does not resign or the new one refuses.
  bool makeFirstResponder(NSView* view);
  NSView* firstResponder() const { return firstResponder_; }
  void setInitialFirstResponder(NSView* view) { initialFirstResponder_ = view; }
  NSView* initialFirstResponder() const { return initialFirstResponder_; }
  /// The first responder takes keys: a text field that is being edited, or a pop-up that was reached by Tab.
  bool isTyping() const;
  /// Moves to the next (or previous) stop of Tab in order of creation, if the present one lets it; false when
  /// there is no other.
  bool selectNextField(const NSView& from, bool backwards);

  /// Marks part of the content (points).
  void addDamage(NSRect rect);
  /// Before a subtree goes or hides: gestures, editing and an open menu in it end.
  void viewWillLeave(NSView& tree);
  /// Delivers the release of a press that is under way.
  void endGesture() { router_.endGesture(); }
  /// Asks the display for the keyboard, or gives it back, as the first responder and an open menu need it.
  /// During an event that waits for its end, so that going from one field to the next never gives it away.
  void updateKeyboard();
  void keyDown(const NSEvent& event);
  /// A press in this window has not seen its release yet.
  bool isInGesture() const { return router_.isPressed(); }
  /// Null while it has none.
  Display* display() const { return display_; }
  /// Hides the pointer and makes its motion relative and unbounded, until it is shown at that place of the
  /// window.
  void beginRelativeMotion();
  void endRelativeMotion(NSPoint place);
  /// Where it is shown; null for a layer and before it is shown for the first time.
  const DisplayWindow* displayWindow() const { return real_.get(); }
  /// What the window shows, with the layers on it; brought up to date first. Null while not visible.
  const Bitmap* snapshot();

 private:
  void displayEvent(const NSEvent& event) override;
  void displayPointerMoved(NSPoint place) override;
  void displayLostPointer() override;
  void displayExposed(NSRect rect) override;
  void displayChangedFrame(NSRect frame) override;
  void displayChangedVisibility(bool visible) override;
  void displayChangedKeyboard(bool focused) override;
  void displayClosed() override;
  void runPhase(NSTimeInterval now) override;
  NSTimeInterval nextDue() const override;

  void show(bool takesKeyboard, NSWindow* owner);
  void place();
  void placeLayer();
  void followOwner();
  void leaveOwner();
  NSRect bounds() const { return {{0, 0}, frame_.size}; }
  std::vector<WindowSurface::Layer> layers() const;
  void presentPending();

  NSRect frame_;
  std::string title_;
  bool borderless_;
  bool opaque_ = true;
  bool ignoresMouse_ = false;
  bool visible_ = false;
  bool closed_ = false;
  bool inEvent_ = false;
  NativeWindow parent_;
  std::shared_ptr<NSColor> background_ = NSColor::whiteColor();
  std::shared_ptr<NSView> contentView_;
  NSObject* delegate_ = nullptr;
  NSView* firstResponder_ = nullptr;
  NSView* initialFirstResponder_ = nullptr;
  EventRouter router_{*this};

  std::shared_ptr<NSRunLoop> loop_;
  Display* display_;                     // its own or its owner's
  std::unique_ptr<DisplayWindow> real_;  // null while hidden and for a layer
  std::optional<WindowSurface> surface_;
  DamageList damage_;          // to be drawn
  DamageList exposed_;         // drawn, to be presented
  NSWindow* owner_ = nullptr;  // whose view this window is shown for
  bool isLayer_ = false;
  std::vector<std::unique_ptr<Overhang>> overhangs_;  // of a layer
  std::vector<NSWindow*> belonging_;                  // shown for a view of this window, the last on top
};
