#include "dely_GraphView.h"

#include <cmath>
#include <string>

#include "NSAssertionHandler.h"
#include "NSAttributedString.h"
#include "NSBezierPath.h"
#include "NSGraphicsContext.h"
#include "NumberText.h"

namespace {

constexpr int delayTime = 1, feedback = 2, lowpassCutoff = 3;  // parameters

constexpr float shownSeconds = 3;
constexpr float tallest = 0.9f;  // bar, of half the plot
constexpr float tickLength = 4;
constexpr float secondsPerTick = 0.1f;
constexpr int ticks = 29;
constexpr float minorWidth = 0.5f, majorWidth = 1;
constexpr float barWidth = 3;
constexpr int mostBars = 250;
constexpr float audible = 0.5f;     // points of a bar
constexpr float shortest = 0.001f;  // seconds that a second bar is drawn for
constexpr float roomBetweenLabels = 2;
constexpr float beatsHeight = 16;

void strokeLine(NSPoint from, NSPoint to, float width) {
  const auto path = NSBezierPath::bezierPath();
  path->moveToPoint(from);
  path->lineToPoint(to);
  path->setLineWidth(width);
  path->stroke();
}

float beatsPerTick(double tempo) {
  return tempo > 300 ? 1 : tempo > 150 ? 0.5f : 0.25f;
}

}  // namespace

const Class& dely_GraphView::isa() const {
  return record();
}

const Class& dely_GraphView::record() {
  static const Class c = Class::of<dely_GraphView>("dely_GraphView", jxAUHandleGraphDisplay::record())
                             .answers<&dely_GraphView::valueChanged>("valueChanged:");
  return c;
}

dely_GraphView::dely_GraphView(NSRect frame) : jxAUHandleGraphDisplay(frame) {
  addHandleWithColor_mode(orangeHandle(), HandleModeLowRegion);
}

void dely_GraphView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  if (mAU)
    NSAssertionHandler::currentHandler().handleFailureInMethod("setAU:", this, "dely_GraphView", 114,
                                                               "Already hooked to an AU!!!!");
  mAU = std::move(wrapper);
  const auto bind = [this](int parameter) {
    return std::make_shared<jxAUParam>(mAU->globalParameter(parameter), this,
                                       NSSelectorFromString("valueChanged:"));
  };
  delayTimeParam = bind(delayTime);
  feedbackParam = bind(feedback);
  lowpassParam = bind(lowpassCutoff);
  setUseXUnits_yUnits(false, false);
  valueChanged(nullptr);
}

void dely_GraphView::setTempo(double beatsPerMinute) {
  if (tempo == beatsPerMinute) return;
  tempo = beatsPerMinute;
  beats_ = nullptr;
  setPlotNeedsDisplay();
}

void dely_GraphView::valueChanged(jxAUParam*) {
  setPlotNeedsDisplay();
}

float dely_GraphView::axisY() const {
  return std::floor(NSMinY(inBounds()) + NSHeight(inBounds()) * 0.5f) + 0.5f;
}

float dely_GraphView::xOfTime(float seconds) const {
  return seconds / shownSeconds * NSWidth(inBounds()) + NSMinX(inBounds());
}

float dely_GraphView::fullHeight() const {
  return NSHeight(inBounds()) * 0.5f * tallest;
}

void dely_GraphView::calculateHandle(int index) {
  if (index != 0 || !mAU) return;
  const float height = feedbackParam->floatValue() * 0.01f * fullHeight();
  setPoint_width_forHandle({xOfTime(delayTimeParam->floatValue()), axisY() + height}, 0, 0);
}

void dely_GraphView::setParamsForHandle_pos(int index, NSPoint position) {
  if (index != 0 || !mAU) return;
  const NSRect plot = inBounds();
  delayTimeParam->setFloatValue((position.x - NSMinX(plot)) / NSWidth(plot) * shownSeconds);
  feedbackParam->setFloatValue((position.y - axisY()) / fullHeight() * 100);
}

NSPoint dely_GraphView::beatsOrigin() const {
  return {NSMinX(inBounds()), std::floor(axisY())};
}

void dely_GraphView::prepareBackground() {
  beats_ = nullptr;
  image()->lockFocus([this] { drawSeconds(); });
}

void dely_GraphView::drawSeconds() const {
  const NSRect plot = inBounds();
  const float y = axisY();
  referenceColor()->set();
  strokeLine({NSMinX(plot) + 4, y}, {NSMaxX(plot) - 4, y}, 1);
  float seconds = 0;
  for (int tick = 1; tick <= ticks; ++tick) {
    seconds += secondsPerTick;
    const bool isMajor = tick % 2 == 0;
    const float x = std::floor(xOfTime(seconds)) + 0.5f;
    strokeLine({x, y}, {x, y - tickLength}, isMajor ? majorWidth : minorWidth);
    if (!isMajor) continue;
    const NSAttributedString label(foundation::fixedText(seconds, 1) + "s", referenceTextAttributes());
    const NSSize size = label.boundingRect().size;
    label.drawAtPoint({x - size.width * 0.5f, y - tickLength - size.height});
  }
}

std::shared_ptr<NSImage> dely_GraphView::renderedBeats() const {
  const auto rendered = NSImage::initWithSize({NSWidth(inBounds()), beatsHeight});
  rendered->lockFocus([this] {
    NSGraphicsContext::currentContext()->translate(-beatsOrigin().x, -beatsOrigin().y);
    drawBeats();
  });
  return rendered;
}

void dely_GraphView::drawBeats() const {
  const float y = axisY();
  const auto beats = static_cast<float>(shownSeconds / (60 / tempo));
  const float step = beatsPerTick(tempo);
  if (step * NSWidth(inBounds()) < beats) return;  // closer than points
  float taken = NSMinX(inBounds());                // by labels, from the left
  referenceColor()->set();
  for (float beat = step; beat < beats; beat += step) {
    const bool isWhole = beat == std::floor(beat);
    const float x = std::floor(beat / beats * NSWidth(inBounds()) + NSMinX(inBounds())) + 0.5f;
    strokeLine({x, y}, {x, y + tickLength}, isWhole ? majorWidth : minorWidth);
    if (!isWhole) continue;
    const NSAttributedString label(foundation::fixedText(beat, 0) + "/4", referenceTextAttributes());
    const float left = x - label.boundingRect().size.width * 0.5f;
    if (left < taken) continue;  // at tempos where they would run into each other
    label.drawAtPoint({left, y + tickLength});
    referenceColor()->set();
    taken = x + (x - left) + roomBetweenLabels;
  }
}

void dely_GraphView::drawEchoes() const {
  const float delay = delayTimeParam->floatValue();
  const float factor = feedbackParam->floatValue() * 0.01f;
  const float cutoff = lowpassParam->floatValue() / lowpassParam->maxValue();
  const float fade = std::pow(cutoff, 0.25f) * 0.2f + 0.8f;
  const float step = delay * NSWidth(inBounds()) / shownSeconds;
  const float y = axisY();
  const auto color = referenceColor();
  float alpha = color->alphaComponent();
  float height = fullHeight();
  float x = NSMinX(inBounds());
  for (int bar = 0; bar < mostBars && x < NSMaxX(inBounds()) && std::abs(height) > audible; ++bar) {
    x += step;
    color->colorWithAlphaComponent(alpha)->set();
    NSBezierPath::fillRect(NSMakeRect(x - barWidth / 2, std::min(y, y + height), barWidth, std::abs(height)));
    height *= factor;
    alpha *= fade;
    if (delay <= shortest) break;
  }
}

void dely_GraphView::drawRect(NSRect dirty) {
  jxAUHandleGraphDisplay::drawRect(dirty);
  if (!mAU) return;
  if (!beats_) beats_ = renderedBeats();
  beats_->drawInRect_fromRect_operation_fraction({beatsOrigin(), beats_->size()}, NSZeroRect,
                                                 NSCompositeSourceOver, 1);
  drawEchoes();
  drawHandles(dirty);
  drawGlow(dirty);
}
