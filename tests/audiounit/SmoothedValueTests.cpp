#include "AUSmoothedValue.h"

#include <gtest/gtest.h>

TEST(SmoothedValue, RisesEvenlyAndArrivesExactly) {
  AUSmoothedValue value;
  value.setSampleRate(1000);  // 20 frames
  value.snap(1);
  value.follow(3);
  float last = value.value();
  for (int frame = 0; frame < 20; ++frame) {
    EXPECT_FALSE(value.isSettled());
    const float now = value.next();
    EXPECT_NEAR(now - last, 0.1f, 1e-5f);
    last = now;
  }
  EXPECT_EQ(last, 3);
  EXPECT_TRUE(value.isSettled());
}

TEST(SmoothedValue, ANewTargetIsFollowedFromWhereItStandsAndTheSameOneIsNot) {
  AUSmoothedValue value;
  value.setSampleRate(1000);
  value.snap(0);
  value.follow(1);
  EXPECT_NEAR(value.advance(10), 0.5f, 1e-6f);
  value.follow(1);  // every block says so; the ramp must not begin again
  EXPECT_EQ(value.advance(10), 1);
  value.follow(0);
  value.advance(10);
  value.follow(0.5f);
  EXPECT_NEAR(value.next(), 0.5f, 1e-6f);
  EXPECT_EQ(value.advance(100), 0.5f);
}
