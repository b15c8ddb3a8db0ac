#pragma once

#include "jxAUCompAmountView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUView.h"

/// Editor of the peak limiter: three knobs and the last eight seconds of gain reduction.
class lmtr_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  void idle() override { amountView->update(); }

 private:
  jxAUParamKnobView* preGain = nullptr;
  jxAUParamKnobView* attackTime = nullptr;
  jxAUParamKnobView* releaseTime = nullptr;
  jxAUCompAmountView* amountView = nullptr;
};
