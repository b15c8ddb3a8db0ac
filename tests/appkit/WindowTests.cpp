#include "NSBezierPath.h"
#include "ViewBench.h"

namespace {

class OverlayWindow : public NSWindow {
 public:
  OverlayWindow(NSRect frame, Lines& seen, const NSWindow& owner)
      : NSWindow(frame, NSBorderlessWindowMask, NSBackingStoreBuffered, false), seen_(seen), owner_(owner) {
    setOpaque(false);
    setBackgroundColor(NSColor::clearColor());
    setIgnoresMouseEvents(true);
  }
  void orderOut(NSObject* sender) override {
    if (isVisible())
      seen_.push_back(owner_.isVisible() ? "overlay out before its owner" : "overlay out too late");
    NSWindow::orderOut(sender);
  }

 private:
  Lines& seen_;
  const NSWindow& owner_;
};

class Delegate : public NSObject {
 public:
  explicit Delegate(Lines& seen) : seen_(seen) {}
  static const Class& record() {
    static const Class c = Class::of<Delegate>("Delegate", NSObject::record())
                               .answers<&Delegate::windowWillClose>("windowWillClose:");
    return c;
  }
  const Class& isa() const override { return record(); }
  void windowWillClose(NSObject*) { seen_.push_back("will close"); }

 private:
  Lines& seen_;
};

class Overlay : public ViewBench {
 protected:
  Overlay() : view(add("a", NSMakeRect(10, 10, 180, 80))) {}

  /// Shown for the view, with a picture that is red but for its left half.
  void showOverlay(NSRect frame) {
    overlay = std::make_shared<OverlayWindow>(frame, seen, *window);
    picture = std::make_shared<LogView>("overlay", NSZeroRect, seen);
    picture->onDraw = [this] {
      colorOf(red)->set();
      NSBezierPath::fillRect(NSMakeRect(NSWidth(picture->bounds()) / 2, 0, 500, 500));
    };
    overlay->setContentView(picture);
    overlay->orderFront(view.get());
    turn();
  }
  Pixel shownAt(float x, float y) { return at(*window->snapshot(), x, y); }

  std::shared_ptr<LogView> view;
  std::shared_ptr<OverlayWindow> overlay;
  std::shared_ptr<LogView> picture;
};

}  // namespace

TEST_F(Overlay, InsideItsOwnerIsDrawnIntoItsPicture) {
  showOverlay(NSMakeRect(140, 120, 20, 20));
  EXPECT_EQ(display.windows().size(), 1u);
  EXPECT_TRUE(overlay->isVisible());
  EXPECT_EQ(shownAt(55, 30), red);
  EXPECT_EQ(shownAt(45, 30), white);  // transparent
  EXPECT_EQ(shownAt(61, 30), white);
  drawn();

  picture->setNeedsDisplayInRect(NSMakeRect(12, 2, 4, 5));  // what lies below is not drawn again
  EXPECT_EQ(drawn(), Lines{"draw overlay 12 2 4 5"});
  EXPECT_EQ(presented, (std::vector<NSRect>{NSMakeRect(52, 22, 4, 5)}));
  view->setNeedsDisplay(true);  // and stays on top of what is drawn below it
  turn();
  EXPECT_EQ(shownAt(55, 30), red);

  click({55, 30});
  taken();
  overlay->setFrame(NSMakeRect(240, 130, 40, 20));
  turn();
  EXPECT_EQ(shownAt(55, 30), white);
  EXPECT_EQ(shownAt(175, 40), red);
  overlay->orderOut(nullptr);
  turn();
  EXPECT_EQ(display.windows().size(), 1u);
  EXPECT_EQ(shownAt(175, 40), white);
  EXPECT_FALSE(overlay->isVisible());
}

TEST_F(Overlay, BeyondItsOwnerIsAWindowThatThePressGoesThrough) {
  showOverlay(NSMakeRect(280, 120, 40, 20));
  ASSERT_EQ(display.windows().size(), 2u);
  EXPECT_TRUE(display.windows()[1]->isShown());
  EXPECT_TRUE(display.windows()[1]->ignoresMouse());
  EXPECT_EQ(at(*overlay->snapshot(), 25, 10), red);
  EXPECT_EQ(at(*overlay->snapshot(), 15, 10), nothing);
  EXPECT_EQ(shownAt(195, 30), white);
  taken();
  press({185, 30});
  display.key(NSKey::escape);  // keys are the owner's as well
  EXPECT_EQ(taken(), (Lines{"down a 185 30", "up a 185 30"}));

  client().displayChangedFrame(NSMakeRect(110, 105, 200, 100));  // it goes along with its owner
  EXPECT_EQ(display.windows()[1]->frame(), NSMakeRect(290, 125, 40, 20));
  overlay->setFrame(NSMakeRect(120, 120, 40, 20));  // back inside
  turn();
  EXPECT_EQ(display.windows().size(), 1u);
  EXPECT_EQ(shownAt(45, 20), red);
}

TEST_F(Overlay, IsHiddenBeforeItsOwnerClosesAndMayOutliveIt) {
  Delegate delegate(seen);
  for (const float x : {120.0f, 280.0f}) {
    showOverlay(NSMakeRect(x, 120, 40, 20));
    taken();
    window->setDelegate(&delegate);
    window->close();
    window->close();
    EXPECT_EQ(taken(), (Lines{"overlay out before its owner", "will close"}));
    EXPECT_FALSE(overlay->isVisible());
    EXPECT_TRUE(display.windows().empty());
    window->makeKeyAndOrderFront();
    turn();
  }
  window->setDelegate(nullptr);
  window->close();
  overlay->orderFront(view.get());  // late, for a view of a window that is closed
  window.reset();
  turn();
  EXPECT_FALSE(overlay->isVisible());
  overlay->orderOut(nullptr);
}

TEST_F(Overlay, AResizedWindowIsDrawnOnceAtItsNewSize) {
  taken();
  window->setContentSize({250, 120});
  EXPECT_EQ(drawn(), (Lines{"draw root 0 0 250 120", "draw a 0 0 180 80"}));
  EXPECT_EQ(window->snapshot()->physicalWidth(), 250);
  client().displayExposed(NSMakeRect(5, 5, 10, 10));  // brought again without drawing
  EXPECT_EQ(drawn(), Lines{});
  EXPECT_EQ(presented, (std::vector<NSRect>{NSMakeRect(5, 5, 10, 10)}));
}
