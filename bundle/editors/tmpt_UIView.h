#pragma once

#include "NSPopUpButton.h"
#include "jxAUParamKnobView.h"
#include "jxAUPitchParamView.h"
#include "jxAUrenderQ.h"
#include "jxAppleAUView.h"

/// Editor of the time-pitch effect. A menu of just intervals sets the pitch.
class tmpt_UIView : public jxAppleAUView {
 public:
  using jxAppleAUView::jxAppleAUView;
  const Class& isa() const override;
  static const Class& record();

  void awakeFromNib();
  void setAU(std::shared_ptr<jxAUwrapper> wrapper) override;
  /// An interval was chosen: its title begins with the ratio of its frequencies, "3/2".
  void justMenuChanged(NSMenuItem* item);
  /// Nothing before the effect is set.
  void drawRect(NSRect dirty) override;

 private:
  jxAUPitchParamView* pitch = nullptr;
  jxAUParamKnobView* smoothness = nullptr;
  jxAUParamKnobView* tightness = nullptr;
  jxAUParamKnobView* effectBlend = nullptr;
  NSPopUpButton* justPopup = nullptr;
  jxAUrenderQ* renderQ = nullptr;
};
