#pragma once

#include "ReverbIRview.h"
#include "jxAUGroupView.h"
#include "jxAUParamKnobView.h"
#include "jxAUrenderQ.h"
#include "jxAppleAUView.h"
#include "mrev_largeQCView.h"
#include "mrev_smallQCView.h"

/// Editor of the matrix reverb: its measured decay, the two rooms with their pictures, and what belongs to
/// both. The controls of a room have its colour.
class mrev_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  void idle() override;

 private:
  jxAUParamKnobView* dryWetMix = nullptr;
  jxAUParamKnobView* smallLargeMix = nullptr;
  jxAUParamKnobView* smallSize = nullptr;
  jxAUParamKnobView* largeSize = nullptr;
  jxAUParamKnobView* preDelay = nullptr;
  jxAUParamKnobView* largeDelay = nullptr;
  jxAUParamKnobView* smallDensity = nullptr;
  jxAUParamKnobView* largeDensity = nullptr;
  jxAUParamKnobView* largeDelayRange = nullptr;
  jxAUParamKnobView* smallHifreqAbsorption = nullptr;
  jxAUParamKnobView* largeHifreqAbsorption = nullptr;
  jxAUParamKnobView* smallDelayRange = nullptr;
  jxAUParamKnobView* modulationRate = nullptr;
  jxAUParamKnobView* modulationDepth = nullptr;
  ReverbIRview* irView = nullptr;
  mrev_smallQCView* smallQC = nullptr;
  mrev_largeQCView* largeQC = nullptr;
  jxAUrenderQ* renderQ = nullptr;
  jxAUGroupView* smallGroup = nullptr;
  jxAUGroupView* largeGroup = nullptr;
};
