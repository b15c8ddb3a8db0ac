#pragma once

#include "EffectParameters.h"

/// Where automation is at a step: parameter number `index` goes up and down through its whole range, each in
/// a period of its own.
Float32 automated(const EffectParameter& parameter, size_t index, int step);
