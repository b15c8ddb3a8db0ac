#include "HighPass.h"

#include "BiquadDesign.h"
#include "Decibels.h"

namespace {

enum : AudioUnitParameterID { cutoff, resonance };

constexpr AUParameterRow parameters[] = {
    {cutoff, "cutoff frequency", kAudioUnitParameterUnit_Hertz, 10, 22050, 6900, kAUParameterLogarithmic},
    {resonance, "resonance", kAudioUnitParameterUnit_Decibels, -20, 40, 0},
};
constexpr AUPresetRow presets[] = {
    {"Air Only"},
    {"Rumble Filter", {{{cutoff, 40}, {resonance, -3}}}},
    {"Voice", {{{cutoff, 120}, {resonance, -3}}}},
    {"Telephone", {{{cutoff, 500}, {resonance, 3}}}},
};

}  // namespace

HighPass::HighPass() : FilterEffect(parameters, presets) {}

HighPass::Sections HighPass::design(const Values& values, double sampleRate) const {
  return {BiquadDesign(values[cutoff], sampleRate).highPass(factorOfDecibels(values[resonance]))};
}
