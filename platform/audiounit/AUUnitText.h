#pragma once

#include <string>

#include "CoreAudioTypes.h"

/// Short name of a parameter unit, such as "Hz"; empty where numbers stand alone.
std::string AUUnitText(UInt32 unit);
