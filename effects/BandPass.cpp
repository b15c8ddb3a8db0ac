#include "BandPass.h"

#include "BiquadDesign.h"

namespace {

enum : AudioUnitParameterID { center, bandwidth };

constexpr double centsOfOctave = 1200;
constexpr AUParameterRow parameters[] = {
    {center, "centre frequency", kAudioUnitParameterUnit_Hertz, 20, 22050, 5000, kAUParameterLogarithmic},
    {bandwidth, "bandwidth", kAudioUnitParameterUnit_Cents, 100, 12000, 600},
};
constexpr AUPresetRow presets[] = {
    {"Half an Octave"},
    {"Telephone", {{{center, 1200}, {bandwidth, 3600}}}},
    {"Sub Bass", {{{center, 60}, {bandwidth, 1200}}}},
    {"Whistle", {{{center, 2000}, {bandwidth, 100}}}},
};

}  // namespace

BandPass::BandPass() : FilterEffect(parameters, presets) {}

BandPass::Sections BandPass::design(const Values& values, double sampleRate) const {
  const BiquadDesign design(values[center], sampleRate);
  return {design.bandPass(design.ofOctaves(values[bandwidth] / centsOfOctave))};
}
