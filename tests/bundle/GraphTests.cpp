#include <gtest/gtest.h>

#include "EditorStage.h"
#include "jxAUCompAmountView.h"
#include "jxAUGraphDisplay.h"

namespace {

class GraphDisplay : public testing::Test, public EditorStage {
 protected:
  /// A graph of 300 by 200 points: its plot is (28, 8, 264, 179).
  static std::shared_ptr<jxAUGraphDisplay> make() {
    auto graph = std::make_shared<jxAUGraphDisplay>(NSMakeRect(0, 0, 300, 200));
    graph->awakeFromNib();
    return graph;
  }
  static bool add(jxAUGraphDisplay& graph, bool horizontal, float place) {
    return horizontal ? graph.addReferenceLineFrom_to_text_weight({28, place}, {292, place}, "88", 1)
                      : graph.addReferenceLineFrom_to_text_weight({place, 8}, {place, 187}, "88", 1);
  }
};

TEST_F(GraphDisplay, LinesThatStandCloseGetThinLoseTheirLabelsAndAreRefused) {
  const struct {
    bool horizontal;
    float gap;
    double weight;  // of the line that comes second; only with 0.7 it has its label
  } rows[] = {{true, 7, 0},    {true, -7, 0},     {true, 8, 0.42},   {true, 14, 0.42},
              {true, 15, 0.7}, {false, 29, 0.42}, {false, -30, 0.7}, {false, 7, 0}};
  for (const auto& row : rows) {
    const auto graph = make();
    ASSERT_TRUE(add(*graph, row.horizontal, 100.2f));
    const Bitmap before = drawn(*graph);
    const float place = 100.2f + row.gap;
    EXPECT_EQ(add(*graph, row.horizontal, place), row.weight > 0) << row.gap;
    const Bitmap after = drawn(*graph);
    const NSRect label =
        row.horizontal ? NSMakeRect(0, place - 6, 27, 12) : NSMakeRect(place - 6, 188, 12, 12);
    EXPECT_EQ(differences(before, after, label) > 8, row.weight == 0.7) << row.horizontal << " " << row.gap;
    // How much of the line's colour covers what was there.
    const float x = row.horizontal ? 160 : place, y = row.horizontal ? place : 100;
    const float ground = at(before, x, y)[0];
    EXPECT_NEAR((ground - at(after, x, y)[0]) / (ground - 107), row.weight, 0.04) << row.gap;
  }
}

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
  push(9);
  for (int age = 1; age < 10; ++age) {
    push(0);
    const float place = NSMaxX(plot) - static_cast<float>(age) * step;
    EXPECT_TRUE(filled(place, 7)) << age;
    EXPECT_FALSE(filled(place - step, 2)) << age;
  }
  push(0);
  EXPECT_FALSE(filled(NSMinX(plot) + step, 2));
  push(10, 10);
  EXPECT_TRUE(filled(NSMaxX(plot) - step, 9.3f));
  EXPECT_FALSE(filled(NSMaxX(plot) - step, 10.7f));
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
}

}  // namespace
