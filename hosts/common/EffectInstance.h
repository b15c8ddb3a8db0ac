#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"

/// An opened effect that closes itself.
struct CloseEffect {
  void operator()(AudioUnit unit) const { CloseComponent(unit); }
};
using EffectInstance = std::unique_ptr<AUEffectBase, CloseEffect>;

/// Null when it cannot be opened.
EffectInstance openEffect(Component component);

/// Its four-letter code, and its full name in UTF-8.
std::string effectCode(Component component);
std::string effectName(Component component);
