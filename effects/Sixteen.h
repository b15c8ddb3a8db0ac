#pragma once

#include <array>
#include <cstdint>
#include <cstring>

/// Numbers that are computed four at a time.
template <uint32_t count>
class Numbers {
 public:
  using Four [[gnu::vector_size(16)]] = float;
  static constexpr uint32_t size = count, groups = count / 4;
  static_assert(size == 4 * groups);

  Numbers() : values_{} {}
  explicit Numbers(float value) { values_.fill(value); }
  /// From memory; only the first `some`, the others are 0.
  explicit Numbers(const float* from) { std::memcpy(data(), from, sizeof values_); }
  Numbers(const float* from, uint32_t some) : values_{} { std::memcpy(data(), from, some * sizeof(float)); }

  /// Four by four, from a function of the group's number.
  template <class Function>
  static Numbers fromGroups(Function function) {
    Numbers result{Unset()};
    for (uint32_t g = 0; g < groups; ++g) result.setFour(g, function(g));
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

  Numbers& operator+=(const Numbers& other) {
    for (uint32_t g = 0; g < groups; ++g) setFour(g, four(g) + other.four(g));
    return *this;
  }
  Numbers& operator-=(const Numbers& other) {
    for (uint32_t g = 0; g < groups; ++g) setFour(g, four(g) - other.four(g));
    return *this;
  }
  Numbers& operator*=(const Numbers& other) {
    for (uint32_t g = 0; g < groups; ++g) setFour(g, four(g) * other.four(g));
    return *this;
  }
  Numbers& operator*=(float factor) {
    for (uint32_t g = 0; g < groups; ++g) setFour(g, four(g) * factor);
    return *this;
  }
  friend Numbers operator+(Numbers a, const Numbers& b) { return a += b; }
  friend Numbers operator-(Numbers a, const Numbers& b) { return a -= b; }
  friend Numbers operator*(Numbers a, const Numbers& b) { return a *= b; }
  friend Numbers operator*(Numbers a, float factor) { return a *= factor; }

 private:
  struct Unset {};
  explicit Numbers(Unset) {}

  alignas(16) std::array<float, size> values_;
};

/// A number for each of sixteen frames, or of sixteen lines.
using Sixteen = Numbers<16>;
