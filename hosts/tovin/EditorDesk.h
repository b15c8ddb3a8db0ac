#pragma once

#include <memory>

#include "NSImage.h"
#include "NSView.h"

/// What a window shows of a host: an editor, with a strip of the host's own above it if there is one. In a
/// window larger than the two the strip keeps the top, the editor is centred below it, and the editor's
/// ground is carried on to the edges; in a smaller one the editor is cut off at the right and below.
class EditorDesk : public NSView {
 public:
  /// As large as both. `strip` may be null.
  EditorDesk(std::shared_ptr<NSView> editor, std::shared_ptr<NSView> strip);

  void setFrame(NSRect frame) override;
  void drawRect(NSRect dirty) override;
  bool isOpaque() const override { return true; }

 private:
  NSRect roomForEditor() const;
  void layGround();

  std::shared_ptr<NSView> editor_;
  std::shared_ptr<NSView> strip_;
  std::shared_ptr<NSImage> ownGround_;  // of the editor
};
