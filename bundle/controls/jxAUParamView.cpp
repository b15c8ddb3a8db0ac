#include "jxAUParamView.h"

#include "NSAssertionHandler.h"
#include "jxAUGraphDisplay.h"

const Class& jxAUParamView::isa() const {
  return record();
}

const Class& jxAUParamView::record() {
  static const Class c = Class::of<jxAUParamView>("jxAUParamView", NSImageView::record())
                             .answers<&jxAUParamView::valueChanged>("valueChanged:")
                             .answers<&jxAUParamView::setDelegate>("setDelegate:")
                             .answers<&jxAUParamView::setColor>("setColor:");
  return c;
}

jxAUParamView::jxAUParamView(NSRect frame)
    : NSImageView(frame), customColor(jxAUGraphDisplay::orangeHandle()) {}

void jxAUParamView::setAUParameter(const AudioUnitParameter& parameter) {
  if (mParam)
    NSAssertionHandler::currentHandler().handleFailureInMethod("setAUParameter:", this, "jxAUParamView", 37,
                                                               "Error! Already hooked to an AU Parameter");
  mParam = std::make_shared<jxAUParam>(parameter, this, NSSelectorFromString("valueChanged:"));
}

void jxAUParamView::setCustomScale(double scale) {
  if (mParam) mParam->setCustomScale(scale);
  valueChanged(mParam.get());
}

void jxAUParamView::drawRect(NSRect dirty) {
  if (mParam) NSImageView::drawRect(dirty);
}
