#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"

class SignalSource;

/// Runs an effect in blocks: gives it its input and takes its output. The effect is borrowed: it must stay
/// open as long as the runner lives, is initialised by it and left uninitialised.
class EffectRunner {
 public:
  /// The same number of channels (1 or 2) in and out. Null with a message when the effect does not work so.
  static std::unique_ptr<EffectRunner> make(AudioUnit unit, Float64 sampleRate, UInt32 channels,
                                            UInt32 maximumFrames, std::string& error);
  /// For make alone.
  struct Passkey {
   private:
    friend EffectRunner;
    explicit Passkey() = default;
  };
  EffectRunner(Passkey, AudioUnit unit, Float64 sampleRate, UInt32 channels, UInt32 maximumFrames);
  ~EffectRunner();
  EffectRunner(const EffectRunner&) = delete;
  EffectRunner& operator=(const EffectRunner&) = delete;

  Float64 sampleRate() const { return sampleRate_; }
  UInt32 channels() const { return channels_; }
  /// Frames by which the effect's output lags behind its input.
  UInt32 latencyFrames() const;

  /// One block, at most the maximum; input and output may be the same memory. No lock, allocation or
  /// system call.
  OSStatus render(const float* const* input, float* const* output, UInt32 frames);
  /// Any number of frames of the source through the effect. No lock, allocation or system call.
  OSStatus pull(SignalSource& source, float* const* output, UInt32 frames);

 private:
  bool prepare();
  static OSStatus supplyInput(void* self, UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 bus,
                              UInt32 frames, AudioBufferList* data);

  const AudioUnit unit_;
  const Float64 sampleRate_;
  const UInt32 channels_;
  const UInt32 maximumFrames_;
  Float64 sampleTime_ = 0;
  const float* const* input_ = nullptr;  // of the render that runs
};
