#include "VectorFFT.h"

#include <kiss_fftr.h>

#include <cassert>
#include <memory>
#include <new>
#include <vector>

namespace {

constexpr vDSP_Length longest = 24;

struct FreeTables {
  void operator()(kiss_fftr_cfg tables) const { kiss_fftr_free(tables); }
};
using Tables = std::unique_ptr<kiss_fftr_state, FreeTables>;

}  // namespace

struct OpaqueFFTSetup {
  vDSP_Length log2n;
  Tables forward;
  Tables inverse;
  std::vector<float> values;
  std::vector<kiss_fft_cpx> bins;
};

FFTSetup create_fftsetup(vDSP_Length log2n, FFTRadix radix) {
  if (log2n < 1 || log2n > longest || radix != kFFTRadix2) return nullptr;
  const int n = 1 << log2n;
  try {
    const auto count = static_cast<size_t>(n);
    auto setup = std::make_unique<OpaqueFFTSetup>(
        OpaqueFFTSetup{log2n, Tables(kiss_fftr_alloc(n, 0, nullptr, nullptr)),
                       Tables(kiss_fftr_alloc(n, 1, nullptr, nullptr)), std::vector<float>(count),
                       std::vector<kiss_fft_cpx>(count / 2 + 1)});
    return setup->forward && setup->inverse ? setup.release() : nullptr;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void destroy_fftsetup(FFTSetup setup) {
  const std::unique_ptr<OpaqueFFTSetup> owned(setup);
}

void ctoz(const DSPComplex* source, vDSP_Stride sourceStride, const DSPSplitComplex* target,
          vDSP_Stride targetStride, vDSP_Length length) {
  const auto* values = reinterpret_cast<const float*>(source);
  for (vDSP_Stride i = 0; i < static_cast<vDSP_Stride>(length); ++i) {
    target->realp[i * targetStride] = values[i * sourceStride];
    target->imagp[i * targetStride] = values[i * sourceStride + 1];
  }
}

void ztoc(const DSPSplitComplex* source, vDSP_Stride sourceStride, DSPComplex* target,
          vDSP_Stride targetStride, vDSP_Length length) {
  auto* values = reinterpret_cast<float*>(target);
  for (vDSP_Stride i = 0; i < static_cast<vDSP_Stride>(length); ++i) {
    values[i * targetStride] = source->realp[i * sourceStride];
    values[i * targetStride + 1] = source->imagp[i * sourceStride];
  }
}

void fft_zrip(FFTSetup setup, const DSPSplitComplex* data, [[maybe_unused]] vDSP_Stride stride,
              [[maybe_unused]] vDSP_Length log2n, FFTDirection direction) {
  assert(log2n == setup->log2n && stride == 1);
  const vDSP_Length half = setup->values.size() / 2;
  auto* pairs = reinterpret_cast<DSPComplex*>(setup->values.data());
  kiss_fft_cpx* bins = setup->bins.data();
  if (direction == kFFTDirection_Forward) {
    ztoc(data, 1, pairs, 2, half);
    kiss_fftr(setup->forward.get(), setup->values.data(), bins);
    for (vDSP_Length k = 0; k < half; ++k) {
      data->realp[k] = 2 * bins[k].r;
      data->imagp[k] = 2 * bins[k].i;
    }
    data->imagp[0] = 2 * bins[half].r;
  } else {
    for (vDSP_Length k = 0; k < half; ++k) bins[k] = {data->realp[k], data->imagp[k]};
    bins[half] = {data->imagp[0], 0};
    bins[0].i = 0;
    kiss_fftri(setup->inverse.get(), bins, setup->values.data());
    ctoz(pairs, 2, data, 1, half);
  }
}
