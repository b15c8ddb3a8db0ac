#include "Bitmap.h"

#include <cairo.h>

#include <cmath>
#include <stdexcept>
#include <utility>

namespace graphics {

void SurfaceDeleter::operator()(cairo_surface_t* surface) const {
  cairo_surface_destroy(surface);
}
void CairoDeleter::operator()(cairo_t* cairo) const {
  cairo_destroy(cairo);
}

}  // namespace graphics

namespace {

int physical(float points, float scale) {
  // 419.99998 pixels, the product of a fractional scale, are 420.
  return std::max(1, static_cast<int>(std::ceil(points * scale - 1e-3f)));
}

}  // namespace

Bitmap::Bitmap(NSSize size, float scale)
    : Bitmap(graphics::SurfacePtr(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, physical(size.width, scale),
                                                             physical(size.height, scale))),
             size, scale) {
  if (cairo_surface_status(surface_.get()) != CAIRO_STATUS_SUCCESS)
    throw std::runtime_error("no bitmap of " + std::to_string(size.width) + " x " +
                             std::to_string(size.height) + " points");
}

Bitmap::Bitmap(graphics::SurfacePtr surface, NSSize size, float scale)
    : surface_(std::move(surface)), size_(size), scale_(scale) {}

Bitmap Bitmap::fromPng(const std::string& file, float scale) {
  graphics::SurfacePtr png(cairo_image_surface_create_from_png(file.c_str()));
  const cairo_status_t status = cairo_surface_status(png.get());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(file + ": " + cairo_status_to_string(status));
  const int width = cairo_image_surface_get_width(png.get());
  const int height = cairo_image_surface_get_height(png.get());
  const NSSize size{static_cast<float>(width) / scale, static_cast<float>(height) / scale};
  if (cairo_image_surface_get_format(png.get()) == CAIRO_FORMAT_ARGB32)
    return Bitmap(std::move(png), size, scale);
  // A PNG without alpha decodes to another pixel format.
  Bitmap converted(size, scale);
  const graphics::CairoPtr cairo(cairo_create(converted.surface()));
  cairo_set_source_surface(cairo.get(), png.get(), 0, 0);
  cairo_paint(cairo.get());
  return converted;
}

int Bitmap::physicalWidth() const {
  return cairo_image_surface_get_width(surface_.get());
}
int Bitmap::physicalHeight() const {
  return cairo_image_surface_get_height(surface_.get());
}

std::span<const uint32_t> Bitmap::row(int physicalY) const {
  cairo_surface_flush(surface_.get());
  const unsigned char* first =
      cairo_image_surface_get_data(surface_.get()) +
      static_cast<ptrdiff_t>(physicalY) * cairo_image_surface_get_stride(surface_.get());
  return {reinterpret_cast<const uint32_t*>(first), static_cast<size_t>(physicalWidth())};
}

std::array<uint8_t, 4> Bitmap::pixel(int physicalX, int physicalY) const {
  if (physicalX < 0 || physicalY < 0 || physicalX >= physicalWidth() || physicalY >= physicalHeight())
    throw std::out_of_range("pixel outside its bitmap");
  const uint32_t word = row(physicalY)[static_cast<size_t>(physicalX)];
  const uint32_t alpha = word >> 24;
  const auto straight = [&](uint32_t premultiplied) {
    return static_cast<uint8_t>(alpha ? std::min(255u, (premultiplied * 255 + alpha / 2) / alpha) : 0);
  };
  return {straight(word >> 16 & 255), straight(word >> 8 & 255), straight(word & 255),
          static_cast<uint8_t>(alpha)};
}

void Bitmap::writePng(const std::string& file) const {
  const cairo_status_t status = cairo_surface_write_to_png(surface_.get(), file.c_str());
  if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(file + ": " + cairo_status_to_string(status));
}
