#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"

class SignalSource;

struct RenderFormat {
  Float64 sampleRate = 44100;
  UInt32 inputs = 2, outputs = 2;  // channels
  UInt32 maximumFrames = 512;      // of a block
};

/// Runs an effect in blocks: gives it its input and takes its output. The effect is borrowed: it must stay
/// open as long as the runner lives, is initialised by it and left uninitialised.
class EffectRunner {
 public:
  /// Null with a message when the effect does not work with that format.
  static std::unique_ptr<EffectRunner> make(AudioUnit unit, const RenderFormat& format, std::string& error);
  /// For make alone.
  struct Passkey {
   private:
    friend EffectRunner;
    explicit Passkey() = default;
  };
  EffectRunner(Passkey, AudioUnit unit, const RenderFormat& format) : unit_(unit), format_(format) {}
  ~EffectRunner();
  EffectRunner(const EffectRunner&) = delete;
  EffectRunner& operator=(const EffectRunner&) = delete;

  const RenderFormat& format() const { return format_; }
  /// Frames by which the effect's output lags behind its input.
  UInt32 latencyFrames() const;

  /// One block, at most the maximum; input and output may be the same memory. No lock, allocation or
  /// system call.
  OSStatus render(const float* const* input, float* const* output, UInt32 frames);
  /// Any number of frames of the source through an effect with as many channels in as out. No lock,
  /// allocation or system call.
  OSStatus pull(SignalSource& source, float* const* output, UInt32 frames);

 private:
  bool prepare();
  static OSStatus supplyInput(void* self, UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 bus,
                              UInt32 frames, AudioBufferList* data);

  const AudioUnit unit_;
  const RenderFormat format_;
  Float64 sampleTime_ = 0;
  const float* const* input_ = nullptr;  // of the render that runs
};
