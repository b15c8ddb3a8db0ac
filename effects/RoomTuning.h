#pragma once

#include "UnitaryMix.h"

/// A reverb's room as its parameters describe it.
struct RoomShape {
  double size;        // seconds: the mean length of a line; a fortieth of the decay time
  double range;       // 0 ... 1: how far the lengths are apart
  double density;     // 0 ... 1: how much of the sound is diffused before it enters
  double brightness;  // 0 ... 1: decay time at half the sample rate / decay time at 0 Hz
  double depth;       // 0 ... 1: of the modulation of the lengths
  double level;       // factor
};

/// The numbers with which a ReverbRoom of that shape works at a sample rate.
struct RoomTuning {
  RoomTuning() = default;
  RoomTuning(const RoomShape& shape, uint32_t lines, double sampleRate);

  static constexpr uint32_t diffusers = 4;
  static constexpr float diffusion = 0.6f;  // gain of the diffusers

  /// Lines that take the input upside down, so that the matrix spreads what goes in at once over all.
  static constexpr bool isInverted(uint32_t line) { return (line % 4 == 2) != (line / 4 == 1); }
  /// Frames, from those of the size.
  static constexpr uint32_t longestLine(uint32_t size) { return 2 * size + 8; }
  uint32_t lines = 4;
  /// Frames that can be computed before the first of them comes back, at most a chunk.
  uint32_t longestRun = chunkFrames;
  std::array<uint32_t, maximumLines> lengths{};
  LineValues excursions;  // frames by which the lengths swing
  // A line's damping is y = gain x + pole y. Beyond `lines` these are 0.
  LineValues gains, poles;
  LineValues inputs;                                                 // factors
  std::array<std::array<uint32_t, diffusers>, 2> diffuserLengths{};  // of either channel
  float plain = 1, diffused = 0;                                     // parts of the input
  float level = 1;
};
