#include "Filter.h"

#include "BiquadDesign.h"
#include "Decibels.h"

namespace {

enum : AudioUnitParameterID {
  lowType,
  lowFrequency,
  lowGain,
  center,  // of the first band: its frequency, gain and bandwidth, then those of the next
  centerGain,
  bandwidth,
  bandStep = 3,
  highType = 12,
  highFrequency,
  highGain
};

constexpr const char* lowTypes[] = {"low shelf", "highpass"};
constexpr const char* highTypes[] = {"high shelf", "lowpass"};
constexpr UInt32 dB = kAudioUnitParameterUnit_Decibels;
constexpr UInt32 hertz = kAudioUnitParameterUnit_Hertz;
constexpr UInt32 octaves = kAudioUnitParameterUnit_Octaves;
constexpr UInt32 indexed = kAudioUnitParameterUnit_Indexed;
constexpr UInt32 logarithmic = kAUParameterLogarithmic;
constexpr AUParameterRow parameters[] = {
    {lowType, "low filter type", indexed, 0, 1, 0, kAUParameterPlain, lowTypes},
    {lowFrequency, "low frequency", hertz, 10, 3000, 100, logarithmic},
    {lowGain, "low gain", dB, -18, 18, 0},
    {center, "centre frequency 1", hertz, 20, 20000, 300, logarithmic},
    {centerGain, "centre gain 1", dB, -18, 18, 0},
    {bandwidth, "bandwidth 1", octaves, 0.05f, 3, 1},
    {center + bandStep, "centre frequency 2", hertz, 20, 20000, 1000, logarithmic},
    {centerGain + bandStep, "centre gain 2", dB, -18, 18, 0},
    {bandwidth + bandStep, "bandwidth 2", octaves, 0.05f, 3, 1},
    {center + 2 * bandStep, "centre frequency 3", hertz, 20, 20000, 4000, logarithmic},
    {centerGain + 2 * bandStep, "centre gain 3", dB, -18, 18, 0},
    {bandwidth + 2 * bandStep, "bandwidth 3", octaves, 0.05f, 3, 1},
    {highType, "high filter type", indexed, 0, 1, 0, kAUParameterPlain, highTypes},
    {highFrequency, "high frequency", hertz, 1000, 20000, 8000, logarithmic},
    {highGain, "high gain", dB, -18, 18, 0},
};
constexpr AUPresetRow presets[] = {
    {"Flat"},
    {"Loudness", {{{lowGain, 6}, {center + bandStep, 900}, {centerGain + bandStep, -2}, {highGain, 4}}}},
    {"Clear Voice",
     {{{lowType, 1},
       {lowFrequency, 90},
       {lowGain, -3},
       {centerGain, -3},
       {center + 2 * bandStep, 3500},
       {centerGain + 2 * bandStep, 4},
       {bandwidth + 2 * bandStep, 1.5f},
       {highGain, 2}}}},
    {"Telephone",
     {{{lowType, 1},
       {lowFrequency, 400},
       {lowGain, 2},
       {center + bandStep, 1500},
       {centerGain + bandStep, 6},
       {highType, 1},
       {highFrequency, 3400},
       {highGain, 2}}}},
    {"Smile", {{{lowGain, 5}, {center + bandStep, 700}, {centerGain + bandStep, -5}, {highGain, 5}}}},
};

FilterSection between(const FilterSection& first, const FilterSection& second, double part) {
  return first.plus(second.plus(first, -1), part);
}

}  // namespace

Filter::Filter() : FilterEffect(parameters, presets) {}

Filter::Sections Filter::design(const Values& values, double sampleRate) const {
  Sections sections;
  const BiquadDesign low(values[lowFrequency], sampleRate);
  sections.front() = between(low.lowShelf(values[lowGain]), low.highPass(factorOfDecibels(values[lowGain])),
                             values[lowType]);
  for (size_t band = 0; band < 3; ++band) {
    const double* own = &values[bandStep * band];
    const BiquadDesign design(own[center], sampleRate);
    sections[1 + band] = design.peak(design.ofOctaves(own[bandwidth]), own[centerGain]);
  }
  const BiquadDesign high(values[highFrequency], sampleRate);
  sections.back() = between(high.highShelf(values[highGain]),
                            high.lowPass(factorOfDecibels(values[highGain])), values[highType]);
  return sections;
}
