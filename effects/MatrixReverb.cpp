#include "MatrixReverb.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

enum : AudioUnitParameterID {
  mix,
  smallLargeMix,
  smallSize,
  largeSize,
  preDelay,
  largeDelay,
  smallDensity,
  largeDensity,
  largeRange,
  smallBrightness,
  largeBrightness,
  smallRange,
  modulationRate,
  modulationDepth
};

constexpr UInt32 crossfade = kAudioUnitParameterUnit_EqualPowerCrossfade;
constexpr UInt32 seconds = kAudioUnitParameterUnit_Seconds;
constexpr UInt32 generic = kAudioUnitParameterUnit_Generic;
constexpr AUParameterRow parameters[] = {
    {mix, "dry/wet mix", crossfade, 0, 100, 100},
    {smallLargeMix, "small-large mix", crossfade, 0, 100, 50},
    {smallSize, "small size", seconds, 0.0001f, 0.05f, 0.0048f},
    {largeSize, "large size", seconds, 0.005f, 0.15f, 0.06f},
    {preDelay, "pre-delay", seconds, 0.001f, 0.03f, 0.025f},
    {largeDelay, "large delay", seconds, 0.001f, 0.1f, 0.035f},
    {smallDensity, "small density", generic, 0, 1, 0.28f},
    {largeDensity, "large density", generic, 0, 1, 0.82f},
    {largeRange, "large delay range", generic, 0, 1, 0.3f},
    {smallBrightness, "small brightness", generic, 0.1f, 1, 0.54f},
    {largeBrightness, "large brightness", generic, 0.1f, 1, 0.49f},
    {smallRange, "small delay range", generic, 0, 1, 0.5f},
    {modulationRate, "modulation rate", kAudioUnitParameterUnit_Hertz, 0.001f, 2, 1, kAUParameterLogarithmic},
    {modulationDepth, "modulation depth", generic, 0, 1, 0.2f},
};
constexpr AUPresetRow presets[] = {
    {"Medium Hall"},
    {"Small Room",
     {{{mix, 35},
       {smallLargeMix, 10},
       {smallSize, 0.009f},
       {largeSize, 0.02f},
       {preDelay, 0.004f},
       {largeDelay, 0.01f},
       {smallDensity, 0.6f}}}},
    {"Bright Plate",
     {{{mix, 40},
       {smallLargeMix, 20},
       {smallSize, 0.04f},
       {preDelay, 0.001f},
       {largeDelay, 0.001f},
       {smallDensity, 1},
       {largeDensity, 1},
       {smallRange, 0.8f},
       {smallBrightness, 0.9f},
       {largeBrightness, 0.9f}}}},
    {"Cathedral",
     {{{mix, 45},
       {smallLargeMix, 75},
       {smallSize, 0.02f},
       {largeSize, 0.13f},
       {preDelay, 0.03f},
       {largeDelay, 0.06f},
       {largeDensity, 0.9f},
       {largeRange, 0.6f},
       {largeBrightness, 0.3f}}}},
    {"Ambience",
     {{{mix, 30},
       {smallLargeMix, 0},
       {smallSize, 0.006f},
       {preDelay, 0.008f},
       {smallDensity, 0.8f},
       {smallBrightness, 0.8f}}}},
};

constexpr float largestSmallSize = 0.05f, largestLargeSize = 0.15f, longestDelay = 0.03f + 0.1f;
constexpr double fadeSeconds = 0.05;

struct QualityRow {
  UInt32 least, lines;
};
constexpr QualityRow qualities[] = {{kRenderQuality_Max, 16},
                                    {kRenderQuality_High, 12},
                                    {kRenderQuality_Medium, 8},
                                    {kRenderQuality_Low, 6},
                                    {kRenderQuality_Min, 4}};

UInt32 linesOf(UInt32 quality) {
  return std::find_if(std::begin(qualities), std::end(qualities),
                      [quality](const QualityRow& row) { return quality >= row.least; })
      ->lines;
}

}  // namespace

MatrixReverb::MatrixReverb()
    : AUEffectBase({.parameters = parameters,
                    .presets = presets,
                    .minimumSampleRate = 500,
                    .monoToStereo = true,
                    .hasRenderQuality = true}) {}

MatrixReverb::Wanted MatrixReverb::wanted() const {
  Wanted wanted;
  for (const AUParameterRow& row : parameters) wanted.values[row.id] = value(row.id);
  wanted.values[mix] = wanted.values[modulationRate] = 0;  // these move on their own
  wanted.quality = renderQuality();
  return wanted;
}

MatrixReverb::Tuning MatrixReverb::tuningFor(const Wanted& wanted) const {
  const auto& v = wanted.values;
  const double rate = sampleRate();
  const UInt32 lines = linesOf(wanted.quality);
  const double large = v[smallLargeMix] / 100;
  const RoomShape smallShape{v[smallSize],       v[smallRange],      v[smallDensity],
                             v[smallBrightness], v[modulationDepth], std::sqrt(1 - large)};
  const RoomShape largeShape{v[largeSize],       v[largeRange],      v[largeDensity],
                             v[largeBrightness], v[modulationDepth], std::sqrt(large)};
  Tuning tuning;
  tuning.smallDelay = static_cast<UInt32>(std::lround(v[preDelay] * rate));
  tuning.largeDelay = static_cast<UInt32>(std::lround((v[preDelay] + v[largeDelay]) * rate));
  tuning.small = RoomTuning(smallShape, lines, rate);
  tuning.large = RoomTuning(largeShape, lines, rate);
  return tuning;
}

void MatrixReverb::prepare() {
  for (UInt32 c = 0; c < inputChannels(); ++c)
    delays_[c].setLongest(static_cast<UInt32>(longestDelay * sampleRate()) + 2);
  small_.prepare(largestSmallSize, sampleRate(), inputChannels());
  large_.prepare(largestLargeSize, sampleRate(), inputChannels());
  fadeChunks_ = std::max(1u, static_cast<UInt32>(std::lround(fadeSeconds * sampleRate() / chunkFrames)));
  mix_.setSampleRate(sampleRate());
}

void MatrixReverb::clear() {
  for (UInt32 c = 0; c < inputChannels(); ++c) delays_[c].clear();
  small_.clear();
  large_.clear();
  mix_.snap(value(mix));
  position_ = 0;
  turn_ = 0;
  phase_ = {0, 1};
  tunedTo_ = wanted();
  now_ = tuningFor(tunedTo_);
  fadeLeft_ = 0;
}

void MatrixReverb::beginChunk() {
  if (fadeLeft_ > 0 && --fadeLeft_ == 0) now_ = next_;
  if (fadeLeft_ == 0) {
    if (wanted_ != tunedTo_) {
      tunedTo_ = wanted_;
      next_ = tuningFor(wanted_);
      fadeLeft_ = fadeChunks_;
    }
  }
  const auto chunks = static_cast<float>(fadeChunks_);
  const float to = isFading() ? 1 - static_cast<float>(fadeLeft_ - 1) / chunks : 0;
  const float from = isFading() ? 1 - static_cast<float>(fadeLeft_) / chunks : 0;
  fade_ = {from, to};

  const ReverbRoom::Phase before = phase_;
  turn_ = std::fmod(turn_ + turnOfChunk_, 1.0);
  const double angle = 2 * std::numbers::pi * turn_;
  phase_ = {static_cast<float>(std::sin(angle)), static_cast<float>(std::cos(angle))};
  const Tuning& next = isFading() ? next_ : now_;
  small_.beginChunk({now_.small, next.small, from, to, before, phase_});
  large_.beginChunk({now_.large, next.large, from, to, before, phase_});
}

void MatrixReverb::process(std::span<float* const> channels, UInt32 frames) {
  mix_.follow(value(mix));
  wanted_ = wanted();
  turnOfChunk_ = value(modulationRate) * chunkFrames / sampleRate();
  for (UInt32 done = 0; done < frames;) {
    const UInt32 offset = position_ % chunkFrames;
    if (offset == 0) beginChunk();
    const UInt32 part = std::min(frames - done, chunkFrames - offset);
    runChunk({position_, part}, channels, done);
    position_ += part;
    done += part;
  }
}

Chunk MatrixReverb::delayed(const ReverbLine& line, const ChunkRun& run, UInt32 Tuning::*delay) const {
  Chunk chunk(line.read(run.position, now_.*delay), run.frames);
  if (isFading() && now_.*delay != next_.*delay) {
    const float* next = line.read(run.position, next_.*delay);
    for (UInt32 k = 0; k < run.frames; ++k)
      chunk[k] += (fade_.start + fade_.step * static_cast<float>(run.offset() + k)) * (next[k] - chunk[k]);
  }
  return chunk;
}

void MatrixReverb::runChunk(const ChunkRun& run, std::span<float* const> channels, UInt32 done) {
  const UInt32 inputs = inputChannels();
  std::array<Chunk, 2> early, late, wet;
  for (UInt32 c = 0; c < inputs; ++c) {
    delays_[c].write(run, channels[c] + done);
    early[c] = delayed(delays_[c], run, &Tuning::smallDelay);
    late[c] = delayed(delays_[c], run, &Tuning::largeDelay);
  }
  small_.run(run, early, wet);
  large_.run(run, late, wet);
  for (UInt32 k = 0; k < run.frames; ++k) {
    mix_.next();
    const float last = channels[inputs - 1][done + k];
    for (UInt32 c = 0; c < channels.size(); ++c) {
      float& sample = channels[c][done + k];
      sample = mix_.of(c < inputs ? sample : last, wet[c][k]);
    }
  }
}

Float64 MatrixReverb::tailTime() const {
  // 66 dB of the decay, the longest line and what the diffusers add, in sizes.
  constexpr double sizes = 44 + 2 + 7;
  return value(preDelay) +
         std::max<double>(sizes * value(smallSize), value(largeDelay) + sizes * value(largeSize));
}
