#include "jxAUKnobOverlayView.h"

#include <cmath>
#include <numbers>

#include "NSGraphicsContext.h"
#include "NSImageUtils.h"

using namespace knobOverlay;

const Class& jxAUKnobOverlayView::isa() const {
  return record();
}

const Class& jxAUKnobOverlayView::record() {
  static const Class c = Class::of<jxAUKnobOverlayView>("jxAUKnobOverlayView", NSView::record());
  return c;
}

jxAUKnobOverlayView::jxAUKnobOverlayView(NSRect frame, float ringWidth) : NSView(frame), width(ringWidth) {
  imageNamed_fromResource(kjxKnobArrowImage, "auKnobArrow", record());
}

void jxAUKnobOverlayView::setText(std::optional<std::string> text) {
  mText = std::move(text);
  setNeedsDisplay(true);
}

NSTextAttributes jxAUKnobOverlayView::textAttrs() {
  return {.font = NSFont::fontWithName_size("LucidaGrande-Bold", 18),
          .foregroundColor = NSColor::whiteColor(),
          .shadow = {}};
}

NSSize jxAUKnobOverlayView::calculateTextSize(const std::string& text) {
  return NSAttributedString(text, textAttrs()).boundingRect().size;
}

std::shared_ptr<NSBezierPath> jxAUKnobOverlayView::outline() const {
  const NSRect b = bounds();
  const float outer = NSHeight(b) / 2;
  const NSPoint center{NSMaxX(b) - outer, NSMinY(b) + outer};
  const float halfBar = height / 2;
  // Where the ring meets the bar's edges; a ring smaller than the bar is its right half alone.
  const bool joins = outer >= halfBar;
  const float a = joins ? static_cast<float>(std::asin(halfBar / outer) * 180 / std::numbers::pi) : 90;

  auto path = NSBezierPath::bezierPath();
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({cornerRad, outer + halfBar - cornerRad},
                                                                     cornerRad, 90, 180);
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({cornerRad, outer - halfBar + cornerRad},
                                                                     cornerRad, 180, 270);
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle(center, outer, 180 + a, 540 - a);
  path->closePath();
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(center, outer - width, 360, 0,
                                                                               true);
  return path;
}

void jxAUKnobOverlayView::drawRect(NSRect) {
  const NSRect b = bounds();
  NSColor::colorWithCalibratedWhite_alpha(0.3f, 0.7f)->set();
  outline()->fill();
  if (const auto arrow = NSImage::imageNamed(kjxKnobArrowImage))
    arrow->drawInRect_fromRect_operation_fraction(
        {{NSWidth(b) - NSHeight(b) - hilightWidth, 0}, arrow->size()}, NSZeroRect, NSCompositeSourceOver,
        0.8f);
  if (mText) drawText();
}

void jxAUKnobOverlayView::drawText() const {
  const NSRect b = bounds();
  NSGraphicsContext::saveGraphicsState();
  NSShadow shadow;
  shadow.setShadowColor(NSColor::colorWithCalibratedWhite_alpha(0, 0.75f));
  shadow.setShadowOffset({0, -1});
  shadow.setShadowBlurRadius(2);
  shadow.set();
  const NSSize size = calculateTextSize(*mText);
  const float left = (NSWidth(b) - NSHeight(b) - size.width - hilightWidth) * 0.5f;
  NSAttributedString(*mText, textAttrs()).drawAtPoint({left, NSHeight(b) / 2 - size.height * 0.5f + 1});
  NSGraphicsContext::restoreGraphicsState();
}
