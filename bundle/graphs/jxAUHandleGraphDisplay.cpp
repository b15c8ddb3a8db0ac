#include "jxAUHandleGraphDisplay.h"

#include <cmath>
#include <string>

#include "NSBezierPath.h"
#include "NSLog.h"
#include "NSWindow.h"

namespace {

constexpr float reach = 10;         // of a press, by |dx| + |dy|
constexpr float fineFactor = 0.1f;  // with Shift
constexpr float widthPerPoint = 0.05f;

NSRect squareAround(NSPoint center, float side) {
  return NSMakeRect(center.x - side / 2, center.y - side / 2, side, side);
}

}  // namespace

const Class& jxAUHandleGraphDisplay::isa() const {
  return record();
}

const Class& jxAUHandleGraphDisplay::record() {
  static const Class c =
      Class::of<jxAUHandleGraphDisplay>("jxAUHandleGraphDisplay", jxAUGraphDisplay::record());
  return c;
}

void jxAUHandleGraphDisplay::addHandleWithColor_mode(std::shared_ptr<NSColor> color, HandleMode mode) {
  handleColors.push_back(std::move(color));
  handlePoints.push_back({0, 0});
  handleModes.push_back(mode);
  handleWidths.push_back(0);
}

std::shared_ptr<NSColor> jxAUHandleGraphDisplay::colorOfHandle(unsigned index) const {
  if (index < handleColors.size()) return handleColors[index];
  NSLog("Error! out of bounds handleColors");
  return nullptr;
}

NSPoint jxAUHandleGraphDisplay::getPointForHandle(unsigned index) const {
  if (index < handlePoints.size()) return handlePoints[index];
  NSLog("Error! trying to get point for non-existing handle");
  return {0, 0};
}

void jxAUHandleGraphDisplay::setPoint_width_forHandle(NSPoint point, float width, unsigned index) {
  if (index >= handlePoints.size()) {
    NSLog("Error! trying to set point for non-existing handle nr " + std::to_string(index));
    return;
  }
  handlePoints[index] = point;
  handleWidths[index] = width;
}

void jxAUHandleGraphDisplay::calculateHandles() {
  for (int i = 0; i < handleCount(); ++i) calculateHandle(i);
}

void jxAUHandleGraphDisplay::setExternalEditedHandle(int index) {
  extHandle = index;
  setPlotNeedsDisplay();
}

void jxAUHandleGraphDisplay::drawRect(NSRect dirty) {
  calculateHandles();
  jxAUGraphDisplay::drawRect(dirty);
}

bool jxAUHandleGraphDisplay::isActive(size_t index) const {
  const int i = static_cast<int>(index);
  return i == draggedHandle || i == extHandle;
}

NSRect jxAUHandleGraphDisplay::highlightedRegion(size_t index) const {
  const NSRect plot = inBounds();
  const float x = handlePoints[index].x;
  float left = x, right = x;
  switch (handleModes[index]) {
    case HandleModePoint:
      break;
    case HandleModeBand:
      left = x - handleWidths[index] * 0.5f;
      right = left + handleWidths[index];
      break;
    case HandleModeLowRegion:
      left = NSMinX(plot);
      break;
    case HandleModeHighRegion:
      right = NSMaxX(plot);
      break;
  }
  return NSMakeRect(left, NSMinY(plot), right - left, NSHeight(plot));
}

void jxAUHandleGraphDisplay::drawHandles(NSRect) const {
  for (size_t i = 0; i < handleColors.size(); ++i) {
    if (!isActive(i)) continue;
    handleColors[i]->colorWithAlphaComponent(0.4f)->set();
    NSBezierPath::fillRect(highlightedRegion(i));
  }
  for (size_t i = 0; i < handleColors.size(); ++i) {
    handleColors[i]->set();
    if (isActive(i))
      NSBezierPath::bezierPathWithOvalInRect(squareAround(handlePoints[i], 9))->stroke();
    else
      NSBezierPath::bezierPathWithOvalInRect(squareAround(handlePoints[i], 7))->fill();
  }
}

void jxAUHandleGraphDisplay::mouseDown(const NSEvent& event) {
  currentPoint = convertPoint_fromView(event.locationInWindow, nullptr);
  draggedHandle = -1;
  float nearest = reach;
  for (size_t i = 0; i < handlePoints.size(); ++i) {
    const float distance =
        std::abs(handlePoints[i].x - currentPoint.x) + std::abs(handlePoints[i].y - currentPoint.y);
    if (distance >= nearest) continue;
    nearest = distance;
    draggedHandle = static_cast<int>(i);
  }
  if (draggedHandle < 0) return;
  if (window()) window()->beginRelativeMotion();
  setPlotNeedsDisplay();
}

void jxAUHandleGraphDisplay::mouseDragged(const NSEvent& event) {
  if (draggedHandle < 0) return;
  const float factor = event.modifierFlags & NSShiftKeyMask ? fineFactor : 1;
  if ((event.modifierFlags & NSAlternateKeyMask) &&
      handleModes[static_cast<size_t>(draggedHandle)] != HandleModePoint) {
    changeBandWidthForHandle_delta(draggedHandle, (event.deltaY - event.deltaX) * widthPerPoint * factor);
    return;
  }
  currentPoint = {currentPoint.x + event.deltaX * factor, currentPoint.y - event.deltaY * factor};
  setParamsForHandle_pos(draggedHandle, currentPoint);
}

void jxAUHandleGraphDisplay::mouseUp(const NSEvent&) {
  if (draggedHandle < 0) return;
  if (window()) window()->endRelativeMotion(convertPoint_toView(currentPoint, nullptr));
  draggedHandle = -1;
  setPlotNeedsDisplay();
}
