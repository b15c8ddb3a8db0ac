#pragma once

#include <string>
#include <vector>

#include "AudioUnit.h"

/// Names of an effect's factory presets, in UTF-8; their places are their numbers.
std::vector<std::string> effectPresets(AudioUnit unit);
/// Sets all its parameters by one of them.
OSStatus chooseEffectPreset(AudioUnit unit, SInt32 number);
