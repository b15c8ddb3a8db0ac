#pragma once

#include <cstdint>

using vDSP_Length = uint64_t;
using vDSP_Stride = int64_t;

struct DSPComplex {
  float real;
  float imag;
};

/// Complex values whose halves lie apart. Belongs to whoever made the two arrays.
struct DSPSplitComplex {
  float* realp = nullptr;
  float* imagp = nullptr;
};

using FFTRadix = int;
inline constexpr FFTRadix kFFTRadix2 = 0;
using FFTDirection = int;
inline constexpr FFTDirection kFFTDirection_Forward = 1;
inline constexpr FFTDirection kFFTDirection_Inverse = -1;

/// Tables and scratch memory for real transforms of one length. One thread at a time may use it.
using FFTSetup = struct OpaqueFFTSetup*;

/// For transforms of 2^log2n real values, log2n from 1 to 24. Null when there is no memory or log2n is not
/// in that range.
FFTSetup create_fftsetup(vDSP_Length log2n, FFTRadix radix);
void destroy_fftsetup(FFTSetup setup);

/// Real values in pairs to split halves: even ones to realp, odd ones to imagp. `sourceStride` counts single
/// values, so 2 means that the pairs lie close together. `length` counts pairs.
void ctoz(const DSPComplex* source, vDSP_Stride sourceStride, const DSPSplitComplex* target,
          vDSP_Stride targetStride, vDSP_Length length);
/// The reverse of ctoz.
void ztoc(const DSPSplitComplex* source, vDSP_Stride sourceStride, DSPComplex* target,
          vDSP_Stride targetStride, vDSP_Length length);

/// Transforms 2^log2n real values in place, without allocating. `log2n` is that of the setup, `stride` is 1.
/// Forward: `data` holds the values as ctoz leaves them, and then twice their transform in packed form: bin
/// k in realp[k] and imagp[k], but bin 0 in realp[0] and bin n/2, which is real as well, in imagp[0].
/// Inverse: takes that form for the transform itself and sums it over all n bins without a factor, so that
/// forward, a factor of 1 / (2n) and inverse give back the values.
void fft_zrip(FFTSetup setup, const DSPSplitComplex* data, vDSP_Stride stride, vDSP_Length log2n,
              FFTDirection direction);
