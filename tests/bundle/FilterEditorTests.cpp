#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "EditorStage.h"
#include "EffectBench.h"
#include "Filter.h"
#include "ImpulseAUwrapper.h"
#include "StandIn.h"
#include "jxAUMeasuredResponseView.h"
#include "jxAUParamKnobView.h"

namespace {

/// Its centre bands act at half the frequency that their parameters say.
class OldFilter : public Filter {
  Sections design(const Values& values, double rate) const override {
    Values halved = values;
    for (const size_t id : {3, 6, 9}) halved[id] *= 0.5;
    return Filter::design(halved, rate);
  }
};

class FilterEditor : public testing::Test, public EditorStage {
 protected:
  jxAUMeasuredResponseView& graph() const { return *all<jxAUMeasuredResponseView>(*editor).front(); }
  /// Of the effect as it is, measured by an instance of our own.
  float levelAt(float frequency) const {
    ImpulseAUwrapper renderer(unit.get(), 44100, 13, false);
    return jxAUFreqResponseView::interpolateValues_position(
        renderer.freqResponse(), frequency / 22050 * static_cast<float>(renderer.bufferSize()));
  }
  void expectCurveAt(float frequency, float within) {
    const auto filled = [&](float level) {
      const NSPoint p = graph().graphPositionForFreq_gain(frequency, level);
      return (colorAt(graph().convertPoint_toView(p, nullptr)) >> 16) < 0xc0;
    };
    EXPECT_TRUE(filled(levelAt(frequency) - within)) << frequency;
    EXPECT_FALSE(filled(levelAt(frequency) + within)) << frequency;
  }
};

TEST_F(FilterEditor, TheCurveAndItsHandlesStandWhereTheEffectIs) {
  const struct {
    const char *effect, *change;
    std::string handle;        // of the graph's axes, where the first one stands
    std::vector<float> hertz;  // where the curve is looked at
  } rows[] = {{"lpas", "set 0 900; set 1 6", "@900,6", {900}},
              {"hpas", "set 0 4000; set 1 -3", "@4000,-3", {4000}},
              {"hpas", "set 0 150; set 1 0", "@150,0", {3 * 22050.0f / 1024}},  // where samples are few
              {"pmeq", "set 0 8000; set 1 3; set 2 -17", "@8000,-17", {8000}},
              {"bpas", "set 0 900; set 1 700", "@900,0", {900}},
              {"filt", "set 1 200; set 2 6; set 6 2000; set 7 12", "@200,6", {110, 750, 2600, 13500}}};
  for (const auto& row : rows) {
    open(row.effect);
    play(row.change);
    advance(0.1);
    const std::string view = row.effect[0] == 'f' ? "freqResponseView" : "graphView";
    EXPECT_EQ(place(view + "#0"), place(view + row.handle)) << row.change;
    for (const float hertz : row.hertz) expectCurveAt(hertz, 1.5f);
  }
}

TEST_F(FilterEditor, CentreBandsOfTheOlderVersionStandAtHalfTheirFrequency) {
  for (const bool old : {true, false}) {
    open(old ? standIn<0x00010400>("filt", [] { return std::make_unique<OldFilter>(); })
             : standIn<0x00010401>("filt", [] { return std::make_unique<Filter>(); }));
    play("set 6 2000; set 7 15; wait 0.1");
    const float shown = old ? 1000 : 2000;
    EXPECT_EQ(place("freqResponseView#2"),
              place(old ? "freqResponseView@1000,15" : "freqResponseView@2000,15"));
    EXPECT_NEAR(outlet<jxAUParamKnobView>("param6").auParam()->floatValue(), shown, 0.1f);
    EXPECT_NEAR(levelAt(shown), 15, 0.2f) << "the peak lies under the handle";
    EXPECT_EQ(play("press freqResponseView#2; drag to freqResponseView@500,6; release"),
              old ? "6 = 1000, 7 = 6" : "6 = 500, 7 = 6");
  }
}

TEST_F(FilterEditor, WhatIsMeasuredIsTheResponse) {
  constexpr unsigned long order = 11;
  for (const char* effect : {"filt", "lpas", "hpas", "lshf", "hshf", "pmeq", "bpas"}) {
    open(effect);
    EffectBench bench(effect, {.inputs = 1, .outputs = 1});
    ImpulseAUwrapper renderer(unit.get(), 0, order, false);
    for (int setting = 0; setting < 4; ++setting) {
      for (const EffectParameter& p : bench.parameters()) {
        const float part = static_cast<float>((p.id * 3 + static_cast<UInt32>(setting) * 2) % 7) / 7;
        const float lowest = p.unit == "dB" ? -12 : p.minValue, highest = p.unit == "dB" ? 12 : p.maxValue;
        set(p.id,
            p.unit == "Hz" ? 500 * std::pow(p.maxValue / 500, part) : lowest + (highest - lowest) * part);
        bench.set(p.id, parameter(p.id));
      }
      bench.reset();
      const std::vector<float> response = bench.render(impulse(1, 16384))[0];
      const float* measured = renderer.freqResponse();
      for (int k = 1 + setting; k < 1 << order; k += 61) {
        const double hertz = k * 22050.0 / (1 << order),
                     level = 20 * std::log10(magnitude(response, hertz, 44100));
        if (hertz < 500 || level < -30) continue;
        EXPECT_NEAR(measured[k], level, 0.1) << effect << " " << hertz;
      }
    }
  }
}

}  // namespace
