#include "EditorFeatures.h"

#include <lv2/atom/atom.h>
#include <lv2/options/options.h>
#include <lv2/parameters/parameters.h>
#include <lv2/urid/urid.h>

#include <cstdint>
#include <string_view>

namespace {

void readOptions(const LV2_Options_Option* options, const LV2_URID_Map& map, EditorFeatures& read) {
  const auto id = [&map](const char* uri) { return map.map(map.handle, uri); };
  const LV2_URID scaleFactor = id(LV2_UI__scaleFactor), sampleRate = id(LV2_PARAMETERS__sampleRate);
  const LV2_URID floatType = id(LV2_ATOM__Float);
  for (; options->key != 0 || options->value; ++options) {
    if (options->type != floatType || options->size != sizeof(float) || !options->value) continue;
    const float value = *static_cast<const float*>(options->value);
    if (options->key == scaleFactor && value > 0) read.scaleFactor = value;
    if (options->key == sampleRate && value > 0) read.sampleRate = value;
  }
}

}  // namespace

EditorFeatures EditorFeatures::read(const LV2_Feature* const* features) {
  EditorFeatures read;
  const LV2_Options_Option* options = nullptr;
  const LV2_URID_Map* map = nullptr;
  for (; features && *features; ++features) {
    const std::string_view uri = (*features)->URI;
    void* const data = (*features)->data;
    if (uri == LV2_UI__parent) read.parent = {NativeWindow::System::x11, reinterpret_cast<uintptr_t>(data)};
    if (uri == LV2_UI__resize) read.resize = *static_cast<const LV2UI_Resize*>(data);
    if (uri == LV2_UI__touch) read.touch = *static_cast<const LV2UI_Touch*>(data);
    if (uri == LV2_OPTIONS__options) options = static_cast<const LV2_Options_Option*>(data);
    if (uri == LV2_URID__map) map = static_cast<const LV2_URID_Map*>(data);
  }
  if (options && map) readOptions(options, *map, read);
  return read;
}
