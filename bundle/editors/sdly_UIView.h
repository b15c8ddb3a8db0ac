#pragma once

#include "jxAUParamKnobView.h"
#include "jxAppleAUView.h"

/// Editor of the sample delay: one knob.
class sdly_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;

 private:
  jxAUParamKnobView* inToOutDelay = nullptr;
};
