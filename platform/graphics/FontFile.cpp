#include "FontFile.h"

#include <cairo.h>
#include <hb-ot.h>
#include <hb.h>

#include <cmath>
#include <map>
#include <unordered_map>

#include "NSBundle.h"
#include "NSLog.h"

namespace {

/// A part of a glyph's outline, in units of the font, y upwards.
struct Segment {
  enum Kind { move, line, curve, close } kind;
  float points[6] = {};
};
using Outline = std::vector<Segment>;

/// How HarfBuzz gives outlines: each call is a segment. Quadratic curves come as cubic ones.
struct Pen {
  static void add(void* outline, const Segment& segment) {
    static_cast<Outline*>(outline)->push_back(segment);
  }
  static void moveTo(hb_draw_funcs_t*, void* outline, hb_draw_state_t*, float x, float y, void*) {
    add(outline, {Segment::move, {x, y}});
  }
  static void lineTo(hb_draw_funcs_t*, void* outline, hb_draw_state_t*, float x, float y, void*) {
    add(outline, {Segment::line, {x, y}});
  }
  static void curveTo(hb_draw_funcs_t*, void* outline, hb_draw_state_t*, float x1, float y1, float x2,
                      float y2, float x, float y, void*) {
    add(outline, {Segment::curve, {x1, y1, x2, y2, x, y}});
  }
  static void close(hb_draw_funcs_t*, void* outline, hb_draw_state_t*, void*) {
    add(outline, {Segment::close});
  }
};

/// Into the current path, with the glyph's origin at (x, y) and `scale` points to a unit.
void append(cairo_t* cairo, const Outline& outline, double x, double y, double scale) {
  for (const auto& [kind, p] : outline) {
    const auto across = [&, &p = p](int i) { return x + p[i] * scale; };
    const auto up = [&, &p = p](int i) { return y + p[i] * scale; };
    if (kind == Segment::move)
      cairo_move_to(cairo, across(0), up(1));
    else if (kind == Segment::line)
      cairo_line_to(cairo, across(0), up(1));
    else if (kind == Segment::curve)
      cairo_curve_to(cairo, across(0), up(1), across(2), up(3), across(4), up(5));
    else
      cairo_close_path(cairo);
  }
}

}  // namespace

struct FontFile::Handles {
  hb_font_t* font = nullptr;
  hb_draw_funcs_t* pen = nullptr;
  unsigned unitsPerEm = 1000;
  std::unordered_map<unsigned long, Outline> outlines;  // of the glyphs shown so far

  ~Handles() {
    hb_draw_funcs_destroy(pen);
    hb_font_destroy(font);
  }

  bool open(const std::string& path) {
    hb_blob_t* blob = hb_blob_create_from_file(path.c_str());
    hb_face_t* face = hb_face_create(blob, 0);
    const bool isFont = hb_face_get_glyph_count(face) > 0;
    unitsPerEm = hb_face_get_upem(face);
    font = hb_font_create(face);
    hb_ot_font_set_funcs(font);
    hb_face_destroy(face);
    hb_blob_destroy(blob);
    pen = hb_draw_funcs_create();
    hb_draw_funcs_set_move_to_func(pen, &Pen::moveTo, nullptr, nullptr);
    hb_draw_funcs_set_line_to_func(pen, &Pen::lineTo, nullptr, nullptr);
    hb_draw_funcs_set_cubic_to_func(pen, &Pen::curveTo, nullptr, nullptr);
    hb_draw_funcs_set_close_path_func(pen, &Pen::close, nullptr, nullptr);
    return isFont && unitsPerEm > 0;
  }

  const Outline& outlineOf(unsigned long glyph) {
    const auto [found, isNew] = outlines.try_emplace(glyph);
    if (!isNew) return found->second;
    const auto index = static_cast<hb_codepoint_t>(glyph);
#if HB_VERSION_ATLEAST(7, 0, 0)
    hb_font_draw_glyph(font, index, pen, &found->second);
#else
    hb_font_get_glyph_shape(font, index, pen, &found->second);
#endif
    return found->second;
  }
};

namespace {

std::string pathOf(std::string_view name) {
  const size_t dot = name.rfind('.');
  for (const auto& bundle : NSBundle::allBundles()) {
    std::string path =
        bundle->pathForResource_ofType("Fonts/" + std::string(name.substr(0, dot)), name.substr(dot + 1));
    if (!path.empty()) return path;
  }
  return {};
}

}  // namespace

FontFile* FontFile::named(std::string_view name) {
  static std::map<std::string, std::unique_ptr<FontFile>, std::less<>> files;
  if (const auto found = files.find(name); found != files.end()) return found->second.get();
  const std::string path = pathOf(name);
  auto handles = std::make_unique<Handles>();
  if (path.empty() || !handles->open(path)) {
    NSLogOnce("font file " + std::string(name) + (path.empty() ? " is in no open bundle" : " is no font"));
    return nullptr;
  }
  // A font that is missing now may come with the next bundle, so only what was found is kept.
  return files.emplace(std::string(name), std::unique_ptr<FontFile>(new FontFile(std::move(handles))))
      .first->second.get();
}

FontFile::FontFile(std::unique_ptr<Handles> handles) : handles_(std::move(handles)) {}
FontFile::~FontFile() = default;

std::vector<FontFile::Glyph> FontFile::shape(std::string_view text) const {
  hb_buffer_t* buffer = hb_buffer_create();
  hb_buffer_add_utf8(buffer, text.data(), static_cast<int>(text.size()), 0, static_cast<int>(text.size()));
  hb_buffer_set_direction(buffer, HB_DIRECTION_LTR);
  hb_buffer_guess_segment_properties(buffer);
  hb_shape(handles_->font, buffer, nullptr, 0);

  unsigned count = 0;
  const hb_glyph_info_t* infos = hb_buffer_get_glyph_infos(buffer, &count);
  const hb_glyph_position_t* positions = hb_buffer_get_glyph_positions(buffer, &count);
  const float em = 1 / static_cast<float>(handles_->unitsPerEm);
  std::vector<Glyph> glyphs;
  glyphs.reserve(count);
  float x = 0;
  for (unsigned i = 0; i < count; ++i) {
    const float advance = static_cast<float>(positions[i].x_advance) * em;
    glyphs.push_back(
        {infos[i].codepoint, x + static_cast<float>(positions[i].x_offset) * em, advance, infos[i].cluster});
    x += advance;
  }
  hb_buffer_destroy(buffer);
  return glyphs;
}

void FontFile::show(cairo_t* cairo, const std::vector<Glyph>& glyphs, float x, float y, float size) const {
  // The baseline stands on a whole pixel, so that the feet of letters are crisp; across, glyphs stay where
  // shaping put them. Outlines, because cached glyph images would be moved to whole pixels both ways; by
  // HarfBuzz, because cairo keeps fonts of its own for longer than a plug-in is loaded.
  double px = x, py = y;
  cairo_user_to_device(cairo, &px, &py);
  py = std::round(py);
  cairo_device_to_user(cairo, &px, &py);
  cairo_new_path(cairo);
  const double scale = size / static_cast<double>(handles_->unitsPerEm);
  for (const Glyph& g : glyphs) append(cairo, handles_->outlineOf(g.index), px + g.x * size, py, scale);
  cairo_fill(cairo);
}
