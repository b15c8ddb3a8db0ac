#include "jxAUGraphDisplay.h"

#include <gtest/gtest.h>

#include "EditorStage.h"

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
  const struct {
    bool horizontal;
    float place;
    int pixel;  // the row or column; -1: not drawn
  } rows[] = {{true, 50.0f, 50},   {true, 50.99f, 50}, {false, 90.7f, 90}, {true, 11, -1},
              {true, 182.9f, 182}, {true, 183, -1},    {false, 31, -1},    {false, 287.9f, 287}};
  for (const auto& row : rows) {
    const auto graph = make();
    const Bitmap before = drawn(*graph);
    EXPECT_TRUE(add(*graph, row.horizontal, row.place)) << row.place;
    const Bitmap after = drawn(*graph);
    EXPECT_EQ(differences(before, after, graph->bounds()) > 0, row.pixel >= 0) << row.place;
    for (int off = -1; row.pixel >= 0 && off <= 1; ++off) {
      const auto p = static_cast<float>(row.pixel + off);
      const float x = row.horizontal ? 160 : p, y = row.horizontal ? p : 100;
      EXPECT_EQ(at(before, x, y) != at(after, x, y), off == 0) << row.place << " pixel " << p;
    }
    // What was left out is not recorded: 2 points further in there is room.
    if (row.pixel < 0) {
      EXPECT_TRUE(add(*graph, row.horizontal, row.place < 100 ? row.place + 2 : row.place - 2));
      EXPECT_GT(differences(before, drawn(*graph), graph->bounds()), 0) << row.place;
    }
  }
}

}  // namespace
