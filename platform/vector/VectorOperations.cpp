#include "VectorOperations.h"

#include <cmath>
#include <numbers>
#include <utility>

void vDSP_zvabs(const DSPSplitComplex* a, vDSP_Stride strideA, float* c, vDSP_Stride strideC,
                vDSP_Length length) {
  for (vDSP_Stride i = 0; i < static_cast<vDSP_Stride>(length); ++i) {
    const float re = a->realp[i * strideA];
    const float im = a->imagp[i * strideA];
    c[i * strideC] = std::sqrt(re * re + im * im);
  }
}

void vDSP_vdbcon(const float* a, vDSP_Stride strideA, const float* reference, float* c, vDSP_Stride strideC,
                 vDSP_Length length, unsigned flag) {
  const float factor = flag ? 20 : 10;
  const float inverse = 1 / *reference;
  for (vDSP_Stride i = 0; i < static_cast<vDSP_Stride>(length); ++i)
    c[i * strideC] = factor * std::log10(a[i * strideA] * inverse);
}

void vsmul(const float* a, vDSP_Stride strideA, const float* factor, float* c, vDSP_Stride strideC,
           vDSP_Length length) {
  const float f = *factor;
  for (vDSP_Stride i = 0; i < static_cast<vDSP_Stride>(length); ++i) c[i * strideC] = a[i * strideA] * f;
}

void vmul(const float* a, vDSP_Stride strideA, const float* b, vDSP_Stride strideB, float* c,
          vDSP_Stride strideC, vDSP_Length length) {
  for (vDSP_Stride i = 0; i < static_cast<vDSP_Stride>(length); ++i)
    c[i * strideC] = a[i * strideA] * b[i * strideB];
}

void vDSP_blkman_window(float* c, vDSP_Length length, int flag) {
  const vDSP_Length count = flag == vDSP_HALF_WINDOW ? (length + 1) / 2 : length;
  for (vDSP_Length k = 0; k < count; ++k) {
    const double angle = 2 * std::numbers::pi * static_cast<double>(k) / static_cast<double>(length);
    c[k] = static_cast<float>(0.42 - 0.5 * std::cos(angle) + 0.08 * std::cos(2 * angle));
  }
}

void vDSP_vrvrs(float* c, vDSP_Stride strideC, vDSP_Length length) {
  for (vDSP_Stride i = 0, j = static_cast<vDSP_Stride>(length) - 1; i < j; ++i, --j)
    std::swap(c[i * strideC], c[j * strideC]);
}
