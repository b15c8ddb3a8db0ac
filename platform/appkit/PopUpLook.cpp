#include "PopUpLook.h"

#include <cairo.h>

#include <cmath>
#include <numbers>

#include "NSBezierPath.h"
#include "NSGraphicsContext.h"
#include "TextLine.h"

namespace popUpLook {
namespace {

constexpr float buttonRadius = 4;
constexpr float titleInset = 8;
constexpr float arrowFromRight = 10;
constexpr float arrowHalfWidth = 3;
constexpr float panelRadius = 6;

std::shared_ptr<NSColor> slate(float alpha) {
  return NSColor::colorWithCalibratedRed_green_blue_alpha(0x51 / 255.0f, 0x63 / 255.0f, 0x74 / 255.0f, alpha);
}

/// The largest rectangle inside whose edges lie between physical pixels.
NSRect insideWholePixels(NSRect rect) {
  constexpr double slack = 1e-3;
  cairo_t* cairo = NSGraphicsContext::currentContext()->cairo();
  double left = NSMinX(rect), top = NSMaxY(rect), right = NSMaxX(rect), bottom = NSMinY(rect);
  cairo_user_to_device(cairo, &left, &top);
  cairo_user_to_device(cairo, &right, &bottom);
  left = std::ceil(left - slack);
  top = std::ceil(top - slack);
  right = std::floor(right + slack);
  bottom = std::floor(bottom + slack);
  cairo_device_to_user(cairo, &left, &top);
  cairo_device_to_user(cairo, &right, &bottom);
  return NSMakeRect(static_cast<float>(left), static_cast<float>(bottom), static_cast<float>(right - left),
                    static_cast<float>(top - bottom));
}

NSPoint nearestPixelCorner(NSPoint point) {
  cairo_t* cairo = NSGraphicsContext::currentContext()->cairo();
  double x = point.x, y = point.y;
  cairo_user_to_device(cairo, &x, &y);
  x = std::round(x);
  y = std::round(y);
  cairo_device_to_user(cairo, &x, &y);
  return {static_cast<float>(x), static_cast<float>(y)};
}

/// About a point wide, in whole physical pixels.
float hairline() {
  const float scale = NSGraphicsContext::currentContext()->scale();
  return std::max(1.0f, std::floor(scale)) / scale;
}

void addRoundedRect(cairo_t* cairo, NSRect rect, double radius) {
  constexpr double quarter = std::numbers::pi / 2;
  radius = std::min({radius, rect.size.width / 2.0, rect.size.height / 2.0});
  const double left = NSMinX(rect) + radius, right = NSMaxX(rect) - radius;
  const double lower = NSMinY(rect) + radius, upper = NSMaxY(rect) - radius;
  cairo_new_path(cairo);
  cairo_arc(cairo, left, lower, radius, 2 * quarter, 3 * quarter);
  cairo_arc(cairo, right, lower, radius, 3 * quarter, 4 * quarter);
  cairo_arc(cairo, right, upper, radius, 0, quarter);
  cairo_arc(cairo, left, upper, radius, quarter, 2 * quarter);
  cairo_close_path(cairo);
}

void fillRoundedRect(NSRect rect, float radius) {
  NSGraphicsContext::currentContext()->draw(rect, [&](cairo_t* cairo) {
    addRoundedRect(cairo, rect, radius);
    cairo_fill(cairo);
  });
}

void strokeRoundedRect(NSRect rect, float radius, float lineWidth) {
  NSGraphicsContext::currentContext()->draw(rect, [&](cairo_t* cairo) {
    addRoundedRect(cairo, rect, radius);
    cairo_set_line_width(cairo, lineWidth);
    cairo_stroke(cairo);
  });
}

void fillShaded(NSRect rect, float radius, const NSColor& top, const NSColor& bottom) {
  NSGraphicsContext::currentContext()->draw(rect, [&](cairo_t* cairo) {
    cairo_pattern_t* shade = cairo_pattern_create_linear(0, NSMaxY(rect), 0, NSMinY(rect));
    cairo_pattern_add_color_stop_rgb(shade, 0, top.redComponent(), top.greenComponent(), top.blueComponent());
    cairo_pattern_add_color_stop_rgb(shade, 1, bottom.redComponent(), bottom.greenComponent(),
                                     bottom.blueComponent());
    cairo_save(cairo);
    cairo_set_source(cairo, shade);
    cairo_pattern_destroy(shade);
    addRoundedRect(cairo, rect, radius);
    cairo_fill(cairo);
    cairo_restore(cairo);
  });
}

/// Base at y, tip `rise` above it (below, if negative).
void fillTriangle(float centerX, float y, float rise) {
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint({centerX - arrowHalfWidth, y});
  path->lineToPoint({centerX + arrowHalfWidth, y});
  path->lineToPoint({centerX, y + rise});
  path->fill();
}

float centredBaseline(NSRect rect, const TextLine& line) {
  return NSMinY(rect) + (NSHeight(rect) - line.ascent() - line.descent()) / 2 + line.descent();
}

TextLine fitted(std::vector<NSAttributedString::Run> runs, float width) {
  TextLine line(runs);
  while (line.width() > width && !runs.empty()) {
    std::string& text = runs.back().text;
    while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80) text.pop_back();
    if (!text.empty()) text.pop_back();
    auto cut = runs;
    cut.back().text += "…";
    line = TextLine(cut);
    if (text.empty()) runs.pop_back();
  }
  return line;
}

}  // namespace

void drawButton(NSRect bounds, const ButtonState& state) {
  const NSRect box = insideWholePixels(bounds);
  const float line = hairline();
  const NSRect edge = NSInsetRect(box, line / 2, line / 2);
  if (state.bordered) {
    const NSColor top(state.pressed ? 0.90f : 1, state.pressed ? 0.92f : 1, state.pressed ? 0.94f : 1, 1);
    const NSColor bottom(state.pressed ? 0.80f : 0.867f, state.pressed ? 0.83f : 0.886f,
                         state.pressed ? 0.86f : 0.906f, 1);
    fillShaded(edge, buttonRadius, top, bottom);
    slate(state.focused ? 1 : 0.55f)->set();
    strokeRoundedRect(edge, buttonRadius, line);
  }
  if (state.focused) {
    slate(0.45f)->set();
    strokeRoundedRect(NSInsetRect(edge, line, line), buttonRadius - line, line);
  }
  slate(1)->set();
  const NSPoint center = nearestPixelCorner({NSMaxX(box) - arrowFromRight, NSMinY(box) + NSHeight(box) / 2});
  if (state.pullsDown) {
    fillTriangle(center.x, center.y + 2, -4);
  } else {
    const float scale = NSGraphicsContext::currentContext()->scale();
    const float gap = std::max(1.0f, std::floor(1.5f * scale)) / scale;  // to the middle, whole pixels
    fillTriangle(center.x, center.y + gap, 5 - gap);
    fillTriangle(center.x, center.y - gap, gap - 5);
  }
}

void drawButtonTitle(NSRect bounds, std::vector<NSAttributedString::Run> title) {
  const NSRect box = insideWholePixels(bounds);
  const float width = NSWidth(box) - titleInset - arrowFromRight - 2 * arrowHalfWidth;
  const TextLine line = fitted(std::move(title), width);
  const NSPoint start = nearestPixelCorner({NSMinX(box) + titleInset, centredBaseline(box, line)});
  line.draw(start.x, start.y);
}

NSTextAttributes plainText(std::shared_ptr<NSFont> font) {
  return {.font = std::move(font),
          .foregroundColor = NSColor::colorWithCalibratedWhite_alpha(0.2f, 1),
          .shadow = {}};
}

void drawPanel(NSRect panel) {
  const NSRect box = insideWholePixels(panel);
  NSGraphicsContext::saveGraphicsState();
  NSShadow shadow;
  shadow.setShadowColor(NSColor::colorWithCalibratedWhite_alpha(0, 0.32f));
  shadow.setShadowOffset({0, -2});
  shadow.setShadowBlurRadius(8);
  shadow.set();
  NSColor::whiteColor()->set();
  fillRoundedRect(box, panelRadius);
  NSGraphicsContext::restoreGraphicsState();
  const float line = hairline();
  slate(0.45f)->set();
  strokeRoundedRect(NSInsetRect(box, line / 2, line / 2), panelRadius - line / 2, line);
}

NSRect panelInterior(NSRect panel) {
  return NSInsetRect(panel, 2, panelRadius / 2);
}

void drawPanelInterior(NSRect part) {
  NSColor::whiteColor()->set();
  NSBezierPath::fillRect(part);
}

void drawHighlight(NSRect row) {
  slate(0.2f)->set();
  fillRoundedRect(insideWholePixels(row), 3);
}

void drawCheckMark(NSRect column) {
  const NSPoint center =
      nearestPixelCorner({NSMinX(column) + NSWidth(column) / 2, NSMinY(column) + NSHeight(column) / 2});
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint({center.x - 3, center.y});
  path->lineToPoint({center.x - 1, center.y - 2.5f});
  path->lineToPoint({center.x + 3, center.y + 3});
  path->setLineWidth(1.5f);
  slate(1)->set();
  path->stroke();
}

void drawRowTitle(NSRect row, float x, const TextLine& title) {
  const NSPoint start = nearestPixelCorner({x, centredBaseline(row, title)});
  title.draw(start.x, start.y);
}

void drawScrollArrow(NSRect zone, bool upwards) {
  slate(1)->set();
  const NSPoint center =
      nearestPixelCorner({NSMinX(zone) + NSWidth(zone) / 2, NSMinY(zone) + NSHeight(zone) / 2});
  fillTriangle(center.x, center.y + (upwards ? -2.0f : 2.0f), upwards ? 4.0f : -4.0f);
}

}  // namespace popUpLook
