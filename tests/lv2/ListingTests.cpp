// What the Turtle files say against what the components are.

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <map>
#include <sstream>

#include "EffectBench.h"
#include "LoadedPlugin.h"

namespace {

struct Port {
  std::string symbol, name;
  bool isControl = false, isOutput = false;
  float minimum = 0, maximum = 0, defaultValue = 0;
  std::vector<std::string> properties;  // last words of their URIs
  std::map<float, std::string> points;

  bool is(const char* property) const {
    return std::find(properties.begin(), properties.end(), property) != properties.end();
  }
};

std::string lastWord(const LilvNode* uri) {
  const std::string text = lilv_node_as_uri(uri);
  return text.substr(text.find_last_of("#/") + 1);
}

std::string takeString(LilvNode* node) {
  const std::string text = lilv_node_as_string(node);
  lilv_node_free(node);
  return text;
}

std::vector<Port> portsOf(const LilvPlugin* plugin) {
  std::vector<Port> ports(lilv_plugin_get_num_ports(plugin));
  std::vector<float> minima(ports.size()), maxima(ports.size()), defaults(ports.size());
  lilv_plugin_get_port_ranges_float(plugin, minima.data(), maxima.data(), defaults.data());
  for (uint32_t i = 0; i < ports.size(); ++i) {
    const LilvPort* port = lilv_plugin_get_port_by_index(plugin, i);
    Port& read = ports[i];
    read.symbol = lilv_node_as_string(lilv_port_get_symbol(plugin, port));
    read.name = takeString(lilv_port_get_name(plugin, port));
    read.minimum = minima[i];
    read.maximum = maxima[i];
    read.defaultValue = defaults[i];
    const LilvNodes* classes = lilv_port_get_classes(plugin, port);
    LILV_FOREACH(nodes, c, classes) {
      const std::string word = lastWord(lilv_nodes_get(classes, c));
      read.isControl |= word == "ControlPort";
      read.isOutput |= word == "OutputPort";
    }
    LilvNodes* properties = lilv_port_get_properties(plugin, port);
    LILV_FOREACH(nodes, p, properties) read.properties.push_back(lastWord(lilv_nodes_get(properties, p)));
    lilv_nodes_free(properties);
    LilvScalePoints* points = lilv_port_get_scale_points(plugin, port);
    LILV_FOREACH(scale_points, p, points) {
      const LilvScalePoint* point = lilv_scale_points_get(points, p);
      read.points[lilv_node_as_float(lilv_scale_point_get_value(point))] =
          lilv_node_as_string(lilv_scale_point_get_label(point));
    }
    lilv_scale_points_free(points);
  }
  return ports;
}

class Listing : public testing::TestWithParam<std::string> {
 protected:
  const LilvPlugin* plugin = PluginFolder::shared().plugin(GetParam());
  const std::vector<Port> ports = portsOf(plugin);
  EffectBench bench{GetParam()};

  const Port* find(const std::string& symbol) const {
    const auto found =
        std::find_if(ports.begin(), ports.end(), [&](const Port& port) { return port.symbol == symbol; });
    return found == ports.end() ? nullptr : &*found;
  }
};
INSTANTIATE_TEST_SUITE_P(Registered, Listing, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(Listing, HasAPortForEachParameterInOrder) {
  ASSERT_NE(plugin, nullptr);
  EXPECT_TRUE(lilv_plugin_verify(plugin));
  std::vector<const Port*> inputs, meters;
  for (const Port& port : ports) {
    if (!port.isControl || port.symbol == "enabled" || port.symbol == "render_quality") continue;
    if (!port.isOutput)
      inputs.push_back(&port);
    else if (port.symbol != "latency" && port.symbol != "tempo")
      meters.push_back(&port);
  }
  size_t input = 0, meter = 0;
  for (const EffectParameter& p : bench.parameters()) {
    SCOPED_TRACE(p.name);
    const bool isWritable = p.isWritable();
    ASSERT_LT(isWritable ? input : meter, isWritable ? inputs.size() : meters.size());
    const Port& port = isWritable ? *inputs[input++] : *meters[meter++];
    EXPECT_STRCASEEQ(port.name.c_str(), p.name.c_str());
    EXPECT_EQ(port.minimum, p.minValue);
    EXPECT_EQ(port.maximum, p.maxValue);
    EXPECT_TRUE(!isWritable || port.defaultValue == p.defaultValue);
    EXPECT_EQ(port.is("logarithmic"), (p.flags & kAudioUnitParameterFlag_DisplayLogarithmic) != 0);
    EXPECT_EQ(port.is("enumeration"), !p.valueNames.empty());
    EXPECT_EQ(port.points.size(), !p.valueNames.empty() ? 2u : 0u);
  }
  EXPECT_EQ(input, inputs.size());
  EXPECT_EQ(meter, meters.size());
}

TEST_P(Listing, HasPortsForWhatTheEffectOffersBesides) {
  UInt32 size = 0;
  const bool hasQuality = AudioUnitGetPropertyInfo(bench.unit(), kAudioUnitProperty_RenderQuality,
                                                   kAudioUnitScope_Global, 0, &size, nullptr) == noErr;
  const Port* quality = find("render_quality");
  ASSERT_EQ(quality != nullptr, hasQuality);
  if (quality) {
    std::vector<float> values;
    for (const auto& [value, label] : quality->points) values.push_back(value);
    EXPECT_EQ(values, (std::vector<float>{0, 32, 64, 96, 127}));
    EXPECT_TRUE(quality->is("integer"));
    EXPECT_EQ(quality->defaultValue, 127);
  }
  const Port* latency = find("latency");
  ASSERT_EQ(latency != nullptr, bench.latency() > 0);
  EXPECT_EQ(lilv_plugin_has_latency(plugin), bench.latency() > 0);
  EXPECT_TRUE(!latency || latency->is("reportsLatency"));
  const Port* enabled = find("enabled");
  ASSERT_TRUE(enabled && enabled->is("toggled"));
  EXPECT_EQ(enabled->defaultValue, 1);
}

TEST_P(Listing, HasTheFactoryPresets) {
  LilvWorld* world = PluginFolder::shared().world();
  LilvNode* presetClass = lilv_new_uri(world, "http://lv2plug.in/ns/ext/presets#Preset");
  LilvNode* label = lilv_new_uri(world, "http://www.w3.org/2000/01/rdf-schema#label");
  LilvNode* portOf = lilv_new_uri(world, "http://lv2plug.in/ns/lv2core#port");
  LilvNode* symbol = lilv_new_uri(world, "http://lv2plug.in/ns/lv2core#symbol");
  LilvNode* valueOf = lilv_new_uri(world, "http://lv2plug.in/ns/ext/presets#value");
  std::map<std::string, std::map<std::string, float>> found;
  LilvNodes* presets = lilv_plugin_get_related(plugin, presetClass);
  LILV_FOREACH(nodes, p, presets) {
    const LilvNode* preset = lilv_nodes_get(presets, p);
    lilv_world_load_resource(world, preset);
    auto& values = found[takeString(lilv_world_get(world, preset, label, nullptr))];
    LilvNodes* settings = lilv_world_find_nodes(world, preset, portOf, nullptr);
    LILV_FOREACH(nodes, s, settings) {
      const LilvNode* setting = lilv_nodes_get(settings, s);
      LilvNode* value = lilv_world_get(world, setting, valueOf, nullptr);
      values[takeString(lilv_world_get(world, setting, symbol, nullptr))] = lilv_node_as_float(value);
      lilv_node_free(value);
    }
    lilv_nodes_free(settings);
  }
  lilv_nodes_free(presets);
  for (LilvNode* node : {presetClass, label, portOf, symbol, valueOf}) lilv_node_free(node);

  const auto names = bench.presets();
  EXPECT_EQ(found.size(), names.size());
  for (size_t i = 0; i < names.size(); ++i) {
    SCOPED_TRACE(names[i]);
    bench.choosePreset(i);
    for (const EffectParameter& p : bench.writableParameters()) {
      const auto port = std::find_if(ports.begin(), ports.end(), [&](const Port& candidate) {
        return strcasecmp(candidate.name.c_str(), p.name.c_str()) == 0;
      });
      ASSERT_TRUE(found[names[i]].contains(port->symbol)) << port->symbol;
      EXPECT_EQ(found[names[i]][port->symbol], bench.value(p.id)) << port->symbol;
    }
  }
}

// Projects of users remember symbols, some hosts indices. New ports may only be added at the end of a line.
TEST(Symbols, StayWhatTheyAre) {
  std::ifstream file(TOVIN_LV2_SYMBOLS);
  std::map<std::string, std::string> known;
  for (std::string code, line; file >> code && std::getline(file, line);) known[code] = line;
  for (const std::string& code : effectCodes()) {
    std::string line;
    for (const Port& port : portsOf(PluginFolder::shared().plugin(code))) line += " " + port.symbol;
    EXPECT_EQ(line.substr(0, known[code].size()), known[code]) << code;
    EXPECT_FALSE(known[code].empty()) << code << line;
  }
}
