#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "AllocationCount.h"
#include "EditorStage.h"
#include "ImpulseAUwrapper.h"
#include "NSException.h"
#include "jxAUFreqResponseView.h"

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

/// Parameter 0 is the gain of the left channel, parameters 1 and 3 together that of the right one.
class Gains : public AUEffectBase {
 public:
  Gains()
      : AUEffectBase({.parameters = rows, .presets = {}, .minimumSampleRate = 500, .monoToStereo = true}) {}
  static inline const Gains* rendered = nullptr;
  static inline float added = 0;  // to every sample of the left channel

 private:
  static inline constexpr AUParameterRow rows[] = {{0, "left", kAudioUnitParameterUnit_Generic, 0, 10, 1},
                                                   {1, "right", kAudioUnitParameterUnit_Generic, 0, 10, 1},
                                                   {3, "far", kAudioUnitParameterUnit_Generic, 0, 10, 1}};
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const> channels, UInt32 frames) override {
    rendered = this;
    float* left = channels[0];
    float* right = channels[channels.size() - 1];
    for (UInt32 i = 0; i < frames; ++i) {
      const float in = left[i];
      left[i] = in * value(0) + added;
      if (right != left) right[i] = in * value(1) * value(3);
    }
  }
};

class Measure : public testing::Test, public EditorStage {
 protected:
  Measure() {
    Gains::added = 0;
    unit = openUnit(RegisterComponent(
        {FourCharCode("aufx"), FourCharCode("gain"), FourCharCode("Test")}, "Test: AUGains", 1,
        +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<Gains>(); }));
  }
};

TEST_F(Measure, AnEffectThatChangesNothingIsFlat) {
  ImpulseAUwrapper renderer(unit.get(), 0, 11, false);
  ASSERT_EQ(renderer.bufferSize(), 2048u);
  const float* levels = renderer.freqResponse();
  EXPECT_NEAR(levels[0], 3.01f, 0.01f) << "0 Hz and half the rate together";
  for (int k = 1; k < 2048; ++k) EXPECT_NEAR(levels[k], 0, 0.001f) << k;
  set(0, 0);
  EXPECT_EQ(renderer.freqResponse()[100], -infinity);
  set(0, 10);
  EXPECT_NEAR(renderer.freqResponse()[100], 20, 0.001f);
  EXPECT_NE(Gains::rendered, unit.get()) << "the host's instance is left alone";
}

TEST_F(Measure, ReadsTheLastChannelWithOverridesAndWithoutAllocating) {
  ImpulseAUwrapper renderer(unit.get(), 500, 4, true);
  set(0, 2);
  set(1, 3);
  set(3, 4);
  EXPECT_EQ(renderer.renderImpulse()[0], 3);
  renderer.setParameterOverrides(std::make_shared<ImpulseAUwrapper::Overrides>(
      ImpulseAUwrapper::Overrides{{1, 5.0f}, {3, 9.0f}}));  // the last beyond the gap, where copying ends
  const size_t before = allocationCount();
  EXPECT_EQ(renderer.renderImpulse()[0], 5);
  renderer.freqResponse();
  EXPECT_EQ(allocationCount(), before);
  renderer.setParameterOverrides(nullptr);
  EXPECT_EQ(renderer.renderImpulse()[0], 3);
}

TEST_F(Measure, SaysOnceThatAnEffectRendersNoNumbersAndWhichStepFailed) {
  ImpulseAUwrapper renderer(unit.get(), 0, 10, false);
  for (const float fault : {NAN, infinity, NAN}) {
    Gains::added = fault;
    renderer.freqResponse();
  }
  EXPECT_EQ(log, Lines({"The effect renders samples that are not finite; its graph shows what there is."}));
  EXPECT_THROW(ImpulseAUwrapper(unit.get(), -1, 4, false), NSException);
  EXPECT_THROW(ImpulseAUwrapper(nullptr, 0, 4, false), NSException);
  EXPECT_NE(log.at(1).find("Error setting samplerate"), std::string::npos);
  EXPECT_NE(log.at(2).find("Error getting component description"), std::string::npos);
}

/// Levels given by hand, drawn in a window.
class FreqResponse : public testing::Test, public EditorStage {
 protected:
  void make(float minFreq, float maxFreq) {
    graph->awakeFromNib();
    graph->setOrder_minFreq_maxFreq_minDB_maxDB(11, minFreq, maxFreq, 0, 0);
    show(graph);
  }
  bool filled(float frequency, float level) const {
    return (colorAt(graph->graphPositionForFreq_gain(frequency, level)) >> 16) < 0xc0;
  }
  std::shared_ptr<jxAUFreqResponseView> graph =
      std::make_shared<jxAUFreqResponseView>(NSMakeRect(0, 0, 500, 205));
};

TEST_F(FreqResponse, MapsItsAxesBothWays) {
  make(20, 30000);
  const NSRect plot = graph->inBounds();
  EXPECT_FLOAT_EQ(graph->freqForXPos(NSMinX(plot)), 50);
  EXPECT_FLOAT_EQ(graph->freqForXPos(NSMaxX(plot)), 22050);
  EXPECT_FLOAT_EQ(graph->gainForYPos(NSMaxY(plot)), 25);
  EXPECT_NEAR(graph->graphPositionForFreq_gain(1000, 0).x, NSMinX(plot) + 0.4920f * NSWidth(plot), 0.05f);
  EXPECT_FLOAT_EQ(graph->graphPositionForFreq_gain(1000, 0).y, NSMinY(plot) + NSHeight(plot) / 2);
  EXPECT_FLOAT_EQ(graph->widthForOctaves(std::log2(441.0f)), NSWidth(plot));
  const float v[] = {1, 2, 4, 8, 16};
  EXPECT_EQ(jxAUFreqResponseView::interpolateValues_position(v, 3.25f), 10);
}

TEST_F(FreqResponse, FillsBelowTheLevelsWhateverTheyAre) {
  make(0, 0);
  std::vector<float> levels(2048);
  for (size_t i = 0; i < levels.size(); ++i) levels[i] = i < 100 ? 10 : -10;  // 1077 Hz
  graph->setValues(levels.data());
  EXPECT_TRUE(filled(950, 8.8f));
  EXPECT_FALSE(filled(950, 11.2f));
  EXPECT_TRUE(filled(1250, -11.2f));
  EXPECT_FALSE(filled(1250, -8.8f));
  for (const float level : {NAN, -infinity, infinity}) {
    std::fill(levels.begin(), levels.end(), level);
    graph->setValues(levels.data());
    EXPECT_EQ(filled(1500, 2), level == infinity) << level;
  }
  EXPECT_EQ(log, Lines());
}

}  // namespace
