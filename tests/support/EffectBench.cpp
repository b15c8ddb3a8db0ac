#include "EffectBench.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <stdexcept>

#include "RegisterEffects.h"

namespace {

void check(OSStatus status) {
  if (status != noErr) throw std::runtime_error("an effect answers " + std::to_string(status));
}

EffectInstance openRegistered(const std::string& code) {
  RegisterEffects();
  return openEffect(registeredEffect(code));
}

}  // namespace

EffectBench::EffectBench(const std::string& code, const RenderFormat& format)
    : EffectBench(std::shared_ptr<AUEffectBase>(openRegistered(code)), format) {}

EffectBench::EffectBench(std::shared_ptr<AUEffectBase> effect, const RenderFormat& format)
    : effect_(std::move(effect)),
      parameters_(effectParameters(unit())),
      block_(format.outputs, std::vector<float>(format.maximumFrames)) {
  std::string error;
  runner_ = EffectRunner::make(unit(), format, error);
  if (!runner_) throw std::runtime_error(error);
}

std::vector<EffectParameter> EffectBench::writableParameters() const {
  std::vector<EffectParameter> writable = parameters_;
  std::erase_if(writable, [](const EffectParameter& p) { return !p.isWritable(); });
  return writable;
}

Float32 EffectBench::value(AudioUnitParameterID id) const {
  Float32 value = 0;
  check(AudioUnitGetParameter(unit(), id, kAudioUnitScope_Global, 0, &value));
  return value;
}

void EffectBench::set(AudioUnitParameterID id, double value) {
  check(AudioUnitSetParameter(unit(), id, kAudioUnitScope_Global, 0, static_cast<Float32>(value), 0));
}

void EffectBench::set(std::initializer_list<std::pair<AudioUnitParameterID, double>> values) {
  for (const auto& [id, value] : values) set(id, value);
}

void EffectBench::setQuality(UInt32 quality) {
  check(AudioUnitSetProperty(unit(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                             sizeof quality));
}

Float64 EffectBench::seconds(AudioUnitPropertyID id) const {
  Float64 seconds = 0;
  UInt32 size = sizeof seconds;
  check(AudioUnitGetProperty(unit(), id, kAudioUnitScope_Global, 0, &seconds, &size));
  return seconds;
}

void EffectBench::reset() {
  check(AudioUnitReset(unit(), kAudioUnitScope_Global, 0));
}

EffectBench::Samples EffectBench::render(const Samples& input, UInt32 at,
                                         const std::function<void()>& change) {
  const auto frames = static_cast<UInt32>(input[0].size());
  Samples output(block_.size(), std::vector<float>(frames));
  for (UInt32 done = 0, length; done < frames; done += length) {
    if (done == at) change();
    length = std::min(runner_->format().maximumFrames, (done < at ? at : frames) - done);
    const float* from[kAudioMaximumChannels];
    float* to[kAudioMaximumChannels];
    for (size_t c = 0; c < input.size(); ++c) from[c] = input[c].data() + done;
    for (size_t c = 0; c < output.size(); ++c) to[c] = output[c].data() + done;
    check(runner_->render(from, to, length));
  }
  return output;
}

void EffectBench::renderBlock(const float* const* input, UInt32 frames) {
  float* output[kAudioMaximumChannels];
  for (size_t c = 0; c < block_.size(); ++c) output[c] = block_[c].data();
  check(runner_->render(input, output, frames));
}

Float32 partOf(const EffectParameter& parameter, float part) {
  const float value = parameter.minValue + part * (parameter.maxValue - parameter.minValue);
  return parameter.valueNames.empty() ? value : std::round(value);
}

std::vector<std::string> effectCodes() {
  RegisterEffects();
  std::vector<std::string> codes;
  for (Component effect : registeredEffects()) codes.push_back(effectCode(effect));
  return codes;
}

EffectBench::Samples noise(UInt32 channels, size_t frames, float level) {
  std::mt19937 random(20);
  EffectBench::Samples samples(channels, std::vector<float>(frames));
  for (auto& channel : samples)
    for (float& sample : channel) sample = level * (static_cast<float>(random() >> 8) / 8388608.0f - 1.0f);
  return samples;
}

EffectBench::Samples sine(double frequency, double level, size_t frames, double rate) {
  const double amplitude = std::pow(10, level / 20);
  const double turn = 2 * std::numbers::pi * frequency / rate;
  std::vector<float> samples(frames);
  for (size_t i = 0; i < frames; ++i)
    samples[i] = static_cast<float>(amplitude * std::sin(turn * static_cast<double>(i)));
  return {samples, samples};
}

EffectBench::Samples impulse(UInt32 channels, size_t frames) {
  EffectBench::Samples samples(channels, std::vector<float>(frames));
  for (auto& channel : samples) channel[0] = 1;
  return samples;
}

double magnitude(std::span<const float> response, double frequency, double rate) {
  std::complex<double> sum;
  const auto turn = std::polar(1.0, -2 * std::numbers::pi * frequency / rate);
  for (size_t i = response.size(); i-- > 0;) sum = sum * turn + double{response[i]};
  return std::abs(sum);
}

double largestBend(std::span<const float> samples, size_t from) {
  double bend = 0;
  for (size_t i = std::max<size_t>(from, 2); i < samples.size(); ++i)
    bend = std::max<double>(bend, std::fabs(samples[i] - 2 * samples[i - 1] + samples[i - 2]));
  return bend;
}
