#include "AudioUnitProperties.h"
#include "EditorFixture.h"
#include "NSException.h"
#include "NSMenuItem.h"
#include "NSTextField.h"
#include "jxAUPitchParamView.h"
#include "jxAUrenderQ.h"
#include "tmpt_UIView.h"

namespace {

class PitchEditor : public EditorTest {
 protected:
  void SetUp() override {
    open("tmpt");
    const auto& knobs = outlet("pitch").subviews();
    semitones = &dynamic_cast<jxValueKnob&>(*knobs[0]);
    cents = &dynamic_cast<jxValueKnob&>(*knobs[1]);
  }
  static std::string text(jxValueKnob& knob) { return all<NSTextField>(knob).back()->stringValue(); }

  jxValueKnob* semitones = nullptr;
  jxValueKnob* cents = nullptr;
};

TEST_F(PitchEditor, CentsAreSplitIntoSemitonesAndTheRest) {
  const struct {
    float pitch;
    const char *semitones, *cents;
    float knob;
  } rows[] = {{250, "3", "-50", -49.999f}, {249, "2", "49", 49},     {-250, "-3", "50", 49.999f},
              {-2400, "-24", "0", 0},      {0.5f, "0", "0.5", 0.5f}, {701.955f, "7", "1.955", 1.955f}};
  for (const auto& row : rows) {
    automate(1, row.pitch);
    advance(0.1);
    EXPECT_EQ(text(*semitones), row.semitones) << row.pitch;
    EXPECT_EQ(text(*cents), row.cents) << row.pitch;
    EXPECT_NEAR(cents->floatValue(), row.knob, 1e-4f) << row.pitch;
  }
}

TEST_F(PitchEditor, TheTwoKnobsMakeOnePitch) {
  const struct {
    float semitones, cents, pitch;
    const char *showSemitones, *showCents;
  } rows[] = {{2, 49.999f, 249.999f, "2", "49.999"},
              {-24, -20, -2400, "-24", "0"},
              {3, -50, 250.001f, "3", "-49.99"}};
  for (const auto& row : rows) {
    semitones->setFloatValue(row.semitones);
    cents->setFloatValue(row.cents);
    outlet<jxAUPitchParamView>("pitch").knobsChanged(cents);
    EXPECT_NEAR(parameter(1), row.pitch, 1e-3f);
    EXPECT_EQ(text(*semitones), row.showSemitones) << row.pitch;
    EXPECT_EQ(text(*cents), row.showCents) << row.pitch;
  }
  EXPECT_THROW(outlet<jxAUPitchParamView>("pitch").setAUParameter({}), NSException);

  const auto loose = std::make_shared<jxAUPitchParamView>(NSMakeRect(0, 0, 184, 76));
  auto& knob = dynamic_cast<jxValueKnob&>(*loose->subviews()[0]);
  knob.setFloatValue(5.4f);
  loose->knobsChanged(&knob);
  EXPECT_EQ(knob.floatValue(), 5) << "whole, and kept without a parameter";
}

TEST_F(PitchEditor, SlowTurningAddsUpToSemitones) {
  display_.press(window->convertBaseToScreen(semitones->convertPoint_toView({46, 38}, nullptr)));
  for (int i = 0; i < 40; ++i) {
    display_.moveBy(0, 1);
    advance(0.05);
  }
  display_.release();
  EXPECT_GE(parameter(1), 100);
}

TEST_F(PitchEditor, IntervalsAreJust) {
  auto& pitch = dynamic_cast<tmpt_UIView&>(*editor);
  const struct {
    const char* title;
    float cents;
  } rows[] = {{"3/2", 701.955f},     {"5/4", 386.3137f}, {"2/1", 1200}, {"1/1", 0}, {"4/5", -386.3137f},
              {"1/2 octave", -1200}, {"interval", 7},    {"3", 7},      {"3/", 7}};
  for (const auto& row : rows) {
    automate(1, 7);
    NSMenuItem item(row.title);
    pitch.justMenuChanged(&item);
    EXPECT_NEAR(parameter(1), row.cents, 1e-3f) << row.title;
  }
}

TEST_F(PitchEditor, TheMenuShowsTheQualityThatIsInForce) {
  const auto& menu = outlet<jxAUrenderQ>("renderQ");
  const std::pair<UInt32, const char*> rows[] = {{96, "high"}, {0, "minimum"}, {64, "medium"},
                                                 {32, "low"},  {100, "low"},   {127, "maximum"}};
  for (const auto& [quality, title] : rows) {
    AudioUnitSetProperty(unit.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                         sizeof quality);
    advance(0.1);
    EXPECT_EQ(menu.stringValue(), title) << quality;
  }
}

TEST_F(PitchEditor, DrawsNothingWithoutItsEffect) {
  tmpt_UIView bare(NSMakeRect(0, 0, 100, 100));
  EXPECT_EQ(drawn(bare).pixel(50, 50)[3], 0);
}

}  // namespace
