#pragma once

#include "NSTextField.h"

/// A line of small text beside a control, written in the interface description.
class jxAULabel : public NSTextField {
 public:
  explicit jxAULabel(NSRect frame);
  const Class& isa() const override;
  static const Class& record();
};
