#pragma once

#include <memory>
#include <string>

#include "NSWindow.h"
#include "jxAUKnobOverlayView.h"

/// The floating value display that lies over a knob while it is turned: borderless, translucent, takes no
/// events. It belongs to the control that showed it last.
class jxAUKnobOverlayWindow : public NSWindow {
 public:
  jxAUKnobOverlayWindow();
  const Class& isa() const override;
  static const Class& record();

  /// Shown after the value; empty for none. In force from the next orderFront: and setText: on.
  void setUnit(std::string newUnit) { unit = std::move(newUnit); }
  void setText(const std::string& text);
  const jxAUKnobOverlayView& view() const { return *mView; }

  /// Sizes and places the window round the knob's rectangle (screen points): 15 points beyond it on the
  /// right, above and below, and room for value and unit on the left.
  void setKnobRect(NSRect rect);
  /// A sender that is a view is what the window is placed round; any sender owns it from now on.
  void orderFront(NSObject* sender) override;
  void orderOut(NSObject* sender) override;
  bool ownerIsEqualTo(const NSObject* object) const;

 private:
  std::shared_ptr<jxAUKnobOverlayView> mView;
  NSRect knobRect;
  NSObject* owner = nullptr;  // null while hidden
  std::string unit;
};
