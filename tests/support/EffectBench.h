#pragma once

#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "AudioUnitProperties.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "EffectRunner.h"

/// An effect with everything that sending samples through it takes, as `tovin` does it. What the effect
/// refuses throws std::runtime_error.
class EffectBench {
 public:
  using Samples = std::vector<std::vector<float>>;  // a row for each channel

  /// A registered effect, by its four-letter code, initialised.
  explicit EffectBench(const std::string& code, const RenderFormat& format = {});
  EffectBench(const EffectBench&) = delete;
  EffectBench& operator=(const EffectBench&) = delete;

  AudioUnit unit() const { return effect_.get(); }
  /// Ascending, with the values that they had at first.
  const std::vector<EffectParameter>& parameters() const { return parameters_; }
  std::vector<EffectParameter> writableParameters() const;
  const EffectParameter& parameter(AudioUnitParameterID id) const;

  Float32 value(AudioUnitParameterID id) const;
  /// Tells nobody.
  void set(AudioUnitParameterID id, double value);
  void set(std::initializer_list<std::pair<AudioUnitParameterID, double>> values);
  /// Every parameter that can be written to that part of its range.
  void setAll(float part);
  void setQuality(UInt32 quality);
  void reset();
  Float64 latency() const { return seconds(kAudioUnitProperty_Latency); }
  Float64 tailTime() const { return seconds(kAudioUnitProperty_TailTime); }

  /// The whole input through the effect.
  Samples render(const Samples& input, UInt32 block = 512);
  /// The same with something done before frame `at`.
  Samples renderAround(const Samples& input, size_t at, const std::function<void()>& change);
  /// One block of at most the format's frames, without any allocation; what comes out stays inside.
  void renderBlock(const float* const* input, UInt32 frames);

 private:
  Float64 seconds(AudioUnitPropertyID id) const;

  const EffectInstance effect_;
  const std::vector<EffectParameter> parameters_;
  const std::unique_ptr<EffectRunner> runner_;
  Samples block_;
};

/// That part of a parameter's range, from 0 to 1; a whole number where values have names.
Float32 partOf(const EffectParameter& parameter, float part);

/// The codes of all effects of ours, which this registers.
std::vector<std::string> effectCodes();

/// Reproducible noise between -level and level, different for each channel.
EffectBench::Samples noise(UInt32 channels, size_t frames, float level);
/// The same sine on both of two channels, from phase 0; `level` in dBFS.
EffectBench::Samples sine(double frequency, double level, size_t frames, double rate = 44100);
/// One frame of full scale, then silence.
EffectBench::Samples impulse(UInt32 channels, size_t frames);
/// How strongly a response to an impulse answers a frequency in Hz, as a factor.
double magnitude(std::span<const float> response, double frequency, double rate = 44100);
/// By how much the slope changes at most from one sample to the next, from a frame on. A step of the level
/// bends by its height.
double largestBend(std::span<const float> samples, size_t from = 0);
