#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Canvas.h"
#include "NSLog.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"
#include "Script.h"

/// A user at an offscreen display in virtual time, with a window on it and a log that is kept instead of
/// printed. Points are of the window's content, y up.
class Stage : public Hands {
 public:
  explicit Stage(float scale = 1);
  ~Stage() override;

  static void turn() { NSRunLoop::currentRunLoop().runTurn(); }
  void advance(double seconds) override;
  /// Forgets the log; what was said once is news again.
  void forgetLog();

  /// A window at (100, 100) with that content, shown; in place of the last.
  void put(const std::shared_ptr<NSView>& view);
  /// The same, drawn and open for 0.2 seconds.
  void show(const std::shared_ptr<NSView>& view);

  NSPoint place(const std::string& name) override;
  static NSPoint middleOf(const NSView& view);
  static NSRect frameInWindow(const NSView& view) { return view.convertRect_toView(view.bounds(), nullptr); }
  NSPoint onScreen(NSPoint inWindow) const { return window->convertBaseToScreen(inWindow); }

  void press(NSPoint inWindow, unsigned modifiers = 0, int clickCount = 1) override {
    display.press(onScreen(inWindow), modifiers, clickCount);
  }
  void press(const NSView& view, unsigned modifiers = 0) { press(middleOf(view), modifiers); }
  void moveBy(float dx, float dy, unsigned modifiers = 0) override { display.moveBy(dx, dy, modifiers); }
  void release() override { display.release(); }
  void wheel(NSPoint inWindow, float notches) override { display.wheel(onScreen(inWindow), notches); }
  void key(NSKey key, unsigned modifiers = 0) override { display.key(key, modifiers); }
  void type(const std::string& text, unsigned modifiers = 0) override { display.type(text, modifiers); }
  std::string play(const std::string& script) { return ::play(*this, script); }
  DisplayClient& client() const { return display.windows().front()->client(); }

  /// What was presented since the last call.
  std::vector<NSRect> takeDamage() const { return display.windows().front()->takePresented(); }
  /// 0xRRGGBB of what the window shows there.
  unsigned colorAt(NSPoint inWindow) const;

  VirtualClock clock;
  OffscreenDisplay display;
  Lines log;
  std::shared_ptr<NSWindow> window;

 protected:
  /// The view that a name without its places means; `name` becomes the rest.
  NSView& viewNamed(std::string& name) const;

 private:
  NSLogSink previousLog_;
};

/// What a view draws, alone, on transparent ground.
Bitmap drawn(NSView& view, float scale = 1);
/// Pixels that visibly differ inside the rectangle (points) of two bitmaps of equal size.
int differences(const Bitmap& a, const Bitmap& b, NSRect where);

/// The view that an outlet of an object holds. Throws std::invalid_argument when there is none.
NSView& outletOf(NSObject& owner, const std::string& name);
/// The first view in the tree, by the name of its class; null when there is none.
NSView* find(NSView& tree, const std::string& className);
/// Views of a class in the tree, parents first.
template <class View>
std::vector<View*> all(NSView& tree) {
  std::vector<View*> found;
  if (auto* view = dynamic_cast<View*>(&tree)) found.push_back(view);
  for (const auto& child : tree.subviews())
    for (View* view : all<View>(*child)) found.push_back(view);
  return found;
}
