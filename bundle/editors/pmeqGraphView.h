#pragma once

#include "jxAUMeasuredResponseView.h"

/// Response of the parametric equaliser: the handle stands at its peak, as wide as its band.
class pmeqGraphView : public jxAUMeasuredResponseView {
 public:
  explicit pmeqGraphView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

 protected:
  Axes axes() const override;
  void calculateHandle(int index) override;
  void setParamsForHandle_freq_gain(int index, float frequency, float gain) override;
  /// A quarter of an octave for a delta of 1.
  void changeBandWidthForHandle_delta(int index, float delta) override;

 private:
  /// Octaves.
  float bandwidth() const;
};
