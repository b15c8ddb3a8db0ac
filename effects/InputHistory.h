#pragma once

#include <algorithm>
#include <atomic>
#include <bit>
#include <cstdint>
#include <vector>

/// The last seconds of what an effect was given, in chunks, written by its audio thread and read by another
/// one as well, without lock. A reader must find out itself whether what it read had been overwritten
/// meanwhile, by oldest().
class InputHistory {
 public:
  static constexpr uint32_t chunkFrames = 64;
  using Chunk = float[chunkFrames];

  /// Takes memory for that many frames at least. Nobody may read.
  void prepare(uint32_t channels, uint32_t frames) {
    const size_t length = std::bit_ceil(frames + 2 * chunkFrames);
    for (uint32_t c = 0; c < 2; ++c) rings_[c].resize(c < channels ? length : 0);
    mask_ = length - 1;
    channels_ = channels;
  }
  void clear() {
    for (auto& ring : rings_)
      for (float& sample : ring) store(sample, 0);
    written_.store(0, std::memory_order_release);
  }

  void write(const Chunk* channels) {
    const uint64_t start = written_.load(std::memory_order_relaxed);
    for (uint32_t c = 0; c < channels_; ++c)
      for (uint32_t i = 0; i < chunkFrames; ++i) store(rings_[c][(start + i) & mask_], channels[c][i]);
    written_.store(start + chunkFrames, std::memory_order_release);
  }

  /// Frames since clear(), and the first of them that is still here.
  uint64_t written() const { return written_.load(std::memory_order_acquire); }
  uint64_t oldest() const {
    const uint64_t end = written() + chunkFrames;  // one chunk may be on its way
    return end > mask_ ? end - mask_ : 0;
  }
  float sample(uint32_t channel, uint64_t frame) const {
    const float& place = rings_[channel][frame & mask_];
    return std::atomic_ref<float>(const_cast<float&>(place)).load(std::memory_order_relaxed);
  }
  void read(uint64_t frame, Chunk* channels) const {
    for (uint32_t c = 0; c < channels_; ++c)
      for (uint32_t i = 0; i < chunkFrames; ++i) channels[c][i] = sample(c, frame + i);
  }
  uint32_t channels() const { return channels_; }

 private:
  static void store(float& place, float value) {
    std::atomic_ref<float>(place).store(value, std::memory_order_relaxed);
  }

  std::vector<float> rings_[2];
  uint64_t mask_ = 0;
  uint32_t channels_ = 0;
  std::atomic<uint64_t> written_ = 0;
};
