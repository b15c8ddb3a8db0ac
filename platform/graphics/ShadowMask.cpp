#include "ShadowMask.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <numeric>
#include <vector>

namespace {

constexpr int largestSide = 8192;

/// A separable filter runs over lines of bytes `step` apart, through a scratch line.
template <class Filter>
void eachLine(uint8_t* data, int width, int height, int stride, const Filter& filter) {
  std::vector<uint8_t> in(static_cast<size_t>(std::max(width, height)));
  const auto run = [&](uint8_t* first, int count, ptrdiff_t step) {
    uint8_t any = 0;
    for (int i = 0; i < count; ++i) any |= in[static_cast<size_t>(i)] = first[i * step];
    if (any) filter(in, first, count, step);
  };
  for (int y = 0; y < height; ++y) run(data + static_cast<ptrdiff_t>(y) * stride, width, 1);
  for (int x = 0; x < width; ++x) run(data + x, height, stride);
}

void gaussian(uint8_t* data, int width, int height, int stride, float sigma) {
  const int reach = static_cast<int>(std::ceil(3 * sigma));
  std::vector<float> kernel(static_cast<size_t>(2 * reach + 1));
  for (int i = -reach; i <= reach; ++i) {
    // The share of a whole pixel: a value at its middle would narrow a Gaussian of less than a pixel.
    const auto below = [&](float x) { return std::erf(x / (sigma * std::numbers::sqrt2_v<float>)); };
    kernel[static_cast<size_t>(i + reach)] =
        below(static_cast<float>(i) + 0.5f) - below(static_cast<float>(i) - 0.5f);
  }
  const float sum = std::accumulate(kernel.begin(), kernel.end(), 0.0f);
  for (float& weight : kernel) weight /= sum;
  std::vector<float> spread;
  eachLine(data, width, height, stride,
           [&](const std::vector<uint8_t>& in, uint8_t* out, int count, ptrdiff_t step) {
             // From where something is, as most of a text's mask is empty.
             spread.assign(static_cast<size_t>(count + 2 * reach), 0);
             for (int i = 0; i < count; ++i) {
               if (in[static_cast<size_t>(i)] == 0) continue;
               const float value = in[static_cast<size_t>(i)];
               float* const around = &spread[static_cast<size_t>(i)];
               for (int k = 0; k <= 2 * reach; ++k) around[k] += kernel[static_cast<size_t>(k)] * value;
             }
             for (int i = 0; i < count; ++i)
               out[i * step] = static_cast<uint8_t>(spread[static_cast<size_t>(i + reach)] + 0.5f);
           });
}

/// Three box filters whose variances add up to the Gaussian's.
void threeBoxes(uint8_t* data, int width, int height, int stride, float sigma) {
  const float ideal = std::sqrt(4 * sigma * sigma + 1);
  int lower = static_cast<int>(ideal);
  if (lower % 2 == 0) --lower;
  const float lowerF = static_cast<float>(lower);
  const float lowers = (12 * sigma * sigma - 3 * lowerF * lowerF - 12 * lowerF - 9) / (-4 * lowerF - 4);
  for (int pass = 0; pass < 3; ++pass) {
    const int size = pass < static_cast<int>(std::lround(lowers)) ? lower : lower + 2;
    const int reach = size / 2;
    // Rounded; a little more than half, as the share of a whole number must not end below it.
    const float share = 1 / static_cast<float>(size), half = static_cast<float>(reach) + 0.25f;
    eachLine(data, width, height, stride,
             [&](const std::vector<uint8_t>& in, uint8_t* out, int count, ptrdiff_t step) {
               int sum = 0;
               for (int i = 0; i < std::min(reach, count); ++i) sum += in[static_cast<size_t>(i)];
               for (int i = 0; i < count; ++i) {
                 if (i + reach < count) sum += in[static_cast<size_t>(i + reach)];
                 if (i - reach - 1 >= 0) sum -= in[static_cast<size_t>(i - reach - 1)];
                 out[i * step] = static_cast<uint8_t>((static_cast<float>(sum) + half) * share);
               }
             });
  }
}

}  // namespace

ShadowMask::ShadowMask(cairo_t* target, NSRect extents, NSSize physicalOffset, float physicalBlurRadius)
    : sigma_(std::max(0.0f, physicalBlurRadius) / 2) {
  double left = HUGE_VAL, top = HUGE_VAL, right = -HUGE_VAL, bottom = -HUGE_VAL;
  for (const float x : {NSMinX(extents), NSMaxX(extents)}) {
    for (const float y : {NSMinY(extents), NSMaxY(extents)}) {
      double px = x, py = y;
      cairo_user_to_device(target, &px, &py);
      left = std::min(left, px);
      right = std::max(right, px);
      top = std::min(top, py);
      bottom = std::max(bottom, py);
    }
  }
  const int pad = static_cast<int>(std::ceil(3 * sigma_)) + 1;
  double seenLeft, seenTop, seenRight, seenBottom;
  cairo_save(target);
  cairo_identity_matrix(target);
  cairo_clip_extents(target, &seenLeft, &seenTop, &seenRight, &seenBottom);
  cairo_restore(target);
  left = std::max(left, seenLeft - physicalOffset.width - pad);
  right = std::min(right, seenRight - physicalOffset.width + pad);
  top = std::max(top, seenTop + physicalOffset.height - pad);
  bottom = std::min(bottom, seenBottom + physicalOffset.height + pad);
  if (left >= right || top >= bottom) return;
  x_ = static_cast<int>(std::floor(left)) - pad;
  y_ = static_cast<int>(std::floor(top)) - pad;
  const int width = static_cast<int>(std::ceil(right)) + pad - x_;
  const int height = static_cast<int>(std::ceil(bottom)) + pad - y_;
  if (width <= 0 || height <= 0 || width > largestSide || height > largestSide) return;

  surface_.reset(cairo_image_surface_create(CAIRO_FORMAT_A8, width, height));
  cairo_.reset(cairo_create(surface_.get()));
  cairo_matrix_t matrix;
  cairo_get_matrix(target, &matrix);
  matrix.x0 -= x_;
  matrix.y0 -= y_;
  cairo_set_matrix(cairo_.get(), &matrix);
}

void ShadowMask::blur() {
  if (sigma_ <= 0) return;
  cairo_surface_flush(surface_.get());
  uint8_t* data = cairo_image_surface_get_data(surface_.get());
  const int width = cairo_image_surface_get_width(surface_.get());
  const int height = cairo_image_surface_get_height(surface_.get());
  const int stride = cairo_image_surface_get_stride(surface_.get());
  // Boxes of a few pixels are too coarse to add up to a narrow Gaussian.
  if (sigma_ < 2)
    gaussian(data, width, height, stride, sigma_);
  else
    threeBoxes(data, width, height, stride, sigma_);
  cairo_surface_mark_dirty(surface_.get());
}
