#pragma once

#include "jxAUSingleBandView.h"

/// Editor of the lowpass, the highpass and the two shelving filters: a frequency and a level in dB.
class lpas_UIView : public jxAUSingleBandView {
 public:
  using jxAUSingleBandView::jxAUSingleBandView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;

 private:
  jxAUParamKnobView* cutoff = nullptr;
  jxAUParamKnobView* resonance = nullptr;
};
