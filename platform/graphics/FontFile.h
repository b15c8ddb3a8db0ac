#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "CairoHandles.h"

/// One font file, opened without the user's font configuration, so that the same text gives the same
/// pixels everywhere: unhinted, grey antialiasing. Opened files stay open for the life of the process.
class FontFile {
 public:
  /// `name` is a file of the folder Fonts in an open bundle's resources, such as "DejaVuSans.ttf". Null,
  /// logged once, when no bundle has it or it is no font.
  static FontFile* named(std::string_view name);
  ~FontFile();

  struct Glyph {
    unsigned long index;
    float x;           // from the text's origin, in em
    float advance;     // in em
    unsigned cluster;  // byte of the text that it stands for
  };
  /// Shapes UTF-8 text from left to right, with kerning.
  std::vector<Glyph> shape(std::string_view text) const;

  /// Draws the glyphs from the point (x, y) of the current coordinates, `size` points to the em.
  void show(cairo_t* cairo, const std::vector<Glyph>& glyphs, float x, float y, float size) const;

 private:
  struct Handles;
  explicit FontFile(std::unique_ptr<Handles> handles);

  std::unique_ptr<Handles> handles_;
};
