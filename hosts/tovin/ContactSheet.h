#pragma once

#include <string>
#include <vector>

#include "NSGeometry.h"

/// Pictures beside and below one another, the tallest first, on plain ground. Sizes in points.
class ContactSheet {
 public:
  /// `scale`: pixels to a point, of the sheet and of every picture on it.
  explicit ContactSheet(float scale) : scale_(scale) {}

  void add(std::string pngFile, NSSize size);
  /// Throws std::runtime_error with the file's name when it cannot be written.
  void writePng(const std::string& file);

 private:
  struct Picture {
    std::string file;
    NSRect frame;  // y downwards from the top of the sheet
  };

  /// Places the pictures in rows and centres each row; the height of them all.
  float place();

  float scale_;
  std::vector<Picture> pictures_;
};
