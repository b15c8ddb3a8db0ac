#pragma once

#include <memory>
#include <string>
#include <vector>

#include "AudioUnit.h"

/// An opened effect that closes itself.
struct CloseEffect {
  void operator()(AudioUnit unit) const { CloseComponent(unit); }
};
using EffectInstance = std::unique_ptr<AUEffectBase, CloseEffect>;

/// All registered effects, and the one with that four-letter code, as "sdly"; null when there is none.
std::vector<Component> registeredEffects();
Component registeredEffect(const std::string& code);

/// Null when it cannot be opened.
EffectInstance openEffect(Component component);

/// Its four-letter code, and its full name in UTF-8.
std::string effectCode(Component component);
std::string effectName(Component component);
