// Takes the place of those functions of Rubber Band that an effect calls while it renders, and calls them.

#include "RubberBandCalls.h"

#include <dlfcn.h>
#include <rubberband/RubberBandStretcher.h>

namespace {

// The function that comes next in the order of libraries.
template <class Result, class... Arguments>
auto next(const char* symbol) {
  return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, symbol));
}

}  // namespace

namespace RubberBand {

using Self = RubberBandStretcher;

void Self::process(const float* const* input, size_t samples, bool final) {
  static const auto original = next<void, Self*, const float* const*, size_t, bool>(
      "_ZN10RubberBand19RubberBandStretcher7processEPKPKfmb");
  const RubberBandCall call;
  original(this, input, samples, final);
}
size_t Self::retrieve(float* const* output, size_t samples) const {
  static const auto original = next<size_t, const Self*, float* const*, size_t>(
      "_ZNK10RubberBand19RubberBandStretcher8retrieveEPKPfm");
  const RubberBandCall call;
  return original(this, output, samples);
}
int Self::available() const {
  static const auto original = next<int, const Self*>("_ZNK10RubberBand19RubberBandStretcher9availableEv");
  const RubberBandCall call;
  return original(this);
}
void Self::setPitchScale(double scale) {
  static const auto original =
      next<void, Self*, double>("_ZN10RubberBand19RubberBandStretcher13setPitchScaleEd");
  const RubberBandCall call;
  original(this, scale);
}
void Self::setTransientsOption(Options options) {
  static const auto original =
      next<void, Self*, Options>("_ZN10RubberBand19RubberBandStretcher19setTransientsOptionEi");
  const RubberBandCall call;
  original(this, options);
}
size_t Self::getPreferredStartPad() const {
  static const auto original =
      next<size_t, const Self*>("_ZNK10RubberBand19RubberBandStretcher20getPreferredStartPadEv");
  const RubberBandCall call;
  return original(this);
}
size_t Self::getStartDelay() const {
  static const auto original =
      next<size_t, const Self*>("_ZNK10RubberBand19RubberBandStretcher13getStartDelayEv");
  const RubberBandCall call;
  return original(this);
}

}  // namespace RubberBand
