#include "LoadedPlugin.h"

#include <lv2/atom/forge.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <mutex>

namespace {

const std::string uriPrefix = "urn:tovin:lv2:";

LV2_URID map(LV2_URID_Map_Handle, const char* uri) {
  static std::mutex mutex;
  static std::vector<std::string> known;
  const std::lock_guard lock(mutex);
  const auto found = std::find(known.begin(), known.end(), uri);
  const auto index = static_cast<LV2_URID>(found - known.begin());
  if (found == known.end()) known.emplace_back(uri);
  return index + 1;
}

}  // namespace

LV2_URID_Map uridMap{nullptr, &map};

PluginFolder& PluginFolder::shared() {
  static PluginFolder folder;
  return folder;
}

PluginFolder::PluginFolder() : world_(lilv_world_new()) {
  LilvNode* folder = lilv_new_file_uri(world(), nullptr, TOVIN_LV2 "/");
  lilv_world_load_bundle(world(), folder);
  lilv_node_free(folder);
}

std::vector<std::string> PluginFolder::codes() const {
  std::vector<std::string> codes;
  const LilvPlugins* plugins = lilv_world_get_all_plugins(world());
  LILV_FOREACH(plugins, i, plugins)
  codes.push_back(std::string(lilv_node_as_uri(lilv_plugin_get_uri(lilv_plugins_get(plugins, i))))
                      .substr(uriPrefix.size()));
  return codes;
}

const LilvPlugin* PluginFolder::plugin(const std::string& code) const {
  LilvNode* uri = lilv_new_uri(world(), (uriPrefix + code).c_str());
  const LilvPlugin* plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world()), uri);
  lilv_node_free(uri);
  return plugin;
}

struct LoadedPlugin::TimePosition {
  LV2_Atom_Forge forge;
  alignas(8) uint8_t memory[260];
  uint8_t* const bytes = memory + 4;  // no better aligned than some hosts have it

  TimePosition() {
    lv2_atom_forge_init(&forge, &uridMap);
    clear();
  }
  void clear() { write(nullptr); }
  void write(const float* beatsPerMinute) {
    lv2_atom_forge_set_buffer(&forge, bytes, 256);
    LV2_Atom_Forge_Frame sequence, object;
    lv2_atom_forge_sequence_head(&forge, &sequence, 0);
    if (beatsPerMinute) {
      lv2_atom_forge_frame_time(&forge, 0);
      lv2_atom_forge_object(&forge, &object, 0, map(nullptr, LV2_TIME__Position));
      lv2_atom_forge_key(&forge, map(nullptr, LV2_TIME__bar));
      lv2_atom_forge_long(&forge, 3);
      lv2_atom_forge_key(&forge, map(nullptr, LV2_TIME__beatsPerMinute));
      lv2_atom_forge_float(&forge, *beatsPerMinute);
      lv2_atom_forge_pop(&forge, &object);
    }
    lv2_atom_forge_pop(&forge, &sequence);
  }
};

LoadedPlugin::LoadedPlugin(const std::string& code, double sampleRate) {
  const LilvPlugin* plugin = PluginFolder::shared().plugin(code);
  if (!plugin) return;
  LV2_Feature mapFeature{LV2_URID__map, &uridMap};
  const LV2_Feature* const features[] = {&mapFeature, nullptr};
  instance_ = lilv_plugin_instantiate(plugin, sampleRate, features);
  if (!instance_) return;

  LilvWorld* world = PluginFolder::shared().world();
  LilvNode* controlPort = lilv_new_uri(world, LILV_URI_CONTROL_PORT);
  LilvNode* inputPort = lilv_new_uri(world, LILV_URI_INPUT_PORT);
  LilvNode* atomPort = lilv_new_uri(world, LILV_URI_ATOM_PORT);
  const uint32_t count = lilv_plugin_get_num_ports(plugin);
  controls_.resize(count);
  minima_.resize(count);
  maxima_.resize(count);
  isControlInput_.resize(count);
  lilv_plugin_get_port_ranges_float(plugin, minima_.data(), maxima_.data(), controls_.data());
  for (uint32_t i = 0; i < count; ++i) {
    const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
    symbols_.emplace_back(lilv_node_as_string(lilv_port_get_symbol(plugin, port)));
    const bool isControl = lilv_port_is_a(plugin, port, controlPort);
    isControlInput_[i] = isControl && lilv_port_is_a(plugin, port, inputPort);
    if (isControl) lilv_instance_connect_port(instance_, i, &controls_[i]);
    if (lilv_port_is_a(plugin, port, atomPort)) {
      time_ = std::make_unique<TimePosition>();
      lilv_instance_connect_port(instance_, i, time_->bytes);
    }
  }
  for (LilvNode* node : {controlPort, inputPort, atomPort}) lilv_node_free(node);
}

LoadedPlugin::~LoadedPlugin() {
  if (!instance_) return;
  if (active_) lilv_instance_deactivate(instance_);
  lilv_instance_free(instance_);
}

size_t LoadedPlugin::indexOf(const std::string& symbol) const {
  return static_cast<size_t>(std::find(symbols_.begin(), symbols_.end(), symbol) - symbols_.begin());
}

float& LoadedPlugin::control(const std::string& symbol) {
  return controls_.at(indexOf(symbol));
}

void LoadedPlugin::activate() {
  if (active_) lilv_instance_deactivate(instance_);
  lilv_instance_activate(instance_);
  active_ = true;
}

void LoadedPlugin::run(const float* const* input, float* const* output, uint32_t frames) {
  for (uint32_t c = 0; c < 2; ++c) {
    lilv_instance_connect_port(instance_, c, const_cast<float*>(input[c]));
    lilv_instance_connect_port(instance_, 2 + c, output[c]);
  }
  lilv_instance_run(instance_, frames);
  if (time_) time_->clear();
}

LoadedPlugin::Samples LoadedPlugin::render(const Samples& input, const std::vector<uint32_t>& blocks,
                                           bool inPlace) {
  Samples output = inPlace ? input : Samples(2, std::vector<float>(input[0].size()));
  const Samples& source = inPlace ? output : input;
  const auto frames = static_cast<uint32_t>(input[0].size());
  for (uint32_t done = 0, block = 0; done < frames; ++block) {
    const uint32_t length = std::min(blocks[block % blocks.size()], frames - done);
    const float* const from[] = {source[0].data() + done, source[1].data() + done};
    float* const to[] = {output[0].data() + done, output[1].data() + done};
    run(from, to, length);
    done += length;
  }
  return output;
}

void LoadedPlugin::tellTempo(float beatsPerMinute) {
  time_->write(&beatsPerMinute);
}
