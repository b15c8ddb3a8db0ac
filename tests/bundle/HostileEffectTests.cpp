// Effects that do not keep their side of the bargain, under every editor: nothing breaks, and what is wrong
// is said once.

#include <algorithm>
#include <set>

#include "EditorFixture.h"
#include "HostileEffect.h"
#include "NSAssertionHandler.h"
#include "NSException.h"
#include "RegisterEffects.h"
#include "jxAUGraphDisplay.h"
#include "jxAURotaryKnob.h"
#include "jxAppleAUGUI_ViewFactory.h"

namespace {

constexpr const char* codes[] = {"mcmp", "dcmp", "lmtr", "filt", "lpas", "bpas",
                                 "pmeq", "mrev", "dely", "sdly", "tmpt"};

class HostileEffects : public EditorTest {
 protected:
  HostileEffects() { RegisterEffects(); }
  ~HostileEffects() override {
    close();
    faults() = {};
  }

  /// False when the factory refuses to make an editor, which is an answer too.
  bool openHostile(const std::string& code) {
    unit = openUnit(hostileComponent(code));
    std::shared_ptr<NSView> view;
    NSGuardCallback("opening", [&] {
      view = std::make_shared<jxAppleAUGUI_ViewFactory>()->uiViewForAudioUnit_withSize(unit.get(), {});
    });
    if (!view) return false;
    show(view);
    return true;
  }

  void tellChange() {
    for (const AudioUnitPropertyID id :
         {kAudioUnitProperty_ParameterList, kAudioUnitProperty_ParameterInfo}) {
      const auto event = AudioUnitEvent::propertyChange({unit.get(), id, kAudioUnitScope_Global, 0});
      AUEventListenerNotify(nullptr, nullptr, &event);
    }
  }

  /// A bit of everything: ticks, automation, a drag of each knob and of the first handle, a redraw.
  void use() {
    for (AudioUnitParameterID id = 0; id < 20; ++id) automate(id, static_cast<float>(id) * 7);
    advance(0.2);
    for (const auto* knob : all<jxAURotaryKnob>(*editor)) {
      press(*knob);
      display_.moveBy(0, 30);
      advance(0.1);
      display_.release();
      display_.wheel(middleOnScreen(*knob), 1);
    }
    for (auto* graph : all<jxAUGraphDisplay>(*editor)) {
      press(*graph);
      display_.moveBy(5, 5);
      display_.release();
    }
    advance(0.2);
    window->snapshot();
  }

  /// Lines that are there twice.
  Lines repeated() const {
    Lines twice;
    std::set<std::string> seen;
    for (const std::string& line : log_)
      if (!seen.insert(line).second) twice.push_back(line);
    return twice;
  }
};

}  // namespace

TEST_F(HostileEffects, RefuseAnyOneOfTheirProperties) {
  for (const std::string code : codes) {
    // All of the first, then fewer and fewer: an editor of fifty knobs asks the same fifty times.
    bool wasAsked = true;
    for (int failing = 0; wasAsked; failing += 1 + failing / 12) {
      SCOPED_TRACE(code + ", read " + std::to_string(failing));
      forgetLog();
      faults() = {.failingRead = failing};
      if (openHostile(code)) {
        advance(0.3);
        window->snapshot();
      } else {
        EXPECT_FALSE(log_.empty());
      }
      close();
      EXPECT_EQ(repeated(), Lines());
      wasAsked = faults().reads > failing;
    }
  }
}

TEST_F(HostileEffects, ChangeTheirRangesAndLoseTheirParameters) {
  for (const std::string code : codes) {
    for (const float widening : {3.0f, 0.0f, -1.0f}) {
      SCOPED_TRACE(code + ", " + std::to_string(widening) + " times as wide");
      faults() = {};
      ASSERT_TRUE(openHostile(code)) << testing::PrintToString(log_);
      forgetLog();
      faults().widening = widening;
      tellChange();
      use();
      faults().hasLists = false;
      tellChange();
      use();
      close();
      EXPECT_EQ(repeated(), Lines());
    }
  }
}

TEST_F(HostileEffects, RenderNoNumbersOrNothingAtAll) {
  for (const std::string code : {"filt", "lpas", "bpas", "pmeq", "mrev"})
    for (const auto sound : {Faults::Sound::notANumber, Faults::Sound::refused}) {
      SCOPED_TRACE(code + (sound == Faults::Sound::refused ? ", refused" : ", no numbers"));
      faults() = {};
      ASSERT_TRUE(openHostile(code)) << testing::PrintToString(log_);
      const Bitmap before = picture();
      forgetLog();
      faults().sound = sound;
      for (int i = 0; i < 10; ++i) {
        automate(1, static_cast<float>(i));
        advance(0.1);
      }
      // The panel round the plot looks as before.
      const Bitmap after = picture();
      const NSRect graph = frameInWindow(*all<jxAUGraphDisplay>(*editor).front());
      const float w = NSWidth(graph), h = NSHeight(graph), rim = 6;
      for (const NSRect side : {NSMakeRect(0, 0, w, rim), NSMakeRect(0, h - rim, w, rim),
                                NSMakeRect(0, 0, rim, h), NSMakeRect(w - rim, 0, rim, h)})
        EXPECT_EQ(differences(before, after, NSOffsetRect(side, graph.origin.x, graph.origin.y)), 0);
      close();
      EXPECT_FALSE(log_.empty());
      EXPECT_EQ(repeated(), Lines());
    }
}

TEST_F(HostileEffects, AreClosedUnderTheirEditor) {
  for (const std::string code : codes) {
    SCOPED_TRACE(code);
    ASSERT_TRUE(openHostile(code)) << testing::PrintToString(log_);
    forgetLog();
    unit.reset();
    advance(1);
    use();
    close();
    EXPECT_EQ(repeated(), Lines());
  }
}
