#pragma once

#include <span>
#include <string_view>

#include "NSGeometry.h"
#include "NSObject.h"

/// A picture that moves with the numbers at its published inputs. A QCView plays it, made by the name of its
/// class. Main thread.
class QCComposition : public NSObject {
 public:
  struct Input {
    std::string_view key;
    float value;  // at first
  };

  /// The same at all times.
  virtual std::span<const Input> inputs() const = 0;
  /// Draws what no input changes, below all else; once for a view.
  virtual void drawGround(NSRect bounds) const { static_cast<void>(bounds); }
  /// Draws the picture of the moment. `values` stand in the order of inputs().
  virtual void draw(NSRect bounds, std::span<const float> values) const = 0;
};
