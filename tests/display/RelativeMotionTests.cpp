#include "RelativeMotion.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Step {
  enum Kind { raw, moved, taken } kind;
  double x = 0;
  double y = 0;
};

struct Case {
  const char* name;
  bool unbounded;
  int x, y;  // the place of the press
  std::vector<Step> steps;
  double sumX, sumY;
};

const std::vector<PixelRect> twoMonitors{{0, 0, 100, 100}, {100, 50, 100, 100}};
const std::vector<Step> agreed{{Step::raw, 4, 1}, {Step::moved, 54, 51}, {Step::taken}};

std::vector<Step> after(std::vector<Step> first, const std::vector<Step>& then) {
  first.insert(first.end(), then.begin(), then.end());
  return first;
}

}  // namespace

TEST(RelativeMotion, AddsUpToThePointersMotion) {
  const std::vector<Case> cases{
      {"places alone", false, 50, 50, {{Step::moved, 60, 40}, {Step::moved, 55, 45}}, 5, -5},
      {"raw motion counts for nothing on the way", true, 50, 50,
       after(agreed, {{Step::raw, 5, 0}, {Step::taken}, {Step::moved, 59, 51}}), 9, 1},
      {"beyond the left edge", true, 50, 50,
       after(agreed, {{Step::raw, -60, 3}, {Step::moved, 0, 54}, {Step::raw, -20, 2}, {Step::moved, 0, 56}}),
       -76, 6},
      {"beyond the edge without a place", true, 50, 50,
       after(agreed, {{Step::raw, 0, -51},
                      {Step::moved, 54, 0},
                      {Step::raw, 0, -9},
                      {Step::taken},
                      {Step::raw, 0, -9},
                      {Step::taken}}),
       4, -68},
      {"coming back from the edge is not counted twice", true, 50, 50,
       after(agreed, {{Step::raw, -54, 0},
                      {Step::moved, 0, 51},
                      {Step::raw, 7, 0},
                      {Step::taken},
                      {Step::moved, 7, 51}}),
       -43, 1},
      {"a visible pointer stops at the edge", false, 50, 50,
       after(agreed, {{Step::raw, -60, 0}, {Step::moved, 0, 51}}), -50, 1},
      {"absolute numbers of a nested server are not believed",
       true,
       50,
       20,
       {{Step::raw, 500, 400}, {Step::moved, 52, 21}, {Step::raw, 900, 400}, {Step::moved, 99, 21}},
       49,
       1},
      {"a jump without device motion", true, 50, 50, after(agreed, {{Step::moved, 0, 90}}), -50, 40},
      {"the seam between two monitors is no edge",
       true,
       50,
       60,
       {{Step::raw, 4, 0}, {Step::moved, 54, 60}, {Step::raw, 80, 0}, {Step::moved, 99, 60}},
       49,
       0},
      {"beside the seam there is an edge",
       true,
       50,
       20,
       {{Step::raw, 4, 0}, {Step::moved, 54, 20}, {Step::raw, 80, 0}, {Step::moved, 99, 20}},
       84,
       0},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    RelativeMotion motion;
    motion.setScreens(twoMonitors);
    motion.setUnbounded(c.unbounded);
    motion.place(c.x, c.y);
    RelativeMotion::Delta sum;
    const auto take = [&] {
      const auto delta = motion.take();
      sum.x += delta.x;
      sum.y += delta.y;
    };
    for (const Step& step : c.steps) {
      if (step.kind == Step::raw) motion.raw(step.x, step.y);
      if (step.kind == Step::moved) motion.moved(static_cast<int>(step.x), static_cast<int>(step.y));
      if (step.kind == Step::taken) take();
    }
    take();
    EXPECT_DOUBLE_EQ(sum.x, c.sumX);
    EXPECT_DOUBLE_EQ(sum.y, c.sumY);
  }
}
