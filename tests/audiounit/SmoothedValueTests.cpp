#include <gtest/gtest.h>

#include "AUSmoothedValue.h"

TEST(SmoothedValues, ReachTheirTargetInTimeHoweverOftenTheyAreToldIt) {
  AUSmoothedValue value;
  value.setSampleRate(48000);
  value.snap(-1);
  for (int frames = 0; frames < 960; frames += 64) {
    value.follow(1);
    EXPECT_NEAR(value.value(), -1 + static_cast<float>(frames) / 480, 1e-4f);
    EXPECT_FALSE(value.isSettled());
    value.advance(64);
  }
  EXPECT_TRUE(value.isSettled());
  EXPECT_EQ(value.value(), 1);
}
