#include "BundleFixture.h"
#include "NSException.h"
#include "TestUnit.h"
#include "jxAUParam.h"

namespace {

const SEL changed = NSSelectorFromString("valueChanged:");

class BindingTests : public BundleFixture {
 protected:
  std::shared_ptr<jxAUParam> bind(AudioUnitParameterID id) {
    return std::make_shared<jxAUParam>(addressOf(unit_, id), target_.get(), changed);
  }
  Unit unit_ = openTestUnit();
  std::shared_ptr<Recorder> target_ = std::make_shared<Recorder>();
};

TEST_F(BindingTests, scaleAndOffsetApplyInBothDirectionsAndWritingClamps) {
  const struct {
    double scale, offset;
    float min, max, standard;
    float set, effect;
  } rows[] = {
      {1, 0, 0, 10, 2, 7.5f, 7.5f}, {100, 0, 0, 1000, 200, 50, 0.5f}, {100, -500, -500, 500, -300, 0, 5},
      {1, 0, 0, 10, 2, 11, 10},     {1, 0, 0, 10, 2, -3, 0},          {-1, 0, 0, -10, -2, -4, 4},
      {0.5, 1, 1, 6, 2, 100, 10},
  };
  for (const auto& row : rows) {
    const auto param = bind(gainParameter);
    param->setCustomScale(row.scale);
    param->setCustomOffset(row.offset);
    EXPECT_EQ(param->minValue(), row.min);
    EXPECT_EQ(param->maxValue(), row.max);
    EXPECT_EQ(param->defaultValue(), row.standard);
    param->setFloatValue(row.set);
    EXPECT_FLOAT_EQ(valueOf(unit_, gainParameter), row.effect) << row.set << " x " << row.scale;
    EXPECT_FLOAT_EQ(param->floatValue(), static_cast<float>(row.effect * row.scale + row.offset));
    EXPECT_DOUBLE_EQ(param->doubleValue(), valueOf(unit_, gainParameter) * row.scale + row.offset);
  }
}

TEST_F(BindingTests, unitsAndKindsOfDisplay) {
  const auto plain = kAUParameterPlain;
  const struct {
    UInt32 unit;
    const char* text;
    UInt32 flags;
    std::string kinds;  // logarithmic, square root, squared, exponential
  } rows[] = {
      {0, "", plain, "----"},
      {1, "", plain | kAudioUnitParameterFlag_DisplayLogarithmic, "L---"},
      {2, "", plain | kAudioUnitParameterFlag_DisplaySquareRoot, "-R--"},
      {3, "%", plain | kAudioUnitParameterFlag_DisplaySquared, "--S-"},
      {4, "sec", plain | kAudioUnitParameterFlag_DisplayExponential, "---E"},
      {5, "smp", plain | 3u << 16, "----"},
      {6, "", plain | 4u << 16 | kAudioUnitParameterFlag_DisplayLogarithmic, "L---"},
      {7, "x", plain, "----"},
      {8, "Hz", plain, "----"},
      {9, "cnt", plain, "----"},
      {10, "", plain, "----"},
      {13, "dB", plain, "----"},
      {16, "%", plain, "----"},
      {20, "", plain, "----"},
      {21, "8va", plain, "----"},
      {24, "ms", plain, "----"},
      {26, "", plain, "----"},
  };
  for (const auto& row : rows) {
    const AUParameterRow parameter{0, "p", row.unit, 0, 1, 0, row.flags};
    SilentEffect effect(std::span(&parameter, 1));
    jxAUParam param({&effect, 0, kAudioUnitScope_Global, 0}, target_.get(), changed);
    const auto kinds = [&] {
      return std::string() + (param.displaysLogarithmical() ? 'L' : '-') +
             (param.displaysSquaredRoot() ? 'R' : '-') + (param.displaysSquared() ? 'S' : '-') +
             (param.displaysExponential() ? 'E' : '-');
    };
    EXPECT_EQ(param.unit(), row.text) << row.unit;
    EXPECT_EQ(param.isIndexed(), row.unit == 1);
    EXPECT_EQ(param.isBoolean(), row.unit == 2);
    EXPECT_EQ(param.isInteger(), row.unit == 5);
    EXPECT_EQ(kinds(), row.kinds) << row.unit;
    param.setForceLinear(true);
    EXPECT_EQ(kinds(), "----") << row.unit;
  }
}

TEST_F(BindingTests, textIsTheEffectsOwnOrANumber) {
  const struct {
    AudioUnitParameterID id;
    float set, asked;
    const char *current, *of, *max;
  } rows[] = {
      {gainParameter, 4.5f, 3.25f, "9", "3.25", "20"},
      {freqParameter, 441.5f, 1234.5678f, "883", "1234.5", "40000"},
      {framesParameter, 441, 12.5f, "882", "12", "88200"},
      {modeParameter, 1, 2, "hard", "off", "4"},  // the scaled maximum has no name
      {textParameter, 20, 30, "20 ms", "30 ms", "2000 ms"},
  };
  for (const auto& row : rows) {
    const auto param = bind(row.id);
    hostSets(unit_, row.id, row.set);
    param->setCustomScale(2);
    EXPECT_EQ(param->valueString(), row.current);
    EXPECT_EQ(param->stringForValue(row.asked), row.of);
    EXPECT_EQ(param->maxValueString(), row.max);
  }
}

TEST_F(BindingTests, theNameIsReleasedExactlyWhenItIsOurs) {
  // A second round reads what the first one should not have released; the sanitizer sees the rest.
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(bind(gainParameter)->parameterName(), "gain");
    EXPECT_EQ(bind(freqParameter)->parameterName(), "größe");
    EXPECT_EQ(bind(givenParameter)->parameterName(), "given away");
  }
}

TEST_F(BindingTests, aParameterWithoutDescriptionThrowsAndLeavesNothingBehind) {
  const auto other = bind(gainParameter);
  EXPECT_THROW(bind(99), NSException);
  EXPECT_EQ(jxAUParam::liveCount(), 1u);
  EXPECT_EQ(log_,
            Lines{"*** Assertion failure in -[jxAUParam initForAUParam:target:selector:], jxAUParam:50: "
                  "Error getting AudioUnitParameterInfo"});
  hostSets(unit_, gainParameter, 3);
  advance(0.05);
  EXPECT_EQ(target_->take(), Lines{"valueChanged:"});
}

TEST_F(BindingTests, aChangeFromAnySourceReachesEveryBindingOfTheParameter) {
  const auto first = bind(gainParameter), second = bind(gainParameter), other = bind(freqParameter);
  first->setFloatValue(3);
  advance(0.05);
  EXPECT_EQ(target_->take(), (Lines{"valueChanged:", "valueChanged:"}));
  EXPECT_EQ(target_->sender, second.get());
  for (int i = 0; i < 10; ++i) {  // a stream: one notice in 0.05 seconds, to each
    hostSets(unit_, gainParameter, static_cast<float>(i));
    advance(0.01);
  }
  EXPECT_LE(target_->take().size(), 6u);
}

TEST_F(BindingTests, afterTheLastBindingAnotherWorksAgain) {
  bind(gainParameter);
  EXPECT_EQ(jxAUParam::liveCount(), 0u);
  const auto again = bind(gainParameter);
  EXPECT_EQ(jxAUParam::liveCount(), 1u);
  hostSets(unit_, gainParameter, 3);
  advance(0.05);
  EXPECT_EQ(target_->take(), Lines{"valueChanged:"});
}

TEST_F(BindingTests, aPresetReachesTheTargetOnce) {
  const auto param = bind(freqParameter);
  for (const AudioUnitPropertyID id : {kAudioUnitProperty_PresentPreset, kAudioUnitProperty_CurrentPreset}) {
    const AUPreset preset{id == kAudioUnitProperty_PresentPreset ? 1 : 0, nullptr};
    EXPECT_EQ(AudioUnitSetProperty(unit_.get(), id, kAudioUnitScope_Global, 0, &preset, sizeof preset),
              noErr);
    advance(0.2);
    EXPECT_EQ(target_->take(), Lines{"valueChanged:"}) << id;
  }
}

TEST_F(BindingTests, aDestroyedBindingHearsNothingThatWaited) {
  const auto other = bind(freqParameter);  // keeps the listener
  auto param = bind(gainParameter);
  hostSets(unit_, gainParameter, 3);
  param.reset();
  advance(0.2);
  EXPECT_EQ(target_->take(), Lines{});
}

}  // namespace
