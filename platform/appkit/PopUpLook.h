#pragma once

#include <memory>
#include <vector>

#include "NSAttributedString.h"
#include "NSGeometry.h"

class TextLine;

/// How pop-up buttons and open menus look. Everything is drawn to the current context; edges lie on whole
/// physical pixels at any scale and wherever the view stands.
namespace popUpLook {

struct ButtonState {
  bool bordered;
  bool pressed;
  bool focused;
  bool pullsDown;
};
void drawButton(NSRect bounds, const ButtonState& state);
/// Left of the arrows; what does not fit ends in an ellipsis.
void drawButtonTitle(NSRect bounds, std::vector<NSAttributedString::Run> title);

/// Of titles without attributes of their own.
NSTextAttributes plainText(std::shared_ptr<NSFont> font);

/// How far the panel's shadow reaches beyond it.
inline constexpr float shadowReach = 14;
void drawPanel(NSRect panel);
/// What of the panel can be drawn anew without its edge and shadow.
NSRect panelInterior(NSRect panel);
void drawPanelInterior(NSRect part);
void drawHighlight(NSRect row);
void drawCheckMark(NSRect column);
void drawRowTitle(NSRect row, float x, const TextLine& title);
/// There is more in that direction.
void drawScrollArrow(NSRect zone, bool upwards);

}  // namespace popUpLook
