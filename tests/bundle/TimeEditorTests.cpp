#include <array>
#include <cmath>
#include <random>

#include "AudioUnitProperties.h"
#include "EditorFixture.h"
#include "ImpulseAUwrapper.h"
#include "NSPopUpButton.h"
#include "NSTextField.h"
#include "ReverbIRview.h"
#include "dely_GraphView.h"
#include "dely_UIView.h"
#include "jxAUParamKnobView.h"
#include "mrev_largeQCView.h"
#include "mrev_smallQCView.h"

namespace {

/// Says 90 beats per minute, and nothing at all when there is no host.
OSStatus ninety(void*, Float64*, Float64* tempo) {
  *tempo = 90;
  return noErr;
}

class TimeEditor : public EditorTest {
 protected:
  void hostInstalls(const HostCallbackInfo& callbacks) {
    AudioUnitSetProperty(unit.get(), kAudioUnitProperty_HostCallbacks, kAudioUnitScope_Global, 0, &callbacks,
                         sizeof callbacks);
  }
  void choosePreset(SInt32 number) {
    const AUPreset preset{number, nullptr};
    AudioUnitSetProperty(unit.get(), kAudioUnitProperty_PresentPreset, kAudioUnitScope_Global, 0, &preset,
                         sizeof preset);
    advance(0.1);
  }
  NSPoint inGraph(const NSView& graph, float x, float y) const {
    return graph.convertPoint_toView({x, y}, nullptr);
  }
};

TEST_F(TimeEditor, NoteValuesBecomeSecondsAtTheHostsTempo) {
  open("dely");
  auto& delay = dynamic_cast<dely_UIView&>(*editor);
  const auto choose = [&](const char* title) {
    NSMenuItem item(title);
    automate(1, 3);
    delay.menuAction(&item);
    return parameter(1);
  };
  const struct {
    const char* title;
    float seconds;
  } rows[] = {{"1/4", 0.5f},    {"1/8", 0.25f},   {"1/8.", 0.375f},    {"1/8T", 1 / 6.0f},
              {"1/8.T", 0.25f}, {"3/16", 0.375f}, {" 1/ 4", 0.5f},     {"1 /4", 3},
              {"rhythm", 3},    {"1/", 3},        {"1/4 größe", 0.5f}, {"1/4 λ", 3}};
  for (const auto& row : rows) EXPECT_NEAR(choose(row.title), row.seconds, 1e-6f) << row.title;

  hostInstalls({.hostUserData = nullptr, .beatAndTempoProc = &ninety});
  advance(0.6);
  EXPECT_NEAR(choose("1/4"), 2 / 3.0f, 1e-6f);
  hostInstalls({});
  advance(0.6);
  EXPECT_NEAR(choose("1/4"), 2 / 3.0f, 1e-6f) << "what it said last";
  advance(0.2);
  takeDamage();
  advance(2);
  EXPECT_TRUE(takeDamage().empty()) << "the same tempo draws nothing";
}

TEST_F(TimeEditor, EchoesStandAtTheirTimesAndHeights) {
  open("dely");
  auto& graph = outlet<dely_GraphView>("graphView");
  const NSRect plot = graph.inBounds();
  const float axis = std::floor(NSMinY(plot) + NSHeight(plot) * 0.5f) + 0.5f;
  const float full = NSHeight(plot) * 0.5f * 0.9f;
  const auto darkness = [&](float seconds, float height) {
    const float x = NSMinX(plot) + seconds / 3 * NSWidth(plot);
    return 255 - static_cast<int>(colorAt(inGraph(graph, x, axis + height * full)) >> 16);
  };
  const auto isBar = [&](float seconds, float height) {
    return darkness(seconds, height) > darkness(seconds + 0.04f, height) + 40;
  };
  const auto set = [&](float delay, float feedback, float cutoff) {
    automate(1, delay);
    automate(2, feedback);
    automate(3, cutoff);
    advance(0.1);
  };
  set(0.9f, 50, 22050);
  EXPECT_TRUE(isBar(0.9f, 0.95f));
  EXPECT_TRUE(isBar(1.8f, 0.42f));
  EXPECT_FALSE(isBar(1.8f, 0.6f));
  EXPECT_TRUE(isBar(2.7f, 0.21f));
  EXPECT_NEAR(darkness(0.9f, 0.7f), darkness(1.8f, 0.42f), 14) << "nothing is lost in the lowpass";
  set(0.9f, -50, 22050.0f / 4096);
  EXPECT_TRUE(isBar(1.8f, -0.42f)) << "turned over";
  EXPECT_FALSE(isBar(1.8f, 0.42f));
  EXPECT_LT(darkness(1.8f, -0.42f), darkness(0.9f, 0.7f) - 10) << "darker echoes are fainter";
  set(1.1f, 0, 22050);
  EXPECT_TRUE(isBar(1.1f, 0.9f));
  EXPECT_FALSE(isBar(2.2f, 0.3f));

  set(0.9f, 50, 22050);
  graph.calculateHandles();
  EXPECT_NEAR(graph.getPointForHandle(0).x, NSMinX(plot) + 0.3f * NSWidth(plot), 0.01f);
  EXPECT_NEAR(graph.getPointForHandle(0).y, axis + 0.5f * full, 0.01f);
  display_.press(window->convertBaseToScreen(
      inGraph(graph, graph.getPointForHandle(0).x, graph.getPointForHandle(0).y)));
  display_.moveBy(NSWidth(plot), -full);
  display_.release();
  EXPECT_EQ(parameter(1), 3) << "pinned by the parameter's range";
  EXPECT_NEAR(parameter(2), -50, 0.01f);

  const unsigned calm = colorAt(inGraph(graph, NSMinX(plot) + 30, NSMinY(plot) + 20));
  display_.press(middleOnScreen(*find(outlet<>("delayTime"), "jxAURotaryKnob")));
  advance(0.1);
  EXPECT_NE(colorAt(inGraph(graph, NSMinX(plot) + 30, NSMinY(plot) + 20)), calm);
  display_.release();
  advance(0.1);
  EXPECT_EQ(colorAt(inGraph(graph, NSMinX(plot) + 30, NSMinY(plot) + 20)), calm);
}

TEST_F(TimeEditor, TheReverbsEnvelopeIsThatOfItsOwnRender) {
  open("mrev");
  auto& graph = outlet<ReverbIRview>("irView");
  const NSRect plot = graph.inBounds();
  const auto changes = [&](const std::function<void()>& change) {
    const Bitmap before = picture();
    change();
    advance(0.1);
    return differences(before, picture(), frameInWindow(graph)) > 0;
  };
  for (const UInt32 id : {0u, 12u, 13u}) EXPECT_FALSE(changes([&] { automate(id, 0.7f); })) << id;
  automate(1, 50);
  for (UInt32 id = 1; id <= 11; ++id) EXPECT_TRUE(changes([&] { automate(id, id == 1 ? 20 : 0.02f); })) << id;
  EXPECT_TRUE(changes([&] {
    display_.press(middleOnScreen(outlet<>("renderQ")));
    display_.release();
    display_.key(NSKey::end);
    display_.key(NSKey::enter);
  }));
  UInt32 quality = 99, size = sizeof quality;
  AudioUnitGetProperty(unit.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                       &size);
  EXPECT_EQ(quality, 0u);
  EXPECT_TRUE(changes([&] { choosePreset(1); }));

  // The drawn area against a render by hand.
  ImpulseAUwrapper renderer(unit.get(), 500, 10, true);
  renderer.setParameterOverrides(
      std::make_shared<ImpulseAUwrapper::Overrides>(ImpulseAUwrapper::Overrides{{0, 1.0f}}));
  const float* samples = renderer.renderImpulse();
  int tried = 0;
  for (int i = 60; i < 1000; i += 7) {
    const auto level = [&](int k) { return 10 * std::log10(std::max(std::abs(samples[k]), 1e-5f)); };
    const float lowest = std::min({level(i - 2), level(i - 1), level(i), level(i + 1), level(i + 2)});
    const float highest = std::max({level(i - 2), level(i - 1), level(i), level(i + 1), level(i + 2)});
    const float x = NSMinX(plot) + NSWidth(plot) * static_cast<float>(i - 1) / 1024;
    const auto filled = [&](float y) { return (colorAt(inGraph(graph, x, y)) >> 16) < 0xb8; };
    if (graph.yForDB(lowest) - 3 > NSMinY(plot) + 2) {
      EXPECT_TRUE(filled(graph.yForDB(lowest) - 3)) << i;
      ++tried;
    }
    if (graph.yForDB(highest) + 3 < NSMaxY(plot) - 4 && std::fmod(static_cast<float>(i) / 50, 1.0f) > 0.2f) {
      EXPECT_FALSE(filled(graph.yForDB(highest) + 3)) << i;
    }
  }
  EXPECT_GT(tried, 20);
}

TEST_F(TimeEditor, TheRoomsFollowTheirOwnParametersAndTurn) {
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
    automate(row.id, row.value);
    advance(0.1);
    EXPECT_FLOAT_EQ(small.valueForInputKey(row.input), row.inSmall ? row.inSmall : before[0]) << row.id;
    EXPECT_FLOAT_EQ(large.valueForInputKey(row.input), row.inLarge ? row.inLarge : before[1]) << row.id;
  }

  automate(12, 1);
  advance(0.1);
  const auto phase = [&] { return small.valueForInputKey("modDegree"); };
  while (phase() != 0) advance(0.05);
  takeDamage();
  advance(0.5);
  EXPECT_EQ(phase(), 90);
  advance(0.05);
  EXPECT_EQ(phase(), -81);
  const auto damage = takeDamage();
  EXPECT_EQ(damage.size(), 22u) << "two rooms, eleven ticks";
  for (const NSRect& rect : damage)
    EXPECT_TRUE(NSContainsRect(NSInsetRect(frameInWindow(small), -1, -1), rect) ||
                NSContainsRect(NSInsetRect(frameInWindow(large), -1, -1), rect));
  small.setHidden(true);
  const float hidden = phase();
  advance(0.2);
  EXPECT_EQ(phase(), hidden);
  EXPECT_FALSE(small.setValue_forInputKey(1, "roomColour"));
  EXPECT_EQ(log_, Lines({"A composition has no input \"roomColour\""}));
}

TEST_F(TimeEditor, PicturesComeAtMostTwentyTimesASecond) {
  open("mrev");
  auto& small = outlet<QCView>("smallQC");
  automate(12, 0.001f);
  automate(13, 0);
  advance(0.2);
  takeDamage();
  for (int i = 0; i < 200; ++i) {
    small.setValue_forInputKey(static_cast<float>(i % 2), "reverbDensity");
    advance(0.01);
  }
  int drawn = 0;
  for (const NSRect& rect : takeDamage()) drawn += NSIntersectsRect(rect, frameInWindow(small));
  EXPECT_GE(drawn, 38);
  EXPECT_LE(drawn, 41);
}

TEST_F(TimeEditor, ColoursOfTheRoomsAndALinearRate) {
  open("mrev");
  const auto marker = [&](const char* name) {
    const NSView& knob = *find(outlet<>(name), "jxAURotaryKnob");
    automate(2, 0.05f);
    return colorAt(knob.convertPoint_toView({10, NSHeight(knob.bounds()) / 2}, nullptr));
  };
  for (const UInt32 id : {0u, 2u, 3u}) automate(id, 100);
  advance(0.1);
  EXPECT_EQ(marker("smallSize"), 0x3D9E3Fu);
  EXPECT_EQ(marker("largeSize"), 0x4189C4u);
  EXPECT_EQ(marker("dryWetMix"), 0xFC8B12u);
  EXPECT_FALSE(outlet<jxAUParamKnobView>("modulationRate").auParam()->displaysLogarithmical());
}

TEST_F(TimeEditor, SurvivesAStormOfChanges) {
  std::mt19937 random(1);
  for (const char* effect : {"dely", "mrev", "Qmrv", "tmpt"}) {
    open(effect);
    for (UInt32 i = 0; i < 3500; ++i) {
      automate(static_cast<UInt32>(random() % 15),
               std::ldexp(static_cast<float>(random()) / 4294967296.0f - 0.3f, 7));
      if (i % 70 == 0) advance(0.06);
      if (i % 500 == 0) choosePreset(static_cast<SInt32>(random() % 3));
    }
    close();
  }
  EXPECT_EQ(log_, Lines());
}

TEST_F(TimeEditor, EveryTextOfEveryEditorIsInsideItsField) {
  const ComponentDescription effects{FourCharCode("aufx"), 0, FourCharCode("Tovn")};
  int editors = 0;
  for (Component c = FindNextComponent(nullptr, &effects); c; c = FindNextComponent(c, &effects)) {
    open(c);
    ++editors;
    UInt32 size = 0;
    AudioUnitGetPropertyInfo(unit.get(), kAudioUnitProperty_ParameterList, kAudioUnitScope_Global, 0, &size,
                             nullptr);
    for (const float end : {-1e9f, 1e9f, 1.23456789f}) {
      for (UInt32 id = 0; id < size / sizeof(AudioUnitParameterID); ++id) automate(id, end);
      advance(0.1);
      for (const NSTextField* field : all<NSTextField>(*editor)) {
        const NSRect text = field->textRect();
        EXPECT_GE(NSMinX(text), 0) << editor->isa().name() << " \"" << field->stringValue() << "\"";
        EXPECT_LE(NSMaxX(text), NSWidth(field->bounds()))
            << editor->isa().name() << " \"" << field->stringValue() << "\"";
      }
    }
    close();
  }
  EXPECT_EQ(editors, 15);
}

}  // namespace
