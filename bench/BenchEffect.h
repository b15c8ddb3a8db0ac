#pragma once

#include <string>
#include <vector>

#include "EffectInstance.h"
#include "EffectParameters.h"

/// An opened effect with everything that rendering it in blocks takes.
class BenchEffect {
 public:
  /// By its four-letter code; throws std::runtime_error when there is none.
  explicit BenchEffect(const std::string& code);
  BenchEffect(const BenchEffect&) = delete;
  BenchEffect& operator=(const BenchEffect&) = delete;

  AudioUnit unit() const { return unit_.get(); }
  /// Those that can be set.
  const std::vector<EffectParameter>& parameters() const { return parameters_; }
  const EffectParameter& parameter(AudioUnitParameterID id) const;
  Float32 value(AudioUnitParameterID id) const;
  /// Sets it without telling anybody.
  void set(AudioUnitParameterID id, Float32 value);
  /// Sets every parameter to that part of its range.
  void setAll(float part);

  void initialize(Float64 sampleRate, UInt32 inputs, UInt32 outputs, UInt32 maximumFrames);
  /// One block of input; what comes out is thrown away.
  void render(const float* const* input, UInt32 frames);

 private:
  static OSStatus supply(void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32, AudioBufferList* data);

  EffectInstance unit_;
  std::vector<EffectParameter> parameters_;
  std::vector<std::vector<float>> output_;
  const float* const* input_ = nullptr;
  double time_ = 0;
};

/// That part of a parameter's range, from 0 to 1; a whole number where values have names.
Float32 partOf(const EffectParameter& parameter, float part);
/// Where automation is at a step: parameter number `index` goes up and down through its whole range, each in
/// a period of its own.
Float32 automated(const EffectParameter& parameter, size_t index, int step);
