#pragma once

#if defined(__SSE__)
#include <xmmintrin.h>
#elif defined(__aarch64__)
#include <cstdint>
#endif

/// While it lives, this thread computes with 0 where a number would be denormal, which processors handle
/// many times slower; afterwards the thread's mode is what it was.
class AUFlushDenormals {
 public:
  AUFlushDenormals() : before_(mode()) { setMode(before_ | flushBits); }
  ~AUFlushDenormals() { setMode(before_); }
  AUFlushDenormals(const AUFlushDenormals&) = delete;
  AUFlushDenormals& operator=(const AUFlushDenormals&) = delete;

 private:
#if defined(__SSE__)
  using Mode = unsigned;
  static constexpr Mode flushBits = 0x8040;  // results and operands
  static Mode mode() {
    return _mm_getcsr();
  }
  static void setMode(Mode m) {
    _mm_setcsr(m);
  }
#elif defined(__aarch64__)
  using Mode = uint64_t;
  static constexpr Mode flushBits = Mode{1} << 24;
  static Mode mode() {
    Mode m;
    __asm__ volatile("mrs %0, fpcr" : "=r"(m));
    return m;
  }
  static void setMode(Mode m) {
    __asm__ volatile("msr fpcr, %0" ::"r"(m));
  }
#else
  using Mode = unsigned;
  static constexpr Mode flushBits = 0;
  static Mode mode() {
    return 0;
  }
  static void setMode(Mode) {}
#endif

  Mode before_;
};
