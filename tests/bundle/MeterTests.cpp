#include <gtest/gtest.h>

#include "EditorStage.h"
#include "jxAUCompAmountView.h"

namespace {

/// A meter of the test effect's, in a window.
class Meter : public testing::Test, public EditorStage {
 protected:
  Meter() { unit = openTestEffect(); }
  void watch(int samples) {
    meter->awakeFromNib();
    meter->startWatchingAUparam_numSamples(addressOf(unit, meterParameter), samples);
    show(meter);
  }
  /// Is there a new picture?
  bool push(float value, int times = 1) {
    unit->setMeter(id, value);
    for (int i = 0; i < times; ++i) meter->update();
    advance(0.1);
    return !takeDamage().empty();
  }
  bool filled(float x, float level) const { return (colorAt({x, meter->yForValue(level)}) >> 16) < 0xc0; }
  void setId(AudioUnitParameterID to) {
    dynamic_cast<TestEffect&>(*unit).setMeterId(id = to);
    advance(0.1);
  }

  AudioUnitParameterID id = meterParameter;
  std::shared_ptr<jxAUCompAmountView> meter =
      std::make_shared<jxAUCompAmountView>(NSMakeRect(0, 0, 236, 116));
};

TEST_F(Meter, ScrollsFromTheRightAndForgetsTheOldest) {
  watch(10);
  const NSRect plot = meter->inBounds();
  const float step = NSWidth(plot) / 10;
  const auto placeOf = [&](int age) { return NSMaxX(plot) - static_cast<float>(age) * step; };
  EXPECT_FALSE(filled(placeOf(1), 1));
  push(9);
  EXPECT_TRUE(filled(placeOf(0) - 3, 7));
  EXPECT_FALSE(filled(placeOf(1) - 3, 2));
  for (int age = 1; age < 10; ++age) {
    push(0);
    EXPECT_TRUE(filled(placeOf(age), 7)) << age;
    EXPECT_FALSE(filled(placeOf(age) - step, 2)) << age;
  }
  push(0);
  for (int age = 1; age < 10; ++age) EXPECT_FALSE(filled(placeOf(age), 2)) << age;
  push(10, 10);
  EXPECT_TRUE(filled(placeOf(5), 9.3f));
  EXPECT_FALSE(filled(placeOf(5), 10.7f));
}

TEST_F(Meter, IsMarkedOnlyWhileSomethingWouldChange) {
  watch(10);
  EXPECT_FALSE(push(0, 3)) << "still all zero";
  for (int i = 0; i < 10; ++i) EXPECT_TRUE(push(5)) << i;
  EXPECT_FALSE(push(5));
}

TEST_F(Meter, FollowsTheListOfParameters) {
  setId(meterParameter + 1);
  watch(4);
  const float x = NSMaxX(meter->inBounds()) - 4;
  push(10, 4);
  EXPECT_FALSE(filled(x, 4)) << "there is no such parameter";
  setId(meterParameter);
  push(10, 4);
  EXPECT_TRUE(filled(x, 4));
  setId(meterParameter + 1);
  takeDamage();
  EXPECT_FALSE(push(0, 4)) << "the history stands still";
  EXPECT_TRUE(filled(x, 4));
}

}  // namespace
