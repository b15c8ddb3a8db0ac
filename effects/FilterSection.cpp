#include "FilterSection.h"

BiquadCoefficients FilterSection::coefficients() const {
  const double square = tuning * tuning;
  const double a0 = 1 + damping * tuning + square;
  return {(high + band * tuning + low * square) / a0, 2 * (low * square - high) / a0,
          (high - band * tuning + low * square) / a0, 2 * (square - 1) / a0,
          (1 - damping * tuning + square) / a0};
}

Biquad GlidingFilter::biquad(const FilterSection& section) const {
  GlidingFilter silent = *this;
  constexpr StereoSample nothing = {};
  const GlidingSection still(section);
  const StereoSample first = silent.next(nothing, still);
  const StereoSample second = silent.next(nothing, still);
  return {first, second + section.coefficients().a1 * first};
}

// The biquad's state is a linear function of this one's; its two columns are found by trying.
GlidingFilter::GlidingFilter(const Biquad& biquad, const FilterSection& section) {
  const Biquad ofBand = GlidingFilter(1, 0).biquad(section);
  const Biquad ofLow = GlidingFilter(0, 1).biquad(section);
  const double determinant = ofBand.state1()[0] * ofLow.state2()[0] - ofLow.state1()[0] * ofBand.state2()[0];
  if (determinant == 0) return;  // without gain the output tells nothing
  band_ = (ofLow.state2() * biquad.state1() - ofLow.state1() * biquad.state2()) / determinant;
  low_ = (ofBand.state1() * biquad.state2() - ofBand.state2() * biquad.state1()) / determinant;
}
