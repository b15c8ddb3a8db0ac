#include "EffectArgument.h"

#include "EffectInstance.h"

namespace {

constexpr ComponentDescription anyEffect{.componentType = FourCharCode("aufx")};

std::string existingEffects() {
  std::string list;
  for (Component c = FindNextComponent(nullptr, &anyEffect); c; c = FindNextComponent(c, &anyEffect))
    list += (list.empty() ? "" : ", ") + effectCode(c);
  return list;
}

}  // namespace

Component effectFromArgument(const std::string& argument, std::string& error) {
  for (Component c = FindNextComponent(nullptr, &anyEffect); c; c = FindNextComponent(c, &anyEffect))
    if (effectCode(c) == argument) return c;
  error = "EFFECT: there is no effect \"" + argument + "\"; there are " + existingEffects();
  return nullptr;
}
