#include "SignalSource.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <sndfile.hh>

#include "DrumLoop.h"
#include "NumberText.h"

namespace {

constexpr double level = 0.251188643150958;  // -12 dBFS
constexpr int noiseSeconds = 4;
constexpr unsigned noiseSeed = 1;

// A whole second holds a whole number of periods, so the loop has no seam.
std::vector<float> tone(double sampleRate) {
  std::vector<float> samples(static_cast<size_t>(std::lround(sampleRate)));
  for (size_t i = 0; i < samples.size(); ++i) {
    const double turns = 1000.0 * static_cast<double>(i) / static_cast<double>(samples.size());
    samples[i] = static_cast<float>(level * std::sin(2 * std::numbers::pi * (turns - std::floor(turns))));
  }
  return samples;
}

// The generator's raw numbers, since the library's distributions differ from one to the other.
std::vector<float> noise(double sampleRate, std::mt19937& random) {
  std::vector<float> samples(static_cast<size_t>(std::lround(sampleRate * noiseSeconds)));
  for (float& sample : samples)
    sample = static_cast<float>(level * (static_cast<double>(random()) / 2147483648.0 - 1.0));
  return samples;
}

}  // namespace

SignalSource::SignalSource(std::vector<float> left, std::vector<float> right)
    : channels_{std::move(left), std::move(right)} {}

std::optional<SignalSource> SignalSource::named(const std::string& text, Float64 sampleRate,
                                                std::string& error) {
  if (text == "tone") return SignalSource(tone(sampleRate), tone(sampleRate));
  if (text == "noise") {
    std::mt19937 random(noiseSeed);
    auto left = noise(sampleRate, random);
    return SignalSource(std::move(left), noise(sampleRate, random));
  }
  if (text == "drums") {
    StereoSamples loop = drumLoop(sampleRate);
    return SignalSource(std::move(loop.left), std::move(loop.right));
  }
  return fromFile(text, sampleRate, error);
}

std::optional<SignalSource> SignalSource::fromFile(const std::string& path, Float64 sampleRate,
                                                   std::string& error) {
  SndfileHandle file(path);
  if (file.error()) {
    error = path + ": " + file.strError();
    return std::nullopt;
  }
  if (file.channels() > 2) {
    error = path + ": it has " + std::to_string(file.channels()) + " channels; expected 1 or 2";
    return std::nullopt;
  }
  if (file.samplerate() != std::lround(sampleRate)) {
    error = path + ": its rate is " + std::to_string(file.samplerate()) + " Hz; expected " +
            foundation::fixedText(sampleRate, 0) + " Hz";
    return std::nullopt;
  }
  const auto width = static_cast<size_t>(file.channels());
  std::vector<float> left;
  std::vector<float> right;
  std::vector<float> block(4096 * width);
  while (const sf_count_t frames = file.readf(block.data(), 4096)) {
    for (size_t i = 0; i < static_cast<size_t>(frames); ++i) {
      left.push_back(block[i * width]);
      right.push_back(block[i * width + width - 1]);
    }
  }
  if (left.empty()) {
    error = path + ": there is no sound in it";
    return std::nullopt;
  }
  return SignalSource(std::move(left), std::move(right));
}

void SignalSource::read(float* const* into, UInt32 channels, UInt32 frames) {
  UInt32 done = 0;
  while (done < frames) {
    const size_t run = std::min<size_t>(frames - done, loopFrames() - position_);
    for (UInt32 c = 0; c < channels; ++c) std::copy_n(channels_[c].begin() + position_, run, into[c] + done);
    done += static_cast<UInt32>(run);
    position_ = (position_ + run) % loopFrames();
  }
}
