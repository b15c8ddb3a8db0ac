#include "LinkwitzRiley.h"

#include <cmath>

ButterworthSection::Tuning::Tuning(double frequency) {
  const double g = std::tan(std::numbers::pi * frequency);
  a1 = 1 / (1 + g * (g + std::numbers::sqrt2));
  a2 = g * a1;
  a3 = g * a2;
}

void LinkwitzRileySplit::clear() {
  for (ButterworthSection* section : {&both_, &low_, &high_}) section->clear();
}

void FourBandSplit::clear() {
  for (LinkwitzRileySplit* split : {&lower_, &middle_, &upper_}) split->clear();
  lowerPhase_.clear();
  upperPhase_.clear();
}

std::array<double, 4> FourBandSplit::next(double input, const Tunings& tunings) {
  const auto halves = middle_.next(input, tunings[1]);
  const auto below = lower_.next(upperPhase_.next(halves.low, tunings[2]).all, tunings[0]);
  const auto above = upper_.next(lowerPhase_.next(halves.high, tunings[0]).all, tunings[2]);
  return {below.low, below.high, above.low, above.high};
}
