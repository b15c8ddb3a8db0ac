#include "LowShelfFilter.h"

#include "BiquadDesign.h"

namespace {

enum : AudioUnitParameterID { cutoff, gain };

constexpr AUParameterRow parameters[] = {
    {cutoff, "cutoff frequency", kAudioUnitParameterUnit_Hertz, 20, 2000, 200, kAUParameterLogarithmic},
    {gain, "gain", kAudioUnitParameterUnit_Decibels, -40, 40, 0},
};
constexpr AUPresetRow presets[] = {
    {"Flat"},
    {"Full Bass", {{{cutoff, 120}, {gain, 6}}}},
    {"Less Boom", {{{cutoff, 250}, {gain, -6}}}},
    {"Thin", {{{cutoff, 500}, {gain, -18}}}},
};

}  // namespace

LowShelfFilter::LowShelfFilter() : FilterEffect(parameters, presets) {}

LowShelfFilter::Sections LowShelfFilter::design(const Values& values, double sampleRate) const {
  return {BiquadDesign(values[cutoff], sampleRate).lowShelf(values[gain])};
}
