#pragma once

#include <array>
#include <cstddef>

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

/// A section in the numbers that a frame needs, by pairs, which glide at the cost of one.
class GlidingSection {
 public:
  GlidingSection() : GlidingSection(FilterSection()) {}
  explicit GlidingSection(const FilterSection& s)
      : pairs_{{{s.tuning, s.damping},
                {s.drive, s.high},
                {(s.band - s.damping * s.high) / s.drive, (s.low - s.high) / s.drive}}} {}

  double tuning() const { return pairs_[0][0]; }
  double damping() const { return pairs_[0][1]; }
  double drive() const { return pairs_[1][0]; }
  // What the output has of each.
  double ofInput() const { return pairs_[1][1]; }
  double ofBand() const { return pairs_[2][0]; }
  double ofLow() const { return pairs_[2][1]; }

  /// Each number a part of the way to the other's.
  GlidingSection step(const GlidingSection& to, double part) const {
    GlidingSection step;
    for (std::size_t i = 0; i < pairs_.size(); ++i) step.pairs_[i] = part * (to.pairs_[i] - pairs_[i]);
    return step;
  }
  GlidingSection& operator+=(const GlidingSection& step) {
    for (std::size_t i = 0; i < pairs_.size(); ++i) pairs_[i] += step.pairs_[i];
    return *this;
  }

 private:
  using Pair [[gnu::vector_size(2 * sizeof(double))]] = double;
  std::array<Pair, 3> pairs_;
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
    const double tuning = s.tuning();
    const double a1 = 1 / (1 + tuning * (tuning + s.damping()));
    const double driven = a1 * tuning * s.drive();
    const StereoSample undriven = a1 * (band_ - tuning * low_);
    const StereoSample band = undriven + driven * input;
    const double ofBoth = s.ofBand() + s.ofLow() * tuning;  // what the band adds to the low is heard too
    const StereoSample rest = ofBoth * undriven + s.ofLow() * low_;
    low_ += 2 * tuning * band;
    band_ = 2 * band - band_;
    return (s.ofInput() + ofBoth * driven) * input + rest;
  }

 private:
  GlidingFilter(double band, double low) : band_{band, band}, low_{low, low} {}

  StereoSample band_ = {};
  StereoSample low_ = {};
};
