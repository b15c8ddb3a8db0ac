#include <lv2/ui/ui.h>

#include <cstdio>
#include <deque>
#include <string>
#include <string_view>

#include "PluginEditor.h"
#include "PluginKinds.h"
#include "RegisterEffects.h"

namespace {

constexpr uint32_t floatProtocol = 0;

/// The four-letter code at the end of a plug-in's URI.
Component componentOf(std::string_view pluginUri) {
  const ComponentDescription effects{.componentType = FourCharCode("aufx")};
  for (Component c = FindNextComponent(nullptr, &effects); c; c = FindNextComponent(c, &effects))
    if (::pluginUri(c) == pluginUri) return c;
  return nullptr;
}

LV2UI_Handle instantiate(const LV2UI_Descriptor*, const char* pluginUri, const char* bundlePath,
                         LV2UI_Write_Function write, LV2UI_Controller controller, LV2UI_Widget* widget,
                         const LV2_Feature* const* features) {
  const EditorFeatures read = EditorFeatures::read(features);
  std::string error;
  std::unique_ptr<PluginEditor> editor;
  const Component component = componentOf(pluginUri);
  if (!component)
    error = "is none of the plug-ins that this editor belongs to";
  else if (!read.parent)
    error = "the host gave no parent window (" LV2_UI__parent ")";
  else
    editor = PluginEditor::open(component, bundlePath, read, {write, controller, read.touch}, error);
  if (!editor) {
    std::fprintf(stderr, "%s: %s\n", pluginUri, error.c_str());
    return nullptr;
  }
  *widget = reinterpret_cast<LV2UI_Widget>(editor->window().handle);
  return editor.release();
}

void cleanup(LV2UI_Handle handle) {
  delete static_cast<PluginEditor*>(handle);
}

// While they open or close an editor, some hosts call with no handle.

void portEvent(LV2UI_Handle handle, uint32_t port, uint32_t size, uint32_t format, const void* buffer) {
  if (handle && format == floatProtocol && size == sizeof(float))
    static_cast<PluginEditor*>(handle)->portEvent(port, *static_cast<const float*>(buffer));
}

int idle(LV2UI_Handle handle) {
  return handle && static_cast<PluginEditor*>(handle)->idle() ? 0 : 1;
}

const void* extensionData(const char* uri) {
  static const LV2UI_Idle_Interface idleInterface{&idle};
  return std::string_view(uri) == LV2_UI__idleInterface ? &idleInterface : nullptr;
}

struct Entries {
  std::deque<std::string> uris;
  std::vector<LV2UI_Descriptor> descriptors;
};

const Entries& entries() {
  static const Entries all = [] {
    RegisterEffects();
    Entries made;
    const ComponentDescription effects{.componentType = FourCharCode("aufx")};
    for (Component c = FindNextComponent(nullptr, &effects); c; c = FindNextComponent(c, &effects)) {
      made.uris.push_back(pluginEditorUri(c));
      made.descriptors.push_back(
          {made.uris.back().c_str(), &instantiate, &cleanup, &portEvent, &extensionData});
    }
    return made;
  }();
  return all;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) const LV2UI_Descriptor* lv2ui_descriptor(uint32_t index) {
  const auto& descriptors = entries().descriptors;
  return index < descriptors.size() ? &descriptors[index] : nullptr;
}
