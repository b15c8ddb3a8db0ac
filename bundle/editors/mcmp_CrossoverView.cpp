#include "mcmp_CrossoverView.h"

#include <cmath>

#include "NSAssertionHandler.h"
#include "NSBezierPath.h"
#include "jxAUReferenceLines.h"

namespace {

constexpr int firstCrossover = 2;     // parameter
constexpr double handleHeight = 0.6;  // of the plot

}  // namespace

const Class& mcmp_CrossoverView::isa() const {
  return record();
}

const Class& mcmp_CrossoverView::record() {
  static const Class c = Class::of<mcmp_CrossoverView>("mcmp_CrossoverView", jxAUHandleGraphDisplay::record())
                             .answers<&mcmp_CrossoverView::valueChanged>("valueChanged:");
  return c;
}

mcmp_CrossoverView::mcmp_CrossoverView(NSRect frame)
    : jxAUHandleGraphDisplay(frame), bandColor{redHandle(), orangeHandle(), greenHandle(), blueHandle()} {
  for (int i = 0; i < handles; ++i) addHandleWithColor_mode(NSColor::whiteColor(), HandleModePoint);
}

void mcmp_CrossoverView::setAU(const std::shared_ptr<jxAUwrapper>& wrapper) {
  if (isBound())
    NSAssertionHandler::currentHandler().handleFailureInMethod("setAU:", this, "mcmp_CrossoverView", 138,
                                                               "Already hooked to an AU!!");
  for (int i = 0; i < handles; ++i)
    param[static_cast<size_t>(i)] = std::make_shared<jxAUParam>(wrapper->globalParameter(firstCrossover + i),
                                                                this, NSSelectorFromString("valueChanged:"));
  logMin = std::log2(param[0]->minValue());
  logMax = std::log2(param[0]->maxValue());
  setUseXUnits_yUnits(true, false);
  addReferenceLines();
  valueChanged(nullptr);
}

void mcmp_CrossoverView::valueChanged(jxAUParam*) {
  setPlotNeedsDisplay();
}

NSPoint mcmp_CrossoverView::graphPositionForFreq(float frequency) const {
  const NSRect plot = inBounds();
  return {NSMinX(plot) + (std::log2(frequency) - logMin) / (logMax - logMin) * NSWidth(plot),
          static_cast<float>(NSMinY(plot) + handleHeight * NSHeight(plot))};
}

float mcmp_CrossoverView::frequencyForX(float x) const {
  const NSRect plot = inBounds();
  return static_cast<float>(
      std::pow(2.0, static_cast<double>(logMin + (x - NSMinX(plot)) / NSWidth(plot) * (logMax - logMin))));
}

void mcmp_CrossoverView::calculateHandle(int index) {
  if (!isBound() || index < 0 || index >= handles) return;
  setPoint_width_forHandle(graphPositionForFreq(param[static_cast<size_t>(index)]->floatValue()), 0,
                           static_cast<unsigned>(index));
}

void mcmp_CrossoverView::setParamsForHandle_pos(int index, NSPoint position) {
  if (!isBound() || index < 0 || index >= handles) return;
  param[static_cast<size_t>(index)]->setFloatValue(frequencyForX(position.x));
}

bool mcmp_CrossoverView::addVertRefLine_weigth(float frequency, float weight) {
  const NSRect plot = inBounds();
  const float x = graphPositionForFreq(frequency).x;
  return addReferenceLineFrom_to_text_weight({x, NSMinY(plot)}, {x, NSMaxY(plot)}, frequencyLabel(frequency),
                                             weight);
}

void mcmp_CrossoverView::addReferenceLines() {
  offerFrequencyLines([this](float hertz) { return addVertRefLine_weigth(hertz, 0.5f); });
}

void mcmp_CrossoverView::drawRect(NSRect dirty) {
  jxAUHandleGraphDisplay::drawRect(dirty);
  if (!isBound()) return;
  for (int band = 0; band < bandCount; ++band) fillBand(band);
  for (int handle = 0; handle < handles; ++handle) drawLabel(handle);
  drawHandles(dirty);
  drawGlow(dirty);
}

void mcmp_CrossoverView::fillBand(int band) const {
  const NSRect plot = inBounds();
  const auto at = [this](int handle) { return getPointForHandle(static_cast<unsigned>(handle)); };
  const auto quarter = [&](int k) { return static_cast<float>(NSMinX(plot) + k * 0.25 * NSWidth(plot)); };
  const bool last = band == bandCount - 1;
  const float left = band == 0 ? NSMinX(plot) : at(band - 1).x;
  const float right = last ? NSMaxX(plot) : at(band).x;
  const float height = at(last ? band - 1 : band).y;

  const auto funnel = NSBezierPath::bezierPath();
  funnel->moveToPoint({quarter(band), NSMinY(plot)});
  funnel->lineToPoint({quarter(band + 1), NSMinY(plot)});
  funnel->lineToPoint({right, height});
  funnel->lineToPoint({right, NSMaxY(plot)});
  funnel->lineToPoint({left, NSMaxY(plot)});
  funnel->lineToPoint({left, height});
  funnel->closePath();
  colorOfBand(band)->colorWithAlphaComponent(0.8f)->set();
  funnel->fill();
}

void mcmp_CrossoverView::drawLabel(int handle) const {
  const jxAUParam& p = *param[static_cast<size_t>(handle)];
  const NSPoint at = getPointForHandle(static_cast<unsigned>(handle));
  const NSAttributedString label(p.valueString() + p.unit(),
                                 {.font = NSFont::fontWithName_size("LucidaGrande", 8),
                                  .foregroundColor = NSColor::whiteColor(),
                                  .shadow = {}});
  const bool roomAtRight = at.x < NSMaxX(inBounds()) - 30;
  const float x = roomAtRight ? at.x + 1 : at.x - label.boundingRect().size.width - 1;
  label.drawAtPoint({x, at.y - 12.5f});
}
