#pragma once

#include <cstdlib>
#include <map>
#include <memory>

#include "AudioUnit.h"
#include "NSObject.h"
#include "VdspFFT.h"

/// Measures what an effect does to a signal without touching the effect that the host runs: opens a private
/// second instance of it, gives it the effect's parameters and render quality of the moment, and renders a
/// unit impulse through it from reset. Nothing is allocated after construction. Main thread.
///
/// Whatever fails, in construction or in a measurement, is an assertion failure that names the step.
class ImpulseAUwrapper : public NSObject {
 public:
  /// Values for parameters of the private instance that replace the effect's own.
  using Overrides = std::map<AudioUnitParameterID, Float32>;

  /// The effect is not owned. Sample rate in Hz, 0 for 44100; blocks are 2^fftOrder frames long. The private
  /// instance has one input channel and one output channel, or two.
  ImpulseAUwrapper(AudioUnit parent, double sampleRate, unsigned long fftOrder, bool renderToStereo);
  const Class& isa() const override;
  static const Class& record();

  static AudioStreamBasicDescription nativeMonoPcmABDWithSampleRate(double sampleRate);
  static AudioStreamBasicDescription nativeStereoPcmABDWithSampleRate(double sampleRate);

  unsigned long bufferSize() const { return _bufferSize; }
  float* impulseBuffer() const { return _impulseBuffer.get(); }

  /// Gives the private instance the effect's render quality, if it has one, and its parameters, which are
  /// taken to be numbered without gaps from 0; then the overrides among them.
  void synchronizeParameters();
  /// The effect's answer to an impulse of 1 at frame 0: bufferSize() samples of the last channel, good until
  /// the next measurement.
  const float* renderImpulse();
  /// The same as a spectrum, after a half Blackman window has faded the answer out: bufferSize() levels in
  /// dB, of which number k stands for the frequency k × sample rate / (2 × bufferSize()). Silence is
  /// −infinity; bin 0 combines 0 Hz and half the sample rate.
  const float* freqResponse();

  /// Keeps the values, which may be null, in place of earlier ones.
  void setParameterOverrides(std::shared_ptr<const Overrides> overrides) { paramOverrides = overrides; }

 private:
  struct Free {
    void operator()(float* memory) const { std::free(memory); }
  };
  struct CloseUnit {
    void operator()(AudioUnit unit) const { CloseComponent(unit); }
  };
  using Floats = std::unique_ptr<float[], Free>;

  static Floats pageAligned(size_t count);
  void expect(OSStatus status, const char* method, int line, const char* failure) const;

  AudioUnit _parentAU;
  std::unique_ptr<AUEffectBase, CloseUnit> impulseAU;
  Floats _impulseBuffer;  // impulse, then response, then spectrum; its second half pads the transform
  uint32_t _bufferSize;
  std::unique_ptr<VdspFFT> _mFFT;
  Floats realp_, imagp_;
  DSPSplitComplex A_;
  Floats _window;
  bool toStereo;
  std::shared_ptr<const Overrides> paramOverrides;
  bool toldOfNotFinite_ = false;
};

/// Hands the impulse of the renderer `wrapper` to its private instance.
OSStatus auRenderCallback(void* wrapper, UInt32* actionFlags, const AudioTimeStamp* timeStamp, UInt32 bus,
                          UInt32 frames, AudioBufferList* data);
