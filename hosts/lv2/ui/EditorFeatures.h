#pragma once

#include <lv2/ui/ui.h>

#include <optional>

#include "Display.h"

/// What a host says when it asks for an editor; a copy, since some keep it only for the call.
struct EditorFeatures {
  NativeWindow parent;
  std::optional<LV2UI_Resize> resize;
  std::optional<LV2UI_Touch> touch;
  float scaleFactor = 0;            // physical pixels to a point; 0: not told
  std::optional<float> sampleRate;  // Hz

  static EditorFeatures read(const LV2_Feature* const* features);
};
