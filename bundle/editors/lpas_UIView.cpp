#include "lpas_UIView.h"

const Class& lpas_UIView::isa() const {
  return record();
}

const Class& lpas_UIView::record() {
  static const Class c = Class::of<lpas_UIView>("lpas_UIView", jxAUSingleBandView::record())
                             .outlet<&lpas_UIView::cutoff>("cutoff")
                             .outlet<&lpas_UIView::resonance>("resonance");
  return c;
}

void lpas_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  hook(*cutoff, wrapper->globalParameter(0));
  hook(*resonance, wrapper->globalParameter(1));
  jxAUSingleBandView::setAU(std::move(wrapper));
}
