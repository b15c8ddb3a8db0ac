#pragma once

#include <array>

#include "AUFilterGraphView.h"
#include "jxAUParamView.h"
#include "jxAppleAUView.h"

/// Editor of the multi-band filter: a section of controls for each band above the measured response. A knob
/// that is held shows its band's handle as edited.
class filt_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  /// From a parameter view, when the user takes hold of it and lets go.
  void beginAction(NSObject* sender);
  void endAction(NSObject* sender);
  void drawRect(NSRect dirty) override;

 private:
  std::array<jxAUParamView*, AUFilterGraphView::parameterCount> controls() const;

  jxAUParamView* param0 = nullptr;
  jxAUParamView* param1 = nullptr;
  jxAUParamView* param2 = nullptr;
  jxAUParamView* param3 = nullptr;
  jxAUParamView* param4 = nullptr;
  jxAUParamView* param5 = nullptr;
  jxAUParamView* param6 = nullptr;
  jxAUParamView* param7 = nullptr;
  jxAUParamView* param8 = nullptr;
  jxAUParamView* param9 = nullptr;
  jxAUParamView* param10 = nullptr;
  jxAUParamView* param11 = nullptr;
  jxAUParamView* param12 = nullptr;
  jxAUParamView* param13 = nullptr;
  jxAUParamView* param14 = nullptr;
  AUFilterGraphView* freqResponseView = nullptr;
};
