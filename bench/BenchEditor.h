#pragma once

#include <functional>
#include <string>

#include "BenchStage.h"
#include "EffectBench.h"

/// An editor on a live effect in a shown window of an offscreen display, under a virtual clock.
class BenchEditor {
 public:
  /// Open and drawn, the effect at its defaults.
  BenchEditor(const std::string& code, float scale);
  ~BenchEditor();
  BenchEditor(const BenchEditor&) = delete;
  BenchEditor& operator=(const BenchEditor&) = delete;

  BenchStage& stage() { return stage_; }
  EffectBench& effect() { return effect_; }
  NSView& view() const { return *window_->contentView(); }

  /// What a host does to show it, up to the first picture; and to be rid of it, if it is open.
  void open();
  void close();
  /// What a host's automation does.
  void automate(AudioUnitParameterID id, Float32 value);
  /// The effect hears that many seconds of noise, which fades and begins again once a second.
  void hear(double seconds);
  /// The middle of the first view of that class, on the screen; throws std::runtime_error when there is none.
  NSPoint middleOf(const std::string& className) const;

 private:
  BenchStage stage_;
  EffectBench effect_;
  std::shared_ptr<NSWindow> window_;
  size_t heard_ = 0;  // frames
};
