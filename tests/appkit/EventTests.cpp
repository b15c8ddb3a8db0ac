#include <stdexcept>

#include "ViewBench.h"

namespace {

class Events : public ViewBench {};

}  // namespace

TEST_F(Events, GoToTheTopmostVisibleViewInsideItsParents) {
  const auto lower = add("lower", NSMakeRect(10, 10, 40, 40));
  const auto upper = add("upper", NSMakeRect(30, 10, 40, 40));
  add("deep", NSMakeRect(10, 10, 100, 10), upper.get());
  const auto expectHit = [&](NSPoint p, const std::string& name) {
    click(p);
    EXPECT_TRUE(taken().at(0).starts_with("down " + name)) << name;
  };
  expectHit({20, 20}, "lower");
  expectHit({35, 15}, "upper");
  expectHit({69.9f, 20}, "deep");
  expectHit({75, 25}, "root");
  upper->setHidden(true);
  expectHit({45, 25}, "lower");
}

TEST_F(Events, APressOwnsItsDragsAndItsReleaseWhereverThePointerIs) {
  const auto view = add("a", NSMakeRect(10, 10, 20, 20));
  add("b", NSMakeRect(50, 10, 100, 20));
  press({15, 16});
  moveBy(45, 0);
  display.wheel({160, 115}, 1);
  moveBy(-300, 5);
  release();
  moveBy(3, 3);
  EXPECT_EQ(taken(), (Lines{"down a 15 16", "drag a 45 0", "drag a -300 -5", "up a -100 21"}));

  display.wheel({160, 115}, -1);
  EXPECT_EQ(taken(), Lines{"wheel b -1"});
  view->passesOn = true;  // what a view does not handle goes up
  press({15, 16});
  moveBy(1, 1);
  release();
  display.wheel({115, 115}, 2);
  EXPECT_EQ(taken(), (Lines{"down root 15 16", "drag root 1 -1", "up root 16 17", "wheel root 2"}));
}

TEST_F(Events, ABrokenGestureEndsWithExactlyOneRelease) {
  const auto group = add("group", NSMakeRect(0, 0, 100, 100));
  std::shared_ptr<LogView> view;
  const std::pair<const char*, std::function<void()>> breaks[] = {
      {"Escape", [&] { display.key(NSKey::escape); }},
      {"lost pointer", [&] { client().displayLostPointer(); }},
      {"unmapped",
       [&] { client().displayChangedVisibility(false), client().displayChangedVisibility(true); }},
      {"hidden", [&] { view->setHidden(true); }},
      {"parent removed", [&] { group->removeFromSuperview(), root->addSubview(group); }},
      {"window hidden", [&] { window->orderOut(nullptr), window->orderFront(nullptr); }},
      {"window closed", [&] { window->close(); }},
  };
  for (const auto& [name, breakIt] : breaks) {
    view = add("a", NSMakeRect(10, 10, 20, 20), group.get());
    press({15, 15});
    moveBy(2, 3);
    EXPECT_EQ(taken(), (Lines{"down a 15 15", "drag a 2 -3"})) << name;
    breakIt();
    EXPECT_EQ(taken(), Lines{"up a 17 18"}) << name;
    moveBy(1, 1);
    release();
    EXPECT_EQ(taken(), Lines{}) << name;
    view->removeFromSuperview();
  }
}

TEST_F(Events, WhatThrowsStopsOnlyItself) {
  root->onDown = [] { throw std::runtime_error("broken"); };
  click({15, 15});
  EXPECT_EQ(taken(), (Lines{"down root 15 15", "up root 15 15"}));
  EXPECT_EQ(log, Lines{"event failed: broken"});
}

TEST_F(Events, AViewMayGoInItsOwnCallbacks) {
  auto view = add("a", NSMakeRect(10, 10, 20, 20));
  const std::weak_ptr<LogView> alive = view;
  view->onDown = [this, v = view.get(), &alive] {
    v->removeFromSuperview();
    EXPECT_FALSE(alive.expired());
  };
  view.reset();
  click({15, 15});
  EXPECT_EQ(taken(), (Lines{"down a 15 15", "up a 15 15"}));
  EXPECT_TRUE(alive.expired());

  // The window goes in the press.
  const auto last = add("c", NSMakeRect(10, 10, 20, 20));
  last->onDown = [this] { window.reset(); };
  press({15, 15});
  EXPECT_EQ(taken(), (Lines{"down c 15 15", "up c 15 15"}));
  EXPECT_TRUE(display.windows().empty());
}
