#include <cmath>
#include <numbers>

#include "BundleFixture.h"
#include "jxAUKnobOverlayWindow.h"
#include "jxAURotaryKnob.h"

namespace {

class KnobOverlayTests : public BundleFixture {
 protected:
  static std::shared_ptr<jxAURotaryKnob> knob(NSRect frame, double max = 1000) {
    auto made = std::make_shared<jxAURotaryKnob>(frame);
    made->setMin_max(0, max);
    made->setIntegerOnly(true);
    return made;
  }
  static jxAUKnobOverlayWindow& overlay() { return *jxAURotaryKnob::overlayWindow(); }
};

TEST_F(KnobOverlayTests, placeAndSize) {
  const float smp = jxAUKnobOverlayView::calculateTextSize(" smp").width;
  EXPECT_GT(smp, jxAUKnobOverlayView::calculateTextSize("smp").width);
  const struct {
    const char* unit;
    NSRect knob, frame;
  } rows[] = {
      {"", NSMakeRect(500, 400, 40, 40), NSMakeRect(390, 385, 165, 70)},
      {"smp", NSMakeRect(500, 400, 40, 40), NSMakeRect(390 - smp, 385, 165 + smp, 70)},
      {"", NSMakeRect(500, 400, 40, 60), NSMakeRect(390, 405, 165, 70)},  // a square at the top
      {"", NSMakeRect(500, 400, 41, 41), NSMakeRect(390, 385, 166, 71)},
  };
  for (const auto& row : rows) {
    jxAUKnobOverlayWindow window;
    window.setUnit(row.unit);
    window.setKnobRect(row.knob);
    EXPECT_EQ(window.frame(), row.frame) << row.unit;
  }
}

TEST_F(KnobOverlayTests, itLiesRoundThePressedKnobAndShowsItsValueAndUnit) {
  const auto ground = std::make_shared<NSView>(NSMakeRect(0, 0, 700, 300));
  const auto first = knob(NSMakeRect(300, 100, 40, 40)), second = knob(NSMakeRect(500, 150, 40, 40));
  first->setUnit("smp");
  first->setDoubleValue(441);
  second->setDoubleValue(12);
  ground->addSubview(first);
  ground->addSubview(second);
  const auto window = show(ground);

  press(*first);
  EXPECT_EQ(overlay().view().text(), "441 smp");
  EXPECT_EQ(NSMaxX(overlay().frame()), 200 + 340 + 15) << "the ring is round the knob";
  EXPECT_EQ(NSMinY(overlay().frame()), 300 + 100 - 15);
  second->setDoubleValue(13);
  EXPECT_EQ(overlay().view().text(), "441 smp") << "another knob's value";
  first->setDoubleValue(500);
  EXPECT_EQ(overlay().view().text(), "500 smp");
  EXPECT_EQ(display_.windows().size(), 1u) << "inside the window it is a layer";
  display_.release();
  EXPECT_FALSE(overlay().isVisible());
  EXPECT_FALSE(overlay().ownerIsEqualTo(first.get()));
  first->setDoubleValue(1);
  EXPECT_EQ(overlay().view().text(), "500 smp");

  press(*second);
  EXPECT_EQ(overlay().view().text(), "13");
  EXPECT_EQ(overlay().frame(), NSMakeRect(200 + 500 - 110, 300 + 150 - 15, 165, 70));
  display_.release();

  NSObject stranger;
  const NSRect before = overlay().frame();
  overlay().orderFront(&stranger);
  EXPECT_EQ(overlay().frame(), before);
  EXPECT_TRUE(overlay().ownerIsEqualTo(&stranger));
  overlay().orderOut(nullptr);
}

TEST_F(KnobOverlayTests, theFloatingWindowLetsThePressThrough) {
  const auto target = std::make_shared<Recorder>();
  const auto small = knob(NSMakeRect(0, 0, 41, 41));
  small->setTarget(target.get());
  const auto window = show(small);
  press(*small);
  advance(0.01);
  ASSERT_EQ(display_.windows().size(), 2u);
  EXPECT_TRUE(display_.windows()[1]->isShown());
  press(*small);  // right under the overlay
  EXPECT_EQ(target->take(), (Lines{"beginAction:", "endAction:", "beginAction:"}));
  display_.release();
  EXPECT_EQ(display_.windows().size(), 1u);
}

TEST_F(KnobOverlayTests, ringBarAndText) {
  const struct {
    NSSize size;
    float ringWidth;
    struct {
      float x, y;  // x from the ring's centre
      bool ink;
    } probes[9];
  } rows[] = {
      // Ring of radius 35 and 25 inside, bar of 30 points height at the left.
      {{165, 70},
       10,
       {{0, 5, true},
        {30, 35, true},
        {0, 64, true},
        {0, 35, false},
        {20, 35, false},
        {33, 3, false},
        {-120, 35, true},
        {-120, 52, false},
        {-120, 18, false}}},
      // A ring that is lower than the bar: its right half alone.
      {{100, 20},
       4,
       {{8, 10, true},
        {0, 18, true},
        {0, 2, true},
        {0, 10, false},
        {9, 18, false},
        {9, 2, false},
        {-60, 10, true},
        {-89, 10, true},
        {4, 10, false}}},
  };
  for (const auto& row : rows) {
    jxAUKnobOverlayView view({{0, 0}, row.size}, row.ringWidth);
    const Bitmap picture = drawn(view);
    for (const auto& probe : row.probes)
      EXPECT_EQ(at(picture, row.size.width - row.size.height / 2 + probe.x, probe.y)[3] > 128, probe.ink)
          << row.size.height << ": " << probe.x << "," << probe.y;
  }
  jxAUKnobOverlayView view(NSMakeRect(0, 0, 165, 70), 10);
  const Bitmap plain = drawn(view);
  view.setText("441");
  const Bitmap text = drawn(view);
  const float width = jxAUKnobOverlayView::calculateTextSize("441").width;
  const float left = (165 - 70 - width - 15) / 2;
  EXPECT_GT(differences(plain, text, NSMakeRect(left, 20, width, 30)), 100);
  EXPECT_EQ(differences(plain, text, NSMakeRect(0, 0, left - 5, 70)), 0);
  EXPECT_EQ(differences(plain, text, NSMakeRect(left + width + 5, 0, 70, 70)), 0);
}

}  // namespace
