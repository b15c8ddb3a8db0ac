#pragma once

#include "jxAUMeasuredResponseView.h"

/// Response of a filter with a frequency and a level in dB, at which the handle stands.
class lpasGraphView : public jxAUMeasuredResponseView {
 public:
  explicit lpasGraphView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

 protected:
  Axes axes() const override;
  void calculateHandle(int index) override;
  void setParamsForHandle_freq_gain(int index, float frequency, float gain) override;
};
