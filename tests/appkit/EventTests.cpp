#include "ViewBench.h"

namespace {

class Events : public ViewBench {};

}  // namespace

TEST_F(Events, GoToTheTopmostVisibleViewInsideItsParents) {
  const auto lower = add("lower", NSMakeRect(10, 10, 40, 40));
  const auto upper = add("upper", NSMakeRect(30, 10, 40, 40));
  add("deep", NSMakeRect(10, 10, 100, 10), upper.get());
  const std::pair<NSPoint, const char*> cases[] = {
      {{20, 20}, "lower"}, {{35, 15}, "upper"}, {{45, 25}, "deep"}, {{69.9f, 20}, "deep"},
      {{75, 25}, "root"},  {{50, 50}, "root"},  {{10, 10}, "lower"}};
  const auto hit = [&](NSPoint p) {
    taken();
    click(p);
    const Lines lines = taken();
    return lines.size() == 2 ? lines[0].substr(5, lines[0].find(' ', 5) - 5) : "nobody";
  };
  for (const auto& [p, name] : cases) EXPECT_EQ(hit(p), name) << p.x << ", " << p.y;
  upper->setHidden(true);
  EXPECT_EQ(hit({45, 25}), "lower");
  EXPECT_EQ(hit({60, 25}), "root");
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
      {"parent hidden", [&] { group->setHidden(true), group->setHidden(false); }},
      {"removed", [&] { view->removeFromSuperview(); }},
      {"parent removed", [&] { group->removeFromSuperview(), root->addSubview(group); }},
      {"window hidden", [&] { window->orderOut(nullptr), window->orderFront(nullptr); }},
      {"another content",
       [&] { window->setContentView(std::make_shared<NSView>(NSZeroRect)), window->setContentView(root); }},
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

TEST_F(Events, AViewMayGoInItsOwnCallbacks) {
  auto view = add("a", NSMakeRect(10, 10, 20, 20));
  const std::weak_ptr<LogView> alive = view;
  view->onDown = [this, v = view.get(), &alive] {
    v->removeFromSuperview();
    EXPECT_FALSE(alive.expired());
    seen.push_back(v->superview() ? "still there" : "gone");
  };
  view.reset();
  click({15, 15});
  EXPECT_EQ(taken(), (Lines{"down a 15 15", "up a 15 15", "gone"}));
  EXPECT_TRUE(alive.expired());

  // The release that a removal brings removes the view itself.
  const auto other = add("b", NSMakeRect(10, 10, 20, 20));
  other->onUp = [&] { other->removeFromSuperview(); };
  press({15, 15});
  other->removeFromSuperview();
  EXPECT_EQ(taken(), (Lines{"down b 15 15", "up b 15 15"}));
  EXPECT_TRUE(root->subviews().empty());

  // The window goes in the press.
  const auto last = add("c", NSMakeRect(10, 10, 20, 20));
  last->onDown = [this] { window.reset(); };
  press({15, 15});
  EXPECT_EQ(taken(), (Lines{"down c 15 15", "up c 15 15"}));
  EXPECT_TRUE(display.windows().empty());
}
