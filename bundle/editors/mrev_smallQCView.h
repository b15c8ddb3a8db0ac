#pragma once

#include "mrev_RoomView.h"

/// The small room, delayed by the pre-delay.
class mrev_smallQCView : public mrev_RoomView {
 public:
  explicit mrev_smallQCView(NSRect frame) : mrev_RoomView(frame, {13, 12, 4, 9, 11, 6, 2, unused}) {}
  const Class& isa() const override;
  static const Class& record();
};
