#include "EffectArgument.h"

#include "EffectInstance.h"

namespace {

std::string existingEffects() {
  std::string list;
  for (Component effect : registeredEffects()) list += (list.empty() ? "" : ", ") + effectCode(effect);
  return list;
}

}  // namespace

Component effectFromArgument(const std::string& argument, std::string& error) {
  if (Component effect = registeredEffect(argument)) return effect;
  error = "EFFECT: there is no effect \"" + argument + "\"; there are " + existingEffects();
  return nullptr;
}
