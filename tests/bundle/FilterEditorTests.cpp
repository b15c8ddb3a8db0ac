#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "AllocationCount.h"
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
    int gain;  // the parameter that a handle's height shows; -1: none
  } rows[] = {{"lpas", "set 0 900; set 1 6", 1},           {"lpas", "set 0 9000; set 1 -5", 1},
              {"hpas", "set 0 700; set 1 11", 1},          {"hpas", "set 0 4000; set 1 -3", 1},
              {"pmeq", "set 0 600; set 1 1; set 2 15", 2}, {"pmeq", "set 0 8000; set 1 3; set 2 -17", 2},
              {"bpas", "set 0 900; set 1 700", -1},        {"bpas", "set 0 9000; set 1 3500", -1}};
  for (const auto& row : rows) {
    open(row.effect);
    play(row.change);
    advance(0.1);
    graph().calculateHandles();
    const NSPoint handle = graph().getPointForHandle(0);
    const float level = row.gain < 0 ? 0 : parameter(static_cast<UInt32>(row.gain));
    EXPECT_EQ(handle, graph().graphPositionForFreq_gain(parameter(0), level));
    EXPECT_NEAR(handle.y, graph().graphPositionForFreq_gain(parameter(0), levelAt(parameter(0))).y, 2)
        << row.change;
  }
  open("filt");
  play(
      "set 1 200; set 2 6; set 3 500; set 4 -9; set 5 2; set 6 2000; set 7 12; set 13 6000; set 14 10; wait "
      "0.1");
  for (const float hertz : {110.0f, 430.0f, 750.0f, 1300.0f, 2600.0f, 13500.0f}) expectCurveAt(hertz, 1.5f);
  open("hpas");
  play("set 0 150; set 1 0; wait 0.1");
  expectCurveAt(17000, 1.5f);
  expectCurveAt(3 * 22050.0f / 1024, 1.2f);  // where one sample stands, far from the next
}

TEST_F(FilterEditor, CentreBandsOfTheOlderVersionStandAtHalfTheirFrequency) {
  for (const bool old : {true, false}) {
    open(old ? standIn<0x00010400>("filt", [] { return std::make_unique<OldFilter>(); })
             : standIn<0x00010401>("filt", [] { return std::make_unique<Filter>(); }));
    play("set 6 2000; set 7 15; wait 0.1");
    const float shown = old ? 1000 : 2000;
    graph().calculateHandles();
    EXPECT_NEAR(graph().getPointForHandle(2).x, graph().graphPositionForFreq_gain(shown, 0).x, 0.01f);
    EXPECT_NEAR(outlet<jxAUParamKnobView>("param6").auParam()->floatValue(), shown, 0.1f);
    EXPECT_NEAR(levelAt(shown), 15, 0.2f) << "the peak lies under the handle";
    EXPECT_EQ(play("press freqResponseView#2; drag to freqResponseView@500,6; release"),
              old ? "6 = 1000, 7 = 6" : "6 = 500, 7 = 6");
  }
}

TEST_F(FilterEditor, AHeldKnobShowsItsHandleAsEdited) {
  open("filt");
  const std::pair<const char*, int> rows[] = {{"param1", 0}, {"param2", 0},  {"param3", 1}, {"param5", 1},
                                              {"param8", 2}, {"param10", 3}, {"param14", 4}};
  const auto edited = [&](int handle) {
    graph().setExternalEditedHandle(handle);
    advance(0.1);
    return picture();
  };
  const NSRect where = frameInWindow(graph());
  const Bitmap calm = edited(-1);
  for (const auto& [control, handle] : rows) {
    const Bitmap expected = edited(handle);
    edited(-1);
    EXPECT_GT(differences(calm, expected, where), 100);
    play(std::string("press ") + control + ".knob; wait 0.1");
    EXPECT_EQ(differences(picture(), expected, where), 0) << control;
    play("release; wait 0.1");
    EXPECT_EQ(differences(picture(), calm, where), 0) << control;
  }
}

TEST_F(FilterEditor, WhatIsMeasuredIsTheResponse) {
  std::mt19937 random(3);
  const auto between = [&](float low, float high) {
    return low + (high - low) * static_cast<float>(random()) / 4294967296.0f;
  };
  for (const char* effect : {"filt", "lpas", "hpas", "lshf", "hshf", "pmeq", "bpas"}) {
    open(effect);
    EffectBench bench(effect, {.inputs = 1, .outputs = 1});
    const bool isMultiBand = effect[0] == 'f';
    const unsigned long order = isMultiBand ? 11 : 10;
    ImpulseAUwrapper renderer(unit.get(), 0, order, false);
    for (int setting = 0; setting < 10; ++setting) {
      for (const EffectParameter& p : bench.parameters()) {
        const bool isFrequency = p.unit == "Hz";
        const float lowest = std::max(p.minValue, isFrequency      ? 500.0f
                                                  : p.unit == "dB" ? -12.0f
                                                                   : p.minValue);
        set(p.id, isFrequency ? lowest * std::pow(p.maxValue / lowest, between(0, 1))
                              : between(lowest, std::min(p.maxValue, p.unit == "dB" ? 12.0f : p.maxValue)));
        bench.set(p.id, parameter(p.id));
      }
      bench.reset();
      const std::vector<float> response = bench.render(impulse(1, 16384))[0];
      const size_t heapCalls = heapCallsOfThread();
      const float* measured = renderer.freqResponse();
      EXPECT_EQ(heapCallsOfThread(), heapCalls);
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
