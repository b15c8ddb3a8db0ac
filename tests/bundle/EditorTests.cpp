// What is true of every editor.

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "EditorStage.h"
#include "EffectParameters.h"
#include "Gestures.h"
#include "NSPopUpButton.h"
#include "NSTextField.h"
#include "jxAUHandleGraphDisplay.h"

namespace {

class Editor : public testing::Test, public EditorStage {};

/// Beside those of every depth: where handles are put exactly.
constexpr struct {
  const char *effect, *script, *heard;
} exactGestures[] = {
    {"mcmp", "press crossoverView#0; drag to crossoverView@200,0; release", "2 = 200"},
    {"filt", "press freqResponseView#0; drag to freqResponseView@200,6; release", "1 = 200, 2 = 6"},
    {"filt", "press freqResponseView#4; drag to freqResponseView@6000,10; release", "13 = 6000, 14 = 10"},
    {"filt", "press freqResponseView#3; drag 0 -20 option; release", "11 = 2"},
    {"pmeq", "press graphView#0; drag to graphView@1000,-6; release", "0 = 1000, 2 = -6"},
    {"pmeq", "set 1 1.414214; press graphView#0; drag 0 -20 option; release", "1 = 1.1314"},
    {"bpas", "press graphView#0; drag to graphView@1000,6; release", "0 = 1000"},
    // Of a handle: who is near enough, and how far it goes.
    {"lpas", "press graphView#0+10,0; drag 30 0; release", ""},
    {"lpas", "press graphView#0+9.9,0; drag 0 1; release", "0 = 8072.8, 1 = 0.39131"},
    {"lpas", "press graphView#0+5,4; drag 50 0 shift; drag -10 -5; release", "0 = 6900, 1 = -0.3913"},
    {"filt", "set 1 200; set 3 250; press freqResponseView#0+9,0; drag 0 20; release",
     "3 = 225.07, 4 = 5.4348"},
    {"filt", "set 1 200; set 3 250; press freqResponseView#1+-9,0; drag 0 20; release",
     "1 = 222.15, 2 = 5.4348"},
    {"filt", "press freqResponseView#2; drag 0 -20 option shift; drag -10 0 option; release", "8 = 1.6"},
    // Of a field and its knob: what is taken, and when.
    {"filt", "set 12 1; wait 0.1; click param12.menu; type <home><return>", "12 = 0"},
    {"mcmp", "click threshold1.field; type abc<return>", ""},
    {"mcmp", "click threshold1.field; type -64; press +5,5; release", "5 = -64"},
    {"dely", "click delayTime.field; type 1.2345678 s<tab>", "1 = 1.2346"},
};

std::vector<uint32_t> pixelsOf(NSWindow& window) {
  const Bitmap& all = *window.snapshot();
  std::vector<uint32_t> pixels;
  for (int y = 0; y < all.physicalHeight(); ++y)
    pixels.insert(pixels.end(), all.row(y).begin(), all.row(y).end());
  return pixels;
}

TEST_F(Editor, OfTwoScalesInOneProcessLookAsEachAlone) {
  std::map<float, std::vector<uint32_t>> alone;
  for (const float scale : {1.0f, 2.0f}) {
    EditorStage stage(scale);
    stage.open("mcmp");
    stage.set(5, -40);
    stage.advance(0.2);
    alone[scale] = pixelsOf(*stage.window);
  }
  OffscreenDisplay largeDisplay(2);
  const Unit other = openUnit(registeredEffect("mcmp"));
  const auto view = bundle().editorFor(other.get());
  NSWindow large(view->frame(), NSTitledWindowMask, NSBackingStoreBuffered, false, &largeDisplay);
  large.setContentView(view);
  large.makeKeyAndOrderFront();
  open("mcmp");
  for (const float threshold : {-10.0f, -70.0f, -40.0f}) {
    set(5, threshold);
    advance(0.2);
    hostSets(other, 5, threshold);
    advance(0.2);
  }
  EXPECT_EQ(pixelsOf(*window), alone[1]);
  EXPECT_EQ(pixelsOf(large), alone[2]);
}

TEST_F(Editor, GesturesReachItsEffect) {
  for (const Gesture& row : gestures) {
    open(row.effect);
    EXPECT_EQ(play(row.script), withoutTouches(row.heard)) << row.name;
  }
  for (const auto& row : exactGestures) {
    open(row.effect);
    EXPECT_EQ(play(row.script), row.heard) << row.effect << ": " << row.script;
    EXPECT_FALSE(window->isInGesture() || display.isPointerHidden());
  }
  open("mcmp");
  const NSPoint handle = place("crossoverView#1");
  play("press crossoverView#1; drag 40 7; drag 100 0 shift; release");
  EXPECT_NEAR(display.pointer().x, onScreen(handle).x + 50, 0.01f) << "the pointer comes back at the handle";
}

TEST_F(Editor, ReturnsToTheDefaultNotToWhereItBegan) {
  Unit moved = openUnit(registeredEffect("sdly"));
  hostSets(moved, 0, 441);
  open(std::move(moved));
  EXPECT_EQ(play("click inToOutDelay.knob option"), "0 = 0");
}

TEST_F(Editor, MenusFollowTheirParametersWhenTheyAreClosed) {
  open("filt");
  const auto& menu = *all<NSPopUpButton>(outlet("param12")).front();
  EXPECT_EQ(play("click param12.menu; set 12 1; wait 1"), "");
  EXPECT_EQ(menu.indexOfSelectedItem(), 0);
  EXPECT_EQ(play("type <escape>; wait 0.05"), "");
  EXPECT_EQ(menu.indexOfSelectedItem(), 1);
}

TEST_F(Editor, EachKnobTurnsItsOwnParameter) {
  const std::pair<const char*, const char*> knobs[] = {
      // in the order of parameters; "-": it has none
      {"mcmp",
       "preGain postGain - - - threshold1 threshold2 threshold3 threshold4 headRoom1 headRoom2 headRoom3 "
       "headRoom4 attackTime releaseTime eq1 eq2 eq3 eq4"},
      {"dcmp", "compThreshold headRoom expRatio expThreshold attackTime releaseTime masterGain"},
      {"lmtr", "attackTime releaseTime preGain"},
      {"filt",
       "- param1 param2 param3 param4 param5 param6 param7 param8 param9 param10 param11 - param13 param14"},
      {"lpas", "cutoff resonance"},
      {"bpas", "frequency bandwidth"},
      {"pmeq", "frequency quality gain"},
      {"mrev",
       "dryWetMix smallLargeMix smallSize largeSize preDelay largeDelay smallDensity largeDensity "
       "largeDelayRange smallHifreqAbsorption largeHifreqAbsorption smallDelayRange modulationRate "
       "modulationDepth"},
      {"dely", "dryWetMix delayTime feedback lowpassCutoff"},
      {"tmpt", "- pitch effectBlend smoothness tightness"}};
  for (const auto& [effect, names] : knobs) {
    open(effect);
    std::istringstream words(names);
    int id = 0;
    for (std::string name; words >> name; ++id) {
      if (name == "-") continue;
      const std::string heard = play("wheel " + name + ".knob 1; wheel " + name + ".knob -2");
      EXPECT_TRUE(heard.starts_with(std::to_string(id) + " = ") && heard.find(',') == std::string::npos)
          << effect << " " << name << ": " << heard;
    }
  }
}

TEST_F(Editor, AHeldKnobShowsItsHandleAsEdited) {
  const struct {
    const char *effect, *graph, *knob;
    int handle;
  } rows[] = {{"filt", "freqResponseView", "param1", 0},
              {"filt", "freqResponseView", "param5", 1},
              {"filt", "freqResponseView", "param14", 4},
              {"dely", "graphView", "delayTime", 0}};
  for (const auto& [effect, name, knob, handle] : rows) {
    open(effect);
    auto& graph = outlet<jxAUHandleGraphDisplay>(name);
    const auto differ = [&](const Bitmap& from) {
      return differences(picture(), from, frameInWindow(graph));
    };
    const Bitmap calm = picture();
    graph.setExternalEditedHandle(handle);
    const Bitmap edited = picture();
    graph.setExternalEditedHandle(-1);
    play(std::string("press ") + knob + ".knob; wait 0.1");
    EXPECT_TRUE(differ(edited) == 0 && differ(calm) > 50) << knob;
    play("release; wait 0.1");
    EXPECT_EQ(differ(calm), 0) << knob;
  }
}

TEST_F(Editor, IsThatOfItsEffectAndOfNoOther) {
  std::map<std::string, std::string> shared{
      {"hpas", "lpas"}, {"lshf", "lpas"}, {"hshf", "lpas"}, {"Qmrv", "mrev"}};
  for (const Component effect : allEffects()) {
    const std::string code = effectCode(effect), name = shared.emplace(code, code).first->second + "_UIView";
    EXPECT_EQ(bundle().editorFor(openUnit(effect).get())->isa().name(), name);
  }
  EXPECT_EQ(shared.size(), 15u);
  const ComponentDescription others[] = {{FourCharCode("aumu"), FourCharCode("sdly"), FourCharCode("Tovn")},
                                         {FourCharCode("aufx"), FourCharCode("sdly"), FourCharCode("Else")},
                                         {FourCharCode("aufx"), FourCharCode("zzzz"), FourCharCode("appl")}};
  for (const ComponentDescription& description : others) {
    const auto make = +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<TestEffect>(); };
    EXPECT_EQ(bundle().editorFor(openUnit(RegisterComponent(description, "", 1, make)).get()), nullptr);
  }
  EXPECT_EQ(bundle().editorFor(nullptr), nullptr);
  EXPECT_EQ(log, Lines{});
}

TEST_F(Editor, WhatLiesBehindAControlIsWhatTheWindowShowsBesideIt) {
  open("mcmp");
  for (const char* name : {"threshold1", "graphView4", "preGain"}) {
    const NSRect frame = frameInWindow(outlet(name));
    for (float y = NSMinY(frame) + 1.5f; y < NSMaxY(frame); y += 9) {
      const unsigned inside = colorAt({NSMinX(frame) + 0.5f, y}), beside = colorAt({NSMinX(frame) - 0.5f, y});
      EXPECT_NEAR(inside & 255, beside & 255, 1) << name << " " << y;
    }
  }
}

TEST_F(Editor, EveryTextIsInsideItsField) {
  for (const Component effect : allEffects()) {
    open(effect);
    for (const float end : {-1e9f, 1e9f, 1.23456789f}) {
      for (const EffectParameter& p : effectParameters(unit.get())) set(p.id, end);
      advance(0.1);
      for (const NSTextField* field : all<NSTextField>(*editor)) {
        const NSRect text = field->textRect();
        EXPECT_TRUE(NSMinX(text) >= 0 && NSMaxX(text) <= NSWidth(field->bounds()))
            << editor->isa().name() << " \"" << field->stringValue() << "\"";
      }
    }
  }
}

}  // namespace
