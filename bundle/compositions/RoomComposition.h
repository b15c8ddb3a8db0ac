#pragma once

#include <memory>

#include "NSColor.h"
#include "QCComposition.h"

/// A room of the reverb as a hall in one-point perspective, seen from where the listener stands. It grows
/// with the size; it stands back behind more bars on the floor with the delay; sound runs through it as
/// wavefronts, as many as it is dense, scattered by the delay range; its walls go from felt grey to the
/// room's colour with the brightness; and it bends from side to side with the modulation.
class RoomComposition : public QCComposition {
 public:
  std::span<const Input> inputs() const override;
  void drawGround(NSRect bounds) const override;
  void draw(NSRect bounds, std::span<const float> values) const override;

 protected:
  struct Traits {
    float leastSize, greatestSize;  // seconds
    float greatestDelay;            // seconds
    std::shared_ptr<NSColor> color;
  };
  explicit RoomComposition(Traits traits) : traits_(std::move(traits)) {}

 private:
  Traits traits_;
};
