#include "jxAUFreqResponseView.h"

#include <algorithm>
#include <cmath>

#include "NSBezierPath.h"
#include "NSGraphicsContext.h"
#include "jxAUCurveOutline.h"
#include "jxAUReferenceLines.h"

namespace {

constexpr float leastFrequency = 50;
constexpr float defaultRange = 25;   // dB, up and down
constexpr float leftOut = 0.05f;     // pixels that the drawn outline may be off
constexpr float beyondThePlot = 20;  // its heights, for levels that are not finite
constexpr float minorWeight = 0.5f;

}  // namespace

const Class& jxAUFreqResponseView::isa() const {
  return record();
}

const Class& jxAUFreqResponseView::record() {
  static const Class c =
      Class::of<jxAUFreqResponseView>("jxAUFreqResponseView", jxAUHandleGraphDisplay::record());
  return c;
}

void jxAUFreqResponseView::setOrder_minFreq_maxFreq_minDB_maxDB(unsigned long order, float minFreq,
                                                                float maxFreq, float minLevel,
                                                                float maxLevel) {
  const size_t count = size_t{1} << order;
  const float nyquist = sRate * 0.5f;
  minDB = minLevel == 0 ? -defaultRange : minLevel;
  maxDB = maxLevel == 0 ? defaultRange : maxLevel;
  lowBound = std::max(minFreq, leastFrequency);
  highBound = maxFreq != 0 && maxFreq <= nyquist ? maxFreq : nyquist;
  logLowBound = std::log2(lowBound);
  octaves = std::log2(highBound / lowBound);

  values.assign(count, minDB);
  places_.resize(count);
  for (size_t i = 0; i < count; ++i)
    places_[i] =
        (std::log2(static_cast<float>(i) * nyquist / static_cast<float>(count)) - logLowBound) / octaves;
  addReferenceLines();
}

void jxAUFreqResponseView::storeValues(const float* levels) {
  std::copy_n(levels, values.size(), values.begin());
}

void jxAUFreqResponseView::setValues(const float* levels) {
  storeValues(levels);
  setPlotNeedsDisplay();
}

NSPoint jxAUFreqResponseView::graphPositionForFreq_gain(float frequency, float gain) const {
  const NSRect plot = inBounds();
  return {NSMinX(plot) + (std::log2(frequency) - logLowBound) / octaves * NSWidth(plot),
          NSMinY(plot) + (gain - minDB) / (maxDB - minDB) * NSHeight(plot)};
}

float jxAUFreqResponseView::freqForXPos(double x) const {
  const NSRect plot = inBounds();
  return static_cast<float>(std::exp2((x - NSMinX(plot)) / NSWidth(plot) * octaves + logLowBound));
}

float jxAUFreqResponseView::gainForYPos(double y) const {
  const NSRect plot = inBounds();
  const double range = static_cast<double>(maxDB) - minDB;
  return static_cast<float>((y - NSMinY(plot)) / NSHeight(plot) * range + minDB);
}

float jxAUFreqResponseView::widthForOctaves(float number) const {
  return number * NSWidth(inBounds()) / octaves;
}

float jxAUFreqResponseView::interpolateValues_position(const float* levels, float position) {
  const auto i = static_cast<long>(position);
  const float f = position - std::floor(position);
  return f == 0 ? levels[i] : (1 - f) * levels[i] + f * levels[i + 1];
}

void jxAUFreqResponseView::setParamsForHandle_pos(int index, NSPoint position) {
  setParamsForHandle_freq_gain(index, freqForXPos(position.x), gainForYPos(position.y));
}

void jxAUFreqResponseView::addReferenceLines() {
  addHoriRefLine_weigth(0, 1);
  // Where they crowd the earlier ones stay: every 20 dB, then the fives and tens between.
  const struct { float first, last; } series[] = {{-100, 100}, {-95, 85}, {-90, 90}, {-85, 95}};
  for (const auto& [first, last] : series)
    for (float level = first; level <= last; level += 20) addHoriRefLine_weigth(level, minorWeight);
  offerFrequencyLines([this](float hertz) { return addVertRefLine_weigth(hertz, minorWeight); });
}

bool jxAUFreqResponseView::addHoriRefLine_weigth(float gain, float weight) {
  const NSRect plot = inBounds();
  const float y = graphPositionForFreq_gain(0, gain).y;
  return addReferenceLineFrom_to_text_weight({NSMinX(plot), y}, {NSMaxX(plot), y}, levelLabel(gain), weight);
}

bool jxAUFreqResponseView::addVertRefLine_weigth(float frequency, float weight) {
  const NSRect plot = inBounds();
  const float x = graphPositionForFreq_gain(frequency, 0).x;
  return addReferenceLineFrom_to_text_weight({x, NSMinY(plot)}, {x, NSMaxY(plot)}, frequencyLabel(frequency),
                                             weight);
}

float jxAUFreqResponseView::drawable(float level) const {
  const float room = beyondThePlot * (maxDB - minDB);
  return std::isnan(level) ? minDB - room : std::clamp(level, minDB - room, maxDB + room);
}

void jxAUFreqResponseView::drawRect(NSRect dirty) {
  jxAUHandleGraphDisplay::drawRect(dirty);
  const NSRect plot = inBounds();
  const float perDB = NSHeight(plot) / (maxDB - minDB);
  const auto curve = NSBezierPath::bezierPath();
  curve->moveToPoint(plot.origin);
  jxAUCurveOutline outline(*curve, leftOut / NSGraphicsContext::currentContext()->scale());
  for (size_t i = 1; i < values.size(); ++i)  // the first stands for 0 Hz, which has no place
    outline.add(
        {NSMinX(plot) + places_[i] * NSWidth(plot), NSMinY(plot) + (drawable(values[i]) - minDB) * perDB});
  outline.end();
  curve->lineToPoint({NSMaxX(plot), NSMinY(plot)});
  graphColor()->set();
  curve->fill();
  drawHandles(dirty);
  drawGlow(dirty);
}
