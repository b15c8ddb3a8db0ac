#pragma once

#include "jxAUSingleBandView.h"

/// Editor of the parametric equaliser.
class pmeq_UIView : public jxAUSingleBandView {
 public:
  using jxAUSingleBandView::jxAUSingleBandView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;

 private:
  jxAUParamKnobView* frequency = nullptr;
  jxAUParamKnobView* quality = nullptr;
  jxAUParamKnobView* gain = nullptr;
};
