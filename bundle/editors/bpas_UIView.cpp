#include "bpas_UIView.h"

const Class& bpas_UIView::isa() const {
  return record();
}

const Class& bpas_UIView::record() {
  static const Class c = Class::of<bpas_UIView>("bpas_UIView", jxAUSingleBandView::record())
                             .outlet<&bpas_UIView::frequency>("frequency")
                             .outlet<&bpas_UIView::bandwidth>("bandwidth");
  return c;
}

void bpas_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  hook(*frequency, wrapper->globalParameter(0));
  hook(*bandwidth, wrapper->globalParameter(1));
  jxAUSingleBandView::setAU(std::move(wrapper));
}
