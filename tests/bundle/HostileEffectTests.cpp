// Effects that do not keep their side of the bargain, under every editor: nothing breaks, and what is wrong
// is said once.

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "EditorStage.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "HostileEffect.h"
#include "StandIn.h"
#include "jxAUGraphDisplay.h"
#include "jxAUMeasuredResponseView.h"
#include "jxAURotaryKnob.h"

namespace {

class HostileEffects : public testing::Test, public EditorStage {
 protected:
  ~HostileEffects() override { close(); }

  /// False when there is no editor of it, which is an answer too.
  bool openHostile(Component real) {
    forgetLog();
    const auto rows = std::make_shared<std::vector<AUParameterRow>>();
    const Unit model = openUnit(real);
    for (const EffectParameter& p : effectParameters(model.get())) {
      AudioUnitParameterInfo info;
      UInt32 size = sizeof info;
      AudioUnitGetProperty(model.get(), kAudioUnitProperty_ParameterInfo, 0, p.id, &info, &size);
      rows->push_back({p.id, "some parameter", info.unit, p.minValue, p.maxValue, p.defaultValue,
                       p.flags & ~UInt32{kAudioUnitParameterFlag_ValuesHaveStrings}});
    }
    return open(openUnit(
        standIn(effectCode(real), [this, rows] { return std::make_unique<HostileEffect>(rows, faults); })));
  }
  /// For each effect of this system: closes what the test leaves open, and sees that nothing was said twice.
  void forEach(const std::function<void(Component)>& test) {
    for (const Component real : allEffects()) {
      SCOPED_TRACE(effectCode(real));
      faults = {};
      test(real);
      expectNothingTwice();
    }
  }
  void expectNothingTwice() {
    close();
    std::set<std::string> seen;
    for (const std::string& line : log) EXPECT_TRUE(seen.insert(line).second) << line;
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
    for (AudioUnitParameterID id = 0; id < 20; ++id) set(id, static_cast<float>(id) * 7);
    advance(0.2);
    for (const auto* knob : all<jxAURotaryKnob>(*editor)) {
      press(*knob);
      moveBy(0, 30);
      advance(0.1);
      release();
      wheel(middleOf(*knob), 1);
    }
    for (const auto* graph : all<jxAUGraphDisplay>(*editor)) {
      press(*graph);
      moveBy(5, 5);
      release();
    }
    advance(0.2);
    window->snapshot();
  }

  Faults faults;
};

TEST_F(HostileEffects, RefuseAnyOneOfTheirProperties) {
  forEach([&](Component real) {
    // All of the first, then fewer and fewer: an editor of fifty knobs asks the same fifty times.
    bool wasAsked = true;
    for (int failing = 0; wasAsked; failing += 1 + failing / 12) {
      faults = {.failingRead = failing};
      if (openHostile(real)) {
        advance(0.3);
        window->snapshot();
      } else {
        EXPECT_FALSE(log.empty());
      }
      expectNothingTwice();
      wasAsked = faults.reads > failing;
    }
  });
}

TEST_F(HostileEffects, ChangeTheirRangesAndLoseTheirParameters) {
  for (const float widening : {3.0f, 0.0f, -1.0f})
    forEach([&](Component real) {
      ASSERT_TRUE(openHostile(real)) << testing::PrintToString(log);
      faults.widening = widening;
      tellChange();
      use();
      faults.hasLists = false;
      tellChange();
      use();
    });
}

TEST_F(HostileEffects, RenderNoNumbersOrNothingAtAll) {
  for (const auto sound : {Faults::Sound::notANumber, Faults::Sound::refused})
    forEach([&](Component real) {
      ASSERT_TRUE(openHostile(real)) << testing::PrintToString(log);
      const auto graphs = all<jxAUGraphDisplay>(*editor);
      const bool isMeasured =
          find(*editor, "ReverbIRview") || !all<jxAUMeasuredResponseView>(*editor).empty();
      if (!isMeasured) return;
      const Bitmap before = picture();
      faults.sound = sound;
      for (int i = 0; i < 10; ++i) {
        set(1, static_cast<float>(i));
        advance(0.1);
      }
      // The panel round the plot looks as before.
      const Bitmap after = picture();
      const NSRect graph = frameInWindow(*graphs.front());
      const float w = NSWidth(graph), h = NSHeight(graph), rim = 6;
      for (const NSRect side : {NSMakeRect(0, 0, w, rim), NSMakeRect(0, h - rim, w, rim),
                                NSMakeRect(0, 0, rim, h), NSMakeRect(w - rim, 0, rim, h)})
        EXPECT_EQ(differences(before, after, NSOffsetRect(side, graph.origin.x, graph.origin.y)), 0);
      EXPECT_FALSE(log.empty()) << "it is said that there are no numbers, or no sound";
    });
}

TEST_F(HostileEffects, AreClosedUnderTheirEditor) {
  forEach([&](Component real) {
    ASSERT_TRUE(openHostile(real)) << testing::PrintToString(log);
    unit.reset();
    advance(1);
    use();
  });
}

}  // namespace
