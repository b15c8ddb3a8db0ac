#include "ReverbRoom.h"

#include <cmath>
#include <numbers>

namespace {

using Four = Sixteen::Four;
using FourNumbers [[gnu::vector_size(16)]] = int32_t;

/// The numbers of the frames of a run, counted from its chunk's beginning.
template <class AnyChunk>
AnyChunk framesOf(const ChunkRun& run) {
  AnyChunk frames;
  for (uint32_t k = 0; k < AnyChunk::size; ++k) frames[k] = static_cast<float>(run.offset() + k);
  return frames;
}

template <class AnyChunk>
AnyChunk along(const ChunkRamp<float>& ramp, const AnyChunk& frames) {
  return AnyChunk::fromGroups([&](uint32_t g) { return ramp.start + ramp.step * frames.four(g); });
}

Four along(const ChunkRamp<LineValues>& ramp, uint32_t line, Four frames) {
  return ramp.start[line] + ramp.step[line] * frames;
}

std::array<Four, 4> weightsAt(Four place) {
  const Four later = place + 1, earlier = place - 1, earliest = place - 2;
  return {later * place * earlier / 6, -later * place * earliest / 2, later * earlier * earliest / 2,
          -place * earlier * earliest / 6};
}

void transpose(std::array<Four, 4>& rows) {
  const Four a = __builtin_shufflevector(rows[0], rows[1], 0, 4, 1, 5);
  const Four b = __builtin_shufflevector(rows[0], rows[1], 2, 6, 3, 7);
  const Four c = __builtin_shufflevector(rows[2], rows[3], 0, 4, 1, 5);
  const Four d = __builtin_shufflevector(rows[2], rows[3], 2, 6, 3, 7);
  rows = {__builtin_shufflevector(a, c, 0, 1, 4, 5), __builtin_shufflevector(a, c, 2, 3, 6, 7),
          __builtin_shufflevector(b, d, 0, 1, 4, 5), __builtin_shufflevector(b, d, 2, 3, 6, 7)};
}

}  // namespace

ReverbRoom::ReverbRoom() {
  for (uint32_t i = 0; i < maximumLines; ++i) {
    const double turn = 2 * std::numbers::pi * std::numbers::phi * i;
    sines_[i] = static_cast<float>(std::sin(turn));
    cosines_[i] = static_cast<float>(std::cos(turn));
  }
}

void ReverbRoom::prepare(double largestSize, double sampleRate, uint32_t inputs) {
  for (ReverbLine& ring : rings_)
    ring.setLongest(RoomTuning::longestLine(static_cast<uint32_t>(largestSize * sampleRate) + 1));
  inputs_ = inputs;
  for (uint32_t c = 0; c < inputs; ++c)
    for (Diffuser& each : diffusers_[c])
      each.ring.setLongest(static_cast<uint32_t>(largestSize * sampleRate) + 1);
}

void ReverbRoom::clear() {
  for (ReverbLine& ring : rings_) ring.clear();
  damped_ = {};
  for (uint32_t c = 0; c < inputs_; ++c)
    for (Diffuser& diffuser : diffusers_[c]) diffuser.ring.clear();
}

ReverbRoom::Taps ReverbRoom::tapsOf(const RoomTuning& tuning, const LineValues& placesFrom,
                                    const LineValues& placesTo) const {
  Taps taps;
  for (uint32_t group = 0; 4 * group < maximumLines; ++group) {
    const Four swing = tuning.excursions.four(group);
    const Four from = swing * placesFrom.four(group), to = swing * placesTo.four(group);
    const Four middle = (from + to) / 2;
    FourNumbers whole = __builtin_convertvector(middle, FourNumbers);
    whole += __builtin_convertvector(whole, Four) > middle;  // true is -1
    const Four below = __builtin_convertvector(whole, Four);
    const auto first = weightsAt(from - below), last = weightsAt(to - below);
    for (size_t w = 0; w < 4; ++w) {
      taps.weights[w].start.setFour(group, first[w]);
      taps.weights[w].step.setFour(group, (last[w] - first[w]) * (1.0f / chunkFrames));
    }
    for (uint32_t i = 0; i < 4; ++i)
      taps.delays[4 * group + i] = tuning.lengths[4 * group + i] + static_cast<uint32_t>(whole[i]) + 2;
  }
  return taps;
}

void ReverbRoom::beginChunk(const ChunkState& state) {
  const RoomTuning& now = state.now;
  const RoomTuning& next = state.next;
  fading_ = state.isFading();
  longestRun_ = fading_ ? std::min(now.longestRun, next.longestRun) : now.longestRun;
  linesNow_ = now.lines;
  linesNext_ = next.lines;
  const auto places = [this](const Phase& phase) { return cosines_ * phase.sine + sines_ * phase.cosine; };
  const LineValues placesFrom = places(state.phaseFrom), placesTo = places(state.phaseTo);
  now_ = tapsOf(now, placesFrom, placesTo);
  if (fading_) next_ = tapsOf(next, placesFrom, placesTo);
  inputRamps_ = state.ramp(now.inputs, next.inputs);
  gains_ = state.ramp(now.gains, next.gains);
  poles_ = state.ramp(now.poles, next.poles);
  fade_ = {state.from, state.to};
  plain_ = state.ramp(now.plain, next.plain);
  diffused_ = state.ramp(now.diffused, next.diffused);
  level_ = state.ramp(now.level, next.level);
  for (uint32_t c = 0; c < inputs_; ++c)
    for (uint32_t d = 0; d < RoomTuning::diffusers; ++d) {
      diffusers_[c][d].now = now.diffuserLengths[c][d];
      diffusers_[c][d].next = next.diffuserLengths[c][d];
    }
}

template <class AnyChunk>
void ReverbRoom::diffuse(const ChunkRun& run, Diffusers& diffusers, AnyChunk& chunk) const {
  const AnyChunk frames = framesOf<AnyChunk>(run);
  const AnyChunk fade = along(fade_, frames);
  AnyChunk sample = chunk;
  for (Diffuser& diffuser : diffusers) {
    AnyChunk delayed(diffuser.ring.read(run.position, diffuser.now));
    if (fading_) delayed += (AnyChunk(diffuser.ring.read(run.position, diffuser.next)) - delayed) * fade;
    const AnyChunk inside = sample + delayed * RoomTuning::diffusion;
    sample = delayed - inside * RoomTuning::diffusion;
    diffuser.ring.write(run, inside);
  }
  chunk = chunk * along(plain_, frames) + sample * along(diffused_, frames);
}

template <class AnyChunk>
AnyChunk ReverbRoom::read(const ChunkRun& run, const AnyChunk& frames, const Taps& taps,
                          uint32_t line) const {
  const float* from = rings_[line].read(run.position, taps.delays[line]);
  return AnyChunk::fromGroups([&](uint32_t g) {
    const Four four = frames.four(g);
    const float* first = from + 4 * g;
    return AnyChunk::fourAt(first) * along(taps.weights[0], line, four) +
           AnyChunk::fourAt(first + 1) * along(taps.weights[1], line, four) +
           AnyChunk::fourAt(first + 2) * along(taps.weights[2], line, four) +
           AnyChunk::fourAt(first + 3) * along(taps.weights[3], line, four);
  });
}

// A line's frames wait for each other; those of four lines are computed together.
template <class AnyChunk>
void ReverbRoom::damp(const ChunkRun& run, uint32_t group, LineChunks<AnyChunk>& chunks) {
  Four damped = damped_.four(group), last = damped;
  Four pole = poles_.start.four(group) + poles_.step.four(group) * static_cast<float>(run.offset());
  for (uint32_t quarter = 0; quarter < AnyChunk::groups; ++quarter) {
    std::array<Four, 4> rows;
    for (uint32_t i = 0; i < 4; ++i) rows[i] = chunks[4 * group + i].four(quarter);
    transpose(rows);
    for (uint32_t k = 0; k < 4; ++k) {
      rows[k] = damped = pole * damped + rows[k];
      pole += poles_.step.four(group);
      if (4 * quarter + k + 1 == run.frames) last = damped;
    }
    transpose(rows);
    for (uint32_t i = 0; i < 4; ++i) chunks[4 * group + i].setFour(quarter, rows[i]);
  }
  damped_.setFour(group, last);
}

template <class AnyChunk>
void ReverbRoom::runPart(const ChunkRun& run, std::array<AnyChunk, 2> inputs,
                         std::array<AnyChunk, 2>& outputs) {
  for (uint32_t c = 0; c < inputs_; ++c) diffuse(run, diffusers_[c], inputs[c]);
  const AnyChunk frames = framesOf<AnyChunk>(run);
  const AnyChunk fade = along(fade_, frames);
  const uint32_t active = std::max(linesNow_, linesNext_);

  LineChunks<AnyChunk> chunks;
  std::array<AnyChunk, 2> sums;
  for (uint32_t i = 0; i < active; ++i) {
    AnyChunk& chunk = chunks[i];
    chunk = read(run, frames, now_, i);
    if (fading_) chunk += (read(run, frames, next_, i) - chunk) * fade;
    // What is heard is not damped yet, so that a dull room still begins bright.
    gather(i, fade, chunk, sums);
    chunk *= AnyChunk::fromGroups([&](uint32_t g) { return along(gains_, i, frames.four(g)); });
  }
  for (uint32_t c = 0; c < 2; ++c) outputs[c] += sums[c] * along(level_, frames);

  for (uint32_t group = 0; 4 * group < active; ++group) damp(run, group, chunks);
  mix(chunks, fade);
  for (uint32_t i = 0; i < maximumLines; ++i) {  // those that are out of use fall silent
    if (i < active) {
      const AnyChunk& input = inputs[inputs_ == 1 ? 0 : i % 2];
      chunks[i] += AnyChunk::fromGroups(
          [&](uint32_t g) { return input.four(g) * along(inputRamps_, i, frames.four(g)); });
    } else {
      chunks[i] = {};
    }
    rings_[i].write(run, chunks[i]);
  }
}

template <class AnyChunk>
void ReverbRoom::gather(uint32_t line, const AnyChunk& fade, AnyChunk chunk,
                        std::array<AnyChunk, 2>& sums) const {
  if (line >= linesNow_) chunk *= fade;
  if (line >= linesNext_) chunk -= chunk * fade;
  for (uint32_t c = 0; c < 2; ++c) {
    // The right way up, but for a quarter of the lines that differs between the channels.
    if (RoomTuning::isInverted(line) != (line % 4 == 1 + c))
      sums[c] -= chunk;
    else
      sums[c] += chunk;
  }
}

template <class AnyChunk>
void ReverbRoom::mix(LineChunks<AnyChunk>& chunks, const AnyChunk& fade) const {
  if (!fading_ || linesNow_ == linesNext_) return mixUnitary(chunks, linesNow_);
  // Lines beyond those of one of the two are not in its matrix; a mixture of both still gains no energy.
  LineChunks<AnyChunk> next = chunks;
  mixUnitary(chunks, linesNow_);
  mixUnitary(next, linesNext_);
  for (uint32_t i = 0; i < std::max(linesNow_, linesNext_); ++i) {
    if (i >= linesNow_) chunks[i] = {};
    if (i >= linesNext_) next[i] = {};
    chunks[i] += (next[i] - chunks[i]) * fade;
  }
}

template <class AnyChunk>
void ReverbRoom::runPartOf(const ChunkRun& run, uint32_t first, const std::array<Chunk, 2>& inputs,
                           std::array<Chunk, 2>& outputs) {
  std::array<AnyChunk, 2> in, out;
  for (uint32_t c = 0; c < inputs_; ++c) in[c] = AnyChunk(inputs[c].data() + first, run.frames);
  runPart(run, in, out);
  for (uint32_t c = 0; c < 2; ++c)
    for (uint32_t k = 0; k < run.frames; ++k) outputs[c][first + k] += out[c][k];
}

void ReverbRoom::run(const ChunkRun& run, const std::array<Chunk, 2>& inputs, std::array<Chunk, 2>& outputs) {
  if (run.frames > ShortChunk::size && run.frames <= longestRun_) return runPart(run, inputs, outputs);
  for (uint32_t done = 0; done < run.frames;) {
    const ChunkRun part{run.position + done, std::min(run.frames - done, longestRun_)};
    if (part.frames <= ShortChunk::size)
      runPartOf<ShortChunk>(part, done, inputs, outputs);
    else
      runPartOf<Chunk>(part, done, inputs, outputs);
    done += part.frames;
  }
}
