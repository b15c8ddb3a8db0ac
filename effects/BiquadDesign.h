#pragma once

#include "FilterSection.h"

/// Sections of one frequency. (R. Bristow-Johnson, Cookbook formulae for audio equalizer biquad filter
/// coefficients, with their analogue prototypes; bandpass with 0 dB at its peak, shelves of slope 1.)
/// Gains in dB.
class BiquadDesign {
 public:
  /// Hz; what is not below 0.49 of the sample rate is taken as that.
  BiquadDesign(double frequency, double sampleRate);

  /// Their quality is also the factor at the frequency itself.
  FilterSection lowPass(double quality) const;
  FilterSection highPass(double quality) const;

  /// How wide a bandpass or a peak is.
  struct Width {
    double damping;   // 1 / quality
    double unwarped;  // damping at a sample rate without end
  };
  static Width ofQuality(double quality) { return {1 / quality, 1 / quality}; }
  /// A bandpass falls to -3 dB, and a peak to half its gain, at two frequencies that are this many octaves
  /// apart. The cookbook's own formula comes near this only far below half the sample rate.
  Width ofOctaves(double octaves) const;

  FilterSection bandPass(Width width) const;
  FilterSection peak(Width width, double gain) const;
  FilterSection lowShelf(double gain) const;
  FilterSection highShelf(double gain) const;

 private:
  double tuning_;
};
