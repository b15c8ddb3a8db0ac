#pragma once

#include "jxAUMeasuredResponseView.h"
#include "jxAUParamKnobView.h"
#include "jxAppleAUView.h"

/// Base of the editors of effects with one filter: a few knobs beside the measured response with one handle,
/// which shows as edited while a knob is held. A subclass hooks its knobs in setAU: and then calls this one.
class jxAUSingleBandView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  /// From a knob view, when the user takes hold of the knob and lets go.
  void beginAction(NSObject* sender);
  void endAction(NSObject* sender);

 protected:
  void hook(jxAUParamKnobView& knob, const AudioUnitParameter& parameter);

 private:
  jxAUMeasuredResponseView* graphView = nullptr;
};
