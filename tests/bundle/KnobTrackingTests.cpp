#include <cmath>
#include <functional>

#include "EditorFixture.h"
#include "jxAUKnobOverlayWindow.h"
#include "jxAURotaryKnob.h"

namespace {

using Log = std::vector<std::string>;

/// A knob of 0 to 1 in a window, whose target writes down what it is told.
class Tracking : public EditorTest {
 protected:
  class Target : public NSObject {
   public:
    const Class& isa() const override {
      static const Class c = Class::of<Target>("KnobTarget", NSObject::record())
                                 .answers<&Target::begin>("beginAction:")
                                 .answers<&Target::end>("endAction:")
                                 .answers<&Target::changed>("changed:");
      return c;
    }
    void begin(NSObject*) { told.push_back("begin"); }
    void end(NSObject*) { told.push_back("end"); }
    void changed(NSObject*) { told.push_back("changed"); }
    Log told;
  };

  Tracking() {
    knob->setMin_max(0, 1);
    knob->setMouseRange(100);
    knob->setTarget(target.get());
    knob->setAction(NSSelectorFromString("changed:"));
    const auto view = std::make_shared<NSView>(NSMakeRect(0, 0, 400, 200));
    view->addSubview(knob);
    show(view);
  }
  void press(unsigned modifiers = 0) { display_.press(middleOnScreen(*knob), modifiers); }
  double turned(double from = 0) const { return knob->doubleValue() - from; }

  std::shared_ptr<jxAURotaryKnob> knob = std::make_shared<jxAURotaryKnob>(NSMakeRect(200, 80, 41, 41));
  std::shared_ptr<Target> target = std::make_shared<Target>();
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
    press();
    display_.moveBy(row.dx / 2, row.dy / 2, row.modifiers);
    display_.moveBy(row.dx / 2, row.dy / 2, row.modifiers);
    EXPECT_EQ(turned(0.1), 0) << "only ticks move the knob";
    double sum = 0;
    for (const double step :
         expectedSteps(row.dx * row.counted, row.dy * row.counted, row.range > 0 ? row.range : 100, 4)) {
      advance(0.05);
      sum += step;
      EXPECT_NEAR(turned(0.1), sum, 1e-6) << row.dx << " " << row.dy << " range " << row.range;
    }
    display_.release();
  }
  const auto coasting = expectedSteps(0, 30, 100, 3);
  EXPECT_NEAR(coasting[2] / coasting[1], 0.354, 0.001);
}

TEST_F(Tracking, TellsTheGestureInOrderAndGivesThePointerBack) {
  press();
  EXPECT_TRUE(display_.isPointerHidden());
  display_.moveBy(0, 2000);  // far beyond the screen
  advance(0.2);
  EXPECT_EQ(turned(), 1);
  const size_t changes = target->told.size();
  advance(0.2);
  EXPECT_EQ(target->told.size(), changes) << "at the end of the sweep nothing changes any more";
  display_.release();
  EXPECT_FALSE(display_.isPointerHidden());
  EXPECT_EQ(display_.pointer(), middleOnScreen(*knob));

  target->told.clear();
  press();
  display_.release();
  EXPECT_EQ(target->told, Log({"begin", "end", "changed"}));
  advance(0.2);
  EXPECT_EQ(turned(), 1);
}

TEST_F(Tracking, LeavesNoMotionForTheNextPressAndLosesNoneWithoutTime) {
  press();
  display_.moveBy(0, 50);
  display_.release();
  press();
  advance(0.2);
  EXPECT_EQ(turned(), 0);

  display_.moveBy(0, 30);
  knob->knobTimerProc(nullptr);  // in the very instant of the last tick
  EXPECT_EQ(turned(), 0);
  advance(0.05);
  EXPECT_NEAR(turned(), expectedSteps(0, 30, 100, 1)[0], 1e-6);
  display_.release();
}

TEST_F(Tracking, OptionReturnsToTheDefaultIfThereIsOne) {
  knob->setDoubleValue(0.7);
  press(NSAlternateKeyMask);
  display_.release();
  EXPECT_EQ(turned(), 0.7);
  knob->setDefaultValue(0.25);
  press(NSAlternateKeyMask);
  EXPECT_EQ(turned(), 0.25);
  display_.moveBy(0, 80);
  display_.moveBy(0, 80, NSAlternateKeyMask);
  advance(0.2);
  EXPECT_EQ(turned(), 0.25) << "held, it drops what was gathered";
  display_.release();
}

TEST_F(Tracking, WheelMovesByFiftieths) {
  const struct {
    float deltaY, deltaX;
    double from, to;
  } rows[] = {{1, 0, 0.5, 0.52}, {-1, 0, 0.5, 0.48}, {0, 1, 0.5, 0.498}, {-9, 0, 0.1, 0}, {2, 0, 0.99, 1}};
  for (const auto& row : rows) {
    knob->setDoubleValue(row.from);
    target->told.clear();
    display_.wheel(middleOnScreen(*knob), row.deltaY, row.deltaX);
    EXPECT_NEAR(turned(), row.to, 1e-6);
    EXPECT_EQ(target->told, Log({"changed"}));
  }
}

TEST_F(Tracking, EndStopIsShownForAWhileAndOnlyOnce) {
  knob->setDoubleValue(0.5);
  press();
  EXPECT_FALSE(knob->showsRedLimit());
  display_.moveBy(0, -500);
  advance(0.05);
  EXPECT_TRUE(knob->showsRedLimit());
  display_.release();
  advance(1);
  const size_t timers = NSRunLoop::currentRunLoop().timerCount();
  display_.wheel(middleOnScreen(*knob), -1);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), timers) << "at the end again, it starts nothing anew";
  advance(0.45);
  EXPECT_TRUE(knob->showsRedLimit());
  advance(0.1);
  EXPECT_FALSE(knob->showsRedLimit());
}

TEST_F(Tracking, BrokenGesturesEndOnceAndGiveThePointerBack) {
  const std::vector<std::pair<const char*, std::function<void()>>> ways{
      {"Escape", [this] { display_.key(NSKey::escape); }},
      {"hidden", [this] { knob->setHidden(true); }},
      {"pointer lost", [this] { display_.windows().front()->client().displayLostPointer(); }},
      {"removed", [this] { knob->removeFromSuperview(); }},
      {"window closed", [this] { window->close(); }},
  };
  for (const auto& [name, end] : ways) {
    target->told.clear();
    press();
    end();
    EXPECT_FALSE(display_.isPointerHidden()) << name;
    EXPECT_FALSE(jxAURotaryKnob::overlayWindow()->isVisible()) << name;
    display_.release();
    EXPECT_EQ(target->told, Log({"begin", "end", "changed"})) << name;
    knob->setHidden(false);
    if (std::string(name) == "removed") editor->addSubview(knob);
  }
  advance(2);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
}

}  // namespace
