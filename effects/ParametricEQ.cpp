#include "ParametricEQ.h"

#include "BiquadDesign.h"

namespace {

enum : AudioUnitParameterID { center, quality, gain };

constexpr UInt32 logarithmic = kAUParameterLogarithmic;
constexpr AUParameterRow parameters[] = {
    {center, "centre frequency", kAudioUnitParameterUnit_Hertz, 20, 22050, 2000, logarithmic},
    {quality, "Q", kAudioUnitParameterUnit_Generic, 0.1f, 20, 1, logarithmic},
    {gain, "gain", kAudioUnitParameterUnit_Decibels, -20, 20, 0},
};
constexpr AUPresetRow presets[] = {
    {"Flat"},
    {"Presence", {{{center, 4500}, {quality, 0.8f}, {gain, 5}}}},
    {"Less Mud", {{{center, 300}, {quality, 1.2f}, {gain, -5}}}},
    {"Hum Notch (50 Hz)", {{{center, 50}, {quality, 12}, {gain, -20}}}},
};

}  // namespace

ParametricEQ::ParametricEQ() : FilterEffect(parameters, presets) {}

ParametricEQ::Sections ParametricEQ::design(const Values& values, double sampleRate) const {
  return {
      BiquadDesign(values[center], sampleRate).peak(BiquadDesign::ofQuality(values[quality]), values[gain])};
}
