#pragma once

#include <memory>
#include <string>
#include <string_view>

class FontFile;

/// A font at a size. The names that views ask for stand in one table that maps each to an installed family
/// with a size factor and the line measures of the name asked for.
class NSFont {
 public:
  /// Never null: an unknown name is logged once and gives "LucidaGrande".
  static std::shared_ptr<NSFont> fontWithName_size(std::string_view name, float points);

  struct Entry {
    std::string_view name;
    std::string_view file;
    float sizeFactor;  // drawn size / size asked for
    float ascent;      // in em of the size asked for
    float descent;     // likewise, positive downwards
  };

  NSFont(const Entry& entry, float points) : entry_(entry), points_(points) {}

  std::string_view fontName() const { return entry_.name; }
  float pointSize() const { return points_; }
  float ascender() const { return entry_.ascent * points_; }
  /// Positive: how far the line reaches below the baseline.
  float descender() const { return entry_.descent * points_; }

  /// Size in points at which the file's glyphs are drawn.
  float drawnSize() const { return entry_.sizeFactor * points_; }
  /// Null when the file is missing: nothing is drawn and nothing has a width.
  FontFile* file() const;

 private:
  const Entry& entry_;
  float points_;
};
