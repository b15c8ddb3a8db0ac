#pragma once

#include "AUEffectBase.h"
#include "EqualPowerMix.h"
#include "StretcherWorkshop.h"

/// Transposes without changing the speed, by Rubber Band. Smoothness chooses a window out of three, render
/// quality an engine; either change is prepared on another thread and faded in when it is ready, while what
/// sounds goes on. Tightness is how transients are kept; the engine of the two best qualities does without
/// being told. All is heard as late as the largest window demands, the blend's dry part too.
class TimePitch : public AUEffectBase {
 public:
  TimePitch();
  ~TimePitch() override;

 private:
  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;
  Float64 tailTime() const override;

  PitchStretcher::Kind wantedKind() const;
  PitchStretcher::Transients wantedTransients() const;
  void processChunk();
  void prepareNext();

  static constexpr UInt32 chunkFrames = PitchStretcher::chunkFrames;
  using Chunks = PitchStretcher::Chunk[kAudioMaximumChannels];

  InputHistory history_;
  UInt32 delay_ = 0;  // frames
  Chunks input_ = {}, output_ = {};
  UInt32 filled_ = 0;  // of both
  EqualPowerMix mix_;
  float cents_ = 0;
  double pitch_ = 1;  // factor

  std::unique_ptr<PitchStretcher> present_;
  StretcherWorkshop::Delivery next_;  // is catching up or faded in
  std::unique_ptr<PitchStretcher> former_;
  UInt32 fadeChunks_ = 1;
  UInt32 fadeLeft_ = 0;
  UInt32 era_ = 0;
  StretcherWorkshop workshop_{history_};
};
