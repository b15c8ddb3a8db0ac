#include "mcmp_UIView.h"

#include <array>

#include "NSViewUtils.h"

namespace {

constexpr int bandCount = mcmp_CrossoverView::bandCount;
constexpr int historySamples = 100;
constexpr NSTimeInterval tickInterval = 0.05;

enum Parameter : int {
  preGainParameter = 0,
  postGainParameter = 1,
  thresholdParameter = 5,  // of band 0; the other bands' follow
  headRoomParameter = 9,
  attackTimeParameter = 13,
  releaseTimeParameter = 14,
  eqParameter = 15,
  amountParameter = 1000,  // times the band's number from 1
};

}  // namespace

const Class& mcmp_UIView::isa() const {
  return record();
}

const Class& mcmp_UIView::record() {
  static const Class c = Class::of<mcmp_UIView>("mcmp_UIView", jxAppleAUView::record())
                             .outlet<&mcmp_UIView::preGain>("preGain")
                             .outlet<&mcmp_UIView::postGain>("postGain")
                             .outlet<&mcmp_UIView::attackTime>("attackTime")
                             .outlet<&mcmp_UIView::releaseTime>("releaseTime")
                             .outlet<&mcmp_UIView::threshold1>("threshold1")
                             .outlet<&mcmp_UIView::threshold2>("threshold2")
                             .outlet<&mcmp_UIView::threshold3>("threshold3")
                             .outlet<&mcmp_UIView::threshold4>("threshold4")
                             .outlet<&mcmp_UIView::headRoom1>("headRoom1")
                             .outlet<&mcmp_UIView::headRoom2>("headRoom2")
                             .outlet<&mcmp_UIView::headRoom3>("headRoom3")
                             .outlet<&mcmp_UIView::headRoom4>("headRoom4")
                             .outlet<&mcmp_UIView::eq1>("eq1")
                             .outlet<&mcmp_UIView::eq2>("eq2")
                             .outlet<&mcmp_UIView::eq3>("eq3")
                             .outlet<&mcmp_UIView::eq4>("eq4")
                             .outlet<&mcmp_UIView::band1>("band1")
                             .outlet<&mcmp_UIView::band2>("band2")
                             .outlet<&mcmp_UIView::band3>("band3")
                             .outlet<&mcmp_UIView::band4>("band4")
                             .outlet<&mcmp_UIView::global>("global")
                             .outlet<&mcmp_UIView::graphView1>("graphView1")
                             .outlet<&mcmp_UIView::graphView2>("graphView2")
                             .outlet<&mcmp_UIView::graphView3>("graphView3")
                             .outlet<&mcmp_UIView::graphView4>("graphView4")
                             .outlet<&mcmp_UIView::amountView1>("amountView1")
                             .outlet<&mcmp_UIView::amountView2>("amountView2")
                             .outlet<&mcmp_UIView::amountView3>("amountView3")
                             .outlet<&mcmp_UIView::amountView4>("amountView4")
                             .outlet<&mcmp_UIView::crossoverView>("crossoverView");
  return c;
}

mcmp_UIView::Band mcmp_UIView::band(int index) const {
  const std::array<Band, bandCount> bands{{
      {threshold1, headRoom1, eq1, band1, graphView1, amountView1},
      {threshold2, headRoom2, eq2, band2, graphView2, amountView2},
      {threshold3, headRoom3, eq3, band3, graphView3, amountView3},
      {threshold4, headRoom4, eq4, band4, graphView4, amountView4},
  }};
  return bands.at(static_cast<size_t>(index));
}

void mcmp_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  preGain->setAUParameter(wrapper->globalParameter(preGainParameter));
  postGain->setAUParameter(wrapper->globalParameter(postGainParameter));
  attackTime->setAUParameter(wrapper->globalParameter(attackTimeParameter));
  releaseTime->setAUParameter(wrapper->globalParameter(releaseTimeParameter));
  performSelectorOnSubviews_object(*global, NSSelectorFromString("setColor:"), NSColor::grayColor().get());
  for (int i = 0; i < bandCount; ++i) hookBand(i, *wrapper);
  crossoverView->setAU(wrapper);
  jxAppleAUView::setAU(std::move(wrapper));
  startTimerWithInterval(tickInterval);
}

void mcmp_UIView::hookBand(int index, const jxAUwrapper& wrapper) const {
  const Band b = band(index);
  const auto hook = [&](jxAUParamKnobView& view, const char* name, int parameter) {
    view.setCustomName(name);
    view.setAUParameter(wrapper.globalParameter(parameter + index));
  };
  const auto identifier = [&](int parameter) { return static_cast<UInt32>(parameter + index); };
  b.graph->setAudioUnit_thresholdID_headRoomID_expThresholdID_expRatio_gain(
      wrapper.audioUnit(), identifier(thresholdParameter), identifier(headRoomParameter), kjxNoParameter,
      kjxNoParameter, identifier(eqParameter));
  hook(*b.eq, "gain", eqParameter);
  hook(*b.threshold, "threshold", thresholdParameter);
  hook(*b.headRoom, "headroom", headRoomParameter);
  b.amount->startWatchingAUparam_numSamples(wrapper.globalParameter(amountParameter * (index + 1)),
                                            historySamples);
  performSelectorOnSubviews_object(*b.box, NSSelectorFromString("setColor:"),
                                   crossoverView->colorOfBand(index).get());
}

void mcmp_UIView::idle() {
  for (int i = 0; i < bandCount; ++i) band(i).amount->update();
}
