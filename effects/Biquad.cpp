#include "Biquad.h"

#include <cmath>
#include <complex>
#include <numbers>

double BiquadCoefficients::magnitude(double frequency, double sampleRate) const {
  const auto delay = std::polar(1.0, -2 * std::numbers::pi * frequency / sampleRate);
  return std::abs((b0 + delay * (b1 + delay * b2)) / (1.0 + delay * (a1 + delay * a2)));
}

double BiquadCoefficients::decayFrames() const {
  const double square = a1 * a1 / 4 - a2;
  return -1 / std::log(square < 0 ? std::sqrt(a2) : std::fabs(a1 / 2) + std::sqrt(square));
}
