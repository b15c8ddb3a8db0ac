#include "jxAUCompGraphView.h"

#include <algorithm>

#include "NSBezierPath.h"
#include "jxAUReferenceLines.h"

namespace {

constexpr float roomAboveThreshold = 10;

}  // namespace

const Class& jxAUCompGraphView::isa() const {
  return record();
}

const Class& jxAUCompGraphView::record() {
  static const Class c = Class::of<jxAUCompGraphView>("jxAUCompGraphView", jxAUGraphDisplay::record())
                             .answers<&jxAUCompGraphView::setColor>("setColor:")
                             .answers<&jxAUCompGraphView::valueChanged>("valueChanged:");
  return c;
}

void jxAUCompGraphView::setAudioUnit_thresholdID_headRoomID_expThresholdID_expRatio_gain(
    AudioUnit unit, UInt32 thresholdID, UInt32 headRoomID, UInt32 expThresholdID, UInt32 expRatioID,
    UInt32 gainID) {
  const std::array<UInt32, slotCount> identifiers{thresholdID, headRoomID, expThresholdID, expRatioID,
                                                  gainID};
  for (size_t slot = 0; slot < slotCount; ++slot)
    if (identifiers[slot] != kjxNoParameter)
      param[slot] =
          std::make_shared<jxAUParam>(AudioUnitParameter{unit, identifiers[slot], kAudioUnitScope_Global, 0},
                                      this, NSSelectorFromString("valueChanged:"));
  minDecibel = param[threshold]->minValue();
  maxDecibel = param[threshold]->maxValue() + roomAboveThreshold;
  addReferenceLines();
}

void jxAUCompGraphView::addReferenceLines() {
  // A line too near to one that stands already is dropped, so the order decides which remain: 0 dB first,
  // then every 40 dB, then those between.
  const auto offer = [this](float level, float weight) {
    addHoriRefLine_weight(level, weight);
    addVertRefLine_weight(level, weight);
  };
  offer(0, 1);
  for (float level = -200; level <= 80; level += 40) offer(level, 0.5f);
  for (float level = -180; level <= 60; level += 40) offer(level, 0.5f);
  addReferenceLineFrom_to_text_weight(pointForIndB_outdB(minDecibel, minDecibel),
                                      pointForIndB_outdB(maxDecibel, maxDecibel), "", 1);
}

NSPoint jxAUCompGraphView::pointForIndB_outdB(float in, float out) const {
  const NSRect plot = inBounds();
  const float range = maxDecibel - minDecibel;
  return {NSMinX(plot) + (in - minDecibel) / range * NSWidth(plot),
          NSMinY(plot) + (out - minDecibel) / range * NSHeight(plot)};
}

bool jxAUCompGraphView::addHoriRefLine_weight(float level, float weight) {
  const NSRect plot = inBounds();
  const float x = pointForIndB_outdB(level, 0).x;
  return addReferenceLineFrom_to_text_weight({x, NSMinY(plot)}, {x, NSMaxY(plot)}, levelLabel(level), weight);
}

bool jxAUCompGraphView::addVertRefLine_weight(float level, float weight) {
  const NSRect plot = inBounds();
  const float y = pointForIndB_outdB(0, level).y;
  return addReferenceLineFrom_to_text_weight({NSMinX(plot), y}, {NSMaxX(plot), y}, levelLabel(level), weight);
}

void jxAUCompGraphView::valueChanged(jxAUParam*) {
  setPlotNeedsDisplay();
}

float jxAUCompGraphView::valueOf(Slot slot, float otherwise) const {
  return param[slot] ? param[slot]->floatValue() : otherwise;
}

void jxAUCompGraphView::drawRect(NSRect dirty) {
  jxAUGraphDisplay::drawRect(dirty);
  if (!param[threshold]) return;
  const float t = valueOf(threshold, 0);
  const float g = valueOf(gain, 0);
  const float e = std::min(t, valueOf(expThreshold, minDecibel));
  const float lowest = e - (e - minDecibel) * valueOf(expRatio, 1);
  const float highest = std::min(maxDecibel, t + valueOf(headRoom, 0));

  const auto curve = NSBezierPath::bezierPath();
  curve->moveToPoint({0, 0});
  curve->lineToPoint(pointForIndB_outdB(minDecibel, lowest + g));
  curve->lineToPoint(pointForIndB_outdB(e, e + g));
  curve->lineToPoint(pointForIndB_outdB(t, t + g));
  curve->lineToPoint(pointForIndB_outdB(maxDecibel, highest + g));
  curve->lineToPoint({NSWidth(frame()), 0});
  (mColor ? mColor->colorWithAlphaComponent(0.6f) : graphColor())->set();
  curve->fill();
  drawGlow(dirty);
}
