#pragma once

#include <string_view>

#include "NSGeometry.h"

/// The white labelled card on which controls stand, drawn alike by editors and by group boxes: `card` is
/// the path of its edge (stroked 1 point wide, so on half points), the label lies in a strip of 12 points
/// whose top is 2 points below the card's.
void drawSectionCard(NSRect card, std::string_view label);
