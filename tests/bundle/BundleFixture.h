#pragma once

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "Class.h"
#include "NSBundle.h"
#include "NSControl.h"
#include "NSLog.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"

/// A virtual clock, an offscreen display and a log that is kept instead of printed.
class BundleFixture : public testing::Test {
 protected:
  explicit BundleFixture(float scale = 1);
  ~BundleFixture() override;

  void advance(double seconds) { clock_.advance(NSRunLoop::currentRunLoop(), seconds); }
  /// What was said before is news again.
  void forgetLog();
  /// A shown window at (200, 300) whose content is the view.
  static std::shared_ptr<NSWindow> show(const std::shared_ptr<NSView>& view);
  /// The view in the middle of an empty shown window of that size.
  static std::shared_ptr<NSWindow> showInside(NSSize size, const std::shared_ptr<NSView>& view);
  /// Presses the middle of the view.
  void press(const NSView& view, unsigned modifiers = 0);
  static NSPoint middleOnScreen(const NSView& view);

  VirtualClock clock_;
  OffscreenDisplay display_;
  std::vector<std::string> log_;
};

/// Writes down every message that it is sent: "turned: 12" for an action of a control with value 12, the
/// name alone for the others.
class Recorder : public NSObject {
 public:
  const Class& isa() const override { return record(); }
  static const Class& record();
  void turned(NSControl* sender);
  void beginAction(NSObject* sender);
  void endAction(NSObject* sender);
  void valueChanged(NSObject* sender);
  std::vector<std::string> take();
  /// The sender of the last message.
  NSObject* sender = nullptr;

 private:
  void write(const std::string& line, NSObject* from);
  std::vector<std::string> lines_;
};

using Lines = std::vector<std::string>;
using Rgba = std::array<uint8_t, 4>;

/// What a view draws, alone, on transparent ground.
Bitmap drawn(NSView& view, float scale = 1);
/// The pixel at a point of the bitmap, y up.
Rgba at(const Bitmap& bitmap, float x, float y);
/// Pixels that visibly differ inside the rectangle (points) of two bitmaps of equal size.
int differences(const Bitmap& a, const Bitmap& b, NSRect where);

/// The first view of that class, by the name of the class, in the tree; null when there is none.
NSView* find(NSView& tree, const std::string& className);
template <class View>
std::vector<View*> all(NSView& tree) {
  std::vector<View*> found;
  if (auto* view = dynamic_cast<View*>(&tree)) found.push_back(view);
  for (const auto& child : tree.subviews())
    for (View* view : all<View>(*child)) found.push_back(view);
  return found;
}
