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

/// A section in the numbers that a frame needs.
struct GlidingSection {
  GlidingSection() = default;
  explicit GlidingSection(const FilterSection& s)
      : tuning(s.tuning),
        damping(s.damping),
        drive(s.drive),
        ofInput(s.high),
        ofBand((s.band - s.damping * s.high) / s.drive),
        ofLow((s.low - s.high) / s.drive) {}

  /// Each number a part of the way to the other's.
  GlidingSection step(const GlidingSection& to, double part) const {
    GlidingSection step;
    step.tuning = part * (to.tuning - tuning);
    step.damping = part * (to.damping - damping);
    step.drive = part * (to.drive - drive);
    step.ofInput = part * (to.ofInput - ofInput);
    step.ofBand = part * (to.ofBand - ofBand);
    step.ofLow = part * (to.ofLow - ofLow);
    return step;
  }
  GlidingSection& operator+=(const GlidingSection& step) {
    tuning += step.tuning;
    damping += step.damping;
    drive += step.drive;
    ofInput += step.ofInput;
    ofBand += step.ofBand;
    ofLow += step.ofLow;
    return *this;
  }

  double tuning = 1, damping = 1, drive = 1;
  double ofInput = 0, ofBand = 0, ofLow = 0;
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

  StereoSample next(StereoSample input, const GlidingSection& s) {
    // What follows from the history alone stands apart, so that the next section need not wait for it.
    const double a1 = 1 / (1 + s.tuning * (s.tuning + s.damping));
    const double driven = a1 * s.tuning * s.drive;
    const StereoSample undriven = a1 * (band_ - s.tuning * low_);
    const StereoSample band = undriven + driven * input;
    const StereoSample rest = s.ofBand * undriven + s.ofLow * (low_ + s.tuning * undriven);
    low_ += 2 * s.tuning * band;
    band_ = 2 * band - band_;
    return (s.ofInput + (s.ofBand + s.ofLow * s.tuning) * driven) * input + rest;
  }

 private:
  GlidingFilter(double band, double low) : band_{band, band}, low_{low, low} {}

  StereoSample band_ = {};
  StereoSample low_ = {};
};
