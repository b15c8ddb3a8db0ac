#pragma once

#include "RoomComposition.h"

/// The large room.
class mrev_largeRoom : public RoomComposition {
 public:
  mrev_largeRoom();
  const Class& isa() const override;
  static const Class& record();
};
