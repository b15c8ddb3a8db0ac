#include "lmtr_UIView.h"

namespace {

constexpr int historySamples = 200;
constexpr NSTimeInterval tickInterval = 0.04;

enum Parameter : int {
  attackTimeParameter = 0,
  releaseTimeParameter = 1,
  preGainParameter = 2,
  amountParameter = 1000,
};

}  // namespace

const Class& lmtr_UIView::isa() const {
  return record();
}

const Class& lmtr_UIView::record() {
  static const Class c = Class::of<lmtr_UIView>("lmtr_UIView", jxAppleAUView::record())
                             .outlet<&lmtr_UIView::preGain>("preGain")
                             .outlet<&lmtr_UIView::attackTime>("attackTime")
                             .outlet<&lmtr_UIView::releaseTime>("releaseTime")
                             .outlet<&lmtr_UIView::amountView>("amountView");
  return c;
}

void lmtr_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  preGain->setAUParameter(wrapper->globalParameter(preGainParameter));
  attackTime->setAUParameter(wrapper->globalParameter(attackTimeParameter));
  releaseTime->setAUParameter(wrapper->globalParameter(releaseTimeParameter));
  amountView->startWatchingAUparam_numSamples(wrapper->globalParameter(amountParameter), historySamples);
  jxAppleAUView::setAU(std::move(wrapper));
  startTimerWithInterval(tickInterval);
}
