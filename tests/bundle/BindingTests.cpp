#include <gtest/gtest.h>

#include "ActionLog.h"
#include "EditorStage.h"
#include "NSException.h"
#include "jxAUParam.h"
#include "jxAUwrapper.h"

namespace {

const SEL changed = NSSelectorFromString("valueChanged:");

class Binding : public testing::Test, public EditorStage {
 protected:
  Binding() { unit = openTestEffect(); }
  std::shared_ptr<jxAUParam> bind(AudioUnitParameterID id) {
    return std::make_shared<jxAUParam>(addressOf(unit, id), target.get(), changed);
  }
  std::shared_ptr<ActionLog> target = std::make_shared<ActionLog>();
};

TEST_F(Binding, ScaleAndOffsetApplyInBothDirectionsAndWritingClamps) {
  const struct {
    double scale, offset;
    float min, max, standard;
    float set, effect;
  } rows[] = {{1, 0, 0, 10, 2, 7.5f, 7.5f},
              {100, -500, -500, 500, -300, 0, 5},
              {1, 0, 0, 10, 2, -3, 0},
              {-1, 0, 0, -10, -2, -4, 4},
              {0.5, 1, 1, 6, 2, 100, 10}};
  for (const auto& row : rows) {
    const auto param = bind(gainParameter);
    param->setCustomScale(row.scale);
    param->setCustomOffset(row.offset);
    EXPECT_EQ(param->minValue(), row.min);
    EXPECT_EQ(param->maxValue(), row.max);
    EXPECT_EQ(param->defaultValue(), row.standard);
    param->setFloatValue(row.set);
    EXPECT_FLOAT_EQ(parameter(gainParameter), row.effect) << row.set << " x " << row.scale;
    EXPECT_DOUBLE_EQ(param->doubleValue(), parameter(gainParameter) * row.scale + row.offset);
  }
}

TEST_F(Binding, TextIsTheEffectsOwnOrANumberWithItsUnit) {
  const struct {
    AudioUnitParameterID id;
    const char *name, *unit;
    float set, asked;
    const char *current, *of, *max;
  } rows[] = {{gainParameter, "gain", "", 4.5f, 3.25f, "9", "3.25", "20"},
              {freqParameter, "größe", "Hz", 441.5f, 1234.5678f, "883", "1234.5", "40000"},
              {framesParameter, "frames", "smp", 441, 12.5f, "882", "12", "88200"},
              {modeParameter, "mode", "", 1, 2, "hard", "off", "4"},  // the scaled maximum has no name
              {givenParameter, "given away", "dB", 6, 1.5f, "12", "1.5", "24"},
              {textParameter, "text", "ms", 20, 30, "20 ms", "30 ms", "2000 ms"}};
  for (int round = 0; round < 2; ++round)  // the second reads what the first should not have released
    for (const auto& row : rows) {
      const auto param = bind(row.id);
      set(row.id, row.set);
      param->setCustomScale(2);
      EXPECT_EQ(param->parameterName(), row.name);
      EXPECT_EQ(param->unit(), row.unit) << row.name;
      EXPECT_EQ(param->valueString(), row.current) << row.name;
      EXPECT_EQ(param->stringForValue(row.asked), row.of) << row.name;
      EXPECT_EQ(param->maxValueString(), row.max) << row.name;
      EXPECT_EQ(param->displaysLogarithmical(), row.id == freqParameter);
      param->setForceLinear(true);
      EXPECT_FALSE(param->displaysLogarithmical());
    }
}

TEST_F(Binding, AParameterWithoutDescriptionThrowsAndLeavesNothingBehind) {
  {
    const auto other = bind(gainParameter);
    EXPECT_THROW(bind(absentParameter), NSException);
    EXPECT_EQ(jxAUParam::liveCount(), 1u);
  }
  EXPECT_EQ(log, Lines{"*** Assertion failure in -[jxAUParam initForAUParam:target:selector:], jxAUParam:50: "
                       "Error getting AudioUnitParameterInfo"});
  EXPECT_EQ(jxAUParam::liveCount(), 0u);
  const auto again = bind(gainParameter);
  set(gainParameter, 3);
  advance(0.05);
  EXPECT_EQ(target->take(), "changed") << "after the last another works again";
}

TEST_F(Binding, TheLastTakesTheListenerAlong) {
  const auto loop = std::make_shared<NSRunLoop>();  // with no other listener
  const NSRunLoop::Scope scope(loop);
  bind(gainParameter).reset();
  set(gainParameter, 3);
  EXPECT_EQ(loop->nextDue(), RunLoopObserver::never) << "a listener would want to hear of it";
}

TEST_F(Binding, AChangeFromAnySourceReachesEveryBindingOfTheParameter) {
  const auto first = bind(gainParameter), second = bind(gainParameter), other = bind(freqParameter);
  auto gone = bind(gainParameter);
  first->setFloatValue(3);
  gone.reset();
  advance(0.05);
  EXPECT_EQ(target->messages, 2) << "none to a binding that has gone";
  EXPECT_EQ(target->sender, second.get());
  for (int i = 0; i < 10; ++i) {  // a stream: one notice in 0.05 seconds, to each
    set(gainParameter, static_cast<float>(i));
    advance(0.01);
  }
  EXPECT_LE(target->messages, 2 + 6);
  advance(0.2);
  for (const AudioUnitPropertyID id : {kAudioUnitProperty_PresentPreset, kAudioUnitProperty_CurrentPreset}) {
    target->messages = 0;
    setProperty(id, AUPreset{id == kAudioUnitProperty_PresentPreset ? 1 : 0, nullptr});
    advance(0.2);
    EXPECT_EQ(target->messages, 3) << "a preset reaches each once";
  }
}

TEST_F(Binding, AnEffectsNameIsWithoutMakerAndPrefix) {
  const std::string longest(253, 'x');
  const std::pair<std::string, std::string> rows[] = {{"Vendor: AUEcho", " Echo"},
                                                      {"AUEcho", "AUEcho"},
                                                      {"A: B: AUEcho", " B: AUEcho"},
                                                      {"V: AUGröße", " Größe"},
                                                      {"", ""},
                                                      {"V:" + longest, longest}};
  OSType subtype = FourCharCode("wr00");
  for (const auto& [component, name] : rows) {
    const Unit named = openUnit(RegisterComponent(
        {FourCharCode("aufx"), ++subtype, FourCharCode("Test")}, component, 0,
        +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<TestEffect>(); }));
    EXPECT_EQ(jxAUwrapper(named.get()).auName(), name) << component;
  }
  jxAUwrapper none(nullptr);
  EXPECT_EQ(none.auVersion(), 0u);
  EXPECT_EQ(none.auName(), "");
  const Component known = unit->component();
  unit->setComponent(nullptr);
  EXPECT_THROW(jxAUwrapper(unit.get()).auName(), NSException);
  unit->setComponent(known);
}

}  // namespace
