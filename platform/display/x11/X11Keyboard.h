#pragma once

#include <optional>

#include "NSEvent.h"
#include "X11Headers.h"

/// NSEvent's modifier flags for the state of an X event. Alt and Control are both Option.
unsigned modifierFlags(unsigned state);

/// The keyDown of a key press. A letter that is held with Control or Alt keeps its character: what the
/// combination means is for the flags to say. Repeats of a held key are presses like others. Nothing for
/// Shift and its like alone.
std::optional<NSEvent> keyDownEvent(XKeyEvent press);
