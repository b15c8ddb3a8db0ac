#include "BundleFixture.h"
#include "NSException.h"
#include "TestUnit.h"
#include "jxAUGraphDisplay.h"
#include "jxAUParamKnobView.h"

namespace {

class ParamViewTests : public BundleFixture {
 protected:
  static std::shared_ptr<jxAUParamKnobView> make(float x = 0) {
    return std::make_shared<jxAUParamKnobView>(NSMakeRect(x, 0, 92, 76));
  }
  std::shared_ptr<jxAUParamKnobView> hooked(AudioUnitParameterID id) {
    auto view = make();
    view->setAUParameter(addressOf(unit_, id));
    return view;
  }
  static jxAURotaryKnob& knobOf(NSView& view) { return *all<jxAURotaryKnob>(view).front(); }
  static std::string text(NSView& view, size_t field) { return all<NSTextField>(view)[field]->stringValue(); }

  Unit unit_ = openTestUnit();
};

TEST_F(ParamViewTests, anEditorsChoicesAreInForce) {
  const auto view = make();
  view->setCustomName("level");
  view->setForceLinear(true);
  view->setColor(jxAUGraphDisplay::greenHandle());
  view->setAUParameter(addressOf(unit_, freqParameter));
  EXPECT_EQ(text(*view, 0), "level");
  EXPECT_FALSE(knobOf(*view).logarithmic());
  EXPECT_TRUE(knobOf(*view).markerColor()->isEqual(jxAUGraphDisplay::greenHandle().get()));
  view->setColor(jxAUGraphDisplay::blueHandle());
  EXPECT_TRUE(knobOf(*view).markerColor()->isEqual(jxAUGraphDisplay::blueHandle().get()));
  EXPECT_TRUE(knobOf(*hooked(gainParameter))
                  .markerColor()
                  ->isEqual(NSColor::colorWithCalibratedRed_green_blue_alpha(0xFC / 255.0f, 0x8B / 255.0f,
                                                                             0x12 / 255.0f, 1)
                                .get()));
}

TEST_F(ParamViewTests, hookingTwiceIsReported) {
  const auto view = hooked(gainParameter);
  EXPECT_THROW(view->setAUParameter(addressOf(unit_, freqParameter)), NSException);
  EXPECT_EQ(log_, Lines{"*** Assertion failure in -[jxAUParamKnobView setAUParameter:], jxAUParamView:37: "
                        "Error! Already hooked to an AU Parameter"});
}

TEST_F(ParamViewTests, aScaleAppliesToValueAndDefaultNotToTheLimits) {
  hostSets(unit_, gainParameter, 8);
  const auto unhooked = make();
  unhooked->setCustomScale(0.5);
  const auto view = hooked(gainParameter);
  const auto window = showInside({600, 300}, view);
  view->setCustomScale(0.5);
  EXPECT_EQ(text(*view, 4), "4");
  EXPECT_EQ(knobOf(*view).doubleValue(), 4);
  EXPECT_EQ(knobOf(*view).maxValue(), 10);
  press(knobOf(*view), NSAlternateKeyMask);
  display_.release();
  EXPECT_EQ(knobOf(*view).doubleValue(), 1);  // half of 2
  EXPECT_FLOAT_EQ(valueOf(unit_, gainParameter), 2);
}

TEST_F(ParamViewTests, twoViewsOfOneParameterFollowEachOther) {
  const auto first = hooked(gainParameter), second = hooked(gainParameter);
  const auto window = showInside({600, 300}, first);
  press(knobOf(*first));
  display_.moveBy(0, 10);
  advance(0.1);
  display_.release();
  advance(0.05);
  EXPECT_GT(valueOf(unit_, gainParameter), 2);
  EXPECT_NEAR(knobOf(*second).floatValue(), valueOf(unit_, gainParameter), 1e-5);
  EXPECT_EQ(text(*second, 4), text(*first, 4));
}

TEST_F(ParamViewTests, theDelegateHearsGesturesOfTheView) {
  const auto view = hooked(gainParameter);
  const auto delegate = std::make_shared<Recorder>();
  view->setDelegate(delegate.get());
  const auto window = showInside({600, 300}, view);
  press(knobOf(*view));
  EXPECT_EQ(delegate->take(), Lines{"beginAction:"});
  EXPECT_EQ(delegate->sender, view.get());
  display_.release();
  EXPECT_EQ(delegate->take(), Lines{"endAction:"});
  NSObject deaf;
  view->setDelegate(&deaf);
  press(knobOf(*view));
  display_.release();
  EXPECT_EQ(log_, Lines{});
}

}  // namespace
