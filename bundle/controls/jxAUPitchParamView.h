#pragma once

#include <memory>

#include "NSView.h"
#include "jxAUParam.h"
#include "jxValueKnob.h"

/// A pitch parameter, in cents, as two value knobs side by side: whole semitones and the cents that remain,
/// at most half a semitone either way. 184 × 76 points. Turning either sets the parameter; a change of the
/// parameter turns both. Main thread.
class jxAUPitchParamView : public NSView {
 public:
  explicit jxAUPitchParamView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  /// Makes the binding and shows the parameter's value; before, turning the knobs sets nothing. Hooking a
  /// second time is an assertion failure.
  void setAUParameter(const AudioUnitParameter& parameter);
  /// Null before hooking.
  jxAUParam* auParam() const { return mParam.get(); }

  /// A knob was turned.
  void knobsChanged(NSObject* sender);
  /// The parameter changed.
  void valueChanged(NSObject* sender);

 private:
  std::shared_ptr<jxValueKnob> halfsteps;
  std::shared_ptr<jxValueKnob> cents;
  std::shared_ptr<jxAUParam> mParam;
};
