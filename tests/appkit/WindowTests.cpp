#include "NSBezierPath.h"
#include "ViewBench.h"

namespace {

class Overlay : public ViewBench {
 protected:
  Overlay() : view(add("a", NSMakeRect(10, 10, 180, 80))) {}

  /// Shown for the view, with a picture that is red but for its left half.
  void showOverlay(NSRect frame) {
    overlay = std::make_shared<NSWindow>(frame, NSBorderlessWindowMask, NSBackingStoreBuffered, false);
    overlay->setOpaque(false);
    overlay->setBackgroundColor(NSColor::clearColor());
    overlay->setIgnoresMouseEvents(true);
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
  std::shared_ptr<NSWindow> overlay;
  std::shared_ptr<LogView> picture;
};

}  // namespace

TEST_F(Overlay, InsideItsOwnerIsDrawnIntoItsPicture) {
  showOverlay(NSMakeRect(140, 120, 20, 20));
  EXPECT_EQ(display.windows().size(), 1u);
  EXPECT_EQ(shownAt(55, 30), red);
  EXPECT_EQ(shownAt(45, 30), white);  // transparent
  drawn();

  picture->setNeedsDisplayInRect(NSMakeRect(12, 2, 4, 5));  // what lies below is not drawn again
  EXPECT_EQ(drawn(), Lines{"draw overlay 12 2 4 5"});
  EXPECT_EQ(presented, (std::vector<NSRect>{NSMakeRect(52, 22, 4, 5)}));
  view->setNeedsDisplay(true);  // and stays on top of what is drawn below it
  turn();
  EXPECT_EQ(shownAt(55, 30), red);
  overlay->orderOut(nullptr);
  turn();
  EXPECT_EQ(shownAt(55, 30), white);
}

TEST_F(Overlay, HangsOverItsOwnersEdgesAsWindowsBesideIt) {
  showOverlay(NSMakeRect(270, 90, 40, 20));  // beyond the right and the lower edge
  const auto& windows = display.windows();
  ASSERT_EQ(windows.size(), 3u);
  EXPECT_EQ(windows[1]->frame(), NSMakeRect(300, 90, 10, 20));
  EXPECT_EQ(windows[2]->frame(), NSMakeRect(270, 90, 30, 10));
  for (const size_t i : {1u, 2u}) EXPECT_TRUE(windows[i]->isShown() && windows[i]->ignoresMouse());
  EXPECT_EQ(shownAt(195, 5), red);
  EXPECT_EQ(at(*windows[1]->picture(), 5, 15), red);
  EXPECT_EQ(at(*windows[2]->picture(), 15, 5), nothing);
  EXPECT_EQ(at(*windows[2]->picture(), 25, 5), red);
  drawn();
  picture->setNeedsDisplayInRect(NSMakeRect(25, 5, 10, 3));
  turn();
  EXPECT_EQ(windows[1]->takePresented(), (std::vector<NSRect>{NSMakeRect(0, 5, 5, 3)}));

  client().displayChangedFrame(NSMakeRect(110, 105, 200, 100));  // it goes along with its owner
  EXPECT_EQ(windows[1]->frame(), NSMakeRect(310, 95, 10, 20));
  overlay->setFrame(NSMakeRect(120, 120, 40, 20));  // back inside
  turn();
  EXPECT_EQ(display.windows().size(), 1u);
  EXPECT_EQ(shownAt(45, 20), red);
}

TEST_F(Overlay, IsHiddenWithItsOwnerAndMayOutliveIt) {
  showOverlay(NSMakeRect(280, 120, 40, 20));
  window->close();
  EXPECT_FALSE(overlay->isVisible());
  EXPECT_TRUE(display.windows().empty());
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
  client().displayExposed(NSMakeRect(5, 5, 10, 10));  // brought again without drawing
  EXPECT_EQ(drawn(), Lines{});
  EXPECT_EQ(presented, (std::vector<NSRect>{NSMakeRect(5, 5, 10, 10)}));
}
