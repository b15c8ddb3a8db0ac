#pragma once

#include <array>
#include <cstdint>
#include <cstring>

/// Sixteen numbers that are computed four at a time: a number for each of sixteen frames, or of sixteen
/// lines.
class Sixteen {
 public:
  using Four [[gnu::vector_size(16)]] = float;
  static constexpr uint32_t size = 16;

  Sixteen() : values_{} {}
  explicit Sixteen(float value) { values_.fill(value); }
  /// From memory; only the first `count`, the others are 0.
  explicit Sixteen(const float* from) { std::memcpy(data(), from, sizeof values_); }
  Sixteen(const float* from, uint32_t count) : values_{} { std::memcpy(data(), from, count * sizeof(float)); }

  /// Four by four, from a function of the group's number.
  template <class Function>
  static Sixteen fromGroups(Function function) {
    Sixteen result{Unset()};
    for (uint32_t g = 0; g < 4; ++g) result.setFour(g, function(g));
    return result;
  }

  float* data() { return values_.data(); }
  const float* data() const { return values_.data(); }
  float& operator[](size_t i) { return values_[i]; }
  float operator[](size_t i) const { return values_[i]; }

  static Four fourAt(const float* from) {
    Four four;
    std::memcpy(&four, from, sizeof four);
    return four;
  }
  Four four(uint32_t group) const { return fourAt(&values_[4 * group]); }
  void setFour(uint32_t group, Four four) { std::memcpy(&values_[4 * group], &four, sizeof four); }

  Sixteen& operator+=(const Sixteen& other) {
    for (uint32_t g = 0; g < 4; ++g) setFour(g, four(g) + other.four(g));
    return *this;
  }
  Sixteen& operator-=(const Sixteen& other) {
    for (uint32_t g = 0; g < 4; ++g) setFour(g, four(g) - other.four(g));
    return *this;
  }
  Sixteen& operator*=(const Sixteen& other) {
    for (uint32_t g = 0; g < 4; ++g) setFour(g, four(g) * other.four(g));
    return *this;
  }
  Sixteen& operator*=(float factor) {
    for (uint32_t g = 0; g < 4; ++g) setFour(g, four(g) * factor);
    return *this;
  }
  friend Sixteen operator+(Sixteen a, const Sixteen& b) { return a += b; }
  friend Sixteen operator-(Sixteen a, const Sixteen& b) { return a -= b; }
  friend Sixteen operator*(Sixteen a, const Sixteen& b) { return a *= b; }
  friend Sixteen operator*(Sixteen a, float factor) { return a *= factor; }

 private:
  struct Unset {};
  explicit Sixteen(Unset) {}

  alignas(16) std::array<float, size> values_;
};
