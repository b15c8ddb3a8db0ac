#include <array>
#include <cmath>
#include <complex>
#include <numbers>
#include <random>
#include <vector>

#include "AUFilterGraphView.h"
#include "AudioUnitProperties.h"
#include "EditorFixture.h"
#include "Filter.h"
#include "ImpulseAUwrapper.h"
#include "jxAUParamKnobView.h"

namespace {

/// Its centre bands act at half the frequency that their parameters say.
class OldFilter : public Filter {
 public:
  static std::unique_ptr<AUEffectBase> make() { return std::make_unique<OldFilter>(); }

 private:
  Sections design(const Values& values, double rate) const override {
    Values halved = values;
    for (const size_t id : {3, 6, 9}) halved[id] *= 0.5;
    return Filter::design(halved, rate);
  }
};

std::unique_ptr<AUEffectBase> makeFilter() {
  return std::make_unique<Filter>();
}

class FilterEditor : public EditorTest {
 protected:
  jxAUMeasuredResponseView& graph() const {
    return outlet<jxAUMeasuredResponseView>(editor->isa().outletNamed("graphView") ? "graphView"
                                                                                   : "freqResponseView");
  }
  NSPoint onScreen(NSPoint inGraph) const {
    return window->convertBaseToScreen(graph().convertPoint_toView(inGraph, nullptr));
  }
  void drag(NSPoint from, float dx, float dy, unsigned modifiers = 0) {
    display_.press(onScreen(from));
    display_.moveBy(dx, dy, modifiers);
    display_.release();
    advance(0.1);
  }
  /// Of the effect as it is, measured by an instance of our own.
  float levelAt(float frequency) const {
    ImpulseAUwrapper renderer(unit.get(), 44100, 13, false);
    return jxAUFreqResponseView::interpolateValues_position(
        renderer.freqResponse(), frequency / 22050 * static_cast<float>(renderer.bufferSize()));
  }
  bool filled(float frequency, float level) const {
    const NSPoint p = graph().graphPositionForFreq_gain(frequency, level);
    return (colorAt(graph().convertPoint_toView(p, nullptr)) >> 16) < 0xc0;
  }
};

TEST_F(FilterEditor, EachOfTheFiveHandlesWritesItsOwnBand) {
  open("filt");
  const struct {
    UInt32 frequency, gain, bandwidth;
    float toFrequency, toGain;
  } rows[] = {{1, 2, 0, 200, 6},
              {3, 4, 5, 500, -9},
              {6, 7, 8, 2000, 12},
              {9, 10, 11, 3000, -3},
              {13, 14, 0, 6000, 10}};
  for (const auto& row : rows) {
    std::array<float, 15> before;
    for (UInt32 id = 0; id < 15; ++id) before[id] = parameter(id);
    const NSPoint from = graph().graphPositionForFreq_gain(parameter(row.frequency), parameter(row.gain));
    const NSPoint to = graph().graphPositionForFreq_gain(row.toFrequency, row.toGain);
    drag(from, to.x - from.x, to.y - from.y);
    EXPECT_NEAR(parameter(row.frequency), row.toFrequency, row.toFrequency * 1e-3f);
    EXPECT_NEAR(parameter(row.gain), row.toGain, 0.01f);
    if (row.bandwidth) {
      drag(to, 0, -20, NSAlternateKeyMask);
      EXPECT_NEAR(parameter(row.bandwidth), 2, 1e-4f) << "an octave more for 20 points downwards";
    }
    for (UInt32 id = 0; id < 15; ++id) {
      if (id != row.frequency && id != row.gain && !(row.bandwidth && id == row.bandwidth)) {
        EXPECT_EQ(parameter(id), before[id]) << id;
      }
    }
  }
  for (const float hertz : {110.0f, 430.0f, 750.0f, 1300.0f, 2600.0f, 13500.0f}) {
    EXPECT_TRUE(filled(hertz, levelAt(hertz) - 1.5f)) << hertz;
    EXPECT_FALSE(filled(hertz, levelAt(hertz) + 1.5f)) << hertz;
  }
}

TEST_F(FilterEditor, HandlesOfTheSingleBandsStandOnTheirCurve) {
  std::mt19937 random(7);
  const auto between = [&](float low, float high) {
    return low + (high - low) * static_cast<float>(random()) / 4294967296.0f;
  };
  for (const char* effect : {"lpas", "hpas", "pmeq", "bpas"}) {
    open(effect);
    const bool isPeak = effect[0] == 'p', isBand = effect[0] == 'b';
    for (int i = 0; i < 8; ++i) {
      const float frequency = 500 * std::exp2(between(0, 4.6f));
      automate(0, frequency);
      automate(1, isPeak ? between(0.7f, 4) : isBand ? between(600, 3600) : between(-6, 12));
      if (isPeak) automate(2, between(-18, 18));
      advance(0.1);
      const float level = isBand ? 0 : parameter(isPeak ? 2 : 1);
      graph().calculateHandles();
      EXPECT_EQ(graph().getPointForHandle(0), graph().graphPositionForFreq_gain(frequency, level));
      const float curve = graph().graphPositionForFreq_gain(frequency, levelAt(frequency)).y;
      EXPECT_NEAR(graph().getPointForHandle(0).y, curve, 2) << effect << " " << frequency << " " << level;
    }
    if (effect[0] == 'h') {
      constexpr float hertz = 3 * 22050.0f / 1024;  // where one sample stands, far from the next
      automate(0, 150);
      automate(1, 0);
      advance(0.1);
      EXPECT_TRUE(filled(hertz, levelAt(hertz) - 1.2f));
      EXPECT_FALSE(filled(hertz, levelAt(hertz) + 1.2f));
    }
    close();
  }
  for (const char* effect : {"lshf", "hshf"}) {
    open(effect);
    const NSPoint from = graph().graphPositionForFreq_gain(parameter(0), parameter(1));
    drag(from, 0, 30);
    graph().calculateHandles();
    EXPECT_NEAR(graph().getPointForHandle(0).y, from.y + 30, 0.01f) << effect;
    EXPECT_NEAR(parameter(1), graph().gainForYPos(static_cast<double>(from.y) + 30), 0.001f);
    EXPECT_EQ(outlet<>("cutoff").isa().name(), "jxAUParamKnobView");
    close();
  }
}

TEST_F(FilterEditor, WidthsOfTheSingleBands) {
  open("pmeq");
  automate(1, 1.414214f);
  advance(0.1);
  NSPoint handle = graph().graphPositionForFreq_gain(parameter(0), parameter(2));
  drag(handle, 0, -20, NSAlternateKeyMask);
  EXPECT_NEAR(parameter(1), 1.414214f / 1.25f, 1e-5f);
  drag(handle, 0, 2000, NSAlternateKeyMask);
  EXPECT_EQ(parameter(1), 20) << "narrower than nothing is as narrow as the effect goes";
  const NSPoint to = graph().graphPositionForFreq_gain(1000, -6);
  drag(handle, to.x - handle.x, to.y - handle.y);
  EXPECT_NEAR(parameter(0), 1000, 0.5f);
  EXPECT_NEAR(parameter(2), -6, 0.01f);
  close();
  open("bpas");
  handle = graph().graphPositionForFreq_gain(parameter(0), 0);
  drag(handle, 0, -20, NSAlternateKeyMask);
  EXPECT_EQ(parameter(1), 1800);
  drag(handle, 0, -50);
  EXPECT_EQ(parameter(1), 1800) << "there is no level";
}

TEST_F(FilterEditor, CentreBandsOfTheOlderVersionStandAtHalfTheirFrequency) {
  const ComponentDescription applFilter{FourCharCode("aufx"), FourCharCode("filt"), FourCharCode("appl")};
  for (const bool old : {true, false}) {
    open(old ? RegisterComponent(applFilter, "Test: AUFilter", 0x00010400, &OldFilter::make)
             : RegisterComponent(applFilter, "Test: AUFilter", 0x00010401, &makeFilter));
    automate(6, 2000);
    automate(7, 15);
    advance(0.1);
    const float shown = old ? 1000 : 2000;
    graph().calculateHandles();
    const NSPoint handle = graph().getPointForHandle(2);
    EXPECT_NEAR(handle.x, graph().graphPositionForFreq_gain(shown, 0).x, 0.01f);
    EXPECT_NEAR(outlet<jxAUParamKnobView>("param6").auParam()->floatValue(), shown, 0.1f);
    if (old) {
      EXPECT_NEAR(levelAt(shown), 15, 0.2f) << "the peak lies under the handle";
    }
    drag(handle, graph().graphPositionForFreq_gain(500, 15).x - handle.x, 0);
    EXPECT_NEAR(parameter(6), old ? 1000 : 500, 0.5f);
    close();
  }
}

TEST_F(FilterEditor, AHeldKnobShowsItsHandleAsEdited) {
  open("filt");
  const struct {
    const char* control;
    int handle;
  } rows[] = {{"param1", 0}, {"param2", 0},  {"param3", 1}, {"param5", 1},
              {"param8", 2}, {"param10", 3}, {"param14", 4}};
  const auto edited = [&](int handle) {
    graph().setExternalEditedHandle(handle);
    advance(0.1);
    return picture();
  };
  const NSRect where = frameInWindow(graph());
  const Bitmap calm = edited(-1);
  for (const auto& row : rows) {
    const Bitmap expected = edited(row.handle);
    edited(-1);
    EXPECT_GT(differences(calm, expected, where), 100);
    const NSPoint knob = middleOnScreen(*find(outlet<>(row.control), "jxAURotaryKnob"));
    display_.press(knob);
    advance(0.1);
    EXPECT_EQ(differences(picture(), expected, where), 0) << row.control;
    display_.release();
    advance(0.1);
    EXPECT_EQ(differences(picture(), calm, where), 0) << row.control;
  }
}

TEST_F(FilterEditor, ChangesBeforeItHasItsEffectDoNothing) {
  const auto graph = std::make_shared<AUFilterGraphView>(NSMakeRect(0, 0, 500, 205));
  graph->awakeFromNib();
  EditorTest::show(graph);
  graph->valueChanged(nullptr);
  graph->calculateHandles();
  EXPECT_EQ(graph->getPointForHandle(3), NSPoint());
  display_.press(window->convertBaseToScreen({1, 1}));
  display_.moveBy(30, 0);
  display_.moveBy(0, 30, NSAlternateKeyMask);
  display_.release();
  advance(0.1);
  EXPECT_EQ(log_, Lines());
}

TEST_F(FilterEditor, WhatIsMeasuredIsTheResponse) {
  std::mt19937 random(3);
  const auto between = [&](double low, double high) {
    return static_cast<float>(low + (high - low) * static_cast<double>(random()) / 4294967296.0);
  };
  for (const char* effect : {"filt", "lpas", "hpas", "lshf", "hshf", "pmeq", "bpas"}) {
    open(effect);
    const bool isMultiBand = effect[0] == 'f';
    const unsigned long order = isMultiBand ? 11 : 10;
    ImpulseAUwrapper renderer(unit.get(), 44100, order, false), exact(unit.get(), 44100, 15, false);
    const int count = 1 << order;
    for (int setting = 0; setting < 30; ++setting) {
      const auto frequency = [&](double most) {
        return 500 * std::pow(static_cast<float>(most) / 500, between(0, 1));
      };
      if (isMultiBand) {
        automate(1, frequency(3000));
        automate(13, frequency(20000));
        for (const UInt32 band : {3u, 6u, 9u}) {
          automate(band, frequency(20000));
          automate(band + 2, between(0.5, 3));
        }
        for (const UInt32 gain : {2u, 4u, 7u, 10u, 14u}) automate(gain, between(-12, 12));
      } else {
        automate(0, frequency(20000));
        automate(1, effect[0] == 'p'   ? between(0.3, 4)
                    : effect[0] == 'b' ? between(600, 6000)
                                       : between(-12, 12));
        automate(2, between(-20, 20));
      }
      const float* response = renderer.renderImpulse();
      const std::vector<float> samples(response, response + count);
      const float* measured = renderer.freqResponse();
      const float* endless = exact.freqResponse();
      for (int k = 1 + setting; k < count; k += 61) {
        const float level = measured[k];
        if (level < -60) continue;
        std::complex<double> sum = 0;
        for (int i = 0; i < count; ++i) {
          const double way = std::numbers::pi * (count - 1 - i) / count;
          sum += std::polar(
              samples[static_cast<size_t>(i)] * (0.42 - 0.5 * std::cos(way) + 0.08 * std::cos(2 * way)),
              -std::numbers::pi * k * i / count);
        }
        EXPECT_NEAR(level, 20 * std::log10(std::abs(sum)), 0.01) << effect << " bin " << k;
        if (k * 22050 / count >= 500 && level > -30) {
          EXPECT_NEAR(level, endless[k << (15 - order)], 0.1) << effect << " bin " << k;
        }
      }
    }
    close();
  }
}

TEST_F(FilterEditor, SurvivesAStormOfChanges) {
  std::mt19937 random(1);
  for (const char* effect : {"filt", "lpas", "hpas", "lshf", "hshf", "pmeq", "bpas"}) {
    open(effect);
    for (UInt32 i = 0; i < 1500; ++i) {
      automate(static_cast<UInt32>(random() % 15),
               std::ldexp(static_cast<float>(random()) / 4294967296.0f - 0.3f, 15));
      if (i % 50 == 0) advance(0.06);
    }
    close();
  }
  EXPECT_EQ(log_, Lines());
}

}  // namespace
