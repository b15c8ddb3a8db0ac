#include <algorithm>
#include <array>
#include <cmath>
#include <random>

#include "AudioUnitProperties.h"
#include "EditorFixture.h"
#include "jxAUCompAmountView.h"
#include "jxAUCompGraphView.h"
#include "jxAUParamKnobView.h"
#include "mcmp_CrossoverView.h"

namespace {

class Dynamics : public EditorTest {
 protected:
  /// All damage since the last call lies in these views.
  void expectDamageOnlyIn(const std::vector<NSView*>& views) {
    const auto damage = takeDamage();
    EXPECT_FALSE(damage.empty());
    for (const NSRect& rect : damage) {
      bool inside = false;
      for (const NSView* view : views)
        inside |= NSContainsRect(NSInsetRect(frameInWindow(*view), -1, -1), rect);
      EXPECT_TRUE(inside) << NSMinX(rect) << " " << NSMinY(rect) << " " << NSWidth(rect) << " "
                          << NSHeight(rect);
    }
  }
};

TEST_F(Dynamics, EachBandsParametersMoveItsOwnKnobAndCurveAlone) {
  open("mcmp");
  const struct {
    UInt32 parameter;
    const char *knob, *graph;
  } rows[] = {{5, "threshold1", "graphView1"}, {6, "threshold2", "graphView2"},
              {8, "threshold4", "graphView4"}, {11, "headRoom3", "graphView3"},
              {15, "eq1", "graphView1"},       {18, "eq4", "graphView4"}};
  for (const auto& row : rows) {
    automate(row.parameter, row.parameter < 9 ? -50.0f : 9.0f);
    advance(0.1);
    expectDamageOnlyIn({&outlet<>(row.knob), &outlet<>(row.graph)});
  }
  const struct {
    UInt32 parameter;
    const char* knob;
    float value;
  } globals[] = {{0, "preGain", 3}, {1, "postGain", 3}, {13, "attackTime", 0.01f}, {14, "releaseTime", 1}};
  for (const auto& row : globals) {
    automate(row.parameter, row.value);
    advance(0.1);
    expectDamageOnlyIn({&outlet<>(row.knob)});
  }
}

TEST_F(Dynamics, CrossoverHandlesWriteTheirOwnFrequency) {
  open("mcmp");
  auto& view = outlet<mcmp_CrossoverView>("crossoverView");
  const NSRect plot = view.inBounds();
  const auto screen = [&](NSPoint inView) {
    return window->convertBaseToScreen(view.convertPoint_toView(inView, nullptr));
  };
  for (UInt32 i = 0; i < 3; ++i) {
    const float before[] = {parameter(2), parameter(3), parameter(4)};
    const NSPoint handle = view.graphPositionForFreq(parameter(2 + i));
    display_.press(screen(handle));
    display_.moveBy(40, 7);
    display_.moveBy(100, 0, NSShiftKeyMask);
    advance(0.1);
    display_.release();
    EXPECT_NEAR(parameter(2 + i), view.frequencyForX(handle.x + 50), 0.01f);
    for (UInt32 other = 0; other < 3; ++other) {
      if (other != i) {
        EXPECT_EQ(parameter(2 + other), before[other]);
      }
    }
    EXPECT_NEAR(display_.pointer().x, screen(handle).x + 50, 0.01f);
    takeDamage();
  }
  const NSPoint handle = view.graphPositionForFreq(parameter(3));
  display_.press(screen(handle));
  display_.moveBy(NSMinX(plot) + NSWidth(plot) / 2 - handle.x, 0);
  display_.release();
  EXPECT_NEAR(parameter(3), std::sqrt(20.0f * 22050.0f), 0.1f) << "the geometric mean of the axis's ends";
  EXPECT_FLOAT_EQ(view.graphPositionForFreq(20).x, NSMinX(plot));
  EXPECT_FLOAT_EQ(view.graphPositionForFreq(22050).x, NSMaxX(plot));
  for (const float frequency : {20.0f, 441.0f, 22050.0f})
    EXPECT_NEAR(view.frequencyForX(view.graphPositionForFreq(frequency).x), frequency, frequency * 1e-4f);
}

TEST_F(Dynamics, FunnelsLeadFromTheAxisToTheQuarters) {
  open("mcmp");
  auto& view = outlet<mcmp_CrossoverView>("crossoverView");
  const NSRect plot = view.inBounds();
  const unsigned hues[] = {0xe67060, 0xffa040, 0x60b060, 0x60a0d0};
  const auto nearest = [&](NSPoint inView) {
    const unsigned c = colorAt(view.convertPoint_toView(inView, nullptr));
    int best = 0, least = 1 << 30;
    for (int i = 0; i < 4; ++i) {
      int distance = 0;
      for (const int shift : {0, 8, 16}) {
        const int d = static_cast<int>(c >> shift & 255) - static_cast<int>(hues[i] >> shift & 255);
        distance += d * d;
      }
      if (distance < least) {
        least = distance;
        best = i;
      }
    }
    return best;
  };
  const float above[] = {50, 300, 1500, 10000};
  for (int band = 0; band < 4; ++band) {
    EXPECT_EQ(nearest({view.graphPositionForFreq(above[band]).x, NSMaxY(plot) - 12}), band);
    EXPECT_EQ(
        nearest({NSMinX(plot) + (static_cast<float>(band) + 0.5f) * NSWidth(plot) / 4 + 3, NSMinY(plot) + 5}),
        band);
  }
}

TEST_F(Dynamics, CurveStandsWhereItsParametersSay) {
  open("dcmp");
  auto& graph = outlet<jxAUCompGraphView>("compGraphView");
  const auto filled = [&](float in, float out) {
    const NSPoint p = graph.pointForIndB_outdB(in, out);
    return (colorAt(graph.convertPoint_toView(p, nullptr)) >> 16) < 0xc0;
  };
  const struct {
    float threshold, headroom, ratio, expThreshold, gain;
    float in, out;  // on the curve
  } rows[] = {{-20, 5, 1, -120, 0, -33, -33}, {-20, 5, 1, -120, 0, 7, -17.3f},
              {-20, 5, 3, -27, 0, -29, -33},  {-20, 5, 3, 0, 0, -23, -29},
              {10, 40, 1, -120, 0, 26, 26},   {-20, 5, 1, -120, 10, 7, -7.3f}};
  for (const auto& row : rows) {
    const float values[] = {row.threshold, row.headroom, row.ratio, row.expThreshold};
    for (UInt32 id = 0; id < 4; ++id) automate(id, values[id]);
    automate(6, row.gain);
    advance(0.1);
    EXPECT_TRUE(filled(row.in, row.out - 1.5f)) << row.in;
    EXPECT_FALSE(filled(row.in, row.out + 1.5f)) << row.in;
  }
}

/// A meter of a number of 0 to 10, in a window.
class Meter : public Dynamics {
 protected:
  void watch(int samples) {
    unit = openTestUnit();
    meter->awakeFromNib();
    meter->startWatchingAUparam_numSamples(addressOf(unit, gainParameter), samples);
    show(meter);
  }
  void push(float value, int times = 1) {
    AudioUnitSetParameter(unit.get(), gainParameter, kAudioUnitScope_Global, 0, value, 0);
    for (int i = 0; i < times; ++i) meter->update();
  }
  bool filled(float x, float level) { return (colorAt({x, meter->yForValue(level)}) >> 16) < 0xc0; }
  std::shared_ptr<jxAUCompAmountView> meter =
      std::make_shared<jxAUCompAmountView>(NSMakeRect(0, 0, 236, 116));
};

TEST_F(Meter, ScrollsFromTheRightAndForgetsTheOldest) {
  watch(10);
  const NSRect plot = meter->inBounds();
  const float step = NSWidth(plot) / 10;
  const auto at = [&](int age) { return NSMaxX(plot) - static_cast<float>(age) * step; };
  EXPECT_FALSE(filled(at(1), 1));
  push(9);
  EXPECT_TRUE(filled(at(0) - 3, 7));
  EXPECT_FALSE(filled(at(1) - 3, 2));
  for (int age = 1; age < 10; ++age) {
    push(0);
    EXPECT_TRUE(filled(at(age), 7)) << age;
    EXPECT_FALSE(filled(at(age) - step, 2)) << age;
  }
  push(0);
  for (int age = 1; age < 10; ++age) EXPECT_FALSE(filled(at(age), 2)) << age;
  push(10, 10);
  EXPECT_TRUE(filled(at(5), 9.3f));
  EXPECT_FALSE(filled(at(5), 10.7f));
}

TEST_F(Meter, IsMarkedOnlyWhileSomethingWouldChange) {
  watch(10);
  push(0, 3);
  advance(0.1);
  EXPECT_TRUE(takeDamage().empty()) << "still all zero";
  push(5);
  advance(0.1);
  EXPECT_FALSE(takeDamage().empty());
  for (int i = 0; i < 9; ++i) {
    push(5);
    advance(0.1);
    EXPECT_FALSE(takeDamage().empty()) << i;
  }
  push(5);
  advance(0.1);
  EXPECT_TRUE(takeDamage().empty());
}

/// Its list of parameters can change under a listener's eyes.
class ChangingEffect : public SilentEffect {
 public:
  ChangingEffect() : SilentEffect(rows) {}
  void setSecond(AudioUnitParameterID id) {
    rows[1].id = id;
    announcePropertyChange(kAudioUnitProperty_ParameterList);
  }

 private:
  static inline AUParameterRow rows[] = {{0, "gain", kAudioUnitParameterUnit_Generic, 0, 20, 0},
                                         {1001, "amount", kAudioUnitParameterUnit_Decibels, 0, 20, 10}};
};

TEST_F(Meter, FollowsTheListOfParameters) {
  unit = openUnit(RegisterComponent(
      {FourCharCode("aufx"), FourCharCode("chng"), FourCharCode("Test")}, "Test: AUChanging", 1,
      +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<ChangingEffect>(); }));
  auto& effect = dynamic_cast<ChangingEffect&>(*unit);
  meter->awakeFromNib();
  meter->startWatchingAUparam_numSamples(addressOf(unit, 1000), 4);
  show(meter);
  const float x = NSMaxX(meter->inBounds()) - 4;
  const auto updates = [&] {
    for (int i = 0; i < 4; ++i) meter->update();
    advance(0.1);
    return filled(x, 4);
  };
  EXPECT_FALSE(updates()) << "there is no such parameter";
  effect.setSecond(1000);
  advance(0.1);
  EXPECT_TRUE(updates());
  effect.setSecond(1001);
  advance(0.1);
  takeDamage();
  EXPECT_TRUE(updates()) << "the history stays";
  EXPECT_TRUE(takeDamage().empty()) << "and stands still";
}

TEST_F(Dynamics, TheZeroLinesAreTheStrongOnes) {
  open("mcmp");
  // A line offered earlier keeps its place, so 0 dB must come first to be drawn at full weight.
  auto& graph = outlet<jxAUCompGraphView>("graphView1");
  automate(5, -100);
  automate(15, -20);
  advance(0.1);
  const auto darkness = [&](NSPoint p) {
    return 255 - static_cast<int>(colorAt(graph.convertPoint_toView(p, nullptr)) & 255);
  };
  const float y0 = graph.pointForIndB_outdB(0, 0).y, y40 = graph.pointForIndB_outdB(0, -40).y;
  const float x0 = graph.pointForIndB_outdB(0, 0).x, x40 = graph.pointForIndB_outdB(-40, 0).x;
  const NSPoint free = graph.pointForIndB_outdB(-90, -10);
  const int glass = darkness({free.x, (y0 + y40) / 2});
  EXPECT_GT(darkness({free.x, y0}) - glass, (darkness({free.x, y40}) - glass) * 3 / 2);
  EXPECT_GT(darkness({x0, y40 + 6}) - glass, (darkness({x40, y40 + 6}) - glass) * 3 / 2);
}

TEST_F(Dynamics, ATickDrawsTheMetersOfAPlayingEffectAndNothingElse) {
  std::mt19937 generator(1);
  const AURenderCallbackStruct noise{
      [](void* random, UInt32*, const AudioTimeStamp*, UInt32, UInt32 frames,
         AudioBufferList* data) -> OSStatus {
        for (UInt32 c = 0; c < data->mNumberBuffers; ++c)
          for (UInt32 i = 0; i < frames; ++i)
            static_cast<float*>(data->mBuffers[c].mData)[i] =
                static_cast<float>((*static_cast<std::mt19937*>(random))()) / 2147483648.0f - 1;
        return noErr;
      },
      &generator};
  const struct {
    const char* effect;
    std::vector<std::string> meters;
    double tick;
  } rows[] = {{"mcmp", {"amountView1", "amountView2", "amountView3", "amountView4"}, 0.05},
              {"dcmp", {"compAmountView"}, 0.05},
              {"lmtr", {"amountView"}, 0.04}};
  for (const auto& row : rows) {
    open(row.effect);
    std::vector<NSView*> meters;
    for (const std::string& name : row.meters) meters.push_back(&outlet<>(name));
    advance(0.5);
    EXPECT_TRUE(takeDamage().empty()) << "nothing plays";
    AudioUnitSetProperty(unit.get(), kAudioUnitProperty_SetRenderCallback, kAudioUnitScope_Input, 0, &noise,
                         sizeof noise);
    AudioUnitInitialize(unit.get());
    if (row.effect[0] == 'l') automate(2, 20);
    for (int block = 0; block < 4; ++block) {
      AudioBufferList data{.mNumberBuffers = 2, .mBuffers = {}};
      ASSERT_EQ(AudioUnitRender(unit.get(), nullptr, nullptr, 0, 2048, &data), noErr);
      if (block < 2) advance(0.1);  // the limiter is heard after its look-ahead
    }
    takeDamage();
    advance(row.tick);
    const auto damage = takeDamage();
    for (NSView* meter : meters) {
      const NSRect frame = frameInWindow(*meter);
      EXPECT_EQ(
          std::count_if(damage.begin(), damage.end(), [&](NSRect r) { return NSIntersectsRect(r, frame); }),
          1)
          << row.effect << " " << meter->isa().name();
    }
    EXPECT_EQ(damage.size(), meters.size());
    close();
  }
}

TEST_F(Dynamics, SurvivesAStormOfChangesAndManyLives) {
  std::mt19937 random(1);
  for (int life = 0; life < 15; ++life) {
    open(std::array{"mcmp", "dcmp", "lmtr"}[life % 3]);
    UInt32 size = 0;
    AudioUnitGetPropertyInfo(unit.get(), kAudioUnitProperty_ParameterList, 0, 0, &size, nullptr);
    std::vector<AudioUnitParameterID> ids(size / sizeof(AudioUnitParameterID));
    AudioUnitGetProperty(unit.get(), kAudioUnitProperty_ParameterList, 0, 0, ids.data(), &size);
    for (int i = 0; i < 700; ++i) {
      automate(ids[random() % ids.size()],
               std::ldexp(static_cast<float>(random()) / 4294967296.0f - 0.5f, 17));
      if (i % 50 == 0) advance(0.06);
    }
    close();
  }
  EXPECT_EQ(log_, Lines());
}

}  // namespace
