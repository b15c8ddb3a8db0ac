#include "LoadedPlugin.h"

#include <lv2/atom/forge.h>
#include <lv2/core/lv2.h>
#include <lv2/time/time.h>

#include <algorithm>
#include <cctype>
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

bool PluginFolder::isHardRealTime(const std::string& code) const {
  LilvNode* feature = lilv_new_uri(world(), LV2_CORE__hardRTCapable);
  const bool isPromised = lilv_plugin_has_feature(plugin(code), feature);
  lilv_node_free(feature);
  return isPromised;
}

std::vector<std::string> PluginFolder::symbols(const std::string& code) const {
  const LilvPlugin* of = plugin(code);
  std::vector<std::string> symbols;
  for (uint32_t i = 0; of && i < lilv_plugin_get_num_ports(of); ++i)
    symbols.emplace_back(lilv_node_as_string(lilv_port_get_symbol(of, lilv_plugin_get_port_by_index(of, i))));
  return symbols;
}

std::string symbolOf(std::string name) {
  for (char& c : name) c = std::isalnum(c) ? static_cast<char>(std::tolower(c)) : '_';
  return name;
}

LoadedPlugin::TimePosition::TimePosition(const float* beatsPerMinute) {
  LV2_Atom_Forge forge;
  lv2_atom_forge_init(&forge, &uridMap);
  lv2_atom_forge_set_buffer(&forge, bytes(), memory.size() - 4);
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

LoadedPlugin::LoadedPlugin(const std::string& code, double sampleRate)
    : symbols_(PluginFolder::shared().symbols(code)) {
  const LilvPlugin* plugin = PluginFolder::shared().plugin(code);
  LV2_Feature mapFeature{LV2_URID__map, &uridMap};
  const LV2_Feature* const features[] = {&mapFeature, nullptr};
  instance_ = plugin ? lilv_plugin_instantiate(plugin, sampleRate, features) : nullptr;
  if (!instance_) return;
  for (auto* values : {&controls_, &minima_, &maxima_}) values->resize(symbols_.size());
  lilv_plugin_get_port_ranges_float(plugin, minima_.data(), maxima_.data(), controls_.data());
  LilvNode* controlPort = lilv_new_uri(PluginFolder::shared().world(), LILV_URI_CONTROL_PORT);
  LilvNode* inputPort = lilv_new_uri(PluginFolder::shared().world(), LILV_URI_INPUT_PORT);
  for (uint32_t i = 0; i < symbols_.size(); ++i) {
    const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
    const bool isControl = lilv_port_is_a(plugin, port, controlPort);
    isControlInput_.push_back(isControl && lilv_port_is_a(plugin, port, inputPort));
    if (isControl) lilv_instance_connect_port(instance_, i, &controls_[i]);
  }
  for (LilvNode* node : {controlPort, inputPort}) lilv_node_free(node);
  time_ = static_cast<uint32_t>(indexOf("time_position"));
  giveTime(nothing_);
}

LoadedPlugin::~LoadedPlugin() {
  if (!instance_) return;
  if (active_) lilv_instance_deactivate(instance_);
  lilv_instance_free(instance_);
}

size_t LoadedPlugin::indexOf(const std::string& symbol) const {
  return static_cast<size_t>(std::find(symbols_.begin(), symbols_.end(), symbol) - symbols_.begin());
}

std::vector<std::string> LoadedPlugin::parameters() const {
  std::vector<std::string> parameters;
  for (size_t i = 0; i < symbols_.size(); ++i)
    if (isControlInput_[i] && symbols_[i] != "enabled" && symbols_[i] != "render_quality")
      parameters.push_back(symbols_[i]);
  return parameters;
}

uint32_t LoadedPlugin::latency() {
  const float* noInput[] = {nullptr, nullptr};
  float* noOutput[] = {nullptr, nullptr};
  run(noInput, noOutput, 0);
  return has("latency") ? static_cast<uint32_t>(control("latency")) : 0;
}

void LoadedPlugin::giveTime(TimePosition& position) {
  if (time_ < symbols_.size()) lilv_instance_connect_port(instance_, time_, position.bytes());
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
  giveTime(nothing_);
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
  tempo_ = TimePosition(&beatsPerMinute);
  giveTime(tempo_);
}
