#pragma once

#include <string>

#include "TestUnit.h"

/// What hostile effects do wrong.
struct Faults {
  enum class Sound { asItCame, notANumber, refused };

  int failingRead = -1;  // of properties and their sizes, counted from 0
  bool hasLists = true;  // else there are no parameters any more
  float widening = 1;    // of each parameter's range around its middle
  Sound sound = Sound::asItCame;
  int reads = 0;  // so far
};
Faults& faults();

/// An effect with the parameters and the code of one of this system, so that its editor is opened for it. One
/// code at a time: what was opened for another has to be closed.
Component hostileComponent(const std::string& code);
