#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "AUEffectBase.h"
#include "Components.h"

using MakeEffect = std::function<std::unique_ptr<AUEffectBase>()>;
inline MakeEffect makeStandIn;

/// A component with the code of one of this system's effects but of another maker, so that the same editor
/// opens on it. What every such component opens, also for a measurement, is what the `make` of the last call
/// gives.
template <SInt32 version = 0x00010600>
Component standIn(const std::string& code, MakeEffect make) {
  makeStandIn = std::move(make);
  ComponentDescription description{.componentType = FourCharCode("aufx"),
                                   .componentManufacturer = FourCharCode("appl")};
  for (const char c : code)
    description.componentSubType = description.componentSubType << 8 | static_cast<unsigned char>(c);
  return RegisterComponent(
      description, "Test: AUStandIn", version, +[] { return makeStandIn(); });
}
