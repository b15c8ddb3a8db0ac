#include "RelativeMotion.h"

#include <gtest/gtest.h>

#include <sstream>

TEST(RelativeMotion, AddsUpToThePointersMotion) {
  using enum RelativeMotion::Extent;
  const std::string agreed = "raw 4 1 to 54 51 take ";
  const struct {
    const char* name;
    RelativeMotion::Extent extent;
    int x, y;           // the place of the press, on two monitors
    std::string steps;  // raw motion, a new place of the pointer, or the motion so far is taken
    double sumX, sumY;
  } cases[] = {
      {"raw motion counts for nothing on the way", unbounded, 50, 50, agreed + "raw 5 0 take to 59 51", 9, 1},
      {"beyond the left edge", unbounded, 50, 50, agreed + "raw -60 3 to 0 54 raw -20 2 to 0 56", -76, 6},
      {"beyond the edge without a place", unbounded, 50, 50,
       agreed + "raw 0 -51 to 54 0 raw 0 -9 take raw 0 -9 take", 4, -68},
      {"coming back from the edge is not counted twice", unbounded, 50, 50,
       agreed + "raw -54 0 to 0 51 raw 7 0 take to 7 51", -43, 1},
      {"a visible pointer stops at the edge", bounded, 50, 50, agreed + "raw -60 0 to 0 51", -50, 1},
      {"absolute numbers of a nested server are not believed", unbounded, 50, 20,
       "raw 500 400 to 52 21 raw 900 400 to 99 21", 49, 1},
      {"the seam between two monitors is no edge", unbounded, 50, 60, "raw 4 0 to 54 60 raw 80 0 to 99 60",
       49, 0},
      {"beside the seam there is an edge", unbounded, 50, 20, "raw 4 0 to 54 20 raw 80 0 to 99 20", 84, 0},
      {"a locked pointer's places count for nothing", locked, 50, 50,
       "raw 4 1 to 54 51 take raw -200 0 to 0 51 raw -200 0 take", -396, 1},
  };
  for (const auto& c : cases) {
    RelativeMotion motion;
    motion.setScreens({{0, 0, 100, 100}, {100, 50, 100, 100}});
    motion.setExtent(c.extent);
    motion.place(c.x, c.y);
    double sumX = 0, sumY = 0;
    std::istringstream steps(c.steps + " take");
    int x = 0, y = 0;
    for (std::string step; steps >> step;) {
      if (step == "raw" && steps >> x >> y) motion.raw(x, y);
      if (step == "to" && steps >> x >> y) motion.moved(x, y);
      if (step != "take") continue;
      const auto delta = motion.take();
      sumX += delta.x;
      sumY += delta.y;
    }
    EXPECT_DOUBLE_EQ(sumX, c.sumX) << c.name;
    EXPECT_DOUBLE_EQ(sumY, c.sumY) << c.name;
  }
}
