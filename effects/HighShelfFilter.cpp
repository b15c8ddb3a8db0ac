#include "HighShelfFilter.h"

#include "BiquadDesign.h"

namespace {

enum : AudioUnitParameterID { cutoff, gain };

constexpr AUParameterRow parameters[] = {
    {cutoff, "cutoff frequency", kAudioUnitParameterUnit_Hertz, 1000, 20000, 8000, kAUParameterLogarithmic},
    {gain, "gain", kAudioUnitParameterUnit_Decibels, -40, 40, 0},
};
constexpr AUPresetRow presets[] = {
    {"Flat"},
    {"Air", {{{cutoff, 12000}, {gain, 4}}}},
    {"Presence", {{{cutoff, 4000}, {gain, 5}}}},
    {"Soft", {{{cutoff, 5000}, {gain, -8}}}},
};

}  // namespace

HighShelfFilter::HighShelfFilter() : FilterEffect(parameters, presets) {}

HighShelfFilter::Sections HighShelfFilter::design(const Values& values, double sampleRate) const {
  return {BiquadDesign(values[cutoff], sampleRate).highShelf(values[gain])};
}
