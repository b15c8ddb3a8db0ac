#pragma once

#include "VectorFFT.h"

/// Element by element; input and output may be one array. Strides and lengths count elements.

/// The absolute values √(re² + im²).
void vDSP_zvabs(const DSPSplitComplex* a, vDSP_Stride strideA, float* c, vDSP_Stride strideC,
                vDSP_Length length);

/// Decibels relative to `*reference`: 10·log10(a / reference), or 20·log10 with `flag` 1. Zero gives
/// −infinity.
void vDSP_vdbcon(const float* a, vDSP_Stride strideA, const float* reference, float* c, vDSP_Stride strideC,
                 vDSP_Length length, unsigned flag);

/// c = a · *factor
void vsmul(const float* a, vDSP_Stride strideA, const float* factor, float* c, vDSP_Stride strideC,
           vDSP_Length length);

/// c = a · b
void vmul(const float* a, vDSP_Stride strideA, const float* b, vDSP_Stride strideB, float* c,
          vDSP_Stride strideC, vDSP_Length length);

inline constexpr int vDSP_HALF_WINDOW = 1;

/// A Blackman window of `length`: 0.42 − 0.5 cos(2πk / length) + 0.08 cos(4πk / length). With `flag`
/// vDSP_HALF_WINDOW only its first (length + 1) / 2 values are written, else all.
void vDSP_blkman_window(float* c, vDSP_Length length, int flag);

/// Turns the order round, in place.
void vDSP_vrvrs(float* c, vDSP_Stride strideC, vDSP_Length length);
