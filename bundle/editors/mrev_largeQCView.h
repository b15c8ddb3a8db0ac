#pragma once

#include "mrev_RoomView.h"

/// The large room, delayed by the pre-delay and a delay of its own.
class mrev_largeQCView : public mrev_RoomView {
 public:
  explicit mrev_largeQCView(NSRect frame) : mrev_RoomView(frame, {13, 12, 4, 10, 8, 7, 3, 5}) {}
  const Class& isa() const override;
  static const Class& record();
};
