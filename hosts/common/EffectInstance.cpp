#include "EffectInstance.h"

#include "MacRoman.h"

std::vector<Component> registeredEffects() {
  constexpr ComponentDescription any{.componentType = FourCharCode("aufx")};
  std::vector<Component> effects;
  for (Component c = FindNextComponent(nullptr, &any); c; c = FindNextComponent(c, &any))
    effects.push_back(c);
  return effects;
}

Component registeredEffect(const std::string& code) {
  for (Component effect : registeredEffects())
    if (effectCode(effect) == code) return effect;
  return nullptr;
}

EffectInstance openEffect(Component component) {
  ComponentInstance instance = nullptr;
  OpenAComponent(component, &instance);
  return EffectInstance(instance);
}

std::string effectCode(Component component) {
  ComponentDescription description;
  GetComponentInfo(component, &description, nullptr, nullptr, nullptr);
  std::string code;
  for (int shift = 24; shift >= 0; shift -= 8)
    code += static_cast<char>(description.componentSubType >> shift & 0xFF);
  return code;
}

std::string effectName(Component component) {
  const Handle name = NewHandle(0);
  std::string text;
  if (GetComponentInfo(component, nullptr, name, nullptr, nullptr) == noErr)
    text = foundation::utf8FromMacRoman({*name + 1, static_cast<unsigned char>(**name)});
  DisposeHandle(name);
  return text;
}
