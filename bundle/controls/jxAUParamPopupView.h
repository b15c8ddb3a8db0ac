#pragma once

#include <memory>

#include "NSPopUpButton.h"
#include "jxAUParamView.h"

/// Shows an indexed parameter as its name above a pop-up menu of the names of its values; without such names
/// the menu is empty. Choosing an item writes its index; a change from anywhere selects the item. Until the
/// first notice of a change the menu shows its first item. 92 × 35 points.
class jxAUParamPopupView : public jxAUParamView {
 public:
  using jxAUParamView::jxAUParamView;
  const Class& isa() const override;
  static const Class& record();

  void setAUParameter(const AudioUnitParameter& parameter) override;
  void valueChanged(jxAUParam* binding) override;
  void popupChanged(NSObject* sender);

 private:
  void setupPopup();

  std::shared_ptr<NSPopUpButton> popupView;
};
