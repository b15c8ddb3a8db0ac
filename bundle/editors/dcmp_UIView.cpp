#include "dcmp_UIView.h"

namespace {

constexpr int historySamples = 200;
constexpr NSTimeInterval tickInterval = 0.05;

enum Parameter : int {
  compThresholdParameter = 0,
  headRoomParameter = 1,
  expRatioParameter = 2,
  expThresholdParameter = 3,
  attackTimeParameter = 4,
  releaseTimeParameter = 5,
  masterGainParameter = 6,
  amountParameter = 1000,
};

}  // namespace

const Class& dcmp_UIView::isa() const {
  return record();
}

const Class& dcmp_UIView::record() {
  static const Class c = Class::of<dcmp_UIView>("dcmp_UIView", jxAppleAUView::record())
                             .outlet<&dcmp_UIView::compThreshold>("compThreshold")
                             .outlet<&dcmp_UIView::headRoom>("headRoom")
                             .outlet<&dcmp_UIView::expRatio>("expRatio")
                             .outlet<&dcmp_UIView::expThreshold>("expThreshold")
                             .outlet<&dcmp_UIView::masterGain>("masterGain")
                             .outlet<&dcmp_UIView::attackTime>("attackTime")
                             .outlet<&dcmp_UIView::releaseTime>("releaseTime")
                             .outlet<&dcmp_UIView::compGraphView>("compGraphView")
                             .outlet<&dcmp_UIView::compAmountView>("compAmountView");
  return c;
}

void dcmp_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  compThreshold->setCustomName("threshold");
  compThreshold->setAUParameter(wrapper->globalParameter(compThresholdParameter));
  headRoom->setAUParameter(wrapper->globalParameter(headRoomParameter));
  expThreshold->setCustomName("threshold");
  expThreshold->setAUParameter(wrapper->globalParameter(expThresholdParameter));
  expRatio->setCustomName("ratio");
  expRatio->setAUParameter(wrapper->globalParameter(expRatioParameter));
  attackTime->setAUParameter(wrapper->globalParameter(attackTimeParameter));
  releaseTime->setAUParameter(wrapper->globalParameter(releaseTimeParameter));
  masterGain->setAUParameter(wrapper->globalParameter(masterGainParameter));
  compAmountView->startWatchingAUparam_numSamples(wrapper->globalParameter(amountParameter), historySamples);
  compGraphView->setAudioUnit_thresholdID_headRoomID_expThresholdID_expRatio_gain(
      wrapper->audioUnit(), compThresholdParameter, headRoomParameter, expThresholdParameter,
      expRatioParameter, masterGainParameter);
  jxAppleAUView::setAU(std::move(wrapper));
  startTimerWithInterval(tickInterval);
}
