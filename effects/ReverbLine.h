#pragma once

#include <algorithm>
#include <bit>
#include <vector>

#include "Sixteen.h"

/// The reverb works on sixteen frames at a time, counted from its reset. A run is a part of such a chunk: all
/// of it, or as much as a render or the shortest delay allows. What a chunk holds beyond its run means
/// nothing.
using Chunk = Sixteen;
inline constexpr uint32_t chunkFrames = Chunk::size;
/// For a run of four frames or less.
using ShortChunk = Numbers<4>;

struct ChunkRun {
  uint32_t position;  // of its first frame since the reset
  uint32_t frames;
  uint32_t offset() const { return position % chunkFrames; }
};

/// A ring of samples that gives a whole chunk, and the three samples after it, as one piece of memory.
class ReverbLine {
 public:
  /// Frames; takes memory.
  void setLongest(uint32_t delay) {
    const uint32_t length = std::bit_ceil(delay + guard);
    mask_ = length - 1;
    memory_.assign(length + guard, 0);
  }
  void clear() { std::fill(memory_.begin(), memory_.end(), 0.0f); }

  /// What was written `delay` frames before the position, and on from there.
  const float* read(uint32_t position, uint32_t delay) const { return &memory_[(position - delay) & mask_]; }
  void write(const ChunkRun& run, const float* samples) {
    std::memcpy(&memory_[run.position & mask_], samples, run.frames * sizeof(float));
    repeatStart(run, samples);
  }
  template <uint32_t size>
  void write(const ChunkRun& run, const Numbers<size>& chunk) {
    if (run.frames != size) return write(run, chunk.data());
    std::memcpy(&memory_[run.position & mask_], chunk.data(), sizeof chunk);  // in line
    repeatStart(run, chunk.data());
  }

 private:
  static constexpr uint32_t guard = chunkFrames + 4;

  /// Behind the ring's end, so that what is read is one piece.
  void repeatStart(const ChunkRun& run, const float* samples) {
    const uint32_t start = run.position & mask_;
    if (start < guard) std::copy_n(samples, std::min(run.frames, guard - start), &memory_[mask_ + 1 + start]);
  }

  std::vector<float> memory_;
  uint32_t mask_ = 0;
};
