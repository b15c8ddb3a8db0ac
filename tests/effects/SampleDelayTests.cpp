#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "EffectBench.h"

TEST(SampleDelay, IsExactAtEveryDelay) {
  constexpr UInt32 all = 60000;
  EffectBench bench("sdly", {.maximumFrames = all});
  const auto input = noise(2, all, 1.0f);
  for (const UInt32 delay : {0u, 1u, 511u, 512u, 513u, 44099u, 44100u}) {
    bench.set(0, delay);
    for (const UInt32 block : {512u, all}) {
      bench.reset();
      const auto output = bench.render(input, block);
      for (size_t c = 0; c < 2; ++c) {
        const auto heard = output[c].begin() + delay;
        EXPECT_TRUE(std::all_of(output[c].begin(), heard, [](float sample) { return sample == 0; })) << delay;
        EXPECT_TRUE(std::equal(heard, output[c].end(), input[c].begin())) << delay << " in " << block;
      }
    }
  }
}

TEST(SampleDelay, ChangesWithoutAClickAndIsExactAgainAfterwards) {
  EffectBench bench("sdly");
  // 100 Hz: taps 220 samples apart stand against each other in phase.
  EffectBench::Samples input(2, std::vector<float>(22050));
  for (size_t i = 0; i < input[0].size(); ++i)
    input[0][i] = input[1][i] =
        static_cast<float>(std::sin(2 * std::numbers::pi * 100 * static_cast<double>(i) / 44100));
  bench.render(input, 512);
  bench.set(0, 220);
  auto output = bench.render(input, 512)[0];
  // The sine itself moves by 0.0143 a sample; the fade of 221 samples adds at most 2 / 221.
  for (size_t i = 1; i < output.size(); ++i) ASSERT_LT(std::fabs(output[i] - output[i - 1]), 0.0245f) << i;
  for (size_t i = 600; i < output.size(); ++i) ASSERT_EQ(output[i], input[0][i - 220]) << i;
}
