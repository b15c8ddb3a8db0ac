#pragma once

#include "NSGeometry.h"

/// The pointer. hide and unhide nest, counted for the whole process; one unhide too many is ignored.
class NSCursor {
 public:
  static void hide();
  static void unhide();
};

/// Puts the pointer at a place in points from the top left of the first screen, y down.
void CGWarpMouseCursorPosition(NSPoint place);
