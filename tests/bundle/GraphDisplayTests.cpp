#include "jxAUGraphDisplay.h"

#include "BundleFixture.h"
#include "NSGraphicsContext.h"
#include "NSImageUtils.h"

namespace {

class GraphDisplayTests : public BundleFixture {
 protected:
  /// A graph of 300 by 200 points: its plot is (28, 8, 264, 179).
  static std::shared_ptr<jxAUGraphDisplay> make() {
    auto graph = std::make_shared<jxAUGraphDisplay>(NSMakeRect(0, 0, 300, 200));
    graph->awakeFromNib();
    return graph;
  }
  static bool add(jxAUGraphDisplay& graph, bool horizontal, float place, const char* text = "88") {
    return horizontal ? graph.addReferenceLineFrom_to_text_weight({28, place}, {292, place}, text, 1)
                      : graph.addReferenceLineFrom_to_text_weight({place, 8}, {place, 187}, text, 1);
  }
  static int ink(const Bitmap& before, const Bitmap& after, bool horizontal, float place, float size,
                 bool label) {
    const NSRect line = horizontal ? NSMakeRect(32, place - size / 2, 256, size)
                                   : NSMakeRect(place - size / 2, 12, size, 171);
    const NSRect text =
        horizontal ? NSMakeRect(0, place - size / 2, 27, size) : NSMakeRect(place - size / 2, 188, size, 12);
    return differences(before, after, label ? text : line);
  }
};

TEST_F(GraphDisplayTests, linesThatStandCloseGetThinLoseTheirLabelsAndAreRefused) {
  const struct {
    bool horizontal;
    float gap;
    bool accepted, full, labelled;
  } rows[] = {
      {true, 7, false, false, false},  {true, 8, true, false, false},  {true, 14, true, false, false},
      {true, 15, true, true, true},    {true, 29, true, true, true},   {true, 30, true, true, true},
      {false, 7, false, false, false}, {false, 8, true, false, false}, {false, 15, true, false, false},
      {false, 29, true, false, false}, {false, 30, true, true, true},
  };
  for (const auto& row : rows) {
    for (const float direction : {1.0f, -1.0f}) {
      const auto graph = make();
      const Bitmap bare = drawn(*graph);
      ASSERT_TRUE(add(*graph, row.horizontal, 100.2f));
      const Bitmap before = drawn(*graph);
      EXPECT_GT(ink(bare, before, row.horizontal, 100, 12, true), 8) << "the first one's label";
      const float place = 100.2f + direction * row.gap;
      EXPECT_EQ(add(*graph, row.horizontal, place), row.accepted) << row.gap;
      const Bitmap after = drawn(*graph);
      const int lineInk = ink(before, after, row.horizontal, place, 3, false);
      EXPECT_EQ(lineInk > 0, row.accepted) << row.gap;
      EXPECT_EQ(ink(before, after, row.horizontal, place, 12, true) > 8, row.labelled)
          << (row.horizontal ? "horizontal " : "vertical ") << row.gap;
      if (!row.accepted) {
        EXPECT_EQ(differences(before, after, graph->bounds()), 0);
        continue;
      }
      // How much of the line's colour (alpha 0.7) covers what was there.
      const float x = row.horizontal ? 160 : place, y = row.horizontal ? place : 100;
      const float ground = at(before, x, y)[0];
      EXPECT_NEAR((ground - at(after, x, y)[0]) / (ground - 107), row.full ? 0.7 : 0.42, 0.04) << row.gap;
    }
  }
}

TEST_F(GraphDisplayTests, linesSnapToPixelCentresAndStayOffTheEdges) {
  const struct {
    bool horizontal;
    float place;
    bool drawn;
    int pixel;  // the row or column
  } rows[] = {
      {true, 50.0f, true, 50}, {true, 50.99f, true, 50},   {false, 90.7f, true, 90}, {true, 11, false, 0},
      {true, 12, true, 12},    {true, 182.9f, true, 182},  {true, 183, false, 0},    {false, 31, false, 0},
      {false, 32, true, 32},   {false, 287.9f, true, 287}, {false, 288, false, 0},
  };
  for (const auto& row : rows) {
    const auto graph = make();
    const Bitmap before = drawn(*graph);
    EXPECT_TRUE(add(*graph, row.horizontal, row.place)) << row.place;
    const Bitmap after = drawn(*graph);
    EXPECT_EQ(differences(before, after, graph->bounds()) > 0, row.drawn) << row.place;
    for (int off = -1; row.drawn && off <= 1; ++off) {
      const auto p = static_cast<float>(row.pixel + off);
      const bool changed =
          row.horizontal ? at(before, 160, p) != at(after, 160, p) : at(before, p, 100) != at(after, p, 100);
      EXPECT_EQ(changed, off == 0) << row.place << " pixel " << p;
    }
    // What was left out is not recorded: 2 points further in there is room.
    if (!row.drawn) {
      EXPECT_TRUE(add(*graph, row.horizontal, row.place < 100 ? row.place + 2 : row.place - 2));
      EXPECT_GT(differences(before, drawn(*graph), graph->bounds()), 0) << row.place;
    }
  }
}

class FloodedGraph : public jxAUGraphDisplay {
 public:
  using jxAUGraphDisplay::jxAUGraphDisplay;
  void drawRect(NSRect dirty) override {
    jxAUGraphDisplay::drawRect(dirty);
    vellColor_alpha(0xFF0000, 1)->set();
    NSBezierPath::fillRect(bounds());
    drawGlow(dirty);
  }
};

TEST_F(GraphDisplayTests, aSubclassDrawsInsideThePlot) {
  FloodedGraph graph(NSMakeRect(0, 0, 300, 200));
  graph.awakeFromNib();
  const Bitmap picture = drawn(graph);
  const struct {
    float x, y;
    bool red;
  } rows[] = {{160, 100, true},  {29, 100, true},  {27, 100, false},  {160, 9, true},
              {160, 7, false},   {160, 186, true}, {160, 188, false}, {291, 100, true},
              {293, 100, false}, {28, 8, false},   {291, 186, false}};
  for (const auto& row : rows)
    EXPECT_EQ(at(picture, row.x, row.y) == (Rgba{255, 0, 0, 255}), row.red) << row.x << "," << row.y;
}

}  // namespace
