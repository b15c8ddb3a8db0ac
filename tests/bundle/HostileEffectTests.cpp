// Under every editor: nothing breaks, and what is wrong is said once.

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

  bool openHostile(Component real) {
    close();
    forgetLog();
    rows.clear();
    const Unit model = openUnit(real);
    for (const EffectParameter& p : effectParameters(model.get())) {
      AudioUnitParameterInfo info;
      UInt32 size = sizeof info;
      AudioUnitGetProperty(model.get(), kAudioUnitProperty_ParameterInfo, 0, p.id, &info, &size);
      rows.push_back({p.id, "some parameter", info.unit, p.minValue, p.maxValue, p.defaultValue,
                      p.flags & ~UInt32{kAudioUnitParameterFlag_ValuesHaveStrings}});
    }
    return open(openUnit(
        standIn(effectCode(real), [this] { return std::make_unique<HostileEffect>(rows, faults); })));
  }
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
  /// A bit of everything: ticks, automation, a drag of each knob and graph, a redraw.
  void use() {
    for (AudioUnitParameterID id = 0; id < 20; ++id) set(id, static_cast<float>(id) * 7);
    advance(0.2);
    for (const NSView* view : all<NSView>(*editor)) {
      if (!dynamic_cast<const jxAURotaryKnob*>(view) && !dynamic_cast<const jxAUGraphDisplay*>(view))
        continue;
      press(*view);
      moveBy(5, 30);
      advance(0.05);
      release();
      wheel(middleOf(*view), 1);
    }
    advance(0.2);
    window->snapshot();
  }

  std::vector<AUParameterRow> rows;
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
  for (const float widening : {3.0f, -1.0f})
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
      if (!find(*editor, "ReverbIRview") && all<jxAUMeasuredResponseView>(*editor).empty()) return;
      const Bitmap before = picture();
      faults.sound = sound;
      for (int i = 0; i < 4; ++i) {
        set(1, static_cast<float>(i));
        advance(0.1);
      }
      // The panel above and below the plot looks as before.
      const NSRect graph = frameInWindow(*all<jxAUGraphDisplay>(*editor).front());
      const float rim = 6;
      for (const float y : {NSMinY(graph), NSMaxY(graph) - rim})
        EXPECT_EQ(differences(before, picture(), NSMakeRect(NSMinX(graph), y, NSWidth(graph), rim)), 0);
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
