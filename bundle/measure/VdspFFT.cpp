#include "VdspFFT.h"

#include <cstdlib>

#include "Class.h"
#include "NSLog.h"
#include "VectorOperations.h"

const Class& VdspFFT::isa() const {
  return record();
}

const Class& VdspFFT::record() {
  static const Class c = Class::of<VdspFFT>("VdspFFT", NSObject::record());
  return c;
}

VdspFFT::VdspFFT(unsigned long order)
    : setupReal(create_fftsetup(order, kFFTRadix2)),
      log2n(static_cast<uint32_t>(order)),
      n(1u << order),
      nOver2(n >> 1),
      scale(static_cast<float>(1.0 / (2.0 * n))) {
  if (setupReal) return;
  NSLog("\nFFT_Setup failed to allocate enough memory for the real FFT.\n");
  std::exit(0);
}

DSPSplitComplex VdspFFT::forwardFFT(DSPSplitComplex a, const float* input) {
  ctoz(reinterpret_cast<const DSPComplex*>(input), 2, &a, 1, nOver2);
  fft_zrip(setupReal.get(), &a, stride, log2n, kFFTDirection_Forward);
  return a;
}

void VdspFFT::absoluteValue_absoluteOut(DSPSplitComplex a, float* out) const {
  vDSP_zvabs(&a, 1, out, 1, nOver2);
}

void VdspFFT::convertToDB(float* values) const {
  const float reference = 2;  // the factor of the packed spectrum
  vDSP_vdbcon(values, 1, &reference, values, 1, nOver2, 1);
}

float* VdspFFT::inverseFFT(DSPSplitComplex a, float* output) {
  vsmul(a.realp, 1, &scale, a.realp, 1, nOver2);
  vsmul(a.imagp, 1, &scale, a.imagp, 1, nOver2);
  fft_zrip(setupReal.get(), &a, stride, log2n, kFFTDirection_Inverse);
  ztoc(&a, 1, reinterpret_cast<DSPComplex*>(output), 2, nOver2);
  return output;
}
