#include "HostedEditor.h"

#include <dlfcn.h>
#include <lv2/atom/atom.h>
#include <lv2/parameters/parameters.h>

#include <chrono>
#include <stdexcept>
#include <thread>

#include "EffectInstance.h"
#include "LoadedPlugin.h"

namespace {

constexpr const char* objectFile = TOVIN_LV2 "/tovin_lv2_ui.so";

LV2_URID urid(const char* uri) {
  return uridMap.map(uridMap.handle, uri);
}

const LV2UI_Descriptor* descriptorOf(void* object, const std::string& code) {
  const auto find = reinterpret_cast<LV2UI_DescriptorFunction>(dlsym(object, "lv2ui_descriptor"));
  for (uint32_t i = 0; const LV2UI_Descriptor* found = find(i); ++i)
    if (found->URI == "urn:tovin:lv2:" + code + "#ui") return found;
  throw std::runtime_error(code + " has no editor");
}

}  // namespace

std::shared_ptr<void> HostedEditor::load() {
  void* object = dlopen(objectFile, RTLD_NOW | RTLD_LOCAL);
  if (!object) throw std::runtime_error(dlerror());
  return {object, dlclose};
}

bool HostedEditor::isLoaded() {
  return dlopen(objectFile, RTLD_NOW | RTLD_NOLOAD) != nullptr;
}

HostedEditor::HostedEditor(const std::string& code, unsigned long parent, float scale)
    : ports_(openEffect(registeredEffect(code)).get()), descriptor_(descriptorOf(object_.get(), code)) {
  LV2UI_Touch touchFeature{this, &touch};
  LV2UI_Resize resizeFeature{this, &resize};
  const float rate = 48000;
  const LV2_URID number = urid(LV2_ATOM__Float);
  const LV2_Options_Option options[] = {
      {LV2_OPTIONS_INSTANCE, 0, urid(LV2_UI__scaleFactor), sizeof scale, number, &scale},
      {LV2_OPTIONS_INSTANCE, 0, urid(LV2_PARAMETERS__sampleRate), sizeof rate, number, &rate},
      {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}};
  const LV2_Feature features[] = {{LV2_UI__parent, reinterpret_cast<void*>(parent)},
                                  {LV2_UI__touch, &touchFeature},
                                  {LV2_UI__resize, &resizeFeature},
                                  {LV2_URID__map, &uridMap},
                                  {LV2_OPTIONS__options, const_cast<LV2_Options_Option*>(options)}};
  const LV2_Feature* list[std::size(features) + 1] = {};
  for (size_t i = 0; i < std::size(features); ++i) list[i] = &features[i];
  LV2UI_Widget widget = nullptr;
  editor_ = descriptor_->instantiate(descriptor_, ("urn:tovin:lv2:" + code).c_str(), TOVIN_LV2 "/", &write,
                                     this, &widget, list);
  if (!editor_) throw std::runtime_error(code + " shows no editor");
}

void HostedEditor::close() {
  if (editor_) descriptor_->cleanup(editor_);
  editor_ = nullptr;
}

void HostedEditor::setPort(uint32_t port, float value) {
  descriptor_->port_event(editor_, port, sizeof value, 0, &value);
}

bool HostedEditor::idle(double seconds) {
  if (!editor_) return false;
  const auto* loop =
      static_cast<const LV2UI_Idle_Interface*>(descriptor_->extension_data(LV2_UI__idleInterface));
  const auto until = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
  while (loop->idle(editor_) == 0) {
    if (std::chrono::steady_clock::now() >= until) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(33));
  }
  return false;
}

std::string HostedEditor::nameOf(uint32_t port) const {
  const PluginPort& p = ports_.all().at(port);
  return p.role == PluginPort::parameter ? std::to_string(p.parameterID) : p.symbol;
}

void HostedEditor::write(LV2UI_Controller self, uint32_t port, uint32_t size, uint32_t protocol,
                         const void* data) {
  auto& host = *static_cast<HostedEditor*>(self);
  if (protocol != 0 || size != sizeof(float)) return host.log_.push_back("a write of another kind");
  hearWrite(host.log_, host.nameOf(port), *static_cast<const float*>(data));
}

void HostedEditor::touch(LV2UI_Feature_Handle self, uint32_t port, bool grabbed) {
  auto& host = *static_cast<HostedEditor*>(self);
  host.log_.push_back((grabbed ? "begin " : "end ") + host.nameOf(port));
}

int HostedEditor::resize(LV2UI_Feature_Handle self, int width, int) {
  static_cast<HostedEditor*>(self)->width_ = width;
  return 0;
}
