#pragma once

#include <memory>
#include <optional>
#include <string>

#include "NSAttributedString.h"
#include "NSBezierPath.h"
#include "NSView.h"

/// Measures that the overlay window and its view share, in points.
namespace knobOverlay {
inline constexpr float hilightWidth = 15;  // from the knob's edge to the window's, and beside the arrow
inline constexpr float cornerRad = 5;      // of the bar's left corners
inline constexpr float height = 30;        // of the bar
}  // namespace knobOverlay

inline constexpr const char* kjxKnobArrowImage = "jxAUKnobArrow";

/// The overlay's picture: a ring round the knob, joined on its left to a bar with an arrow and the text.
class jxAUKnobOverlayView : public NSView {
 public:
  /// `ringWidth`: thickness of the ring.
  jxAUKnobOverlayView(NSRect frame, float ringWidth);
  const Class& isa() const override;
  static const Class& record();

  void setText(std::optional<std::string> text);
  const std::optional<std::string>& text() const { return mText; }

  static NSTextAttributes textAttrs();
  static NSSize calculateTextSize(const std::string& text);

  void drawRect(NSRect dirty) override;

 private:
  std::shared_ptr<NSBezierPath> outline() const;
  void drawText() const;

  float width;
  std::optional<std::string> mText;
};
