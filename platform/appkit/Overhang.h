#pragma once

#include <memory>
#include <vector>

#include "DamageList.h"
#include "Display.h"
#include "NSColor.h"
#include "NSView.h"
#include "WindowSurface.h"

/// A part of a layer that lies beyond its owner's edge: a floating window that takes no mouse events and
/// never lies over its owner, so that a press there always reaches the owner, also on systems that give the
/// pointer to whatever lies on top. Main thread.
class Overhang final : private DisplayClient {
 public:
  /// Opens and shows the window. `part`: what it shows of `layer`, both in screen points. The owner outlives
  /// it.
  Overhang(Display& display, DisplayWindow& owner, NSRect part, NSRect layer, bool opaque);

  NSRect part() const { return part_; }
  /// In points of the layer.
  void addDamage(NSRect rect);
  bool isDamaged() const { return !damage_.isEmpty(); }
  /// Draws and presents what is damaged of the layer's content.
  void present(NSView& content, const NSColor& background);

 private:
  void displayEvent(const NSEvent&) override {}
  void displayLostPointer() override {}
  void displayExposed(NSRect rect) override { damage_.add(rect); }
  void displayChangedFrame(NSRect) override {}
  void displayChangedVisibility(bool) override {}
  void displayChangedKeyboard(bool) override {}
  void displayClosed() override {}

  NSRect part_;
  NSPoint offset_;  // of the layer, in the window
  DamageList damage_;
  WindowSurface surface_;
  std::unique_ptr<DisplayWindow> window_;
};

/// What of the rectangle lies beyond the other: up to four rectangles that do not overlap, whose outer edges
/// are on whole pixels.
std::vector<NSRect> partsBeyond(NSRect inner, NSRect rect, float scale);
