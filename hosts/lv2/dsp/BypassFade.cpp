#include "BypassFade.h"

#include <algorithm>
#include <bit>
#include <cmath>

void BypassFade::prepare(double sampleRate, uint32_t latency, uint32_t longestBlock) {
  const uint32_t length = std::bit_ceil(latency + longestBlock);
  for (auto& line : lines_) line.assign(length, 0.0f);
  mask_ = length - 1;
  latency_ = latency;
  effect_.setSampleRate(sampleRate);
}

void BypassFade::clear(bool enabled) {
  for (auto& line : lines_) std::fill(line.begin(), line.end(), 0.0f);
  position_ = 0;
  effect_.snap(enabled ? 1 : 0);
}

void BypassFade::takeInput(const float* const* input, uint32_t frames, bool enabled) {
  effect_.follow(enabled ? 1 : 0);
  if (isIdle() && latency_ == 0) return;
  for (size_t c = 0; c < 2; ++c)
    for (uint32_t i = 0; i < frames; ++i)
      lines_[c][(position_ + i) & mask_] = std::isfinite(input[c][i]) ? input[c][i] : 0;
}

void BypassFade::finish(float* const* output, uint32_t frames) {
  if (!isIdle()) {
    for (uint32_t i = 0; i < frames; ++i) {
      const float part = effect_.next();
      for (size_t c = 0; c < 2; ++c) {
        const float dry = lines_[c][(position_ + i - latency_) & mask_];
        output[c][i] = part == 1 ? output[c][i] : dry + part * (output[c][i] - dry);
      }
    }
  }
  position_ += frames;
}
