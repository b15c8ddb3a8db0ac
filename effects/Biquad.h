#pragma once

/// Two channels side by side. One costs no less than two.
using StereoSample [[gnu::vector_size(2 * sizeof(double))]] = double;

/// Second-order transfer function (b0 + b1 / z + b2 / z^2) / (1 + a1 / z + a2 / z^2).
struct BiquadCoefficients {
  double b0 = 1, b1 = 0, b2 = 0, a1 = 0, a2 = 0;

  /// Time constant of the slower pole, in frames.
  double decayFrames() const;
};

/// History of one section, in transposed direct form II.
class Biquad {
 public:
  Biquad() = default;
  Biquad(StereoSample state1, StereoSample state2) : state1_(state1), state2_(state2) {}

  StereoSample next(StereoSample input, const BiquadCoefficients& c) {
    const StereoSample output = c.b0 * input + state1_;
    state1_ = c.b1 * input + state2_ - c.a1 * output;
    state2_ = c.b2 * input - c.a2 * output;
    return output;
  }

  /// The output for no input is state1(), after it state2() - a1 state1().
  StereoSample state1() const { return state1_; }
  StereoSample state2() const { return state2_; }

 private:
  StereoSample state1_ = {};
  StereoSample state2_ = {};
};
