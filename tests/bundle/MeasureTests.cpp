#include <array>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>
#include <random>

#include "AllocationCount.h"
#include "EditorFixture.h"
#include "ImpulseAUwrapper.h"
#include "NSException.h"
#include "NSGraphicsContext.h"
#include "jxAUCurveOutline.h"
#include "jxAUFreqResponseView.h"

namespace {

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

class Measure : public EditorTest {
 protected:
  Measure() {
    Gains::added = 0;
    unit = openUnit(RegisterComponent(
        {FourCharCode("aufx"), FourCharCode("gain"), FourCharCode("Test")}, "Test: AUGains", 1,
        +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<Gains>(); }));
  }
};

TEST(VdspFFT, TransformsAsAPlainSumDoesTwice) {
  constexpr int n = 64;
  std::minstd_rand random(1);
  float input[n], real[n / 2], imaginary[n / 2], out[n];
  for (float& x : input) x = static_cast<float>(random() % 2000) / 1000 - 1;
  VdspFFT fft(6);
  const DSPSplitComplex a = fft.forwardFFT({real, imaginary}, input);
  const auto bin = [&](int k) {
    std::complex<double> sum = 0;
    for (int j = 0; j < n; ++j) sum += std::polar<double>(input[j], -2 * std::numbers::pi * j * k / n);
    return 2.0 * sum;
  };
  EXPECT_NEAR(a.realp[0], bin(0).real(), 1e-5);
  EXPECT_NEAR(a.imagp[0], bin(n / 2).real(), 1e-5);
  for (int k = 1; k < n / 2; ++k) {
    EXPECT_NEAR(a.realp[k], bin(k).real(), 1e-5) << k;
    EXPECT_NEAR(a.imagp[k], bin(k).imag(), 1e-5) << k;
  }
  fft.inverseFFT(a, out);
  for (int i = 0; i < n; ++i) EXPECT_NEAR(out[i], input[i], 1e-6) << i;
}

TEST_F(Measure, AnEffectThatChangesNothingIsFlat) {
  ImpulseAUwrapper renderer(unit.get(), 0, 11, false);
  ASSERT_EQ(renderer.bufferSize(), 2048u);
  const float* levels = renderer.freqResponse();
  EXPECT_NEAR(levels[0], 3.01f, 0.01f) << "0 Hz and half the rate together";
  for (int k = 1; k < 2048; ++k) EXPECT_NEAR(levels[k], 0, 0.001f) << k;
  automate(0, 0);
  EXPECT_EQ(renderer.freqResponse()[100], -std::numeric_limits<float>::infinity());
  automate(0, 10);
  EXPECT_NEAR(renderer.freqResponse()[100], 20, 0.001f);
  EXPECT_NE(Gains::rendered, unit.get()) << "the host's instance is left alone";
}

TEST_F(Measure, ReadsTheLastChannelWithOverridesAndWithoutAllocating) {
  ImpulseAUwrapper renderer(unit.get(), 500, 4, true);
  automate(0, 2);
  automate(1, 3);
  automate(3, 4);
  EXPECT_EQ(renderer.renderImpulse()[0], 3);
  const auto overrides = std::make_shared<ImpulseAUwrapper::Overrides>();
  (*overrides)[1] = 5;
  (*overrides)[3] = 9;  // beyond the gap, where copying ends
  renderer.setParameterOverrides(overrides);
  const size_t before = allocationCount();
  EXPECT_EQ(renderer.renderImpulse()[0], 5);
  renderer.freqResponse();
  EXPECT_EQ(allocationCount(), before);
  renderer.setParameterOverrides(nullptr);
  EXPECT_EQ(renderer.renderImpulse()[0], 3);
}

TEST_F(Measure, SaysOnceThatAnEffectRendersNoNumbers) {
  ImpulseAUwrapper renderer(unit.get(), 0, 10, false);
  for (const float fault : {NAN, INFINITY, NAN}) {
    Gains::added = fault;
    renderer.freqResponse();
  }
  EXPECT_EQ(log_, Lines({"The effect renders samples that are not finite; its graph shows what there is."}));
}

TEST_F(Measure, SaysWhichStepFailed) {
  const struct {
    double rate;
    bool closed;
    const char* reason;
  } rows[] = {{-1, false, "Error setting samplerate"}, {0, true, "Error getting component description"}};
  for (const auto& row : rows) {
    try {
      ImpulseAUwrapper(row.closed ? nullptr : unit.get(), row.rate, 4, false);
      FAIL() << row.reason;
    } catch (const NSException& exception) {
      EXPECT_EQ(exception.reason(), row.reason);
    }
  }
}

/// Levels given by hand, drawn in a window.
class FreqResponse : public EditorTest {
 protected:
  void show(float minFreq = 0, float maxFreq = 0) {
    graph->awakeFromNib();
    graph->setOrder_minFreq_maxFreq_minDB_maxDB(11, minFreq, maxFreq, 0, 0);
    EditorTest::show(graph);
  }
  bool filled(float frequency, float level) const {
    return (colorAt(graph->graphPositionForFreq_gain(frequency, level)) >> 16) < 0xc0;
  }
  std::shared_ptr<jxAUFreqResponseView> graph =
      std::make_shared<jxAUFreqResponseView>(NSMakeRect(0, 0, 500, 205));
};

TEST_F(FreqResponse, MapsItsAxesBothWays) {
  show(20, 30000);
  const NSRect plot = graph->inBounds();
  EXPECT_FLOAT_EQ(graph->freqForXPos(NSMinX(plot)), 50);
  EXPECT_FLOAT_EQ(graph->freqForXPos(NSMaxX(plot)), 22050);
  EXPECT_FLOAT_EQ(graph->gainForYPos(NSMaxY(plot)), 25);
  EXPECT_NEAR(graph->graphPositionForFreq_gain(1000, 0).x, NSMinX(plot) + 0.4920f * NSWidth(plot), 0.05f);
  EXPECT_FLOAT_EQ(graph->graphPositionForFreq_gain(1000, 0).y, NSMinY(plot) + NSHeight(plot) / 2);
  EXPECT_FLOAT_EQ(graph->widthForOctaves(std::log2(441.0f)), NSWidth(plot));
  const float v[] = {1, 2, 4, 8, 16};
  EXPECT_EQ(jxAUFreqResponseView::interpolateValues_position(v, 3), 8);
  EXPECT_EQ(jxAUFreqResponseView::interpolateValues_position(v, 3.25f), 10);
}

TEST_F(FreqResponse, FillsBelowTheLevelsWhateverTheyAre) {
  show();
  std::vector<float> levels(2048);
  for (size_t i = 0; i < levels.size(); ++i) levels[i] = i < 100 ? 10 : -10;  // 1077 Hz
  graph->setValues(levels.data());
  EXPECT_TRUE(filled(950, 8.8f));
  EXPECT_FALSE(filled(950, 11.2f));
  EXPECT_TRUE(filled(1250, -11.2f));
  EXPECT_FALSE(filled(1250, -8.8f));
  const float infinity = std::numeric_limits<float>::infinity();
  for (const float level : {NAN, -infinity, infinity}) {
    std::fill(levels.begin(), levels.end(), level);
    graph->setValues(levels.data());
    EXPECT_EQ(filled(1500, 2), level == infinity) << level;
  }
  EXPECT_EQ(log_, Lines());
}

TEST(CurveOutline, LooksLikeTheFullCurve) {
  const auto drawnWith = [](const std::vector<NSPoint>& points, float tolerance, int scale) {
    Bitmap bitmap({464, 164}, static_cast<float>(scale));
    const NSGraphicsContext context(bitmap);
    NSColor::whiteColor()->set();
    NSBezierPath::fillRect({{0, 0}, {464, 164}});
    const auto path = NSBezierPath::bezierPath();
    path->moveToPoint({0, 0});
    jxAUCurveOutline outline(*path, tolerance / static_cast<float>(scale));
    for (const NSPoint& p : points) tolerance == 0 ? path->lineToPoint(p) : outline.add(p);
    outline.end();
    path->lineToPoint({464, 0});
    jxAUFreqResponseView::graphColor()->set();
    path->fill();
    return bitmap;
  };
  std::minstd_rand random(1);
  // The last two are thickets, which have 16 samples in a pixel; three of them make 24 grey steps.
  const std::pair<std::function<float(float)>, int> curves[] = {
      {[](float x) { return 80 + 70 * std::sin(x / 40); }, 8},
      {[](float x) { return 20 + 120 / (1 + (x - 300) * (x - 300)); }, 8},
      {[](float x) { return x < 250 ? 130.0f : 30.0f; }, 8},
      {[](float x) { return 80 + 60 * std::sin(x * x / 100); }, 24},
      {[&](float) { return static_cast<float>(random() % 160); }, 24},
  };
  for (const auto& [curve, allowed] : curves) {
    std::vector<NSPoint> points;
    for (int i = 1; i < 2048; ++i) {
      const float x = (std::log2(static_cast<float>(i)) - 2.2f) * 464 / 8.8f;
      points.push_back({x, curve(x)});
    }
    for (const int scale : {1, 2}) {
      const Bitmap full = drawnWith(points, 0, scale), fast = drawnWith(points, 0.05f, scale);
      int most = 0;
      double sum = 0;
      for (int y = 0; y < 164 * scale; ++y)
        for (int x = 0; x < 464 * scale; ++x) {
          const float s = static_cast<float>(scale);
          const NSPoint p{(static_cast<float>(x) + 0.5f) / s, (static_cast<float>(y) + 0.5f) / s};
          const int d = std::abs(at(full, p.x, p.y)[0] - at(fast, p.x, p.y)[0]);
          most = std::max(most, d);
          sum += d;
        }
      EXPECT_LE(most, allowed);
      EXPECT_LE(sum / (464 * 164 * scale * scale), 0.5);
    }
  }
}

}  // namespace
