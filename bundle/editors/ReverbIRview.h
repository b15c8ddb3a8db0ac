#pragma once

#include <array>
#include <memory>
#include <vector>

#include "ImpulseAUwrapper.h"
#include "jxAUGraphDisplay.h"
#include "jxAUParam.h"
#include "jxAUProperty.h"

/// The reverb's decay: its answer to an impulse over the first two seconds, as level over time, measured at
/// 500 Hz on a private instance whose dry/wet mix stays at 1. Measures after a change of a parameter that
/// shapes the decay or of the render quality, once before the next drawing. Main thread.
class ReverbIRview : public jxAUGraphDisplay {
 public:
  using jxAUGraphDisplay::jxAUGraphDisplay;
  const Class& isa() const override;
  static const Class& record();

  /// The effect is the host's and must outlive the view. Once.
  void setAudioUnit(AudioUnit unit);
  /// Makes room for 2^order samples.
  void setOrder(unsigned order);
  /// Copies as many samples; nothing before there is room.
  void setValues(const float* samples);
  void valueChanged(NSObject* binding);
  float yForDB(float level) const;
  void drawRect(NSRect dirty) override;

 private:
  void addReferenceLines();
  void addTimeLines(float first, int count);
  void storeValues(const float* samples);

  std::vector<float> values;
  std::array<std::shared_ptr<jxAUParam>, 11> param;  // parameters 1 to 11
  std::shared_ptr<jxAUProperty> renderQ;
  AudioUnit mAU = nullptr;  // set last, by setAudioUnit:
  std::unique_ptr<ImpulseAUwrapper> impAUwrap;
  bool changed_ = false;  // since the last measurement
};
