#pragma once

#include <memory>

#include "NSControl.h"
#include "NSImage.h"

/// Shows an image in the middle of its bounds, scaled down in proportion when it is larger, never up.
class NSImageView : public NSControl {
 public:
  using NSControl::NSControl;
  const Class& isa() const override;
  static const Class& record();

  /// Keeps the image and marks the view. Painting into the image later does not mark it.
  void setImage(std::shared_ptr<NSImage> image);
  const std::shared_ptr<NSImage>& image() const { return image_; }

  /// Draws relative to the bounds, whatever rectangle it is given.
  void drawRect(NSRect dirty) override;
  /// The press stays here.
  void mouseDown(const NSEvent& event) override { static_cast<void>(event); }

 private:
  std::shared_ptr<NSImage> image_;
};
