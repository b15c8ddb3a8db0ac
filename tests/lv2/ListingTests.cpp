// What the Turtle files say against what the components are.

#include <gtest/gtest.h>
#include <lilv/lilv.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "EffectBench.h"
#include "EffectPresets.h"
#include "LoadedPlugin.h"

namespace {

using Ports = std::map<std::string, std::string>;  // what is said about them, by their names

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(c));
  return text;
}

/// Kind, limits, an input's default, properties in the order of the alphabet, values with names.
std::string described(bool isInput, float minimum, float maximum, float initial,
                      const std::set<std::string>& properties,
                      const std::map<float, std::string>& names = {}) {
  std::ostringstream text;
  text << (isInput ? "input " : "output ") << minimum << " to " << maximum;
  if (isInput) text << " from " << initial;
  for (const std::string& property : properties) text << " " << property;
  for (const auto& [value, name] : names) text << " " << value << "=" << name;
  return text.str();
}

/// The last words of URIs.
std::set<std::string> wordsOf(const LilvNodes* uris) {
  std::set<std::string> words;
  LILV_FOREACH(nodes, i, uris) {
    const std::string uri = lilv_node_as_uri(lilv_nodes_get(uris, i));
    words.insert(uri.substr(uri.find_last_of("#/") + 1));
  }
  return words;
}

Ports listed(const LilvPlugin* plugin) {
  Ports ports;
  std::vector<float> minima(lilv_plugin_get_num_ports(plugin)), maxima(minima.size()),
      defaults(minima.size());
  lilv_plugin_get_port_ranges_float(plugin, minima.data(), maxima.data(), defaults.data());
  for (uint32_t i = 0; i < minima.size(); ++i) {
    const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
    const auto classes = wordsOf(lilv_port_get_classes(plugin, port));
    if (!classes.contains("ControlPort")) continue;
    LilvNodes* properties = lilv_port_get_properties(plugin, port);
    LilvScalePoints* points = lilv_port_get_scale_points(plugin, port);
    LilvNode* name = lilv_port_get_name(plugin, port);
    std::map<float, std::string> names;
    LILV_FOREACH(scale_points, p, points) {
      const LilvScalePoint* point = lilv_scale_points_get(points, p);
      names[lilv_node_as_float(lilv_scale_point_get_value(point))] =
          lilv_node_as_string(lilv_scale_point_get_label(point));
    }
    ports[lower(lilv_node_as_string(name))] = described(classes.contains("InputPort"), minima[i], maxima[i],
                                                        defaults[i], wordsOf(properties), names);
    lilv_node_free(name);
    lilv_scale_points_free(points);
    lilv_nodes_free(properties);
  }
  return ports;
}

class Listing : public testing::TestWithParam<std::string> {
 protected:
  const LilvPlugin* plugin = PluginFolder::shared().plugin(GetParam());
  EffectBench bench{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Registered, Listing, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(Listing, HasAPortForEachParameterAndForWhatTheEffectOffersBesides) {
  ASSERT_NE(plugin, nullptr);
  EXPECT_TRUE(lilv_plugin_verify(plugin));
  Ports wanted{{"enabled", "input 0 to 1 from 1 toggled"}};
  for (const EffectParameter& p : bench.parameters()) {
    std::set<std::string> properties;
    std::map<float, std::string> names;
    for (const std::string& name : p.valueNames) names[static_cast<float>(names.size())] = name;
    if (!names.empty()) properties = {"enumeration", "integer"};
    if (p.unit == "samples") properties = {"integer"};
    if (p.flags & kAudioUnitParameterFlag_DisplayLogarithmic) properties.insert("logarithmic");
    wanted[lower(p.name)] =
        described(p.isWritable(), p.minValue, p.maxValue, p.defaultValue, properties, names);
  }
  UInt32 size = 0;
  if (AudioUnitGetPropertyInfo(bench.unit(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0,
                               &size, nullptr) == noErr)
    wanted["render quality"] =
        "input 0 to 127 from 127 enumeration expensive integer notAutomatic "
        "0=Minimum 32=Low 64=Medium 96=High 127=Maximum";
  if (bench.latency() > 0) wanted["latency"] = "output 0 to 384000 integer notOnGUI reportsLatency";
  if (GetParam() == "dely") wanted["tempo"] = "output 0 to 999 notOnGUI";
  EXPECT_EQ(listed(plugin), wanted);
  EXPECT_EQ(lilv_plugin_has_latency(plugin), bench.latency() > 0);
}

TEST_P(Listing, HasTheFactoryPresets) {
  LilvWorld* world = PluginFolder::shared().world();
  LilvNode* presetClass = lilv_new_uri(world, "http://lv2plug.in/ns/ext/presets#Preset");
  LilvNodes* presets = lilv_plugin_get_related(plugin, presetClass);
  using Values = std::map<std::string, float>;
  std::map<std::string, Values> found, wanted;
  LILV_FOREACH(nodes, i, presets) {
    const LilvNode* preset = lilv_nodes_get(presets, i);
    lilv_world_load_resource(world, preset);
    LilvState* state = lilv_state_new_from_world(world, &uridMap, preset);
    const auto note = [](const char* symbol, void* values, const void* value, uint32_t, uint32_t) {
      (*static_cast<Values*>(values))[symbol] = *static_cast<const float*>(value);
    };
    lilv_state_emit_port_values(state, note, &found[lilv_state_get_label(state)]);
    lilv_state_free(state);
  }
  lilv_nodes_free(presets);
  lilv_node_free(presetClass);
  const auto names = effectPresets(bench.unit());
  for (size_t i = 0; i < names.size(); ++i) {
    chooseEffectPreset(bench.unit(), static_cast<SInt32>(i));
    for (const EffectParameter& p : bench.writableParameters())
      wanted[names[i]][symbolOf(p.name)] = bench.value(p.id);
  }
  EXPECT_EQ(found, wanted);
}

// Projects of users remember symbols, some hosts indices. New ports may only be added at the end of a line.
TEST(Symbols, StayWhatTheyAre) {
  std::ifstream file(TOVIN_LV2_SYMBOLS);
  std::set<std::string> known;
  for (std::string code, line; file >> code && std::getline(file, line); known.insert(code)) {
    std::string now;
    for (const std::string& symbol : PluginFolder::shared().symbols(code)) now += " " + symbol;
    EXPECT_EQ(now.substr(0, line.size()), line) << code;
  }
  for (const std::string& code : effectCodes()) EXPECT_TRUE(known.contains(code)) << code;
}
