#include "sdly_UIView.h"

const Class& sdly_UIView::isa() const {
  return record();
}

const Class& sdly_UIView::record() {
  static const Class c = Class::of<sdly_UIView>("sdly_UIView", jxAppleAUView::record())
                             .outlet<&sdly_UIView::inToOutDelay>("inToOutDelay");
  return c;
}

void sdly_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  inToOutDelay->setAUParameter(wrapper->globalParameter(0));
  jxAppleAUView::setAU(std::move(wrapper));
}
