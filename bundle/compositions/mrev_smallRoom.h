#pragma once

#include "RoomComposition.h"

/// The small room.
class mrev_smallRoom : public RoomComposition {
 public:
  mrev_smallRoom();
  const Class& isa() const override;
  static const Class& record();
};
