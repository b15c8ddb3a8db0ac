#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Bitmap.h"
#include "NSGeometry.h"
#include "NSGraphicsContext.h"

enum NSCompositingOperation : unsigned { NSCompositeCopy = 1, NSCompositeSourceOver = 2 };

/// A picture with a size in points: a file with its larger versions beside it (NAME@2x.png, NAME@3x.png), and
/// what is drawn into it, anew for each scale at which it is shown. Main thread.
class NSImage : public std::enable_shared_from_this<NSImage> {
 public:
  /// Reads lazily. A missing file gives size (0, 0), draws nothing and is logged once.
  static std::shared_ptr<NSImage> initByReferencingFile(std::string path);
  /// Fully transparent.
  static std::shared_ptr<NSImage> initWithSize(NSSize size);
  /// A registered image; null when there is none of that name.
  static std::shared_ptr<NSImage> imageNamed(std::string_view name);

  explicit NSImage(std::string path) : path_(std::move(path)) {}
  explicit NSImage(NSSize size) : size_(size) {}

  /// Registers the image under the name for the life of the process; false when the name is taken.
  bool setName(const std::string& name);
  NSSize size() const;

  /// What `drawing` draws goes into this image, on top of what is there: image points, y up, a fresh state.
  /// It is called when the image is shown for the first time after this, and again for each further scale, so
  /// what it refers to has to live as long as the image is shown.
  void lockFocus(std::function<void()> drawing);

  /// Draws the part `source` (image points, y up; all zero means the whole) into `target`, edges on whole
  /// device pixels, alpha times `fraction`. Never samples outside the source; equal sizes copy exactly.
  /// Copying replaces what is there, which is faster; its fraction is 1.
  void drawInRect_fromRect_operation_fraction(NSRect target, NSRect source, NSCompositingOperation operation,
                                              float fraction) const;

 private:
  /// What the drawings made at one scale.
  struct Painted {
    Bitmap bitmap;
    size_t drawings = 0;    // that are in it
    bool isFolded = false;  // one column of pixels stands for all, which are alike, as in a window's ground
  };

  /// The version whose pixels suit that scale best; null when there is nothing to draw.
  const Bitmap* representation(float scale) const;
  const Bitmap* fileVersion(float scale) const;
  Painted& painted(float scale) const;
  void fold(Painted& painted) const;
  void unfold(Painted& painted) const;

  std::string path_;
  mutable std::optional<NSSize> size_;
  mutable std::array<std::optional<const Bitmap*>, 3> versions_;  // of the file, by scale, once looked for
  std::vector<std::function<void()>> drawings_;
  mutable std::vector<Painted> painted_;  // the last scales that were asked for
};
