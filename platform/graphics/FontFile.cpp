#include "FontFile.h"

#include <cairo.h>
#include <hb-ot.h>
#include <hb.h>

#include <cmath>
#include <map>

#include "NSBundle.h"
#include "NSLog.h"

namespace {

/// Puts outlines, which come in units of the font with y upwards, into the current path.
struct Pen {
  cairo_t* cairo;
  double x, y;   // of the glyph's origin
  double scale;  // points to a unit

  double across(float value) const { return x + value * scale; }
  double up(float value) const { return y + value * scale; }

  static Pen& of(void* data) { return *static_cast<Pen*>(data); }
  static void moveTo(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
    const Pen& pen = of(data);
    cairo_move_to(pen.cairo, pen.across(x), pen.up(y));
  }
  static void lineTo(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x, float y, void*) {
    const Pen& pen = of(data);
    cairo_line_to(pen.cairo, pen.across(x), pen.up(y));
  }
  static void curveTo(hb_draw_funcs_t*, void* data, hb_draw_state_t*, float x1, float y1, float x2, float y2,
                      float x, float y, void*) {
    const Pen& pen = of(data);
    cairo_curve_to(pen.cairo, pen.across(x1), pen.up(y1), pen.across(x2), pen.up(y2), pen.across(x),
                   pen.up(y));
  }
  static void close(hb_draw_funcs_t*, void* data, hb_draw_state_t*, void*) {
    cairo_close_path(of(data).cairo);
  }
};

}  // namespace

struct FontFile::Handles {
  hb_font_t* font = nullptr;
  hb_draw_funcs_t* pen = nullptr;
  unsigned unitsPerEm = 1000;

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
    hb_draw_funcs_set_cubic_to_func(pen, &Pen::curveTo, nullptr, nullptr);  // quadratic ones come as cubic
    hb_draw_funcs_set_close_path_func(pen, &Pen::close, nullptr, nullptr);
    return isFont && unitsPerEm > 0;
  }

  void draw(unsigned long glyph, Pen& at) const {
    const auto index = static_cast<hb_codepoint_t>(glyph);
#if HB_VERSION_ATLEAST(7, 0, 0)
    hb_font_draw_glyph(font, index, pen, &at);
#else
    hb_font_get_glyph_shape(font, index, pen, &at);
#endif
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
  for (const Glyph& g : glyphs) {
    Pen pen{cairo, px + g.x * size, py, size / static_cast<double>(handles_->unitsPerEm)};
    handles_->draw(g.index, pen);
  }
  cairo_fill(cairo);
}
