#include "pmeq_UIView.h"

const Class& pmeq_UIView::isa() const {
  return record();
}

const Class& pmeq_UIView::record() {
  static const Class c = Class::of<pmeq_UIView>("pmeq_UIView", jxAUSingleBandView::record())
                             .outlet<&pmeq_UIView::frequency>("frequency")
                             .outlet<&pmeq_UIView::quality>("quality")
                             .outlet<&pmeq_UIView::gain>("gain");
  return c;
}

void pmeq_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  hook(*frequency, wrapper->globalParameter(0));
  hook(*quality, wrapper->globalParameter(1));
  hook(*gain, wrapper->globalParameter(2));
  jxAUSingleBandView::setAU(std::move(wrapper));
}
