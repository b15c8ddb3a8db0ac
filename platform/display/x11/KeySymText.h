#pragma once

#include <string>

/// The UTF-8 text of a key symbol; empty for keys that type nothing (arrows, Return, dead keys). Keypad
/// symbols type their digit or sign; the keypad's decimal separator types '.' whatever the keyboard's
/// language, since numbers are written with a point here. Needs no locale and no input method.
std::string keySymText(unsigned long symbol);
