#include <gtest/gtest.h>

#include <cmath>

#include "ActionLog.h"
#include "EditorStage.h"
#include "jxAUKnobOverlayWindow.h"
#include "jxAURotaryKnob.h"

namespace {

/// A knob of 0 to 1 in a window, whose target writes down what it is told.
class Tracking : public testing::Test, public EditorStage {
 protected:
  Tracking() {
    knob->setMin_max(0, 1);
    knob->setMouseRange(100);
    knob->setTarget(target.get());
    knob->setAction(NSSelectorFromString("turned:"));
    showInside({400, 200}, knob);
  }
  double turned(double from = 0) const { return knob->doubleValue() - from; }

  std::shared_ptr<jxAURotaryKnob> knob = std::make_shared<jxAURotaryKnob>(NSMakeRect(0, 0, 41, 41));
  std::shared_ptr<ActionLog> target = std::make_shared<ActionLog>();
};

/// What the position does in the first ticks after a motion, computed from the rule: half the old velocity
/// and half the new, in mouse ranges per tenth of a second, to the power 1.5.
std::vector<double> expectedSteps(double dx, double dy, double range, int ticks) {
  double vx = 0, vy = 0;
  std::vector<double> steps;
  for (int i = 0; i < ticks; ++i) {
    const double scale = 0.05 * 10 * range;
    vx = 0.5 * vx + 0.5 * (i == 0 ? dx : 0) / scale;
    vy = 0.5 * vy + 0.5 * (i == 0 ? dy : 0) / scale;
    steps.push_back(0.1 * std::copysign(std::pow(std::abs(vx), 1.5), vx) +
                    std::copysign(std::pow(std::abs(vy), 1.5), vy));
  }
  return steps;
}

TEST_F(Tracking, IntegratesTheMotionOfEachTickAndCoasts) {
  const struct {
    float dx, dy;  // up is positive
    unsigned modifiers;
    double range, counted;  // of the motion
  } rows[] = {{0, 30, 0, 100, 1},
              {0, 30, NSShiftKeyMask, 100, 0.1},
              {40, 0, 0, 100, 1},
              {0, 12, 0, 40, 1},
              {0, 30, 0, 0, 1}};
  for (const auto& row : rows) {
    knob->setDoubleValue(0.1);
    knob->setMouseRange(row.range);
    press(*knob);
    moveBy(row.dx / 2, row.dy / 2, row.modifiers);
    moveBy(row.dx / 2, row.dy / 2, row.modifiers);
    EXPECT_EQ(turned(0.1), 0) << "only ticks move the knob";
    double sum = 0;
    for (const double step :
         expectedSteps(row.dx * row.counted, row.dy * row.counted, row.range > 0 ? row.range : 100, 4)) {
      advance(0.05);
      sum += step;
      EXPECT_NEAR(turned(0.1), sum, 1e-6) << row.dx << " " << row.dy << " range " << row.range;
    }
    release();
  }
}

TEST_F(Tracking, TellsItsTargetInOrderWhatHandsDo) {
  const struct {
    const char* script;
    double from, standard;
    const char* told;
  } rows[] = {
      {"click .knob", 0.3, NAN, "begin, end, turned 0.30"},
      {"press .knob; drag 0 2000; wait 0.4; release", 0.99, NAN, "begin, turned 1.00, end, turned 1.00"},
      {"press .knob; drag 0 50; release; press .knob; wait 0.2; release", 0, NAN,
       "begin, end, turned 0.00, begin, end, turned 0.00"},
      {"click .knob option", 0.7, NAN, "begin, end, turned 0.70"},
      {"click .knob option", 0.7, 0.25, "begin, end, turned 0.25"},
      {"press .knob option; drag 0 80; drag 0 80 option; wait 0.2; release", 0.7, 0.25,
       "begin, end, turned 0.25"},  // held, it drops what was gathered
      {"wheel .knob 1", 0.5, NAN, "turned 0.52"},
      {"wheel .knob -1", 0.5, NAN, "turned 0.48"},
      {"wheel .knob -9", 0.1, NAN, "turned 0.00"},
      {"wheel .knob 2", 0.99, NAN, "turned 1.00"},
  };
  for (const auto& row : rows) {
    knob->setDoubleValue(row.from);
    if (!std::isnan(row.standard)) knob->setDefaultValue(row.standard);
    play(row.script);
    EXPECT_EQ(target->take(), row.told) << row.script;
    EXPECT_EQ(window->isInGesture() || display.isPointerHidden(), false);
  }
  knob->setDoubleValue(0.5);
  display.wheel(onScreen(middleOf(*knob)), 0, 1);
  EXPECT_NEAR(turned(), 0.498, 1e-6) << "sideways";
  play("press .knob; drag 500 2000; release");
  EXPECT_EQ(display.pointer(), onScreen(middleOf(*knob)));
}

TEST_F(Tracking, EndStopIsShownForAWhileAndOnlyOnce) {
  knob->setDoubleValue(0.5);
  press(*knob);
  EXPECT_FALSE(knob->showsRedLimit());
  moveBy(0, -500);
  advance(0.05);
  EXPECT_TRUE(knob->showsRedLimit());
  release();
  advance(1);
  const size_t timers = NSRunLoop::currentRunLoop().timerCount();
  play("wheel .knob -1");
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), timers) << "at the end again, it starts nothing anew";
  advance(0.45);
  EXPECT_TRUE(knob->showsRedLimit());
  advance(0.1);
  EXPECT_FALSE(knob->showsRedLimit());
}

TEST_F(Tracking, BrokenGesturesEndOnceAndGiveThePointerBack) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Escape", [this] { key(NSKey::escape); }},
      {"hidden", [this] { knob->setHidden(true); }},
      {"pointer lost", [this] { client().displayLostPointer(); }},
      {"removed", [this] { knob->removeFromSuperview(); }},
      {"window closed", [this] { window->close(); }},
  };
  for (const auto& [name, end] : ways) {
    press(*knob);
    end();
    EXPECT_FALSE(display.isPointerHidden()) << name;
    EXPECT_FALSE(jxAURotaryKnob::overlayWindow()->isVisible()) << name;
    release();
    EXPECT_EQ(target->take(), "begin, end, turned 0.00") << name;
    knob->setHidden(false);
    window->contentView()->addSubview(knob);
  }
  advance(2);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
}

TEST_F(Tracking, TheOverlayLiesRoundThePressedKnobAndShowsItsValueAndUnit) {
  const auto other = std::make_shared<jxAURotaryKnob>(NSMakeRect(340, 80, 40, 40));
  window->contentView()->addSubview(other);
  knob->setMin_max(0, 1000);
  knob->setIntegerOnly(true);
  knob->setUnit("smp");
  knob->setDoubleValue(441);
  press(*knob);
  jxAUKnobOverlayWindow& overlay = *jxAURotaryKnob::overlayWindow();
  EXPECT_EQ(overlay.view().text(), "441 smp");
  EXPECT_EQ(NSMaxX(overlay.frame()), 100 + NSMaxX(knob->frame()) + 15) << "the ring is round the knob";
  EXPECT_EQ(NSMinY(overlay.frame()), 100 + NSMinY(knob->frame()) - 15);
  other->setDoubleValue(0.5);
  EXPECT_EQ(overlay.view().text(), "441 smp") << "another knob's value";
  knob->setDoubleValue(500);
  EXPECT_EQ(overlay.view().text(), "500 smp");
  EXPECT_EQ(display.windows().size(), 1u) << "inside the window it is a layer";
  release();
  EXPECT_FALSE(overlay.isVisible() || overlay.ownerIsEqualTo(knob.get()));
}

}  // namespace
