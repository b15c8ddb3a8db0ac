#include <gtest/gtest.h>

#include <cmath>

#include "AudioUnitProperties.h"
#include "EditorStage.h"
#include "NSMenuItem.h"
#include "NSTextField.h"
#include "dely_GraphView.h"
#include "dely_UIView.h"
#include "jxAUrenderQ.h"

namespace {

double hostTempo = 0;

OSStatus tellTempo(void*, Float64*, Float64* tempo) {
  *tempo = hostTempo;
  return noErr;
}

class TimeEditor : public testing::Test, public EditorStage {};

TEST_F(TimeEditor, NoteValuesBecomeSecondsAtTheHostsTempo) {
  open("dely");
  const auto choose = [&](const char* title) {
    NSMenuItem item(title);
    set(1, 3);
    dynamic_cast<dely_UIView&>(*editor).menuAction(&item);
    return parameter(1);
  };
  const std::pair<const char*, float> titles[] = {{"1/4", 0.5f},    {"1/8.", 0.375f}, {"1/8T", 1 / 6.0f},
                                                  {"1/8.T", 0.25f}, {"3/16", 0.375f}, {"rhythm", 3},
                                                  {"1/", 3},        {"4/0", 3}};
  for (const auto& [title, seconds] : titles) EXPECT_NEAR(choose(title), seconds, 1e-6f) << title;

  setGlobal(unit, kAudioUnitProperty_HostCallbacks, HostCallbackInfo{.beatAndTempoProc = &tellTempo});
  const std::pair<double, double> tempos[] = {{90, 90}, {0, 90}, {NAN, 90}, {INFINITY, 90}, {120, 120}};
  for (const auto& [told, taken] : tempos) {
    hostTempo = told;
    advance(0.6);
    EXPECT_NEAR(choose("1/4"), 60 / taken, 1e-6f) << told;
  }
  const Bitmap before = picture();
  hostTempo = 60;
  advance(0.6);
  EXPECT_GT(differences(before, picture(), frameInWindow(outlet("graphView"))), 0) << "the beats follow it";
}

TEST_F(TimeEditor, EchoesStandAtTheirTimesAndHeights) {
  open("dely");
  auto& graph = outlet<dely_GraphView>("graphView");
  const NSRect plot = graph.inBounds();
  const float axis = std::floor(NSMinY(plot) + NSHeight(plot) * 0.5f) + 0.5f;
  const float full = NSHeight(plot) * 0.5f * 0.9f;
  const auto darkness = [&](float seconds, float height) {
    const NSPoint p{NSMinX(plot) + seconds / 3 * NSWidth(plot), axis + height * full};
    return 255 - static_cast<int>(colorAt(graph.convertPoint_toView(p, nullptr)) >> 16);
  };
  const auto isBar = [&](float seconds, float height) {
    return darkness(seconds, height) > darkness(seconds + 0.04f, height) + 40;
  };
  play("set 1 0.9; set 2 50; set 3 22050; wait 0.1");
  EXPECT_TRUE(isBar(0.9f, 0.95f) && isBar(1.8f, 0.42f) && isBar(2.7f, 0.21f));
  EXPECT_FALSE(isBar(1.8f, 0.6f));
  EXPECT_NEAR(darkness(0.9f, 0.7f), darkness(1.8f, 0.42f), 14) << "nothing is lost in the lowpass";
  play("set 2 -50; set 3 5.38; wait 0.1");
  EXPECT_TRUE(isBar(1.8f, -0.42f)) << "turned over";
  EXPECT_FALSE(isBar(1.8f, 0.42f));
  EXPECT_LT(darkness(1.8f, -0.42f), darkness(0.9f, 0.7f) - 10) << "darker echoes are fainter";
}

TEST_F(TimeEditor, APitchIsSemitonesAndCents) {
  open("tmpt");
  const auto shown = [&] {
    std::string texts;
    for (const NSTextField* field : all<NSTextField>(outlet("pitch")))
      if (field->acceptsTyping()) texts += field->stringValue() + " ";
    return texts;
  };
  const std::pair<float, const char*> pitches[] = {
      {250, "3 -50 "}, {-249, "-2 -49 "}, {701.955f, "7 1.955 "}};
  for (const auto& [pitch, text] : pitches) {
    set(1, pitch);
    advance(0.1);
    EXPECT_EQ(shown(), text) << pitch;
  }
  EXPECT_EQ(play("click pitch.field; type 2<tab>500<return>"), "1 = 250") << "no more than a half";
  play("set 1 0; wait 0.1; press pitch.knob");
  for (int i = 0; i < 40; ++i) play("drag 0 1; wait 0.05");
  EXPECT_GE(parameter(1), 100) << "slow turning adds up to semitones";
}

TEST_F(TimeEditor, TheMenuShowsTheQualityThatIsInForce) {
  open("tmpt");
  const std::pair<UInt32, const char*> rows[] = {
      {96, "high"}, {0, "minimum"}, {64, "medium"}, {32, "low"}, {127, "maximum"}};
  for (const auto& [quality, title] : rows) {
    setGlobal(unit, kAudioUnitProperty_RenderQuality, quality);
    advance(0.1);
    EXPECT_EQ(outlet<jxAUrenderQ>("renderQ").stringValue(), title) << quality;
  }
  play("click renderQ; type <home><return>");
  EXPECT_EQ(getProperty<UInt32>(unit, kAudioUnitProperty_RenderQuality), 127u);
}

}  // namespace
