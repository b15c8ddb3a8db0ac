#pragma once

#include "jxAUCompAmountView.h"
#include "jxAUCompGraphView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUView.h"

/// Editor of the dynamics processor: compressor and expander with their curve and the last ten seconds of
/// gain reduction.
class dcmp_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  void idle() override { compAmountView->update(); }

 private:
  jxAUParamKnobView* compThreshold = nullptr;
  jxAUParamKnobView* headRoom = nullptr;
  jxAUParamKnobView* expRatio = nullptr;
  jxAUParamKnobView* expThreshold = nullptr;
  jxAUParamKnobView* masterGain = nullptr;
  jxAUParamKnobView* attackTime = nullptr;
  jxAUParamKnobView* releaseTime = nullptr;
  jxAUCompGraphView* compGraphView = nullptr;
  jxAUCompAmountView* compAmountView = nullptr;
};
