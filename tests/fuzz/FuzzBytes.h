#pragma once

#include <cstdint>
#include <cstring>

/// The bytes of one input, read from the front as choices and numbers. Past the end everything is 0.
class FuzzBytes {
 public:
  FuzzBytes(const uint8_t* data, size_t size) : data_(data), left_(size) {}

  bool isEmpty() const { return left_ == 0; }
  unsigned byte() { return left_ == 0 ? 0 : (--left_, *data_++); }
  unsigned below(size_t count) { return byte() % static_cast<unsigned>(count); }
  /// One of 256 values from 0 to 1.
  float fraction() { return static_cast<float>(byte()) / 255; }
  /// The number that the next bytes are, whatever it is.
  template <class T>
  T any() {
    unsigned char bytes[sizeof(T)];
    for (unsigned char& b : bytes) b = static_cast<unsigned char>(byte());
    T value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
  }

 private:
  const uint8_t* data_;
  size_t left_;
};
