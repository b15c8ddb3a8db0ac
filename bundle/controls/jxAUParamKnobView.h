#pragma once

#include <memory>

#include "jxAUParamView.h"
#include "jxValueKnob.h"

/// Shows a parameter as a value knob that fills the view. Turning and typing write the parameter; changes
/// from anywhere turn the knob. The delegate hears "beginAction:" and "endAction:" with this view.
class jxAUParamKnobView : public jxAUParamView {
 public:
  using jxAUParamView::jxAUParamView;
  const Class& isa() const override;
  static const Class& record();

  /// Shows a logarithmic parameter on a linear knob; before hooking.
  void setForceLinear(bool linear) { forceLinear = linear; }
  void setAUParameter(const AudioUnitParameter& parameter) override;
  void setColor(std::shared_ptr<NSColor> color) override;
  /// The knob's default follows the scale; its limits stay as they were built.
  void setCustomScale(double scale) override;

  void valueChanged(jxAUParam* binding) override;
  void knobChanged(NSControl* sender);
  void beginAction(NSObject* sender);
  void endAction(NSObject* sender);

 private:
  void setupKnob();

  std::shared_ptr<jxValueKnob> knob;
  bool forceLinear = false;
};
