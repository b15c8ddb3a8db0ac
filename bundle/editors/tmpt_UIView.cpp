#include "tmpt_UIView.h"

#include <cmath>
#include <numbers>

#include "jxTitleRatio.h"

namespace {

constexpr int pitchParameter = 1, blendParameter = 2, smoothnessParameter = 3, tightnessParameter = 4;
constexpr auto centsPerUnitOfLogarithm = static_cast<float>(1200 / std::numbers::ln2);

}  // namespace

const Class& tmpt_UIView::isa() const {
  return record();
}

const Class& tmpt_UIView::record() {
  static const Class c = Class::of<tmpt_UIView>("tmpt_UIView", jxAppleAUView::record())
                             .answers<&tmpt_UIView::awakeFromNib>("awakeFromNib")
                             .answers<&tmpt_UIView::justMenuChanged>("justMenuChanged:")
                             .outlet<&tmpt_UIView::pitch>("pitch")
                             .outlet<&tmpt_UIView::smoothness>("smoothness")
                             .outlet<&tmpt_UIView::tightness>("tightness")
                             .outlet<&tmpt_UIView::effectBlend>("effectBlend")
                             .outlet<&tmpt_UIView::justPopup>("justPopup")
                             .outlet<&tmpt_UIView::renderQ>("renderQ");
  return c;
}

void tmpt_UIView::awakeFromNib() {
  jxAppleAUView::awakeFromNib();
  for (int i = 0; i < justPopup->numberOfItems(); ++i) {
    justPopup->itemAtIndex(i)->setTarget(this);
    justPopup->itemAtIndex(i)->setAction(NSSelectorFromString("justMenuChanged:"));
  }
}

void tmpt_UIView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  const auto hook = [&](jxAUParamKnobView& knob, const char* name, SInt32 parameter) {
    knob.setCustomName(name);
    knob.setAUParameter(wrapper->globalParameter(parameter));
  };
  pitch->setAUParameter(wrapper->globalParameter(pitchParameter));
  hook(*smoothness, "smoothness", smoothnessParameter);
  hook(*tightness, "tightness", tightnessParameter);
  hook(*effectBlend, "effect blend", blendParameter);
  renderQ->setProperty(wrapper->globalProperty(kAudioUnitProperty_RenderQuality));
  jxAppleAUView::setAU(std::move(wrapper));
}

void tmpt_UIView::justMenuChanged(NSMenuItem* item) {
  const auto ratio = jxTitleRatio(item->title());
  if (!ratio) return;
  const float logarithm = std::log(ratio->over / ratio->under);
  pitch->auParam()->setFloatValue(centsPerUnitOfLogarithm * logarithm);
}

void tmpt_UIView::drawRect(NSRect dirty) {
  if (auWrapper()) jxAppleAUView::drawRect(dirty);
}
