#include "RegisterEffects.h"

#include "Components.h"
#include "DynamicsProcessor.h"
#include "MultibandCompressor.h"
#include "PeakLimiter.h"
#include "SampleDelay.h"

namespace {

template <class Effect>
std::unique_ptr<AUEffectBase> make() {
  return std::make_unique<Effect>();
}

struct Row {
  OSType subtype;
  const char* name;
  ComponentFactory factory;
};

constexpr Row effects[] = {
    {FourCharCode("dcmp"), "Tovin: AUDynamicsProcessor", make<DynamicsProcessor>},
    {FourCharCode("lmtr"), "Tovin: AUPeakLimiter", make<PeakLimiter>},
    {FourCharCode("mcmp"), "Tovin: AUMultibandCompressor", make<MultibandCompressor>},
    {FourCharCode("sdly"), "Tovin: AUSampleDelay", make<SampleDelay>},
};

}  // namespace

void RegisterEffects() {
  for (const Row& effect : effects)
    RegisterComponent({FourCharCode("aufx"), effect.subtype, FourCharCode("Tovn")}, effect.name, 0x00010600,
                      effect.factory);
}
