#include "NSCursor.h"

#include "Display.h"

namespace {

int hidden = 0;

}  // namespace

void NSCursor::hide() {
  if (hidden++ == 0 && Display::current()) Display::current()->hidePointer();
}

void NSCursor::unhide() {
  if (hidden == 0) return;
  if (--hidden == 0 && Display::current()) Display::current()->showPointer();
}

void CGWarpMouseCursorPosition(NSPoint place) {
  if (Display::current()) Display::current()->warpPointer(place);
}
