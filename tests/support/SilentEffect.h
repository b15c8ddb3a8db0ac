#pragma once

#include <span>

#include "AUEffectBase.h"

/// An effect without sound of its own and with the parameters that a test gives it.
class SilentEffect : public AUEffectBase {
 public:
  /// The tables are not copied.
  explicit SilentEffect(std::span<const AUParameterRow> rows, std::span<const AUPresetRow> presets = {})
      : AUEffectBase({.parameters = rows, .presets = presets}) {}

 private:
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const>, UInt32) override {}
};
