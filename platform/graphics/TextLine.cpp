#include "TextLine.h"

#include <cmath>

#include "NSGraphicsContext.h"

TextLine::TextLine(const std::vector<NSAttributedString::Run>& runs) {
  for (const auto& run : runs) {
    const NSFont& font = *run.attributes.font;
    ascent_ = std::max(ascent_, font.ascender());
    descent_ = std::max(descent_, font.descender());
    Piece piece{run.attributes, {}, length_, width_, 0};
    length_ += run.text.size();
    if (FontFile* file = font.file()) {
      piece.glyphs = file->shape(run.text);
      for (const auto& glyph : piece.glyphs) piece.width += glyph.advance * font.drawnSize();
    }
    width_ += piece.width;
    pieces_.push_back(std::move(piece));
  }
}

float TextLine::offsetOf(size_t index) const {
  for (const Piece& piece : pieces_) {
    float x = piece.x;
    for (const auto& glyph : piece.glyphs) {
      if (piece.start + glyph.cluster >= index) return x;
      x += glyph.advance * piece.attributes.font->drawnSize();
    }
  }
  return width_;
}

size_t TextLine::indexNearest(float wanted) const {
  for (const Piece& piece : pieces_) {
    float x = piece.x;
    for (const auto& glyph : piece.glyphs) {
      const float advance = glyph.advance * piece.attributes.font->drawnSize();
      if (wanted < x + advance / 2) return piece.start + glyph.cluster;
      x += advance;
    }
  }
  return length_;
}

void TextLine::draw(float x, float baseline) const {
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  if (!context) return;
  for (const Piece& piece : pieces_) {
    const NSFont& font = *piece.attributes.font;
    FontFile* file = font.file();
    if (!file) continue;
    NSGraphicsContext::saveGraphicsState();
    piece.attributes.foregroundColor->set();
    if (piece.attributes.shadow) piece.attributes.shadow->set();
    // Glyphs may reach a little beyond their advances and their line.
    const float margin = font.pointSize() / 2;
    const NSRect extents = NSInsetRect(
        NSMakeRect(x + piece.x, baseline - font.descender(), piece.width, font.ascender() + font.descender()),
        -margin, -margin);
    context->draw(extents, [&](cairo_t* cairo) {
      file->show(cairo, piece.glyphs, x + piece.x, baseline, font.drawnSize());
    });
    NSGraphicsContext::restoreGraphicsState();
  }
}
