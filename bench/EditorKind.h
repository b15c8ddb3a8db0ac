#pragma once

#include <optional>
#include <span>

#include "MeasurementFloor.h"

/// One class of editors.
struct EditorKind {
  const char* code;  // of the effect, or of the first of those that share it
  AudioUnitParameterID
      parameter;  // of the main graph; of the main knob where there is no graph of parameters
  enum { stands, hasMeters, hasRooms } moves = stands;
  double tick = 0;  // seconds between two of its moves
  std::optional<MeasurementKind> measurement = {};
};
std::span<const EditorKind> editorKinds();
