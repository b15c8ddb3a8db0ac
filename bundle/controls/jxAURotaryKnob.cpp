#include "jxAURotaryKnob.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "NSGraphicsContext.h"
#include "NSImageUtils.h"
#include "NSShadow.h"
#include "jxAUKnobOverlayWindow.h"

std::shared_ptr<jxAUKnobOverlayWindow> jxAURotaryKnob::gArrowWindow;

namespace {

constexpr int mostTicks = 1000;  // of an archive: many more than can be told apart

std::shared_ptr<NSBezierPath> segment(NSPoint from, NSPoint to, float lineWidth) {
  auto path = NSBezierPath::bezierPath();
  path->moveToPoint(from);
  path->lineToPoint(to);
  path->setLineWidth(lineWidth);
  return path;
}

/// The whole sweep as a pie, the bottom quarter missing.
std::shared_ptr<NSBezierPath> sweep(NSPoint center, float radius) {
  auto path = NSBezierPath::bezierPath();
  path->moveToPoint(center);
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(center, radius, 225, 315,
                                                                               true);
  path->closePath();
  return path;
}

}  // namespace

const Class& jxAURotaryKnob::isa() const {
  return record();
}

const Class& jxAURotaryKnob::record() {
  static const Class c = Class::of<jxAURotaryKnob>("jxAURotaryKnob", NSControl::record())
                             .answers<&jxAURotaryKnob::knobTimerProc>("knobTimerProc:")
                             .answers<&jxAURotaryKnob::hideRedLimit>("hideRedLimit:")
                             .archived<jxAURotaryKnob>();
  return c;
}

jxAURotaryKnob::jxAURotaryKnob(NSRect frame)
    : NSControl(frame), m_logMin(std::log(0.1)), m_logMax(std::log(100.0)) {
  commonInit();
}

jxAURotaryKnob::jxAURotaryKnob(NSCoder& coder) : NSControl(coder) {
  commonInit();
  setKnobColor(coder.decodeObjectOfClass<NSColor>());
  setMarkerColor(coder.decodeObjectOfClass<NSColor>());
  const auto limit = [&coder] {
    double value;
    coder.decodeValueOfObjCType_at("d", &value);
    if (!(std::abs(value) <= std::numeric_limits<float>::max()))
      coder.fail("the limit of a range that is no float, expected a finite one");
    return value;
  };
  bool isLogarithmic;
  const double min = limit();
  const double max = limit();
  coder.decodeValueOfObjCType_at("d", &m_value);
  coder.decodeValueOfObjCType_at("i", &m_tickCount);
  if (m_tickCount < 0 || m_tickCount > mostTicks)
    coder.fail(std::to_string(m_tickCount) + " tick marks, expected 0 to " + std::to_string(mostTicks));
  coder.decodeValueOfObjCType_at("c", &m_showEndpoints);
  m_offset = coder.decodePoint();
  coder.decodeValueOfObjCType_at("c", &isLogarithmic);
  m_value = m_value > 0 ? std::min(m_value, 1.0) : 0;
  setMin_max(min, max);
  setLogarithmic(isLogarithmic);
  updateToolTip();
}

void jxAURotaryKnob::encodeWithCoder(NSCoder& coder) const {
  NSControl::encodeWithCoder(coder);
  coder.encodeObject(m_knobColor.get());
  coder.encodeObject(m_markerColor.get());
  coder.encodeValueOfObjCType_at("d", &m_min);
  coder.encodeValueOfObjCType_at("d", &m_max);
  coder.encodeValueOfObjCType_at("d", &m_value);
  coder.encodeValueOfObjCType_at("i", &m_tickCount);
  coder.encodeValueOfObjCType_at("c", &m_showEndpoints);
  coder.encodePoint(m_offset);
  coder.encodeValueOfObjCType_at("c", &m_logarithmic);
}

jxAURotaryKnob::~jxAURotaryKnob() = default;

void jxAURotaryKnob::commonInit() {
  const NSRect b = bounds();
  m_offset = {NSWidth(b) * 0.5f, NSHeight(b) * 0.5f};
  m_knob = NSBezierPath::bezierPathWithOvalInRect(NSInsetRect(b, 4, 4));
  m_marker = segment({0, 2}, {0, 8}, 2);
  m_tick = segment({0, 5}, {0, 7}, 1);
  removeAllToolTips();
}

void jxAURotaryKnob::setDoubleValue(double value) {
  value = std::max(std::min(value, m_max), m_min);
  if (!(value >= m_min && value <= m_max)) return;
  const double position = m_logarithmic ? (std::log(value) - m_logMin) / (m_logMax - m_logMin)
                                        : (value - m_min) / (m_max - m_min);
  if (!(position >= 0 && position <= 1) || position == m_value) return;
  m_value = position;
  setNeedsDisplay(true);
  updateToolTip();
}

double jxAURotaryKnob::doubleValue() const {
  const double value = m_logarithmic ? std::exp(m_logMin + (m_logMax - m_logMin) * m_value)
                                     : m_min + (m_max - m_min) * m_value;
  return m_integerOnly ? std::round(value) : value;
}

void jxAURotaryKnob::setMinValue(double value) {
  if (m_logarithmic && !(value > 0)) value = 1e-7;
  if (!(m_max > value && doubleValue() >= value)) return;
  m_min = value;
  m_logMin = std::log(value);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::setMaxValue(double value) {
  if (!(value >= doubleValue() && value > m_min)) return;
  m_max = value;
  m_logMax = std::log(value);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::setMin_max(double min, double max) {
  m_min = min;
  m_max = max;
  m_logMin = std::log(min);
  m_logMax = std::log(max);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::setLogarithmic(bool logarithmic) {
  if (!logarithmic) m_logarithmic = false;
  if (!logarithmic || !(m_min > 0 && m_max > 0)) return;
  m_logarithmic = true;
  m_logMax = std::log(m_max);
  m_logMin = std::log(m_min);
}

void jxAURotaryKnob::setDefaultValue(double value) {
  m_defaultValue = value;
  m_hasDefault = true;
}

void jxAURotaryKnob::setKnobColor(std::shared_ptr<NSColor> color) {
  m_knobColor = std::move(color);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::setMarkerColor(std::shared_ptr<NSColor> color) {
  m_markerColor = std::move(color);
  setNeedsDisplay(true);
}

void jxAURotaryKnob::setPanStyle(bool panStyle) {
  if (panStyle == m_panStyle) return;
  m_panStyle = panStyle;
  setNeedsDisplay(true);
}

void jxAURotaryKnob::setNumberOfTickMarks(int count) {
  m_tickCount = count;
  setNeedsDisplay(true);
}

void jxAURotaryKnob::showEndpoints(bool show) {
  m_showEndpoints = show;
  setNeedsDisplay(true);
}

float jxAURotaryKnob::calcDegrees(double position) {
  return static_cast<float>(-(270 * position - 135));
}

NSAffineTransform jxAURotaryKnob::rotateAround_byDegrees(NSPoint point, float degrees) const {
  NSAffineTransform transform = NSAffineTransform::transform();
  transform.translateXBy_yBy(point.x, point.y);
  transform.rotateByDegrees(degrees);
  return transform;
}

void jxAURotaryKnob::drawRect(NSRect) {
  showValueMarker();
}

void jxAURotaryKnob::showValueMarker() const {
  const float radius = NSWidth(frame()) * 0.5f - 1;
  const float start = calcDegrees(m_panStyle ? 0.5 : 0.0);
  const float end = calcDegrees(m_value);
  const bool counterClockwise = m_panStyle && end > start;

  m_markerColor->set();
  const auto wedge = NSBezierPath::bezierPath();
  wedge->moveToPoint(m_offset);
  wedge->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(m_offset, radius, start + 90,
                                                                                end + 90, !counterClockwise);
  wedge->fill();

  NSColor::colorWithCalibratedWhite_alpha(111.0f / 255, 1)->set();
  const auto outline = sweep(m_offset, radius);
  outline->setLineWidth(2);
  outline->stroke();
}

void jxAURotaryKnob::showTicks() const {
  const auto draw = [this](double position) {
    NSAffineTransform transform = rotateAround_byDegrees(m_offset, calcDegrees(position));
    transform.translateXBy_yBy(0, 8);
    transform.transformBezierPath(*m_tick)->stroke();
  };
  if (m_showEndpoints) {
    draw(0);
    draw(1);
  } else if (m_tickCount == 1) {
    draw(0.5);
  } else {
    for (int i = 0; i < m_tickCount; ++i) draw(static_cast<float>(i) / static_cast<float>(m_tickCount - 1));
  }
}

void jxAURotaryKnob::drawKnobBackgroundInRect(NSRect rect) {
  NSGraphicsContext::saveGraphicsState();
  NSShadow shadow;
  shadow.setShadowColor(NSColor::colorWithCalibratedWhite_alpha(0, 0.8f));
  shadow.setShadowOffset({0, 0});
  shadow.setShadowBlurRadius(7);
  shadow.set();
  NSColor::whiteColor()->set();
  const NSPoint center{NSMinX(rect) + NSWidth(rect) * 0.5f, NSMinY(rect) + NSHeight(rect) * 0.5f};
  sweep(center, NSWidth(rect) * 0.5f - 9 - 2)->fill();
  NSGraphicsContext::restoreGraphicsState();
}

void jxAURotaryKnob::updateToolTip() const {
  if (gArrowWindow && gArrowWindow->ownerIsEqualTo(this))
    gArrowWindow->setText(stringWithNiceFloatValue_digits(floatValue(), 6));
}
