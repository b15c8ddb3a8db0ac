#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Bitmap.h"
#include "NSGeometry.h"
#include "NSGraphicsContext.h"

enum NSCompositingOperation : unsigned { NSCompositeCopy = 1, NSCompositeSourceOver = 2 };

/// A picture with a size in points: a file with its larger versions beside it (NAME@2x.png, NAME@3x.png),
/// or a bitmap that is drawn into. Main thread.
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

  /// Drawing goes into this image until unlockFocus: image points, y up, a fresh state; what is there
  /// stays. An image made from a file first gets a private copy at the drawing scale. Nests.
  void lockFocus();
  void unlockFocus();

  /// Draws the part `source` (image points, y up; all zero means the whole) into `target`, edges on whole
  /// device pixels, alpha times `fraction`. Never samples outside the source; equal sizes copy exactly.
  /// Copying replaces what is there, which is faster; its fraction is 1.
  void drawInRect_fromRect_operation_fraction(NSRect target, NSRect source, NSCompositingOperation operation,
                                              float fraction) const;

 private:
  /// The version whose pixels suit that scale best; null when there is nothing to draw.
  const Bitmap* representation(float scale) const;

  /// One column of pixels stands for all where they are alike, as in the ground of a whole window.
  void fold();
  void unfold();

  std::string path_;
  mutable std::optional<NSSize> size_;
  mutable std::array<std::optional<const Bitmap*>, 3> versions_;  // of the file, by scale, once looked for
  std::shared_ptr<Bitmap> own_;
  bool isFolded_ = false;
  std::vector<std::unique_ptr<NSGraphicsContext>> focus_;
};
