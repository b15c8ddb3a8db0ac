#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "AudioUnitProperties.h"

/// One registered effect with everything around it that a test needs to send samples through it.
class EffectBench {
 public:
  struct Setup {
    Float64 sampleRate = 44100;
    UInt32 inputs = 2;
    UInt32 outputs = 2;
    UInt32 maximumFrames = 512;
  };
  using Samples = std::vector<std::vector<float>>;  // a row for each channel

  /// Registers the effects and opens the one with this code, initialised. A bench that could not be made so
  /// has no unit.
  EffectBench(const std::string& code, const Setup& setup);
  explicit EffectBench(const std::string& code) : EffectBench(code, Setup()) {}
  ~EffectBench();
  EffectBench(const EffectBench&) = delete;
  EffectBench& operator=(const EffectBench&) = delete;

  AudioUnit unit() const { return unit_; }
  void set(AudioUnitParameterID id, Float32 value);
  /// All parameters, ascending.
  std::vector<std::pair<AudioUnitParameterID, AudioUnitParameterInfo>> parameters() const;
  void setQuality(UInt32 quality);
  void reset();
  Float64 latency() const { return seconds(kAudioUnitProperty_Latency); }
  Float64 tailTime() const { return seconds(kAudioUnitProperty_TailTime); }

  /// The whole input through the effect, in blocks of these lengths, again and again.
  Samples render(const Samples& input, std::span<const UInt32> blocks);
  Samples render(const Samples& input, UInt32 block) { return render(input, {&block, 1}); }
  /// The same in blocks of 512 with something done before frame `at`.
  Samples renderAround(const Samples& input, size_t at, const std::function<void()>& change);

 private:
  Float64 seconds(AudioUnitPropertyID id) const;
  static OSStatus supply(void* self, UInt32*, const AudioTimeStamp*, UInt32, UInt32, AudioBufferList* data);

  Setup setup_;
  AudioUnit unit_ = nullptr;
  const Samples* input_ = nullptr;
  size_t position_ = 0;
};

/// The codes of all registered effects.
std::vector<std::string> effectCodes();
/// Reproducible noise between -level and level, different for each channel.
EffectBench::Samples noise(UInt32 channels, size_t frames, float level);
/// The same sine on both of two channels, from phase 0; `level` in dBFS.
EffectBench::Samples sine(double frequency, double level, size_t frames, double rate = 44100);
/// Writes several parameters.
void setAll(EffectBench& bench, std::initializer_list<std::pair<AudioUnitParameterID, double>> values);
/// By how much the slope changes at most from one sample to the next, from a frame on. A step of the level
/// bends by its height.
double largestBend(const std::vector<float>& samples, size_t from);
