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
    const auto ground = std::make_shared<NSView>(NSMakeRect(0, 0, 400, 200));
    ground->addSubview(knob);
    show(ground);
  }

  std::shared_ptr<jxAURotaryKnob> knob = std::make_shared<jxAURotaryKnob>(NSMakeRect(180, 80, 41, 41));
  std::shared_ptr<ActionLog> target = std::make_shared<ActionLog>();
};

TEST_F(Tracking, IntegratesTheMotionOfEachTickAndCoasts) {
  const struct {
    float dx, dy;  // up is positive
    unsigned modifiers;
    double range, counted;  // of the motion
  } rows[] = {{0, 30, NSShiftKeyMask, 100, 0.1}, {40, 0, 0, 100, 1}, {0, 12, 0, 40, 1}};
  for (const auto& row : rows) {
    knob->setDoubleValue(0.1);
    knob->setMouseRange(row.range);
    press(*knob);
    moveBy(row.dx / 2, row.dy / 2, row.modifiers);
    moveBy(row.dx / 2, row.dy / 2, row.modifiers);
    EXPECT_EQ(knob->doubleValue(), 0.1) << "only ticks move the knob";
    // Half the old velocity and half the new, in mouse ranges per tenth of a second, to the power 1.5.
    double vx = row.dx * row.counted / row.range, vy = row.dy * row.counted / row.range, sum = 0.1;
    for (int tick = 0; tick < 4; ++tick, vx /= 2, vy /= 2) {
      advance(0.05);
      sum += 0.1 * std::pow(vx, 1.5) + std::pow(vy, 1.5);
      EXPECT_NEAR(knob->doubleValue(), sum, 1e-6) << row.dx << " " << row.dy << " range " << row.range;
    }
    release();
  }
}

TEST_F(Tracking, TellsItsTargetInOrderWhatHandsDo) {
  const struct {
    const char* script;
    double from;
    const char* told;
  } rows[] = {
      {"press .knob; drag 0 2000; wait 0.4; release", 0.99, "begin, turned 1.00, end, turned 1.00"},
      {"press .knob; drag 0 50; release; press .knob; wait 0.2; release", 0,
       "begin, end, turned 0.00, begin, end, turned 0.00"},
      {"click .knob option", 0.7, "begin, end, turned 0.70"},
      {"wheel .knob 1", 0.5, "turned 0.52"},
      {"wheel .knob -9", 0.1, "turned 0.00"},
  };
  for (const auto& row : rows) {
    knob->setDoubleValue(row.from);
    play(row.script);
    EXPECT_EQ(target->take(), row.told) << row.script;
    EXPECT_FALSE(window->isInGesture() || display.isPointerHidden());
  }
  play("press .knob; drag 500 2000; release");
  EXPECT_EQ(display.pointer(), onScreen(middleOf(*knob)));
}

TEST_F(Tracking, EndStopIsShownForAWhile) {
  knob->setDoubleValue(0.5);
  play("press .knob");
  EXPECT_FALSE(knob->showsRedLimit());
  play("drag 0 -500; wait 0.05; release; wheel .knob -1; wait 1.45");
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
    EXPECT_FALSE(display.isPointerHidden() || jxAURotaryKnob::overlayWindow()->isVisible()) << name;
    release();
    EXPECT_EQ(target->take(), "begin, end, turned 0.00") << name;
    knob->setHidden(false);
    window->contentView()->addSubview(knob);
  }
  advance(2);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
}

TEST_F(Tracking, TheOverlayLiesRoundThePressedKnobAndShowsItsValueAndUnit) {
  knob->setMin_max(0, 1000);
  knob->setIntegerOnly(true);
  knob->setUnit("smp");
  knob->setDoubleValue(441);
  press(*knob);
  jxAUKnobOverlayWindow& overlay = *jxAURotaryKnob::overlayWindow();
  EXPECT_EQ(overlay.view().text(), "441 smp");
  EXPECT_EQ(NSMaxX(overlay.frame()), 100 + NSMaxX(knob->frame()) + 15) << "the ring is round the knob";
  EXPECT_EQ(NSMinY(overlay.frame()), 100 + NSMinY(knob->frame()) - 15);
  knob->setDoubleValue(500);
  EXPECT_EQ(overlay.view().text(), "500 smp");
  release();
  EXPECT_FALSE(overlay.isVisible() || overlay.ownerIsEqualTo(knob.get()));
}

}  // namespace
