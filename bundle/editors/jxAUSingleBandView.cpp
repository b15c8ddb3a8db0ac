#include "jxAUSingleBandView.h"

namespace {

constexpr int theHandle = 0;
constexpr int noHandle = -1;

}  // namespace

const Class& jxAUSingleBandView::isa() const {
  return record();
}

const Class& jxAUSingleBandView::record() {
  static const Class c = Class::of<jxAUSingleBandView>("jxAUSingleBandView", jxAppleAUView::record())
                             .answers<&jxAUSingleBandView::beginAction>("beginAction:")
                             .answers<&jxAUSingleBandView::endAction>("endAction:")
                             .outlet<&jxAUSingleBandView::graphView>("graphView");
  return c;
}

void jxAUSingleBandView::hook(jxAUParamKnobView& knob, const AudioUnitParameter& parameter) {
  knob.setAUParameter(parameter);
  knob.setDelegate(this);
}

void jxAUSingleBandView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  graphView->setAudioUnit(wrapper->audioUnit());
  jxAppleAUView::setAU(std::move(wrapper));
}

void jxAUSingleBandView::beginAction(NSObject*) {
  graphView->setExternalEditedHandle(theHandle);
}

void jxAUSingleBandView::endAction(NSObject*) {
  graphView->setExternalEditedHandle(noHandle);
}
