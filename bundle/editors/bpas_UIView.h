#pragma once

#include "jxAUSingleBandView.h"

/// Editor of the bandpass filter.
class bpas_UIView : public jxAUSingleBandView {
 public:
  using jxAUSingleBandView::jxAUSingleBandView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;

 private:
  jxAUParamKnobView* frequency = nullptr;
  jxAUParamKnobView* bandwidth = nullptr;
};
