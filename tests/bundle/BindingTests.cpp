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
  const auto param = bind(gainParameter);
  param->setCustomScale(100);
  param->setCustomOffset(-500);
  EXPECT_EQ(param->minValue(), -500);
  EXPECT_EQ(param->defaultValue(), -300);
  EXPECT_EQ(param->maxValue(), 500);
  for (const auto& [given, effect] : {std::pair(0.0f, 5.0f), {9999.0f, 10.0f}}) {
    param->setFloatValue(given);
    EXPECT_EQ(parameter(gainParameter), effect);
    EXPECT_EQ(param->floatValue(), effect * 100 - 500);
  }
}

TEST_F(Binding, TextIsTheEffectsOwnOrANumberWithItsUnit) {
  const struct {
    AudioUnitParameterID id;
    const char *name, *unit;
    float set, asked;
    const char *current, *of;
  } rows[] = {{freqParameter, "größe", "Hz", 441.5f, 1234.5678f, "883", "1234.5"},
              {framesParameter, "frames", "smp", 441, 12.5f, "882", "12"},
              {modeParameter, "mode", "", 1, 2, "hard", "off"},
              {givenParameter, "given away", "dB", 6, 1.5f, "12", "1.5"},
              {textParameter, "text", "ms", 20, 30, "20 ms", "30 ms"}};
  for (int round = 0; round < 2; ++round)  // the second reads what the first should not have released
    for (const auto& row : rows) {
      const auto param = bind(row.id);
      set(row.id, row.set);
      param->setCustomScale(2);
      EXPECT_EQ(param->parameterName(), row.name);
      EXPECT_EQ(param->unit(), row.unit) << row.name;
      EXPECT_EQ(param->valueString(), row.current) << row.name;
      EXPECT_EQ(param->stringForValue(row.asked), row.of) << row.name;
      EXPECT_EQ(param->displaysLogarithmical(), row.id == freqParameter);
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
  advance(0.2);
  EXPECT_EQ(target->messages, 2) << "none to a binding that has gone";
  for (const AudioUnitPropertyID id : {kAudioUnitProperty_PresentPreset, kAudioUnitProperty_CurrentPreset}) {
    target->messages = 0;
    setGlobal(unit, id, AUPreset{id == kAudioUnitProperty_PresentPreset ? 1 : 0, nullptr});
    advance(0.2);
    EXPECT_EQ(target->messages, 3) << "a preset reaches each once";
  }
}

TEST_F(Binding, AnEffectsNameIsWithoutMakerAndPrefix) {
  EXPECT_EQ(jxAUwrapper(unit.get()).auName(), " Test");
}

}  // namespace
