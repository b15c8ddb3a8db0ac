#include "NSBezierPath.h"
#include "ViewBench.h"

namespace {

class Damage : public ViewBench {};

class DamageAtFractionalScale : public ViewBench {
 protected:
  DamageAtFractionalScale() : ViewBench(1.5f) {}
};

}  // namespace

TEST_F(Damage, IsWhatWasMarkedOnceATurnAndSeen) {
  const auto a = add("a", NSMakeRect(20, 10, 40, 30));
  const auto inner = add("inner", NSMakeRect(30, 20, 10, 10), a.get());
  const std::pair<std::function<void()>, Lines> steps[] = {
      {[&] {
         a->setNeedsDisplayInRect(NSMakeRect(5, 5, 10, 10));
         a->setNeedsDisplayInRect(NSMakeRect(8, 8, 4, 4));
       },
       {"draw root 25 15 10 10", "draw a 5 5 10 10"}},
      {[] {}, {}},
      {[&] {  // two ends of a window are not joined; touching rectangles are
         a->setNeedsDisplayInRect(NSMakeRect(0, 0, 4, 4));
         root->setNeedsDisplayInRect(NSMakeRect(180, 80, 10, 10));
         a->setNeedsDisplayInRect(NSMakeRect(0, 4, 4, 100));
       },
       {"draw root 180 80 10 10", "draw root 20 10 4 30", "draw a 0 0 4 30"}},
      {[&] { a->setFrame(NSMakeRect(100, 10, 40, 30)); },  // the old place and the new one
       {"draw root 20 10 40 30", "draw root 100 10 40 30", "draw a 0 0 40 30", "draw inner 0 0 10 10"}},
      {[&] { a->setHidden(true); }, {"draw root 100 10 40 30"}},
      {[&] { inner->setNeedsDisplay(true); }, {}},
      {[&] { a->setHidden(false); }, {"draw root 100 10 40 30", "draw a 0 0 40 30", "draw inner 0 0 10 10"}},
      {[&] { client().displayChangedVisibility(false), root->setNeedsDisplay(true); }, {}},
      {[&] { client().displayChangedVisibility(true); },
       {"draw root 0 0 200 100", "draw a 0 0 40 30", "draw inner 0 0 10 10"}},
  };
  for (const auto& [mark, expected] : steps) {
    mark();
    EXPECT_EQ(drawn(), expected);
  }
}

TEST_F(Damage, MarkingInDrawRectCountsForTheNextTurn) {
  const auto view = add("a", NSMakeRect(0, 0, 10, 10));
  int marks = 2;
  view->onDraw = [&] { view->setNeedsDisplay(marks-- > 0); };
  view->setNeedsDisplay(true);
  for (const size_t draws : {2u, 2u, 2u, 0u}) EXPECT_EQ(drawn().size(), draws);
}

TEST_F(Damage, AnOpaqueViewStopsTheDrawingOfWhatItCovers) {
  add("below", NSMakeRect(20, 10, 40, 30));
  const auto group = add("group", NSMakeRect(20, 10, 40, 30));
  const auto cover = add("cover", NSMakeRect(10, 10, 20, 20), group.get());
  add("above", NSMakeRect(30, 20, 5, 5));
  cover->opaque = true;
  root->setNeedsDisplayInRect(NSMakeRect(30, 20, 10, 10));
  EXPECT_EQ(drawn(), (Lines{"draw cover 0 0 10 10", "draw above 0 0 5 5"}));
  root->setNeedsDisplayInRect(NSMakeRect(29, 20, 10, 10));  // a column beside it
  EXPECT_EQ(drawn(), (Lines{"draw root 29 20 10 10", "draw below 9 10 10 10", "draw group 9 10 10 10",
                            "draw cover 0 0 9 10", "draw above 0 0 5 5"}));
  cover->setHidden(true);
  EXPECT_EQ(drawn().front(), "draw root 30 20 20 20");
}

TEST_F(Damage, WhatAViewLeavesBehindReachesNoOther) {
  const auto fill = [] { NSBezierPath::fillRect(NSMakeRect(-500, -500, 1000, 1000)); };
  const auto untidy = add("untidy", NSMakeRect(0, 0, 60, 60));
  const auto inner = add("inner", NSMakeRect(40, 40, 10, 10), untidy.get());
  const auto sibling = add("sibling", NSMakeRect(100, 0, 20, 20));
  untidy->onDraw = [&] {
    colorOf(red)->set();
    fill();
    NSBezierPath::bezierPathWithRect(NSMakeRect(0, 0, 5, 5))->addClip();
    NSGraphicsContext::currentContext()->translate(7, 7);
  };
  inner->onDraw = sibling->onDraw = fill;
  root->setNeedsDisplay(true);
  turn();
  const std::pair<NSPoint, unsigned> colors[] = {{{1, 59}, 0xff0000},  {{61, 30}, 0xffffff}, {{41, 41}, 0},
                                                 {{51, 45}, 0xff0000}, {{99, 10}, 0xffffff}, {{119, 19}, 0}};
  for (const auto& [place, color] : colors) EXPECT_EQ(colorAt(place), color) << place.x;
}

TEST_F(DamageAtFractionalScale, GrowsToWholePixels) {
  root->setNeedsDisplayInRect(NSMakeRect(10.1f, 20, 2, 3));
  drawn();
  EXPECT_EQ(presented, (std::vector<NSRect>{NSMakeRect(10, 20, 19 / 1.5f - 10, 35 / 1.5f - 20)}));
}
