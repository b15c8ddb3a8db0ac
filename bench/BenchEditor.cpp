#include "BenchEditor.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "AUEventListener.h"
#include "EditorBundle.h"

extern "C" void TovinBundleClasses(std::vector<const Class*>& classes);

namespace {

constexpr double sampleRate = 44100;
constexpr UInt32 noiseFrames = 44100, mostFrames = 4410;
constexpr float loudest = 8;     // so that compressors and limiters have work
constexpr double timersEnd = 1;  // seconds after which nothing holds a closed editor any more

const EditorBundle& bundle() {
  static std::string error;
  static const auto linked = EditorBundle::linked(TOVIN_BUNDLE, &TovinBundleClasses, error);
  if (!linked) throw std::runtime_error(error);
  return *linked;
}

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

const NSView* firstOf(const NSView& inside, const std::string& className) {
  for (const auto& view : inside.subviews()) {
    if (view->isa().name() == className) return view.get();
    if (const NSView* found = firstOf(*view, className)) return found;
  }
  return nullptr;
}

}  // namespace

BenchEditor::BenchEditor(const std::string& code, float scale)
    : stage_(scale), effect_(code, {sampleRate, 2, 2, mostFrames}) {
  open();
}

BenchEditor::~BenchEditor() {
  close();
}

void BenchEditor::open() {
  window_ = BenchStage::show(bundle().editorFor(effect_.unit()));
  stage_.turn();
}

void BenchEditor::close() {
  if (!window_) return;
  window_->close();
  window_.reset();
  stage_.advance(timersEnd);
}

void BenchEditor::automate(AudioUnitParameterID id, Float32 value) {
  const AudioUnitParameter parameter{effect_.unit(), id, kAudioUnitScope_Global, 0};
  AUParameterSet(nullptr, nullptr, &parameter, value, 0);
}

void BenchEditor::hear(double seconds) {
  for (auto left = static_cast<size_t>(std::lround(seconds * sampleRate)); left > 0;) {
    const size_t from = heard_ % noiseFrames;
    const size_t frames = std::min({left, noiseFrames - from, size_t{mostFrames}});
    const float* const input[] = {noise().data() + from, noise().data() + from};
    effect_.renderBlock(input, static_cast<UInt32>(frames));
    heard_ += frames;
    left -= frames;
  }
}

NSPoint BenchEditor::middleOf(const std::string& className) const {
  const NSView* found = firstOf(view(), className);
  if (!found) throw std::runtime_error("the editor has no " + className);
  const NSRect frame = found->convertRect_toView(found->bounds(), nullptr);
  return window_->convertBaseToScreen(
      {NSMinX(frame) + NSWidth(frame) / 2, NSMinY(frame) + NSHeight(frame) / 2});
}
