#pragma once

#include <memory>

#include "NSObject.h"
#include "VectorFFT.h"

/// Real transforms of one length, 2^order samples, on buffers of the caller. Spectra are packed as fft_zrip
/// leaves them, twice the mathematical transform. Nothing is allocated after construction. One thread at a
/// time.
class VdspFFT : public NSObject {
 public:
  /// Ends the process when there is no memory for the tables.
  explicit VdspFFT(unsigned long order);
  const Class& isa() const override;
  static const Class& record();

  /// n real samples to n/2 bins in the halves of `a`, which is returned.
  DSPSplitComplex forwardFFT(DSPSplitComplex a, const float* input);
  /// Magnitudes of the n/2 bins; bin 0 combines those of 0 Hz and of half the sample rate.
  void absoluteValue_absoluteOut(DSPSplitComplex a, float* out) const;
  /// n/2 magnitudes of a packed spectrum to dB, in place: a unit impulse has 0 dB in every bin but bin 0.
  /// Zero is −infinity.
  void convertToDB(float* values) const;
  /// Back to n samples, at `output`, which is returned; scales `a`, in place.
  float* inverseFFT(DSPSplitComplex a, float* output);

 private:
  struct DestroySetup {
    void operator()(FFTSetup setup) const { destroy_fftsetup(setup); }
  };

  std::unique_ptr<OpaqueFFTSetup, DestroySetup> setupReal;
  uint32_t log2n;
  uint32_t n;
  uint32_t nOver2;
  int32_t stride = 1;
  float scale;  // makes forward and inverse give back the input
};
