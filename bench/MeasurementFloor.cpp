#include "MeasurementFloor.h"

#include <benchmark/benchmark.h>

#include <cmath>

MeasurementFloor::MeasurementFloor(const std::string& code, const MeasurementKind& kind, EffectBench& like)
    : kind_(kind),
      frames_(1u << kind.order),
      effect_(code, {kind.sampleRate, 1, kind.outputs, frames_}),
      samples_(2 * frames_),
      levels_(frames_),
      bins_(frames_ + 1),
      transform_(kiss_fftr_alloc(static_cast<int>(2 * frames_), 0, nullptr, nullptr)) {
  for (const EffectParameter& p : effect_.writableParameters()) effect_.set(p.id, like.value(p.id));
  effect_.reset();
  samples_[0] = 1;
}

MeasurementFloor::~MeasurementFloor() {
  kiss_fftr_free(transform_);
}

void MeasurementFloor::run() {
  const float* const input[] = {samples_.data()};
  effect_.renderBlock(input, frames_);
  if (!kind_.isSpectrum) return;
  kiss_fftr(transform_, samples_.data(), bins_.data());
  for (UInt32 k = 0; k < frames_; ++k) levels_[k] = 20 * std::log10(std::hypot(bins_[k].r, bins_[k].i));
  benchmark::DoNotOptimize(levels_.data());
}
