#pragma once

#include <string>
#include <vector>

#include "EditorStage.h"
#include "EffectParameters.h"

/// A stage with an editor where a line in the log, anything drawn outside a window and anything left after
/// closing is a fault.
class FuzzStage : public EditorStage {
 public:
  static constexpr size_t effects = 15;
  /// `effect` counts in the order of the four-letter codes' registration.
  explicit FuzzStage(size_t effect);
  explicit FuzzStage(const std::string& code) : FuzzStage((bundle(), registeredEffect(code))) {}
  /// Closes, and sees that nothing is left.
  ~FuzzStage() override;

  /// Closes the editor and opens another on the same effect.
  void reopen();
  void advance(double seconds) override;
  /// Every parameter that can be set is in its range.
  void checkParameters() const;

  std::vector<EffectParameter> parameters;

 private:
  explicit FuzzStage(Component component);
  void closeChecked();
};
