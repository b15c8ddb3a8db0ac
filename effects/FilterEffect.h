#pragma once

#include <array>

#include "AUEffectBase.h"
#include "FilterSection.h"

/// Base of the filters: sections in series, which follow from the parameters. What derives from it adds the
/// tables and the design. Where nothing moves the sections are plain biquads. While a parameter moves, one
/// with a logarithmic display on that scale, they are designed anew every few frames and glide in between.
///
/// Parameters are numbered from 0. Sections: 1 or 5.
template <size_t sectionCount>
class FilterEffect : public AUEffectBase {
 public:
  static constexpr size_t maximumParameters = 15;
  using Values = std::array<double, maximumParameters>;  // index: identifier
  using Sections = std::array<FilterSection, sectionCount>;

  FilterEffect(std::span<const AUParameterRow> parameters, std::span<const AUPresetRow> presets);

 private:
  /// The sections for these parameters, which may be anywhere between two settings. Any thread.
  virtual Sections design(const Values& values, double sampleRate) const = 0;

  void prepare() final {}
  void clear() final;
  void process(std::span<float* const> channels, UInt32 frames) final;
  Float64 tailTime() const final;

  Float32 target(const AUParameterRow& row) const;
  Values targets() const;
  void followParameters();
  void settle();
  void glideOn();
  void runSettled(float* left, float* right, UInt32 frames);
  void runGliding(float* left, float* right, UInt32 frames);

  static constexpr UInt32 glideFrames = 64;

  const std::span<const AUParameterRow> rows_;
  std::array<AUSmoothedValue, maximumParameters> ramps_;  // of the logarithm, for logarithmic parameters
  std::array<Float32, maximumParameters> followed_ = {};
  bool moving_ = false;   // a ramp is under way
  bool gliding_ = false;  // the gliding filters run, not the biquads

  Sections sections_;
  std::array<BiquadCoefficients, sectionCount> coefficients_;
  std::array<Biquad, sectionCount> biquads_;

  std::array<GlidingFilter, sectionCount> gliders_;
  Sections next_;                                            // where the glide leads
  std::array<GlidingSection, sectionCount> glides_, steps_;  // where it is, and a frame's part of the way
  UInt32 glideLeft_ = 0;
};
