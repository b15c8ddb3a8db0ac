#pragma once

#include <string>
#include <vector>

#include "AudioUnit.h"

/// One parameter as a person wants to read it. All text is UTF-8.
struct EffectParameter {
  AudioUnitParameterID id;
  std::string name;
  std::string unit;  // short, may be empty
  Float32 minValue;
  Float32 maxValue;
  Float32 defaultValue;
  Float32 value;  // the present one
  UInt32 flags;   // as in AudioUnitParameterInfo
  std::vector<std::string> valueNames;

  bool isWritable() const;
};

/// In ascending order of identifiers, read-only ones included.
std::vector<EffectParameter> effectParameters(AudioUnit unit);
