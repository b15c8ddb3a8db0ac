#pragma once

#include <kiss_fftr.h>

#include <memory>
#include <vector>

#include "EffectBench.h"

/// How an editor measures its effect.
struct MeasurementKind {
  double sampleRate;
  unsigned order;  // 2 to that power are the samples of an answer
  UInt32 outputs;
  bool isSpectrum;  // of the answer; else the answer itself
};

/// What of a measurement cannot be saved: the effect's own render of an impulse, and for a spectrum the
/// transform and the logarithms.
class MeasurementFloor {
 public:
  /// Of an effect that is set like that one.
  MeasurementFloor(const std::string& code, const MeasurementKind& kind, EffectBench& like);
  ~MeasurementFloor();
  MeasurementFloor(const MeasurementFloor&) = delete;
  MeasurementFloor& operator=(const MeasurementFloor&) = delete;

  void run();

 private:
  const MeasurementKind kind_;
  const UInt32 frames_;
  EffectBench effect_;
  std::vector<float> samples_, levels_;
  std::vector<kiss_fft_cpx> bins_;
  kiss_fftr_cfg transform_;
};
