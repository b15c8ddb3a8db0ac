#pragma once

#include <optional>
#include <string>

#include "EditorStage.h"
#include "EffectBench.h"

/// A stage with an editor on an effect that hears something.
class BenchEditor : public EditorStage {
 public:
  /// Open and drawn, the effect at its defaults.
  BenchEditor(const std::string& code, float scale);

  EffectBench& effect() { return *effect_; }
  /// What a host does to show it, up to the first picture.
  void openEditor();
  /// The effect hears that many seconds of noise, which fades and begins again once a second.
  void hear(double seconds);

 private:
  std::optional<EffectBench> effect_;
  size_t heard_ = 0;  // frames
};
