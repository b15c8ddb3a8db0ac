#include "NSImage.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

#include "NSLog.h"

namespace {

constexpr size_t keptScales = 2;

std::map<std::string, std::shared_ptr<NSImage>, std::less<>>& registry() {
  static std::map<std::string, std::shared_ptr<NSImage>, std::less<>> images;
  return images;
}

/// Decoded files are shared by all images that refer to them; a file that cannot be read is null.
const Bitmap* decoded(const std::string& path, float scale) {
  static std::map<std::string, std::unique_ptr<Bitmap>> files;
  const auto found = files.find(path);
  if (found != files.end()) return found->second.get();
  std::unique_ptr<Bitmap> bitmap;
  try {
    bitmap = std::make_unique<Bitmap>(Bitmap::fromPng(path, scale));
  } catch (const std::exception& error) {
    NSLogOnce(error.what());
  }
  return files.emplace(path, std::move(bitmap)).first->second.get();
}

std::string scaledPath(const std::string& path, int scale) {
  if (scale == 1) return path;
  const size_t dot = path.rfind('.');
  return path.substr(0, dot) + "@" + std::to_string(scale) + "x" + path.substr(dot);
}

struct PixelRect {
  double x, y, width, height;
};

/// Half a pixel goes to the right and upwards on both sides of a copy, so that the same size in points is the
/// same size in pixels.
PixelRect wholePixels(double left, double top, double right, double bottom) {
  const auto across = [](double x) { return std::floor(x + 0.5); };
  const auto down = [](double y) { return std::ceil(y - 0.5); };
  return {across(left), down(top), across(right) - across(left), down(bottom) - down(top)};
}

/// The bitmap, moved; a folded one also beside itself.
void setSource(cairo_t* cairo, const Bitmap& bitmap, double x, double y) {
  cairo_set_source_surface(cairo, bitmap.surface(), x, y);
  cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
  if (bitmap.physicalWidth() == 1) cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_REPEAT);
}

bool hasEqualColumns(const Bitmap& bitmap) {
  for (int y = 0; y < bitmap.physicalHeight(); ++y) {
    const std::span<const uint32_t> row = bitmap.row(y);
    if (!std::equal(row.begin() + 1, row.end(), row.begin())) return false;
  }
  return true;
}

/// Source pixels of a bitmap, alone on a surface of their own when something could sample past their edge.
graphics::SurfacePtr cut(const Bitmap& bitmap, const PixelRect& part) {
  graphics::SurfacePtr piece(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                        static_cast<int>(std::ceil(part.width)),
                                                        static_cast<int>(std::ceil(part.height))));
  const graphics::CairoPtr cairo(cairo_create(piece.get()));
  setSource(cairo.get(), bitmap, -part.x, -part.y);
  cairo_paint(cairo.get());
  return piece;
}

/// The bitmap with its own column beside itself where it has only that.
Bitmap copyOf(const Bitmap& from, NSSize size) {
  Bitmap copy(size, from.scale());
  const graphics::CairoPtr cairo(cairo_create(copy.surface()));
  setSource(cairo.get(), from, 0, 0);
  cairo_paint(cairo.get());
  return copy;
}

void draw(NSGraphicsContext& context, const Bitmap& bitmap, NSRect target, NSRect source,
          NSCompositingOperation operation, float fraction) {
  // In device pixels: the bitmap is upright there, and pieces that share an edge share its pixel.
  cairo_t* cairo = context.cairo();
  double left = NSMinX(target), top = NSMaxY(target), right = NSMaxX(target), bottom = NSMinY(target);
  cairo_user_to_device(cairo, &left, &top);
  cairo_user_to_device(cairo, &right, &bottom);
  const PixelRect to = wholePixels(left, top, right, bottom);
  const double s = bitmap.scale(), height = bitmap.physicalHeight();
  const PixelRect from = wholePixels(NSMinX(source) * s, height - NSMaxY(source) * s, NSMaxX(source) * s,
                                     height - NSMinY(source) * s);
  if (to.width <= 0 || to.height <= 0 || from.width <= 0 || from.height <= 0) return;

  cairo_save(cairo);
  cairo_identity_matrix(cairo);
  cairo_rectangle(cairo, to.x, to.y, to.width, to.height);
  cairo_clip(cairo);
  cairo_translate(cairo, to.x, to.y);
  if (to.width == from.width && to.height == from.height) {
    setSource(cairo, bitmap, -from.x, -from.y);
  } else {
    const graphics::SurfacePtr piece = cut(bitmap, from);
    cairo_scale(cairo, to.width / from.width, to.height / from.height);
    cairo_set_source_surface(cairo, piece.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_GOOD);
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
  }
  if (operation == NSCompositeCopy) cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  if (fraction >= 1)
    cairo_paint(cairo);
  else
    cairo_paint_with_alpha(cairo, fraction);
  cairo_restore(cairo);
}

}  // namespace

std::shared_ptr<NSImage> NSImage::initByReferencingFile(std::string path) {
  return std::make_shared<NSImage>(std::move(path));
}

std::shared_ptr<NSImage> NSImage::initWithSize(NSSize size) {
  return std::make_shared<NSImage>(size);
}

std::shared_ptr<NSImage> NSImage::imageNamed(std::string_view name) {
  const auto found = registry().find(name);
  return found == registry().end() ? nullptr : found->second;
}

bool NSImage::setName(const std::string& name) {
  return registry().emplace(name, shared_from_this()).second;
}

NSSize NSImage::size() const {
  if (!size_) {
    const Bitmap* file = decoded(path_, 1);
    size_ = file ? file->size() : NSSize{};
  }
  return *size_;
}

void NSImage::lockFocus(std::function<void()> drawing) {
  drawings_.push_back(std::move(drawing));
}

const Bitmap* NSImage::representation(float scale) const {
  if (drawings_.empty()) return fileVersion(scale);
  Painted& painted = this->painted(scale);
  if (painted.drawings == drawings_.size()) return &painted.bitmap;
  if (painted.isFolded) unfold(painted);
  while (painted.drawings < drawings_.size()) {
    NSGraphicsContext context(painted.bitmap);
    drawings_[painted.drawings++]();
  }
  if (hasEqualColumns(painted.bitmap)) fold(painted);
  return &painted.bitmap;
}

NSImage::Painted& NSImage::painted(float scale) const {
  const auto known =
      std::ranges::find_if(painted_, [scale](const Painted& p) { return p.bitmap.scale() == scale; });
  if (known != painted_.end()) return *known;
  if (painted_.size() == keptScales) painted_.erase(painted_.begin());
  painted_.push_back({Bitmap(size(), scale)});
  if (const Bitmap* file = fileVersion(scale)) {
    NSGraphicsContext context(painted_.back().bitmap);
    draw(context, *file, {{0, 0}, size()}, {{0, 0}, size()}, NSCompositeSourceOver, 1);
  }
  return painted_.back();
}

const Bitmap* NSImage::fileVersion(float scale) const {
  if (path_.empty()) return nullptr;
  const int wanted = std::clamp(static_cast<int>(std::ceil(scale - 0.01f)), 1, 3);
  auto& version = versions_[static_cast<size_t>(wanted - 1)];
  if (!version) {
    int s = wanted;
    while (s > 1 && !std::filesystem::exists(scaledPath(path_, s))) --s;
    version = decoded(scaledPath(path_, s), static_cast<float>(s));
  }
  return *version;
}

void NSImage::fold(Painted& painted) const {
  const float scale = painted.bitmap.scale();
  painted.bitmap = copyOf(painted.bitmap, NSMakeSize(1 / scale, size().height));
  painted.isFolded = true;
}

void NSImage::unfold(Painted& painted) const {
  painted.bitmap = copyOf(painted.bitmap, size());
  painted.isFolded = false;
}

void NSImage::drawInRect_fromRect_operation_fraction(NSRect target, NSRect source,
                                                     NSCompositingOperation operation, float fraction) const {
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  if (!context) return;
  const Bitmap* bitmap = representation(context->scale());
  if (!bitmap) return;
  if (source == NSZeroRect) source = {{0, 0}, size()};
  if (NSIsEmptyRect(target) || NSIsEmptyRect(source)) return;
  draw(*context, *bitmap, target, source, operation, fraction);
}
