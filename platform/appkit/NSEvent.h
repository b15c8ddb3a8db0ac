#pragma once

#include <string>

#include "NSGeometry.h"

inline constexpr unsigned NSAlphaShiftKeyMask = 0x10000;  // caps lock
inline constexpr unsigned NSShiftKeyMask = 0x20000;
inline constexpr unsigned NSControlKeyMask = 0x40000;
inline constexpr unsigned NSAlternateKeyMask = 0x80000;  // Option: Alt or Control
inline constexpr unsigned NSCommandKeyMask = 0x100000;

enum class NSEventType { leftMouseDown, leftMouseDragged, leftMouseUp, scrollWheel, keyDown };

/// Keys that mean something beside the characters that they type.
enum class NSKey { other, enter, tab, escape, backspace, forwardDelete, left, right, up, down, home, end };

/// One thing that the user did. Made by the display, read by views.
struct NSEvent {
  NSEventType type = NSEventType::leftMouseDown;
  /// Window points, y up, fractional at scales other than 1.
  NSPoint locationInWindow;
  /// The keys held at the event: the masks above.
  unsigned modifierFlags = 0;
  /// Motion: points, right and down positive; over a gesture their sum is exactly the pointer's motion,
  /// plus what went beyond the screen's edge while the pointer was hidden. Wheel: deltaY +1 a notch away
  /// from the user, deltaX +1 a notch to the left.
  float deltaX = 0;
  float deltaY = 0;
  int clickCount = 1;
  NSKey key = NSKey::other;
  /// What the key types, UTF-8; empty for keys that type nothing.
  std::string characters;
};
