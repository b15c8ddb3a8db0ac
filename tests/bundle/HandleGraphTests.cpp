#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "EditorStage.h"
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
  std::string told;

 private:
  static std::string text(float v) { return " " + std::to_string(static_cast<int>(std::lround(v * 100))); }
  void tell(const std::string& line) { told += (told.empty() ? "" : ", ") + line; }
  void setParamsForHandle_pos(int index, NSPoint p) override {
    tell("pos " + std::to_string(index) + text(p.x) + text(p.y));
  }
  void changeBandWidthForHandle_delta(int index, float delta) override {
    tell("width " + std::to_string(index) + text(delta));
  }
};

class HandleGraph : public testing::Test, public EditorStage {
 protected:
  HandleGraph() {
    graph->awakeFromNib();
    show(graph);
  }
  std::shared_ptr<Handles> graph = std::make_shared<Handles>(NSMakeRect(0, 0, 400, 300));
};

TEST_F(HandleGraph, TellsWhatHandsDoToItsHandles) {
  const std::pair<const char*, const char*> rows[] = {
      {"press #0+10,0; drag 1 0", ""},  // out of reach
      {"press #0+9.9,0; drag 1 0", "pos 0 11090 10000"},
      {"press #0+5,4; drag 1 0", "pos 0 10600 10400"},
      {"press #1+-5,0; drag 1 0", "pos 1 19600 10000"},
      {"press #0", ""},  // a press alone changes nothing
      {"press #0+2,1; drag 50 20 shift; drag 10 -5", "pos 0 10700 10300, pos 0 11700 9800"},
      {"press #0; drag 0 -20 option; drag 0 -20 option shift; drag -20 0 option",
       "width 0 100, width 0 10, width 0 100"},
      {"press #1; drag 0 -20 option", "pos 1 20000 8000"},  // a point has no width
  };
  for (const auto& [script, told] : rows) {
    play(script);
    EXPECT_EQ(display.isPointerHidden(), std::string(script).find("+10") == std::string::npos) << script;
    EXPECT_EQ(std::exchange(graph->told, {}), told) << script;
    release();
    EXPECT_FALSE(display.isPointerHidden());
  }
  play("press #0+2,1; drag 50 20 shift; drag 10 -5; release");
  EXPECT_EQ(display.pointer(), onScreen({117, 98})) << "at the tracked point";
  graph->setPoint_width_forHandle({108, 100}, 0, 1);
  graph->told.clear();
  play("press #0+4,0; drag 1 0; release; press #0+4.5,0; drag 1 0; release");
  EXPECT_EQ(graph->told, "pos 0 10500 10000, pos 1 10550 10000") << "the nearest, of two as near the first";
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
