#include "jxAUParamPopupView.h"

#include <cmath>

#include "jxValueKnob.h"

const Class& jxAUParamPopupView::isa() const {
  return record();
}

const Class& jxAUParamPopupView::record() {
  static const Class c = Class::of<jxAUParamPopupView>("jxAUParamPopupView", jxAUParamView::record())
                             .answers<&jxAUParamPopupView::popupChanged>("popupChanged:");
  return c;
}

void jxAUParamPopupView::setAUParameter(const AudioUnitParameter& parameter) {
  jxAUParamView::setAUParameter(parameter);
  setupPopup();
}

void jxAUParamPopupView::setupPopup() {
  const float width = NSWidth(frame());
  const auto label = jxValueKnob::labelTextFieldWithFrame_fontSize(NSMakeRect(0, 18, width, 16), 10);
  label->setTextColor(NSColor::colorWithCalibratedWhite_alpha(0.2f, 1));
  label->setAlignment(NSCenterTextAlignment);
  label->setStringValue(shownName());
  label->setFont(NSFont::fontWithName_size("LucidaGrande-Bold", 9));
  addSubview(label);

  popupView =
      std::make_shared<NSPopUpButton>(NSMakeRect(width * 0.5f - 83 * 0.5f, 2, 83, 16), /*pullsDown=*/false);
  if (const auto names = mParam->parameterValueStrings()) popupView->addItemsWithTitles(*names);
  popupView->cell()->setControlSize(NSMiniControlSize);
  popupView->setFont(NSFont::fontWithName_size("LucidaGrande", 9));
  popupView->setTarget(this);
  popupView->setAction(NSSelectorFromString("popupChanged:"));
  popupView->setBordered(true);
  addSubview(popupView);
  setNeedsDisplay(true);
}

void jxAUParamPopupView::popupChanged(NSObject*) {
  mParam->setFloatValue(static_cast<float>(popupView->indexOfSelectedItem()));
  jxAUParamView::valueChanged(nullptr);
}

void jxAUParamPopupView::valueChanged(jxAUParam* binding) {
  if (!popupView || !binding) return;
  const float value = binding->floatValue();
  if (std::abs(value) <= 1e6f) popupView->selectItemAtIndex(static_cast<int>(value));
}
