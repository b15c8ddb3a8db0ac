#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "AudioUnitProperties.h"
#include "EditorStage.h"
#include "EffectBench.h"

#include "ReverbIRview.h"
#include "jxAUParamKnobView.h"
#include "mrev_largeQCView.h"

namespace {

class ReverbEditor : public testing::Test, public EditorStage {};

TEST_F(ReverbEditor, TheEnvelopeFollowsWhatIsHeardAndNothingElse) {
  open("mrev");
  const NSRect where = frameInWindow(outlet("irView"));
  const auto changes = [&](const char* script) {
    const Bitmap before = picture();
    play(script);
    advance(0.1);
    return differences(before, picture(), where) > 0;
  };
  EXPECT_FALSE(changes("set 0 0.7; set 12 0.7; set 13 0.7"));
  set(1, 50);
  for (const char* script : {"set 1 20", "set 2 0.02", "set 7 0.02", "set 11 0.02"})
    EXPECT_TRUE(changes(script)) << script;
  EXPECT_TRUE(changes("click renderQ; type <end><return>"));
  EXPECT_EQ(getProperty<UInt32>(unit, kAudioUnitProperty_RenderQuality), 0u);
  setGlobal(unit, kAudioUnitProperty_PresentPreset, AUPreset{1, nullptr});
  EXPECT_TRUE(changes("wait 0.1"));
}

TEST_F(ReverbEditor, TheEnvelopeIsThatOfItsOwnRender) {
  open("mrev");
  auto& graph = outlet<ReverbIRview>("irView");
  const NSRect plot = graph.inBounds();
  EffectBench bench("mrev", {.sampleRate = 500, .inputs = 1});
  bench.set(0, 1);  // its mix, as for the picture
  bench.reset();
  const std::vector<float> samples = bench.render(impulse(1, 1024)).back();
  int tried = 0;
  for (int i = 60; i < 1000; i += 7) {
    if (i % 50 <= 10) continue;  // a line of the grid
    const auto near = [&](int k) { return std::max(std::abs(samples[static_cast<size_t>(i + k)]), 1e-5f); };
    const auto [lowest, highest] = std::minmax({near(-2), near(-1), near(0), near(1), near(2)});
    const auto filled = [&](float y) {
      const NSPoint p{NSMinX(plot) + NSWidth(plot) * static_cast<float>(i - 1) / 1024, y};
      return (colorAt(graph.convertPoint_toView(p, nullptr)) >> 16) < 0xb8;
    };
    const float low = graph.yForDB(10 * std::log10(lowest)) - 3;
    const float high = graph.yForDB(10 * std::log10(highest)) + 3;
    if (low < NSMinY(plot) + 2 || high > NSMaxY(plot) - 4) continue;
    EXPECT_TRUE(filled(low) && !filled(high)) << i;
    ++tried;
  }
  EXPECT_GT(tried, 20);
}

TEST_F(ReverbEditor, TheRoomsFollowTheirOwnParametersAndTurn) {
  open("Qmrv");
  auto& small = outlet<QCView>("smallQC");
  auto& large = outlet<QCView>("largeQC");
  const struct {
    UInt32 id;
    float value;
    const char* input;
    float inSmall, inLarge;  // 0: stays
  } rows[] = {{2, 0.03f, "roomSize", 0.03f, 0},        {3, 0.1f, "roomSize", 0, 0.1f},
              {4, 0.02f, "largeDelay", 0.02f, 0.055f}, {5, 0.1f, "largeDelay", 0, 0.12f},
              {6, 0.9f, "reverbDensity", 0.9f, 0},     {7, 0.1f, "reverbDensity", 0, 0.1f},
              {8, 0.9f, "delayRange", 0, 0.9f},        {11, 0.8f, "delayRange", 0.8f, 0},
              {9, 0.7f, "hifreqAbsorb", 0.7f, 0},      {10, 0.2f, "hifreqAbsorb", 0, 0.2f},
              {13, 0.6f, "modDepth", 0.6f, 0.6f}};
  for (const auto& row : rows) {
    const float before[] = {small.valueForInputKey(row.input), large.valueForInputKey(row.input)};
    set(row.id, row.value);
    advance(0.1);
    EXPECT_FLOAT_EQ(small.valueForInputKey(row.input), row.inSmall ? row.inSmall : before[0]) << row.id;
    EXPECT_FLOAT_EQ(large.valueForInputKey(row.input), row.inLarge ? row.inLarge : before[1]) << row.id;
  }
  play("set 12 1; wait 0.1");
  const auto phase = [&] { return small.valueForInputKey("modDegree"); };
  while (phase() != 0) advance(0.05);
  takeDamage();
  advance(0.55);
  EXPECT_EQ(phase(), -81);
  EXPECT_EQ(takeDamage().size(), 22u) << "two rooms, eleven ticks";
  small.setHidden(true);
  advance(0.2);
  EXPECT_EQ(phase(), -81);
}

TEST_F(ReverbEditor, ARoomsPictureShowsItsDensityAndIsStraightWhileItStandsStill) {
  open("mrev");
  auto& room = outlet<QCView>("smallQC");
  const auto changes = [&](const char* input, float value) {
    const Bitmap before = drawn(room);
    room.setValue_forInputKey(value, input);
    return differences(before, drawn(room), room.bounds()) > 0;
  };
  changes("modDegree", 0);
  EXPECT_FALSE(changes("modDepth", 0) || changes("modDepth", 1));
  EXPECT_TRUE(changes("modDegree", 45));
  EXPECT_TRUE(changes("reverbDensity", 0.9f));
}

TEST_F(ReverbEditor, KnobsHaveTheColoursOfTheirRoomsAndTheRateIsLinear) {
  open("mrev");
  play("set 0 100; set 2 0.05; set 3 100; wait 0.1");
  const std::pair<const char*, unsigned> rows[] = {{"smallSize.knob+-10,0", 0x3D9E3F},
                                                   {"largeSize.knob+-10,0", 0x4189C4},
                                                   {"dryWetMix.knob+-10,0", 0xFC8B12}};
  for (const auto& [where, color] : rows) EXPECT_EQ(colorAt(place(where)), color) << where;
  EXPECT_FALSE(outlet<jxAUParamKnobView>("modulationRate").auParam()->displaysLogarithmical());
}

}  // namespace
