#include "RoomComposition.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "NSBezierPath.h"
#include "NSGraphicsContext.h"
#include "NSImageUtils.h"
#include "RoomPicture.h"

namespace {

enum Key : size_t { modDepth, delayRange, roomSize, reverbDensity, hifreqAbsorb, largeDelay, modDegree };
constexpr QCComposition::Input published[] = {
    {"modDepth", 0},        {"delayRange", 0.5f}, {"roomSize", 0.01f}, {"reverbDensity", 0.5f},
    {"hifreqAbsorb", 0.5f}, {"largeDelay", 0},    {"modDegree", 0}};

float unit(float value) {
  return value >= 0 ? std::min(value, 1.0f) : 0;
}

}  // namespace

std::span<const QCComposition::Input> RoomComposition::inputs() const {
  return published;
}

void RoomComposition::drawGround(NSRect bounds) const {
  const auto ground = imageNamed_fromResource("jxAURoomGround", "auRoomGround", isa());
  ground->drawInRect_fromRect_operation_fraction(bounds, NSZeroRect, NSCompositeSourceOver, 1);
}

void RoomComposition::draw(NSRect bounds, std::span<const float> values) const {
  const float turns = values[modDegree] / 180;  // -0.5 to 0.5, once round
  const RoomLook look{
      .size = unit(std::log(values[roomSize] / traits_.leastSize) /
                   std::log(traits_.greatestSize / traits_.leastSize)),
      .delay = unit(values[largeDelay] / traits_.greatestDelay),
      .density = unit(values[reverbDensity]),
      .scatter = unit(values[delayRange]),
      .brightness = unit((values[hifreqAbsorb] - 0.1f) / 0.9f),
      .sway = unit(values[modDepth]) * std::sin(2 * std::numbers::pi_v<float> * turns),
  };
  NSGraphicsContext::saveGraphicsState();
  NSBezierPath::bezierPathWithRect(NSInsetRect(bounds, 1, 1))->addClip();
  RoomPicture(bounds, look, *traits_.color).draw();
  NSGraphicsContext::restoreGraphicsState();
}
