#include "BiquadDesign.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Decibels.h"

namespace {

constexpr double highestFraction = 0.49;  // of the sample rate
constexpr double nearEnough = 1e-3;       // a step after which the next would be its square

double amplitude(double gain) {
  return factorOfDecibels(gain / 2);
}

}  // namespace

BiquadDesign::BiquadDesign(double frequency, double sampleRate)
    : tuning_(std::tan(std::numbers::pi * std::min(frequency / sampleRate, highestFraction))) {}

FilterSection BiquadDesign::lowPass(double quality) const {
  return {.tuning = tuning_, .damping = 1 / quality, .low = 1};
}

FilterSection BiquadDesign::highPass(double quality) const {
  return {.tuning = tuning_, .damping = 1 / quality, .high = 1};
}

FilterSection BiquadDesign::bandPass(Width width) const {
  return {.tuning = tuning_, .damping = width.damping, .band = width.damping, .drive = width.unwarped};
}

FilterSection BiquadDesign::peak(Width width, double gain) const {
  const double a = amplitude(gain);
  return {tuning_, width.damping / a, 1, width.damping * a, 1, width.unwarped / a};
}

// The shelves' poles lie the root of a away from their frequency, and are brought to s^2 + damping s + 1.
FilterSection BiquadDesign::lowShelf(double gain) const {
  const double a = amplitude(gain);
  return {tuning_ / std::sqrt(a), std::numbers::sqrt2, a * a, a * std::numbers::sqrt2, 1};
}

FilterSection BiquadDesign::highShelf(double gain) const {
  const double a = amplitude(gain);
  return {tuning_ * std::sqrt(a), std::numbers::sqrt2, 1, a * std::numbers::sqrt2, a * a};
}

auto BiquadDesign::ofOctaves(double octaves) const -> Width {
  // Both edges are as far from the centre on the warped scale log tan(frequency / 2). There the error is
  // concave and one to two times as steep as the scale, so Newton's steps cannot miss.
  const double ratio = std::exp2(octaves);
  const double unwarped = std::sqrt(ratio);
  double upper = tuning_ * unwarped;  // the tangents of the edges
  for (int i = 0; i < 8; ++i) {
    const double lower = std::tan(std::atan(upper) / ratio);
    const double error = std::log(lower * upper / (tuning_ * tuning_));
    const double step = error / (1 + upper * (1 + lower * lower) / (ratio * lower * (1 + upper * upper)));
    upper *= std::exp(-step);
    if (std::fabs(step) < nearEnough) break;
  }
  const double distance = upper / tuning_;
  return {distance - 1 / distance, unwarped - 1 / unwarped};
}
