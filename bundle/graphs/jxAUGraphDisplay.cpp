#include "jxAUGraphDisplay.h"

#include <algorithm>
#include <cmath>

#include "NSBezierPath.h"
#include "NSGraphicsContext.h"
#include "NSImageUtils.h"
#include "NSViewUtils.h"

namespace {

constexpr float plotCornerRadius = 5;
constexpr float refusedWithin = 8;
constexpr float labelledFrom = 30;
constexpr float horizontalLabelledFrom = 15;
constexpr float edgeDistance = 4;

float nearest(const std::vector<float>& lines, float position) {
  float distance = 10'000'000;
  for (const float line : lines) distance = std::min(distance, std::abs(position - line));
  return distance;
}

}  // namespace

const Class& jxAUGraphDisplay::isa() const {
  return record();
}

const Class& jxAUGraphDisplay::record() {
  static const Class c = Class::of<jxAUGraphDisplay>("jxAUGraphDisplay", NSImageView::record())
                             .answers<&jxAUGraphDisplay::awakeFromNib>("awakeFromNib");
  return c;
}

std::shared_ptr<NSColor> jxAUGraphDisplay::graphColor() {
  return vellColor_alpha(0x516374, 0.5f);
}

std::shared_ptr<NSColor> jxAUGraphDisplay::referenceColor() {
  return NSColor::colorWithCalibratedRed_green_blue_alpha(107.0f / 255, 117.0f / 255, 124.0f / 255, 0.7f);
}

std::shared_ptr<NSColor> jxAUGraphDisplay::purpleHandle() {
  return vellColor_alpha(0xC243AC, 1);
}
std::shared_ptr<NSColor> jxAUGraphDisplay::redHandle() {
  return vellColor_alpha(0xE64D3D, 1);
}
std::shared_ptr<NSColor> jxAUGraphDisplay::orangeHandle() {
  return vellColor_alpha(0xFC8B12, 1);
}
std::shared_ptr<NSColor> jxAUGraphDisplay::greenHandle() {
  return vellColor_alpha(0x3D9E3F, 1);
}
std::shared_ptr<NSColor> jxAUGraphDisplay::blueHandle() {
  return vellColor_alpha(0x4189C4, 1);
}

NSTextAttributes jxAUGraphDisplay::referenceTextAttributes() {
  return {.font = NSFont::fontWithName_size("LucidaGrande", 7),
          .foregroundColor = vellColor_alpha(0x5B5B5B, 1),
          .shadow = {}};
}

void jxAUGraphDisplay::awakeFromNib() {
  imageNamed_fromResource(kjxAUGraphBackgroundImage, "auGraphBackground", record());
  buildBgImage();
}

void jxAUGraphDisplay::setUseXUnits_yUnits(bool xUnits, bool yUnits) {
  hasXUnits = xUnits;
  hasYUnits = yUnits;
  buildBgImage();
}

void jxAUGraphDisplay::buildBgImage() {
  const NSSize size = frame().size;
  const NSRect panelRect =
      NSMakeRect(hasYUnits ? 20 : 0, 0, size.width - (hasYUnits ? 20 : 0), size.height - (hasXUnits ? 5 : 0));
  const auto bitmap = NSImage::initWithSize(size);
  bitmap->lockFocus([this, panelRect] {
    drawSuperViewsAsOpaqueBackground(*this);
    if (const auto panel = NSImage::imageNamed(kjxAUGraphBackgroundImage))
      drawInRect_cornerSizeX_cornerSizeY_operation_fraction(*panel, panelRect, 32, 20, NSCompositeSourceOver,
                                                            1);
  });
  setImage(bitmap);
  corners_.clear();
  setNeedsDisplay(true);
  prepareBackground();
}

NSRect jxAUGraphDisplay::inBounds() const {
  const NSRect b = bounds();
  const float left = hasYUnits ? 28 : 8;
  const float top = hasXUnits ? 13 : 8;
  return NSMakeRect(NSMinX(b) + left, NSMinY(b) + 8, NSWidth(b) - left - 8, NSHeight(b) - top - 8);
}

void jxAUGraphDisplay::drawRect(NSRect dirty) {
  NSImageView::drawRect(dirty);
  if (corners_.empty() && image()) cutCorners();
  NSBezierPath::bezierPathWithRect(inBounds())->addClip();
}

void jxAUGraphDisplay::cutCorners() {
  const NSRect plot = inBounds();
  const float r = plotCornerRadius;
  for (int i = 0; i < 4; ++i) {  // counter-clockwise from the lower left
    const bool right = i == 1 || i == 2, upper = i >= 2;
    const NSRect square =
        NSMakeRect(right ? NSMaxX(plot) - r : NSMinX(plot), upper ? NSMaxY(plot) - r : NSMinY(plot), r, r);
    const auto outside = NSBezierPath::bezierPath();
    outside->moveToPoint({right ? r : 0, upper ? r : 0});
    outside->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle(
        {right ? 0 : r, upper ? 0 : r}, r, 180.0f + 90.0f * static_cast<float>(i),
        270.0f + 90.0f * static_cast<float>(i));
    outside->closePath();
    const auto picture = NSImage::initWithSize(square.size);
    picture->lockFocus([outside, square, panel = image()] {
      outside->addClip();
      panel->drawInRect_fromRect_operation_fraction({{0, 0}, square.size}, square, NSCompositeSourceOver, 1);
    });
    corners_.push_back({square, picture});
  }
}

void jxAUGraphDisplay::drawGlow(NSRect) {
  for (const Corner& corner : corners_)
    corner.outside->drawInRect_fromRect_operation_fraction(corner.square, NSZeroRect, NSCompositeSourceOver,
                                                           1);
}

bool jxAUGraphDisplay::addReferenceLineFrom_to_text_weight(NSPoint from, NSPoint to, const std::string& text,
                                                           float weight) {
  const NSAttributedString label(text, referenceTextAttributes());
  const NSRect measured = label.boundingRect();
  const NSSize size = measured.size;
  NSPoint place = measured.origin;
  const NSRect b = bounds();
  const NSRect plot = inBounds();
  float distance = 10'000'000;

  if (to.y == from.y) {
    const float y = from.y = to.y = std::floor(from.y) + 0.5f;
    distance = nearest(horizontalRefLines, y);
    if (distance < refusedWithin) return false;
    if (NSMinY(plot) + edgeDistance > y || y > NSMaxY(plot) - edgeDistance) return true;
    if (distance >= horizontalLabelledFrom) distance = labelledFrom;
    horizontalRefLines.push_back(y);
    place = {NSMinX(b) + 25 - size.width, place.y + y - size.height * 0.5f + 2};
  } else if (to.x == from.x) {
    const float x = from.x = to.x = std::floor(from.x) + 0.5f;
    distance = nearest(verticalRefLines, x);
    if (distance < refusedWithin) return false;
    if (NSMinX(plot) + edgeDistance > x || x > NSMaxX(plot) - edgeDistance) return true;
    verticalRefLines.push_back(x);
    place = {x - size.width * 0.5f, NSMaxY(b) - size.height - 1};
  }

  if (!image()) return true;
  const bool isLabelled = distance >= labelledFrom;
  image()->lockFocus([this, label, place, from, to, isLabelled, weight] {
    if (isLabelled) drawReferenceLabel(label, place);
    drawReferenceLine(from, to, isLabelled ? weight : weight * 0.6f);
  });
  return true;
}

void jxAUGraphDisplay::drawReferenceLabel(const NSAttributedString& label, NSPoint place) const {
  NSGraphicsContext::saveGraphicsState();
  NSShadow shadow;
  shadow.setShadowOffset({0, -1});
  shadow.setShadowColor(NSColor::whiteColor());
  shadow.setShadowBlurRadius(0);
  shadow.set();
  label.drawAtPoint(place);
  NSGraphicsContext::restoreGraphicsState();
}

void jxAUGraphDisplay::drawReferenceLine(NSPoint from, NSPoint to, float weight) const {
  NSGraphicsContext::saveGraphicsState();
  bezierPathWithRoundedRect_cornerRadius(NSInsetRect(inBounds(), 2, 2), plotCornerRadius)->addClip();
  referenceColor()->set();
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint(from);
  path->lineToPoint(to);
  path->setLineWidth(weight);
  path->stroke();
  NSGraphicsContext::restoreGraphicsState();
}
