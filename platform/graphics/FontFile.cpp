#include "FontFile.h"

#include <cairo-ft.h>
#include <hb-ot.h>
#include <hb.h>

#include <cmath>
#include <map>

#include "NSBundle.h"
#include "NSLog.h"

struct FontFile::Handles {
  FT_Face face = nullptr;
  hb_font_t* shaper = nullptr;
  cairo_font_face_t* drawn = nullptr;
  unsigned unitsPerEm = 1000;

  ~Handles() {
    if (drawn) cairo_font_face_destroy(drawn);
    if (shaper) hb_font_destroy(shaper);
  }

  bool open(FT_Library library, const std::string& path) {
    if (FT_New_Face(library, path.c_str(), 0, &face)) return false;
    // cairo's caches may outlive us, so the face closes with the last of its users.
    static const cairo_user_data_key_t faceKey{};
    drawn = cairo_ft_font_face_create_for_ft_face(face, FT_LOAD_NO_HINTING);
    cairo_font_face_set_user_data(drawn, &faceKey, face,
                                  [](void* f) { FT_Done_Face(static_cast<FT_Face>(f)); });

    hb_blob_t* blob = hb_blob_create_from_file(path.c_str());
    hb_face_t* tables = hb_face_create(blob, 0);
    unitsPerEm = hb_face_get_upem(tables);
    shaper = hb_font_create(tables);
    hb_ot_font_set_funcs(shaper);
    hb_face_destroy(tables);
    hb_blob_destroy(blob);
    return unitsPerEm > 0;
  }
};

namespace {

FT_Library freetype() {
  static const FT_Library library = [] {
    FT_Library opened = nullptr;
    if (FT_Init_FreeType(&opened)) NSLog("FreeType cannot be initialised");
    return opened;
  }();
  return library;
}

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
  if (path.empty() || !freetype() || !handles->open(freetype(), path)) {
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
  hb_shape(handles_->shaper, buffer, nullptr, 0);

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
  // shaping put them. Outlines, because cached glyph images would be moved to whole pixels both ways.
  double px = x, py = y;
  cairo_user_to_device(cairo, &px, &py);
  py = std::round(py);
  cairo_device_to_user(cairo, &px, &py);
  std::vector<cairo_glyph_t> placed;
  placed.reserve(glyphs.size());
  for (const Glyph& g : glyphs) placed.push_back({g.index, px + g.x * size, py});

  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
  cairo_set_font_options(cairo, options);
  cairo_font_options_destroy(options);
  cairo_set_font_face(cairo, handles_->drawn);
  // y grows upwards: the font's own y, which grows downwards, is mirrored back.
  cairo_matrix_t matrix;
  cairo_matrix_init(&matrix, size, 0, 0, -size, 0, 0);
  cairo_set_font_matrix(cairo, &matrix);
  cairo_new_path(cairo);
  cairo_glyph_path(cairo, placed.data(), static_cast<int>(placed.size()));
  cairo_fill(cairo);
}
