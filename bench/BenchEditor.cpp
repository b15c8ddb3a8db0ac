#include "BenchEditor.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double sampleRate = 44100;
constexpr UInt32 noiseFrames = 44100, mostFrames = 4410;
constexpr float loudest = 8;  // so that compressors and limiters have work

/// A second of it.
const std::vector<float>& noise() {
  static const std::vector<float> samples = [] {
    std::vector<float> made;
    uint32_t random = 1;
    for (UInt32 i = 0; i < noiseFrames; ++i) {
      random = random * 1664525 + 1013904223;
      const float loudness = 1 - static_cast<float>(i) / noiseFrames;
      made.push_back(loudest * loudness * loudness * (static_cast<float>(random >> 8) / 8388608.0f - 1));
    }
    return made;
  }();
  return samples;
}

}  // namespace

BenchEditor::BenchEditor(const std::string& code, float scale) : EditorStage(scale) {
  unit = openUnit(registeredEffect(code));
  effect_.emplace(std::shared_ptr<AUEffectBase>(std::shared_ptr<void>(), unit.get()), RenderFormat{sampleRate, 2, 2, mostFrames});
  openEditor();
}

void BenchEditor::openEditor() {
  editor = bundle().editorFor(unit.get());
  put(editor);
  turn();
}

void BenchEditor::hear(double seconds) {
  for (auto left = static_cast<size_t>(std::lround(seconds * sampleRate)); left > 0;) {
    const size_t from = heard_ % noiseFrames;
    const size_t frames = std::min({left, noiseFrames - from, size_t{mostFrames}});
    const float* const input[] = {noise().data() + from, noise().data() + from};
    effect_->renderBlock(input, static_cast<UInt32>(frames));
    heard_ += frames;
    left -= frames;
  }
}
