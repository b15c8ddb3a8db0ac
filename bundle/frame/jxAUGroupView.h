#pragma once

#include "NSBox.h"

/// A box in the editors' section style.
class jxAUGroupView : public NSBox {
 public:
  using NSBox::NSBox;
  const Class& isa() const override;
  static const Class& record();

  /// Draws over the whole bounds, whatever rectangle it is given.
  void drawRect(NSRect dirty) override;
  /// Takes the keyboard, which ends typing elsewhere.
  void mouseDown(const NSEvent& event) override;
  bool acceptsFirstResponder() const override { return true; }
};
