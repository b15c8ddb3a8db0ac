#include "Biquad.h"

#include <cmath>

double BiquadCoefficients::decayFrames() const {
  const double square = a1 * a1 / 4 - a2;
  return -1 / std::log(square < 0 ? std::sqrt(a2) : std::fabs(a1 / 2) + std::sqrt(square));
}
