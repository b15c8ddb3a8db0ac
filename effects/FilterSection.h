#pragma once

#include "Biquad.h"

/// Second-order filter as an analogue one, (high s^2 + band s + low) / (s^2 + damping s + 1), brought to the
/// sample rate by s = (z - 1) / (z + 1) / tuning: the same as a BiquadCoefficients, in numbers that may glide
/// from any filter to any other.
struct FilterSection {
  double tuning = 1, damping = 1, low = 0, band = 0, high = 0;
  /// How strongly the input drives the history while that glides. A resonance whose peak stands still
  /// whatever its width has about its damping here.
  double drive = 1;

  /// Each number with `factor` times the other's added.
  FilterSection plus(const FilterSection& other, double factor) const {
    return {tuning + factor * other.tuning, damping + factor * other.damping, low + factor * other.low,
            band + factor * other.band,     high + factor * other.high,       drive + factor * other.drive};
  }
  BiquadCoefficients coefficients() const;
};

/// The gliding twin of Biquad: its history fits every section, so that one which moves neither clicks nor
/// rings. (V. Zavalishin, The Art of VA Filter Design, chapter 4.)
class GlidingFilter {
 public:
  GlidingFilter() = default;
  /// Goes on where a biquad stopped, as far as what the biquad still holds tells.
  GlidingFilter(const Biquad& biquad, const FilterSection& section);
  /// A biquad that goes on where this stops.
  Biquad biquad(const FilterSection& section) const;

  StereoSample next(StereoSample input, const FilterSection& s) {
    const double a1 = 1 / (1 + s.tuning * (s.tuning + s.damping));
    const StereoSample band = a1 * (band_ + s.tuning * (s.drive * input - low_));
    const StereoSample low = low_ + s.tuning * band;
    band_ = 2 * band - band_;
    low_ = 2 * low - low_;
    const double ofBand = (s.band - s.damping * s.high) / s.drive;
    const double ofLow = (s.low - s.high) / s.drive;
    return s.high * input + ofBand * band + ofLow * low;
  }

 private:
  GlidingFilter(double band, double low) : band_{band, band}, low_{low, low} {}

  StereoSample band_ = {};
  StereoSample low_ = {};
};
