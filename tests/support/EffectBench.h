#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "AudioUnitProperties.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "EffectRunner.h"

/// An effect that samples can be sent through. What it refuses throws std::runtime_error.
class EffectBench {
 public:
  using Samples = std::vector<std::vector<float>>;  // a row for each channel

  /// A registered effect, by its four-letter code, initialised.
  explicit EffectBench(const std::string& code, const RenderFormat& format = {});
  explicit EffectBench(std::shared_ptr<AUEffectBase> effect, const RenderFormat& format = {});

  AudioUnit unit() const { return effect_.get(); }
  /// With the values that they had at first.
  const std::vector<EffectParameter>& parameters() const { return parameters_; }
  std::vector<EffectParameter> writableParameters() const;
  Float32 value(AudioUnitParameterID id) const;
  /// Tells nobody.
  void set(AudioUnitParameterID id, double value);
  void set(std::initializer_list<std::pair<AudioUnitParameterID, double>> values);
  void setQuality(UInt32 quality);
  void reset();
  Float64 latency() const { return seconds(kAudioUnitProperty_Latency); }
  Float64 tailTime() const { return seconds(kAudioUnitProperty_TailTime); }

  /// In blocks as long as the format allows, with something done before frame `at`.
  Samples render(
      const Samples& input, UInt32 at = 0, const std::function<void()>& change = [] {});
  /// One block of at most the format's frames, without any allocation; what comes out stays inside.
  void renderBlock(const float* const* input, UInt32 frames);

 private:
  Float64 seconds(AudioUnitPropertyID id) const;

  const std::shared_ptr<AUEffectBase> effect_;
  const std::vector<EffectParameter> parameters_;
  std::unique_ptr<EffectRunner> runner_;
  Samples block_;
};

/// That part of a parameter's range, from 0 to 1; a whole number where values have names.
Float32 partOf(const EffectParameter& parameter, float part);

/// Of all effects of ours, which this registers.
std::vector<std::string> effectCodes();

/// Between -level and level, always the same, and different for each channel.
EffectBench::Samples noise(UInt32 channels, size_t frames, float level);
/// The same sine on both of two channels, from phase 0; `level` in dBFS.
EffectBench::Samples sine(double frequency, double level, size_t frames, double rate = 44100);
EffectBench::Samples impulse(UInt32 channels, size_t frames);
/// Of a response to an impulse, at a frequency in Hz, as a factor.
double magnitude(std::span<const float> response, double frequency, double rate = 44100);
/// By how much the slope changes at most from one sample to the next; at a step of the level by its height.
double largestBend(std::span<const float> samples, size_t from = 0);
