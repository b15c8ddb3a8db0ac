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
    bool accepted, full;  // full: drawn at full weight, with its label
  } rows[] = {{true, 7, false, false}, {true, 8, true, false},   {true, 14, true, false},
              {true, 15, true, true},  {false, 7, false, false}, {false, 29, true, false},
              {false, 30, true, true}};
  for (const auto& row : rows) {
    for (const float direction : {1.0f, -1.0f}) {
      const auto graph = make();
      ASSERT_TRUE(add(*graph, row.horizontal, 100.2f));
      const Bitmap before = drawn(*graph);
      const float place = 100.2f + direction * row.gap;
      EXPECT_EQ(add(*graph, row.horizontal, place), row.accepted) << row.gap;
      const Bitmap after = drawn(*graph);
      const int changed = differences(before, after, graph->bounds());
      if (!row.accepted) {
        EXPECT_EQ(changed, 0) << row.gap;
        continue;
      }
      const NSRect label =
          row.horizontal ? NSMakeRect(0, place - 6, 27, 12) : NSMakeRect(place - 6, 188, 12, 12);
      EXPECT_EQ(differences(before, after, label) > 8, row.full) << row.horizontal << " " << row.gap;
      // How much of the line's colour (alpha 0.7) covers what was there.
      const float x = row.horizontal ? 160 : place, y = row.horizontal ? place : 100;
      const float ground = at(before, x, y)[0];
      EXPECT_NEAR((ground - at(after, x, y)[0]) / (ground - 107), row.full ? 0.7 : 0.42, 0.04) << row.gap;
    }
  }
}

TEST_F(GraphDisplay, LinesSnapToPixelCentresAndStayOffTheEdges) {
  const std::pair<float, int> rows[] = {{50.0f, 50}, {50.99f, 50}, {182.9f, 182}, {183, -1}, {11, -1}};
  for (const auto& [y, pixel] : rows) {
    const auto graph = make();
    const Bitmap before = drawn(*graph);
    EXPECT_TRUE(add(*graph, true, y)) << y;
    const Bitmap after = drawn(*graph);
    for (int row = 0; row < 200; ++row) {
      const auto line = static_cast<float>(row);
      EXPECT_EQ(at(before, 160, line) != at(after, 160, line), row == pixel) << y << " pixel " << row;
    }
  }
}

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
