#pragma once

#include "AUEffectBase.h"
#include "EqualPowerMix.h"
#include "ReverbRoom.h"

/// Two rooms, small and large, behind one pre-delay; the large one waits for the large delay besides. A room
/// of a size dies away by 60 dB in 40 times its size. The render quality chooses its number of lines. A
/// change of anything but the mix and the modulation's rate is a crossfade of 50 milliseconds; another change
/// waits until that is over.
class MatrixReverb : public AUEffectBase {
 public:
  MatrixReverb();

 private:
  static constexpr size_t parameterCount = 14;
  struct Wanted {
    std::array<Float32, parameterCount> values{};
    UInt32 quality = 0;
    bool operator==(const Wanted&) const = default;
  };
  struct Tuning {
    UInt32 smallDelay = 0, largeDelay = 0;  // frames before either room
    RoomTuning small, large;
  };

  void prepare() override;
  void clear() override;
  void process(std::span<float* const> channels, UInt32 frames) override;
  Float64 tailTime() const override;

  Wanted wanted() const;
  Tuning tuningFor(const Wanted& wanted) const;
  void beginChunk();
  bool isFading() const { return fadeLeft_ > 0; }
  void runChunk(const ChunkRun& run, std::span<float* const> channels, UInt32 done);
  Chunk delayed(const ReverbLine& line, const ChunkRun& run, UInt32 Tuning::*delay) const;

  ReverbLine delays_[kAudioMaximumChannels];
  ReverbRoom small_, large_;
  EqualPowerMix mix_;
  UInt32 position_ = 0;  // frames since the reset
  double turn_ = 0;      // of the modulation, 0 ... 1
  double turnOfChunk_ = 0;
  ReverbRoom::Phase phase_{0, 1};

  Wanted wanted_, tunedTo_;
  Tuning now_, next_;
  UInt32 fadeChunks_ = 1;
  UInt32 fadeLeft_ = 0;  // chunks, this one included
  ChunkRamp<float> fade_;
};
