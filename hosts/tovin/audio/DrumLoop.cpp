#include "DrumLoop.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <random>
#include <string_view>
#include <utility>

namespace {

constexpr double secondsPerStep = 0.125;  // a sixteenth at 120 beats per minute
constexpr double peak = 0.70794578;       // -3 dBFS

// A step each: '.' rests, digits are loudness.
constexpr std::string_view kickPattern = "9.....7.9.4.....9..6..7.9.....5.";
constexpr std::string_view snarePattern = "....9..2....9......2.9...2..9.46";
constexpr std::string_view hatPattern = "6.4.7.4.6.4.7.465.4.7.4.6.4.7.4.";
constexpr std::string_view openHatPattern = "..............6...............5.";

struct Voice {
  std::string_view pattern;
  double seconds;  // after which nothing is left
  double pan;      // 0 left to 1 right
  double gain;
  std::function<double(double time)> sample;
};

void add(const Voice& voice, double sampleRate, StereoSamples& loop) {
  const auto length = static_cast<size_t>(voice.seconds * sampleRate);
  const double left = voice.gain * std::sqrt(1 - voice.pan);
  const double right = voice.gain * std::sqrt(voice.pan);
  for (size_t step = 0; step < voice.pattern.size(); ++step) {
    if (voice.pattern[step] == '.') continue;
    const double loudness = (voice.pattern[step] - '0') / 9.0;
    const auto start =
        static_cast<size_t>(std::lround(static_cast<double>(step) * secondsPerStep * sampleRate));
    for (size_t i = 0; i < length; ++i) {
      const double value = loudness * loudness * voice.sample(static_cast<double>(i) / sampleRate);
      const size_t at = (start + i) % loop.left.size();
      loop.left[at] += static_cast<float>(left * value);
      loop.right[at] += static_cast<float>(right * value);
    }
  }
}

}  // namespace

StereoSamples drumLoop(double sampleRate) {
  std::mt19937 random(120);
  double lastNoise = 0;
  const auto noise = [&] { return static_cast<double>(random()) / 2147483648.0 - 1.0; };
  const auto brightNoise = [&] {
    const double now = noise();
    return (now - std::exchange(lastNoise, now)) / 2;
  };
  const auto sine = [](double turns) { return std::sin(2 * std::numbers::pi * turns); };

  // The kick's pitch falls from 160 to 50 Hz: its phase is the integral of 50 + 110 exp(-30 t).
  const auto kick = [&](double t) {
    return sine(50 * t + 110.0 / 30 * (1 - std::exp(-30 * t))) * std::exp(-9 * t) +
           0.3 * noise() * std::exp(-400 * t);
  };
  const auto snare = [&](double t) {
    return 0.5 * sine(185 * t) * std::exp(-22 * t) + 0.7 * noise() * std::exp(-16 * t);
  };
  const auto hat = [&](double t) { return brightNoise() * std::exp(-55 * t); };
  const auto openHat = [&](double t) { return brightNoise() * std::exp(-10 * t); };

  const auto frames =
      static_cast<size_t>(std::lround(static_cast<double>(kickPattern.size()) * secondsPerStep * sampleRate));
  StereoSamples loop{std::vector<float>(frames), std::vector<float>(frames)};
  for (const Voice& voice :
       {Voice{kickPattern, 0.7, 0.5, 1.0, kick}, Voice{snarePattern, 0.5, 0.45, 0.7, snare},
        Voice{hatPattern, 0.2, 0.65, 0.4, hat}, Voice{openHatPattern, 0.6, 0.65, 0.4, openHat}})
    add(voice, sampleRate, loop);

  float loudest = 0;
  for (const auto* channel : {&loop.left, &loop.right})
    for (const float sample : *channel) loudest = std::max(loudest, std::fabs(sample));
  for (auto* channel : {&loop.left, &loop.right})
    for (float& sample : *channel) sample *= static_cast<float>(peak) / loudest;
  return loop;
}
