#include "RoomTuning.h"

#include <cmath>

namespace {

constexpr double decaySizes = 40;      // the decay time in sizes
constexpr double longestSwing = 1e-3;  // seconds
constexpr double largestSwing = 0.1;   // of a line's length
constexpr uint32_t shortestSwinging = 20;
// Where the lengths lie between the shortest and the longest: evenly however many lines there are, but not
// regularly, or different ways through the lines would take the same time.
constexpr double places[maximumLines] = {0.062, 0.561, 0.309, 0.818, 0.176, 0.683, 0.437, 0.941,
                                         0.118, 0.622, 0.243, 0.748, 0.372, 0.879, 0.498, 0.993};
constexpr double diffuserSizes[2][RoomTuning::diffusers] = {{0.107, 0.171, 0.279, 0.433},
                                                            {0.113, 0.181, 0.263, 0.419}};

uint32_t framesOf(double frames) {
  return static_cast<uint32_t>(std::max(1l, std::lround(frames)));
}

}  // namespace

RoomTuning::RoomTuning(const RoomShape& shape, uint32_t lineCount, double sampleRate) : lines(lineCount) {
  const double frames = shape.size * sampleRate;
  const double decay = std::pow(10, -3 / (decaySizes * frames));  // of a frame at 0 Hz
  const double decayAbove = std::pow(decay, 1 / shape.brightness);
  const double spread = 0.2 + 0.55 * shape.range;
  for (uint32_t i = 0; i < maximumLines; ++i) {
    lengths[i] = framesOf(frames * (1 + spread * (2 * places[i] - 1)));
    if (i >= lines) continue;
    // With these a line on its own, damping and all, falls by `decay` a frame at 0 Hz and by `decayAbove` at
    // half the sample rate: z^length = gain / (1 - pole / z) at z = decay and z = -decayAbove.
    const double at0 = std::pow(decay, lengths[i]);
    const double atHalf = std::pow(decayAbove, lengths[i]);
    const double pole = (at0 - atHalf) / (at0 / decay + atHalf / decayAbove);
    poles[i] = static_cast<float>(pole);
    gains[i] = static_cast<float>(at0 * (1 - pole / decay));
    inputs[i] = (isInverted(i) ? -1 : 1) / std::sqrt(static_cast<float>(lines));
    if (lengths[i] >= shortestSwinging)
      excursions[i] =
          static_cast<float>(shape.depth * std::min(longestSwing * sampleRate, largestSwing * lengths[i]));
  }
  for (size_t c = 0; c < 2; ++c)
    for (size_t d = 0; d < diffusers; ++d) diffuserLengths[c][d] = framesOf(frames * diffuserSizes[c][d]);
  plain = static_cast<float>(std::sqrt(1 - shape.density));
  diffused = static_cast<float>(std::sqrt(shape.density));
  level = static_cast<float>(shape.level);
  for (const uint32_t length : lengths) longestRun = std::min(longestRun, length);
  for (const auto& channel : diffuserLengths)
    for (const uint32_t length : channel) longestRun = std::min(longestRun, length);
}
