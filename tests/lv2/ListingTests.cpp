// What the Turtle files say against what the components are.

#include <gtest/gtest.h>
#include <lv2/port-props/port-props.h>
#include <lv2/presets/presets.h>

#include <fstream>
#include <map>
#include <set>

#include "EffectBench.h"
#include "EffectPresets.h"
#include "LoadedPlugin.h"

namespace {

class Listing : public testing::TestWithParam<std::string> {
 protected:
  const LilvPlugin* plugin = listedPlugin(GetParam());
  EffectBench bench{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(Registered, Listing, testing::ValuesIn(effectCodes()));

}  // namespace

TEST_P(Listing, HasAPortForEachParameter) {
  ASSERT_TRUE(lilv_plugin_verify(plugin));
  LoadedPlugin loaded(GetParam());
  for (const EffectParameter& p : bench.parameters()) {
    const std::string symbol = symbolOf(p.name);
    SCOPED_TRACE(symbol);
    ASSERT_TRUE(loaded.has(symbol));
    EXPECT_EQ(loaded.port(symbol).minimum, p.minValue);
    EXPECT_EQ(loaded.port(symbol).maximum, p.maxValue);
    EXPECT_TRUE(!p.isWritable() || loaded.control(symbol) == p.defaultValue);
    const LilvPort* port =
        lilv_plugin_get_port_by_symbol(plugin, Node(lilv_new_string(pluginWorld(), symbol.c_str())).get());
    LilvScalePoints* points = lilv_port_get_scale_points(plugin, port);
    EXPECT_EQ(lilv_scale_points_size(points), p.valueNames.size());
    lilv_scale_points_free(points);
    const bool isLogarithmic = p.flags & kAudioUnitParameterFlag_DisplayLogarithmic;
    EXPECT_EQ(lilv_port_has_property(plugin, port, uriNode(LV2_PORT_PROPS__logarithmic).get()),
              isLogarithmic);
  }
  EXPECT_EQ(lilv_plugin_has_latency(plugin), bench.latency() > 0);
}

TEST_P(Listing, HasTheFactoryPresets) {
  using Values = std::map<std::string, float>;
  std::map<std::string, Values> found, wanted;
  LilvNodes* presets = lilv_plugin_get_related(plugin, uriNode(LV2_PRESETS__Preset).get());
  LILV_FOREACH(nodes, i, presets) {
    const LilvNode* preset = lilv_nodes_get(presets, i);
    lilv_world_load_resource(pluginWorld(), preset);
    LilvState* state = lilv_state_new_from_world(pluginWorld(), &uridMap, preset);
    const auto note = [](const char* symbol, void* values, const void* value, uint32_t, uint32_t) {
      (*static_cast<Values*>(values))[symbol] = *static_cast<const float*>(value);
    };
    lilv_state_emit_port_values(state, note, &found[lilv_state_get_label(state)]);
    lilv_state_free(state);
  }
  lilv_nodes_free(presets);
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
    for (const std::string& symbol : portSymbols(code)) now += " " + symbol;
    EXPECT_EQ(now.substr(0, line.size()), line) << code;
  }
  for (const std::string& code : effectCodes()) EXPECT_TRUE(known.contains(code)) << code;
}
