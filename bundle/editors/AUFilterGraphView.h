#pragma once

#include "jxAUMeasuredResponseView.h"

/// The multi-band filter's response with a handle for each of its five bands: low, three centre bands, high.
class AUFilterGraphView : public jxAUMeasuredResponseView {
 public:
  static constexpr UInt32 parameterCount = 15;

  explicit AUFilterGraphView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  /// For versions of the effect whose centre bands act at half the frequency that their parameters say.
  /// Before setAudioUnit:.
  void activatePatch() { antiBug = 0.5f; }

 protected:
  void calculateHandle(int index) override;
  void setParamsForHandle_freq_gain(int index, float frequency, float gain) override;
  /// `delta` in octaves.
  void changeBandWidthForHandle_delta(int index, float delta) override;

 private:
  float antiBug = 1;  // where a centre band's handle stands, as a factor of its frequency parameter
};
