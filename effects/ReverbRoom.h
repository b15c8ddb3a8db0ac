#pragma once

#include "RoomTuning.h"

/// Numbers that move in straight lines through a chunk.
template <class Value>
struct ChunkRamp {
  Value start{}, step{};

  ChunkRamp() = default;
  ChunkRamp(const Value& from, const Value& to) : start(from), step((to - from) * (1.0f / chunkFrames)) {}
};

/// One room of the reverb: the input, diffused by all-passes, goes round in delay lines that a unitary matrix
/// couples and a one-pole lowpass each damps. (J.-M. Jot and A. Chaigne, Digital delay networks for designing
/// artificial reverberators, 1991.) It decays whatever its tunings are, and glides from one to another.
class ReverbRoom {
 public:
  /// Where a modulation of the lines' lengths stands, as a point of the unit circle.
  struct Phase {
    float sine, cosine;
  };
  /// What holds for a chunk: `next` is faded in from `from` to `to` of 1. Both are `now` without a fade.
  struct ChunkState {
    const RoomTuning& now;
    const RoomTuning& next;
    float from, to;
    Phase phaseFrom, phaseTo;

    bool isFading() const { return from != to; }
    template <class Value>
    ChunkRamp<Value> ramp(const Value& valueNow, const Value& valueNext) const {
      const Value change = valueNext - valueNow;
      return {valueNow + change * from, valueNow + change * to};
    }
  };

  ReverbRoom();
  /// Seconds of the largest size that tunings will have. Takes memory.
  void prepare(double largestSize, double sampleRate, uint32_t inputs);
  void clear();

  void beginChunk(const ChunkState& state);
  /// Adds what the room answers to one or two channels of input.
  void run(const ChunkRun& run, const std::array<Chunk, 2>& inputs, std::array<Chunk, 2>& outputs);

 private:
  /// Where the lines are read: by Lagrange's polynomial through four samples.
  struct Taps {
    std::array<uint32_t, maximumLines> delays{};   // of the first of the four
    std::array<ChunkRamp<LineValues>, 4> weights;  // from it on
  };
  struct Diffuser {
    ReverbLine ring;
    uint32_t now = 1, next = 1;
  };
  using Diffusers = std::array<Diffuser, RoomTuning::diffusers>;

  Taps tapsOf(const RoomTuning& tuning, const LineValues& placesFrom, const LineValues& placesTo) const;
  // A small room is run in parts, since what goes in comes back soon.
  template <class AnyChunk>
  void runPart(const ChunkRun& run, std::array<AnyChunk, 2> inputs, std::array<AnyChunk, 2>& outputs);
  template <class AnyChunk>
  void runPartOf(const ChunkRun& run, uint32_t first, const std::array<Chunk, 2>& inputs,
                 std::array<Chunk, 2>& outputs);
  template <class AnyChunk>
  void diffuse(const ChunkRun& run, Diffusers& diffusers, AnyChunk& chunk) const;
  template <class AnyChunk>
  AnyChunk read(const ChunkRun& run, const AnyChunk& frames, const Taps& taps, uint32_t line) const;
  template <class AnyChunk>
  void gather(uint32_t line, const AnyChunk& fade, AnyChunk chunk, std::array<AnyChunk, 2>& sums) const;
  template <class AnyChunk>
  void damp(const ChunkRun& run, uint32_t group, LineChunks<AnyChunk>& chunks);
  template <class AnyChunk>
  void mix(LineChunks<AnyChunk>& chunks, const AnyChunk& fade) const;

  uint32_t inputs_ = 1;
  std::array<ReverbLine, maximumLines> rings_;
  LineValues sines_, cosines_;  // of the lines' own places in the modulation
  LineValues damped_;           // histories of the damping
  std::array<Diffusers, 2> diffusers_;

  // Of the chunk.
  bool fading_ = false;
  uint32_t longestRun_ = chunkFrames;
  uint32_t linesNow_ = 4, linesNext_ = 4;
  Taps now_, next_;
  ChunkRamp<LineValues> inputRamps_, gains_, poles_;
  ChunkRamp<float> fade_, plain_, diffused_, level_;
};
