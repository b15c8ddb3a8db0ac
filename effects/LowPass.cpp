#include "LowPass.h"

#include "BiquadDesign.h"
#include "Decibels.h"

namespace {

enum : AudioUnitParameterID { cutoff, resonance };

constexpr AUParameterRow parameters[] = {
    {cutoff, "cutoff frequency", kAudioUnitParameterUnit_Hertz, 10, 22050, 6900, kAUParameterLogarithmic},
    {resonance, "resonance", kAudioUnitParameterUnit_Decibels, -20, 40, 0},
};
constexpr AUPresetRow presets[] = {
    {"Gentle"},
    {"Warm", {{{cutoff, 3000}, {resonance, -3}}}},
    {"Muffled", {{{cutoff, 600}, {resonance, -3}}}},
    {"Resonant", {{{cutoff, 900}, {resonance, 18}}}},
};

}  // namespace

LowPass::LowPass() : FilterEffect(parameters, presets) {}

LowPass::Sections LowPass::design(const Values& values, double sampleRate) const {
  return {BiquadDesign(values[cutoff], sampleRate).lowPass(factorOfDecibels(values[resonance]))};
}
