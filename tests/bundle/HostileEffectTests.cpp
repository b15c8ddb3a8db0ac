// Under every editor: nothing breaks, and what is wrong is said once.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <set>
#include <stdexcept>

#include "EditorStage.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "StandIn.h"
#include "jxAUGraphDisplay.h"
#include "jxAUMeasuredResponseView.h"
#include "jxAURotaryKnob.h"

namespace {

/// What a hostile effect does wrong.
struct Faults {
  enum class Sound { asItCame, notANumber, refused };

  int failingRead = -1;  // of properties and their sizes, counted from 0
  bool hasLists = true;  // else there are no parameters any more
  float widening = 1;    // of each parameter's range around its middle
  Sound sound = Sound::asItCame;
  int reads = 0;  // so far
};

/// An effect with the parameters of another that breaks its word as `faults` says at the moment.
class HostileEffect : public AUEffectBase {
 public:
  /// Neither is copied.
  HostileEffect(std::span<const AUParameterRow> rows, Faults& faults)
      : AUEffectBase({rows, {}, 500, true, true}), faults_(faults) {}

  OSStatus propertyInfo(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element, UInt32& size,
                        bool& writable) const override {
    if (fails()) return kAudioUnitErr_InvalidProperty;
    const OSStatus status = AUEffectBase::propertyInfo(id, scope, element, size, writable);
    if (id == kAudioUnitProperty_ParameterList && !faults_.hasLists) size = 0;
    return status;
  }
  OSStatus getProperty(AudioUnitPropertyID id, AudioUnitScope scope, AudioUnitElement element, void* data,
                       UInt32& size) const override {
    if (fails()) return kAudioUnitErr_InvalidProperty;
    if (id == kAudioUnitProperty_ParameterList && !faults_.hasLists) size = 0;
    const OSStatus status = AUEffectBase::getProperty(id, scope, element, data, size);
    if (status != noErr || id != kAudioUnitProperty_ParameterInfo) return status;
    auto& info = *static_cast<AudioUnitParameterInfo*>(data);
    const float middle = (info.minValue + info.maxValue) / 2;
    info.minValue = middle + (info.minValue - middle) * faults_.widening;
    info.maxValue = middle + (info.maxValue - middle) * faults_.widening;
    return noErr;
  }
  OSStatus getParameter(AudioUnitParameterID id, Float32& value) const override {
    return faults_.hasLists ? AUEffectBase::getParameter(id, value) : kAudioUnitErr_InvalidParameter;
  }

 private:
  bool fails() const { return faults_.reads++ == faults_.failingRead; }
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const> channels, UInt32 frames) override {
    if (faults_.sound == Faults::Sound::refused) throw std::runtime_error("no sound today");
    if (faults_.sound == Faults::Sound::notANumber)
      for (float* channel : channels) std::fill_n(channel, frames, std::numeric_limits<float>::quiet_NaN());
  }

  Faults& faults_;
};

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

TEST_F(HostileEffects, ChangeTheirRangesLoseTheirParametersAndAreClosed) {
  for (const float widening : {3.0f, -1.0f})
    forEach([&](Component real) {
      ASSERT_TRUE(openHostile(real)) << testing::PrintToString(log);
      faults.widening = widening;
      tellChange();
      use();
      for (const bool hasLists : {false, true}) {
        faults.hasLists = hasLists;
        tellChange();
        use();
      }
      unit.reset();
      advance(1);
      use();
    });
}

TEST_F(HostileEffects, RenderNoNumbersOrNothingAtAll) {
  for (const auto sound : {Faults::Sound::notANumber, Faults::Sound::refused})
    forEach([&](Component real) {
      ASSERT_TRUE(openHostile(real)) << testing::PrintToString(log);
      if (!find(*editor, "ReverbIRview") && all<jxAUMeasuredResponseView>(*editor).empty()) return;
      faults.sound = sound;
      for (int i = 0; i < 4; ++i) {
        set(1, static_cast<float>(i));
        advance(0.1);
      }
      EXPECT_FALSE(log.empty()) << "it is said that there are no numbers, or no sound";
    });
}

}  // namespace
