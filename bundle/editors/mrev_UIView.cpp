#include "mrev_UIView.h"

#include "NSViewUtils.h"
#include "jxAUGraphDisplay.h"

namespace {

constexpr NSTimeInterval tickInterval = 0.05;

}  // namespace

const Class& mrev_UIView::isa() const {
  return record();
}

const Class& mrev_UIView::record() {
  static const Class c = Class::of<mrev_UIView>("mrev_UIView", jxAppleAUView::record())
                             .outlet<&mrev_UIView::dryWetMix>("dryWetMix")
                             .outlet<&mrev_UIView::smallLargeMix>("smallLargeMix")
                             .outlet<&mrev_UIView::smallSize>("smallSize")
                             .outlet<&mrev_UIView::largeSize>("largeSize")
                             .outlet<&mrev_UIView::preDelay>("preDelay")
                             .outlet<&mrev_UIView::largeDelay>("largeDelay")
                             .outlet<&mrev_UIView::smallDensity>("smallDensity")
                             .outlet<&mrev_UIView::largeDensity>("largeDensity")
                             .outlet<&mrev_UIView::largeDelayRange>("largeDelayRange")
                             .outlet<&mrev_UIView::smallHifreqAbsorption>("smallHifreqAbsorption")
                             .outlet<&mrev_UIView::largeHifreqAbsorption>("largeHifreqAbsorption")
                             .outlet<&mrev_UIView::smallDelayRange>("smallDelayRange")
                             .outlet<&mrev_UIView::modulationRate>("modulationRate")
                             .outlet<&mrev_UIView::modulationDepth>("modulationDepth")
                             .outlet<&mrev_UIView::irView>("irView")
                             .outlet<&mrev_UIView::smallQC>("smallQC")
                             .outlet<&mrev_UIView::largeQC>("largeQC")
                             .outlet<&mrev_UIView::renderQ>("renderQ")
                             .outlet<&mrev_UIView::smallGroup>("smallGroup")
                             .outlet<&mrev_UIView::largeGroup>("largeGroup");
  return c;
}

void mrev_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  const auto hook = [&](jxAUParamKnobView& knob, SInt32 parameter, const char* name = nullptr) {
    if (name) knob.setCustomName(name);
    knob.setAUParameter(wrapper->globalParameter(parameter));
  };
  const SEL setColor = NSSelectorFromString("setColor:");
  hook(*dryWetMix, 0);
  hook(*preDelay, 4);
  hook(*smallLargeMix, 1);
  hook(*smallSize, 2, "size");
  hook(*smallDensity, 6, "density");
  hook(*smallHifreqAbsorption, 9, "brightness");
  hook(*smallDelayRange, 11, "delay range");
  performSelectorOnSubviews_object(*smallGroup, setColor, jxAUGraphDisplay::greenHandle().get());
  hook(*largeDelay, 5);
  hook(*largeSize, 3, "size");
  hook(*largeDensity, 7, "density");
  hook(*largeDelayRange, 8, "delay range");
  hook(*largeHifreqAbsorption, 10, "brightness");
  performSelectorOnSubviews_object(*largeGroup, setColor, jxAUGraphDisplay::blueHandle().get());
  modulationRate->setForceLinear(true);
  hook(*modulationRate, 12, "rate");
  hook(*modulationDepth, 13, "depth");
  irView->setAudioUnit(wrapper->audioUnit());
  smallQC->setAudioUnit(wrapper->audioUnit());
  largeQC->setAudioUnit(wrapper->audioUnit());
  renderQ->setProperty(wrapper->globalProperty(kAudioUnitProperty_RenderQuality));
  startTimerWithInterval(tickInterval);
  jxAppleAUView::setAU(std::move(wrapper));
}

void mrev_UIView::idle() {
  smallQC->update();
  largeQC->update();
}
