#include "RoomPicture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "NSBezierPath.h"
#include "NSImageUtils.h"

namespace {

constexpr float fewestFronts = 2, moreFronts = 12;
constexpr float fewestBars = 1, moreBars = 5;
// Where wavefronts lie beside their even places when they scatter, in distances between two of them.
constexpr std::array<float, 14> scatter{0.55f,  -0.45f, 0.65f,  0.15f, -0.60f, 0.70f, -0.20f,
                                        -0.75f, 0.50f,  -0.35f, 0.60f, -0.55f, 0.30f, -0.40f};

using Color = std::shared_ptr<NSColor>;

Color lineColor() {
  return vellColor_alpha(0x516374, 1);
}

Color mixed(const NSColor& from, const NSColor& to, float part, float alpha = 1) {
  const auto between = [part](float a, float b) { return a + (b - a) * part; };
  return NSColor::colorWithCalibratedRed_green_blue_alpha(
      between(from.redComponent(), to.redComponent()), between(from.greenComponent(), to.greenComponent()),
      between(from.blueComponent(), to.blueComponent()), alpha);
}

void strokeRect(NSRect rect, float width) {
  const auto path = NSBezierPath::bezierPathWithRect(rect);
  path->setLineWidth(width);
  path->stroke();
}

void fillBetween(NSRect outer, NSRect inner) {
  const auto ring = NSBezierPath::bezierPathWithRect(outer);
  ring->moveToPoint({NSMinX(inner), NSMinY(inner)});  // the other way round
  ring->lineToPoint({NSMinX(inner), NSMaxY(inner)});
  ring->lineToPoint({NSMaxX(inner), NSMaxY(inner)});
  ring->lineToPoint({NSMaxX(inner), NSMinY(inner)});
  ring->closePath();
  ring->fill();
}

NSPoint bottomLeft(NSRect r) {
  return r.origin;
}
NSPoint bottomRight(NSRect r) {
  return {NSMaxX(r), NSMinY(r)};
}
NSPoint topLeft(NSRect r) {
  return {NSMinX(r), NSMaxY(r)};
}
NSPoint topRight(NSRect r) {
  return {NSMaxX(r), NSMaxY(r)};
}

}  // namespace

RoomPicture::RoomPicture(NSRect bounds, const RoomLook& look, const NSColor& color)
    : look_(look), geometry_(bounds, look), color_(color) {
  for (int i = 0; i <= slices; ++i)
    sections_[static_cast<size_t>(i)] = geometry_.section(static_cast<float>(i) / slices);
}

void RoomPicture::draw() const {
  drawFloorBefore();
  drawWalls();
  drawWavefronts();
  drawEdges();
  drawSource();
}

// The parabola's control point, raised to a cubic's two.
void RoomPicture::addEdge(NSBezierPath& path, Corner corner, bool backwards) const {
  NSPoint from = corner(sections_.front());
  NSPoint to = corner(sections_.back());
  const NSPoint middle = corner(geometry_.middle());
  if (backwards) std::swap(from, to);
  const auto control = [middle](NSPoint far) {
    return NSPoint{(4 * middle.x - far.x) / 3, (4 * middle.y - far.y) / 3};
  };
  path.lineToPoint(from);
  path.curveToPoint_controlPoint1_controlPoint2(to, control(to), control(from));
}

void RoomPicture::fillWall(Corner along, Corner back, const NSColor& color) const {
  const auto wall = NSBezierPath::bezierPath();
  addEdge(*wall, along, false);
  addEdge(*wall, back, true);
  color.set();
  wall->fill();
}

void RoomPicture::drawFloorBefore() const {
  const NSRect portal = sections_.front();
  const NSRect near = geometry_.section(geometry_.nearestDepth());
  const auto floor = NSBezierPath::bezierPath();
  floor->moveToPoint(bottomLeft(near));
  floor->lineToPoint(bottomLeft(portal));
  floor->lineToPoint(bottomRight(portal));
  floor->lineToPoint(bottomRight(near));
  NSColor::colorWithCalibratedWhite_alpha(1, 0.35f)->set();
  floor->fill();
  const auto rails = NSBezierPath::bezierPath();
  rails->moveToPoint(bottomLeft(near));
  rails->lineToPoint(bottomLeft(portal));
  rails->moveToPoint(bottomRight(near));
  rails->lineToPoint(bottomRight(portal));
  lineColor()->colorWithAlphaComponent(0.45f)->set();
  rails->stroke();

  const float count = fewestBars + moreBars * look_.delay;
  for (float i = 0; i < count; ++i) {
    const float way = (i + 1) / (count + 1);  // from the portal to the listener
    const NSRect across = geometry_.section(geometry_.nearestDepth() * way);
    lineColor()->colorWithAlphaComponent(0.8f * std::min(count - i, 1.0f))->set();
    const float width = 0.8f + 0.8f * way;
    NSBezierPath::fillRect(NSMakeRect(NSMinX(across), NSMinY(across) - width / 2, NSWidth(across), width));
  }
}

void RoomPicture::drawWalls() const {
  const auto white = NSColor::whiteColor();
  const auto felt = vellColor_alpha(0x8C969E, 1);
  const auto paint = mixed(*felt, *mixed(color_, *white, 0.3f), look_.brightness);
  const auto wall = [&](float part) { return mixed(*white, *paint, part); };
  wall(0.73f)->set();  // the sides are what the others leave
  NSBezierPath::fillRect(sections_.front());
  fillWall(bottomLeft, bottomRight, *wall(0.87f));
  fillWall(topLeft, topRight, *wall(0.56f));
  wall(0.80f)->set();
  NSBezierPath::fillRect(sections_.back());
  drawShade();
}

// Every section darkens all that lies behind it. Its steps are faint, so that they may go by whole points and
// each point be darkened once.
void RoomPicture::drawShade() const {
  const float darkness = 0.50f - 0.30f * look_.brightness;
  const auto wholePoints = [](NSRect r) {
    const float x = std::round(NSMinX(r)), y = std::round(NSMinY(r));
    return NSMakeRect(x, y, std::round(NSMaxX(r)) - x, std::round(NSMaxY(r)) - y);
  };
  NSRect outer = wholePoints(sections_[1]);
  for (size_t i = 1; i < sections_.size(); ++i) {
    const bool isLast = i + 1 == sections_.size();
    const NSRect inner = isLast ? NSZeroRect : wholePoints(sections_[i + 1]);
    const float left = std::pow(1 - darkness, static_cast<float>(i) / slices);
    vellColor_alpha(0x1E2A36, 1 - left)->set();
    if (isLast)
      NSBezierPath::fillRect(outer);
    else
      fillBetween(outer, inner);
    outer = inner;
  }
}

void RoomPicture::drawWavefronts() const {
  const auto black = NSColor::blackColor();
  const float count = fewestFronts + moreFronts * look_.density;
  for (size_t i = 0; static_cast<float>(i) < count && i < scatter.size(); ++i) {
    const float place = static_cast<float>(i + 1) + look_.scatter * scatter[i];
    const float depth = std::clamp(place / (count + 1), 0.02f, 0.98f);
    const float arrived = std::min(count - static_cast<float>(i), 1.0f);
    const float left = 1 - (1 - look_.brightness) * 0.75f * depth;
    mixed(color_, *black, 0.3f, 0.8f * arrived * left)->set();
    strokeRect(geometry_.section(depth), 1.5f - 0.9f * depth);
  }
}

void RoomPicture::drawEdges() const {
  lineColor()->set();
  const auto edges = NSBezierPath::bezierPath();
  for (const Corner corner : {bottomLeft, bottomRight, topLeft, topRight}) {
    edges->moveToPoint(corner(sections_.front()));
    addEdge(*edges, corner, false);
  }
  edges->setLineWidth(0.8f);
  edges->stroke();
  strokeRect(sections_.back(), 0.8f);
  strokeRect(sections_.front(), 1.6f);
}

void RoomPicture::drawSource() const {
  const NSRect back = sections_.back();
  const NSPoint at{NSMinX(back) + NSWidth(back) / 2, NSMinY(back) + NSHeight(back) / 2};
  const auto disc = [at](float radius) {
    NSBezierPath::bezierPathWithOvalInRect(NSMakeRect(at.x - radius, at.y - radius, 2 * radius, 2 * radius))
        ->fill();
  };
  NSColor::whiteColor()->set();
  disc(3.6f);
  color_.set();
  disc(2.6f);
}
