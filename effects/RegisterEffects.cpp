#include "RegisterEffects.h"

#include "BandPass.h"
#include "Components.h"
#include "Delay.h"
#include "DynamicsProcessor.h"
#include "Filter.h"
#include "HighPass.h"
#include "HighShelfFilter.h"
#include "LowPass.h"
#include "LowShelfFilter.h"
#include "MatrixReverb.h"
#include "MultibandCompressor.h"
#include "ParametricEQ.h"
#include "PeakLimiter.h"
#include "SampleDelay.h"
#include "TimePitch.h"

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
    {FourCharCode("bpas"), "Tovin: AUBandPass", make<BandPass>},
    {FourCharCode("dcmp"), "Tovin: AUDynamicsProcessor", make<DynamicsProcessor>},
    {FourCharCode("dely"), "Tovin: AUDelay", make<Delay>},
    {FourCharCode("filt"), "Tovin: AUFilter", make<Filter>},
    {FourCharCode("hpas"), "Tovin: AUHighPass", make<HighPass>},
    {FourCharCode("hshf"), "Tovin: AUHighShelfFilter", make<HighShelfFilter>},
    {FourCharCode("lmtr"), "Tovin: AUPeakLimiter", make<PeakLimiter>},
    {FourCharCode("lpas"), "Tovin: AULowPass", make<LowPass>},
    {FourCharCode("lshf"), "Tovin: AULowShelfFilter", make<LowShelfFilter>},
    {FourCharCode("mcmp"), "Tovin: AUMultibandCompressor", make<MultibandCompressor>},
    {FourCharCode("mrev"), "Tovin: AUMatrixReverb", make<MatrixReverb>},
    {FourCharCode("pmeq"), "Tovin: AUParametricEQ", make<ParametricEQ>},
    {FourCharCode("sdly"), "Tovin: AUSampleDelay", make<SampleDelay>},
    {FourCharCode("tmpt"), "Tovin: AUTimePitch", make<TimePitch>},
    {FourCharCode("Qmrv"), "Tovin: AUQuadMatrixReverb", make<MatrixReverb>},
};

}  // namespace

void RegisterEffects() {
  for (const Row& effect : effects)
    RegisterComponent({FourCharCode("aufx"), effect.subtype, FourCharCode("Tovn")}, effect.name, 0x00010600,
                      effect.factory);
}
