#include <cmath>

#include "EditorFixture.h"
#include "jxAUHandleGraphDisplay.h"

namespace {

/// Handles that write down what is done to them.
class Handles : public jxAUHandleGraphDisplay {
 public:
  explicit Handles(NSRect frame) : jxAUHandleGraphDisplay(frame) {
    addHandleWithColor_mode(redHandle(), HandleModeBand);
    addHandleWithColor_mode(blueHandle(), HandleModePoint);
    setPoint_width_forHandle({100, 100}, 40, 0);
    setPoint_width_forHandle({200, 100}, 0, 1);
  }
  void drawRect(NSRect dirty) override {
    jxAUHandleGraphDisplay::drawRect(dirty);
    drawHandles(dirty);
  }
  std::vector<std::string> told;

 private:
  static std::string text(float v) { return std::to_string(static_cast<int>(std::lround(v * 100))); }
  void setParamsForHandle_pos(int index, NSPoint p) override {
    told.push_back("pos " + std::to_string(index) + " " + text(p.x) + " " + text(p.y));
  }
  void changeBandWidthForHandle_delta(int index, float delta) override {
    told.push_back("width " + std::to_string(index) + " " + text(delta));
  }
};

class HandleGraph : public EditorTest {
 protected:
  HandleGraph() {
    graph->awakeFromNib();
    show(graph);
  }
  void press(float x, float y) { display_.press(window->convertBaseToScreen({x, y})); }
  using Told = std::vector<std::string>;
  std::shared_ptr<Handles> graph = std::make_shared<Handles>(NSMakeRect(0, 0, 400, 300));
};

TEST_F(HandleGraph, ThePressPicksTheNearestWithinReach) {
  const struct {
    float x, y;
    const char* picked;
  } rows[] = {{110, 100, ""}, {109.9f, 100, "0"}, {105, 104, "0"}, {195, 100, "1"}, {150, 100, ""}};
  for (const auto& row : rows) {
    graph->told.clear();
    press(row.x, row.y);
    EXPECT_EQ(display_.isPointerHidden(), *row.picked != 0) << row.x;
    EXPECT_TRUE(graph->told.empty()) << "a press alone changes nothing";
    display_.moveBy(1, 0);
    EXPECT_EQ(graph->told.empty() ? "" : graph->told[0].substr(4, 1), row.picked) << row.x;
    display_.release();
  }
  graph->setPoint_width_forHandle({106, 100}, 0, 1);
  graph->told.clear();
  press(103, 100);
  display_.moveBy(1, 0);
  display_.release();
  EXPECT_EQ(graph->told, Told({"pos 0 10400 10000"})) << "of two as near the first";
}

TEST_F(HandleGraph, DragsAreTrackedWithoutThePointer) {
  press(102, 101);
  display_.moveBy(50, 20, NSShiftKeyMask);
  display_.moveBy(10, -5);
  EXPECT_EQ(graph->told, Told({"pos 0 10700 10300", "pos 0 11700 9800"}));
  graph->told.clear();
  display_.moveBy(0, -20, NSAlternateKeyMask);
  display_.moveBy(0, -20, NSAlternateKeyMask | NSShiftKeyMask);
  display_.moveBy(-20, 0, NSAlternateKeyMask);
  EXPECT_EQ(graph->told, Told({"width 0 100", "width 0 10", "width 0 100"}));
  display_.release();
  EXPECT_FALSE(display_.isPointerHidden());
  EXPECT_EQ(display_.pointer(), window->convertBaseToScreen({117, 98})) << "at the tracked point";
  graph->told.clear();
  press(200, 100);
  display_.moveBy(0, -20, NSAlternateKeyMask);
  EXPECT_EQ(graph->told, Told({"pos 1 20000 8000"})) << "a point has no width";
  display_.release();
}

TEST_F(HandleGraph, TheEditedHandleIsHighlighted) {
  const unsigned inBand = colorAt({85, 200}), beside = colorAt({75, 200});
  graph->setExternalEditedHandle(0);
  EXPECT_NE(colorAt({85, 200}), inBand);
  EXPECT_EQ(colorAt({75, 200}), beside);
  EXPECT_NE(colorAt({100, 100}) & 0xff0000, 0xe60000u) << "a ring, not a dot";
  graph->setExternalEditedHandle(-1);
  EXPECT_EQ(colorAt({85, 200}), inBand);
}

}  // namespace
