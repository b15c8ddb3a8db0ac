#pragma once

#include <array>

#include "AUEffectBase.h"
#include "Ballistics.h"
#include "Decibels.h"
#include "LinkwitzRiley.h"
#include "PeakDetector.h"

/// Four compressors, each on its own band; what they leave untouched adds up to the input's level at every
/// frequency, though not to its phase. The louder channel of a band decides, and both get the same gain, so
/// that the stereo picture stands still. A crossover below its lower neighbour acts as if it stood there.
/// Attack and release are time constants. Pre-gain comes before everything, a band's equaliser after its
/// compressor. An amount is what a compressor takes away at the end of each block.
class MultibandCompressor : public AUEffectBase {
 public:
  static constexpr size_t bandCount = 4;

  MultibandCompressor();

 private:
  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;
  Float64 tailTime() const override;

  struct Band {
    PeakDetector detector;
    Ballistics compression;
    DecibelFactor gain;
  };
  using Crossovers = std::array<AUSmoothedValue*, bandCount - 1>;
  Crossovers crossovers();
  void tune(const Crossovers& crossovers);

  std::array<Band, bandCount> bands_;
  FourBandSplit splits_[kAudioMaximumChannels];
  FourBandSplit::Tunings tunings_;
  DecibelFactor preGain_;
  DecibelFactor postGain_;
};
