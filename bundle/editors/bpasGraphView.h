#pragma once

#include "jxAUMeasuredResponseView.h"

/// Response of the bandpass filter: the handle stands on the 0 dB line, as wide as the pass band.
class bpasGraphView : public jxAUMeasuredResponseView {
 public:
  explicit bpasGraphView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

 protected:
  Axes axes() const override;
  void calculateHandle(int index) override;
  void setParamsForHandle_freq_gain(int index, float frequency, float gain) override;
  /// An octave for a delta of 1.
  void changeBandWidthForHandle_delta(int index, float delta) override;
};
