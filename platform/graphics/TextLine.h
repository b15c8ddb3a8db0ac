#pragma once

#include <vector>

#include "FontFile.h"
#include "NSAttributedString.h"
#include "NSGeometry.h"

/// Runs of text shaped and set on one common baseline.
class TextLine {
 public:
  TextLine() = default;
  explicit TextLine(const std::vector<NSAttributedString::Run>& runs);

  float width() const { return width_; }
  float ascent() const { return ascent_; }
  float descent() const { return descent_; }
  /// Distance from the line's start to the caret before the byte `index` of the line's text.
  float offsetOf(size_t index) const;
  /// Byte before which a caret is nearest to `x`.
  size_t indexNearest(float x) const;

  /// Baseline at y, start at x; the colours and shadows of the runs.
  void draw(float x, float baseline) const;

 private:
  struct Piece {
    NSTextAttributes attributes;
    std::vector<FontFile::Glyph> glyphs;
    size_t start;
    float x;
    float width;
  };

  std::vector<Piece> pieces_;
  size_t length_ = 0;
  float width_ = 0, ascent_ = 0, descent_ = 0;
};
