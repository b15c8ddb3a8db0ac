#include "LoadedPlugin.h"

#include <lv2/atom/forge.h>
#include <lv2/core/lv2.h>
#include <lv2/time/time.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <stdexcept>

namespace {

const std::string uriPrefix = "urn:tovin:lv2:";

LV2_URID map(LV2_URID_Map_Handle, const char* uri) {
  static std::vector<std::string> known;
  const auto found = std::find(known.begin(), known.end(), uri);
  const auto index = static_cast<LV2_URID>(found - known.begin());
  if (found == known.end()) known.emplace_back(uri);
  return index + 1;
}

}  // namespace

LV2_URID_Map uridMap{nullptr, &map};

LilvWorld* pluginWorld() {
  static const std::shared_ptr<LilvWorld> world = [] {
    const std::shared_ptr<LilvWorld> made(lilv_world_new(), &lilv_world_free);
    lilv_world_load_bundle(made.get(), Node(lilv_new_file_uri(made.get(), nullptr, TOVIN_LV2 "/")).get());
    return made;
  }();
  return world.get();
}

Node uriNode(const std::string& uri) {
  return Node(lilv_new_uri(pluginWorld(), uri.c_str()));
}

std::vector<std::string> pluginCodes() {
  std::vector<std::string> codes;
  const LilvPlugins* plugins = lilv_world_get_all_plugins(pluginWorld());
  LILV_FOREACH(plugins, i, plugins) {
    const std::string uri = lilv_node_as_uri(lilv_plugin_get_uri(lilv_plugins_get(plugins, i)));
    codes.push_back(uri.substr(uriPrefix.size()));
  }
  return codes;
}

const LilvPlugin* listedPlugin(const std::string& code) {
  return lilv_plugins_get_by_uri(lilv_world_get_all_plugins(pluginWorld()), uriNode(uriPrefix + code).get());
}

std::vector<std::string> portSymbols(const std::string& code) {
  const LilvPlugin* of = listedPlugin(code);
  std::vector<std::string> symbols;
  for (uint32_t i = 0; of && i < lilv_plugin_get_num_ports(of); ++i)
    symbols.emplace_back(lilv_node_as_string(lilv_port_get_symbol(of, lilv_plugin_get_port_by_index(of, i))));
  return symbols;
}

std::string symbolOf(std::string name) {
  for (char& c : name) c = std::isalnum(c) ? static_cast<char>(std::tolower(c)) : '_';
  return name;
}

LoadedPlugin::LoadedPlugin(const std::string& code, double sampleRate) {
  const LilvPlugin* plugin = listedPlugin(code);
  LV2_Feature mapFeature{LV2_URID__map, &uridMap};
  const LV2_Feature* const features[] = {&mapFeature, nullptr};
  instance_ = plugin ? lilv_plugin_instantiate(plugin, sampleRate, features) : nullptr;
  if (!instance_) throw std::runtime_error(code + " cannot be opened");
  const auto symbols = portSymbols(code);
  std::vector<float> minima(symbols.size()), maxima(symbols.size()), defaults(symbols.size());
  lilv_plugin_get_port_ranges_float(plugin, minima.data(), maxima.data(), defaults.data());
  for (uint32_t i = 0; i < symbols.size(); ++i) {
    Port& port = ports_[symbols[i]] = {defaults[i], minima[i], maxima[i]};
    if (!std::isnan(defaults[i])) inputs_.push_back(symbols[i]);  // others have no default
    void* const memory = symbols[i] == "time_position" ? static_cast<void*>(time()) : &port.value;
    lilv_instance_connect_port(instance_, i, memory);
  }
  *time() = {sizeof(LV2_Atom_Sequence_Body), map(nullptr, LV2_ATOM__Sequence)};
  lilv_instance_activate(instance_);
}

LoadedPlugin::~LoadedPlugin() {
  lilv_instance_deactivate(instance_);
  lilv_instance_free(instance_);
}

uint32_t LoadedPlugin::latency() {
  const float* noInput[] = {nullptr, nullptr};
  float* noOutput[] = {nullptr, nullptr};
  run(noInput, noOutput, 0);
  return has("latency") ? static_cast<uint32_t>(control("latency")) : 0;
}

void LoadedPlugin::clear() {
  lilv_instance_deactivate(instance_);
  lilv_instance_activate(instance_);
}

void LoadedPlugin::run(const float* const* input, float* const* output, uint32_t frames) {
  for (uint32_t c = 0; c < 2; ++c) {
    lilv_instance_connect_port(instance_, c, const_cast<float*>(input[c]));
    lilv_instance_connect_port(instance_, 2 + c, output[c]);
  }
  lilv_instance_run(instance_, frames);
  time()->size = sizeof(LV2_Atom_Sequence_Body);  // empty again
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
  LV2_Atom_Forge forge;
  lv2_atom_forge_init(&forge, &uridMap);
  lv2_atom_forge_set_buffer(&forge, time_.data() + 4, time_.size() - 4);
  LV2_Atom_Forge_Frame sequence, object;
  lv2_atom_forge_sequence_head(&forge, &sequence, 0);
  lv2_atom_forge_frame_time(&forge, 0);
  lv2_atom_forge_object(&forge, &object, 0, map(nullptr, LV2_TIME__Position));
  lv2_atom_forge_key(&forge, map(nullptr, LV2_TIME__beatsPerMinute));
  lv2_atom_forge_float(&forge, beatsPerMinute);
}
