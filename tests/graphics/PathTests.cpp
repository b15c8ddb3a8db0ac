#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "Canvas.h"
#include "LogLines.h"
#include "NSAffineTransform.h"
#include "NSBezierPath.h"

namespace {

using Rows = std::vector<std::string>;

void arc(NSBezierPath& path, NSPoint center, float radius, float start, float end, bool clockwise = false) {
  path.appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(center, radius, start, end,
                                                                              clockwise);
}

std::shared_ptr<NSBezierPath> through(std::initializer_list<NSPoint> points) {
  auto path = NSBezierPath::bezierPath();
  for (const NSPoint point : points) path->lineToPoint(point);
  return path;
}

/// Which of the eight points of the compass, just inside a circle of 25 points, an arc's filling covers.
std::string filledBy(float start, float end, bool clockwise) {
  const Bitmap bitmap = painted({60, 60}, 1, [&] {
    const auto path = NSBezierPath::bezierPath();
    arc(*path, {30, 30}, 25, start, end, clockwise);
    path->fill();
  });
  const char* names[] = {"E", "NE", "N", "NW", "W", "SW", "S", "SE"};
  std::string filled;
  for (int i = 0; i < 8; ++i) {
    const float angle = static_cast<float>(i) * std::numbers::pi_v<float> / 4;
    const auto alphaAt = [&](float radius) {
      return at(bitmap, 30 + radius * std::cos(angle), 30 + radius * std::sin(angle))[3];
    };
    EXPECT_EQ(alphaAt(26.5f), 0) << "bulges to the " << names[i];
    if (alphaAt(22) == 255) filled += std::string(filled.empty() ? "" : " ") + names[i];
  }
  return filled;
}

}  // namespace

TEST(Path, ArcsGoRoundTheSideThatTheirDirectionSays) {
  const struct {
    float start, end;
    bool clockwise;
    std::string filled;
  } cases[] = {
      {0, 90, false, "NE"}, {0, 90, true, "E N NW W SW S SE"},     {0, 360, false, "E NE N NW W SW S SE"},
      {0, 360, true, ""},   {225, -45, true, "E NE N NW W SW SE"}, {720, 90, false, "NE"},
  };
  for (const auto& [start, end, clockwise, filled] : cases)
    EXPECT_EQ(filledBy(start, end, clockwise), filled) << start << " to " << end;
}

TEST(Path, ALineLeadsFromTheCurrentPointToAnArc) {
  const Bitmap bitmap = painted({40, 40}, 1, [] {
    const auto closed = through({{2, 30}, {2, 36}, {8, 36}});
    closed->closePath();
    arc(*closed, {26, 30}, 2, 180, 200);  // the current point is (2, 30) again
    closed->setLineWidth(2);
    closed->stroke();
  });
  EXPECT_EQ(at(bitmap, 18, 30), black);
  EXPECT_EQ(at(bitmap, 18, 33), nothing);
}

TEST(Path, PointsThatAreNoNumbersAreDroppedAndFarOnesClampedWithOneLineEach) {
  LogLines log;
  const Bitmap bitmap = painted({20, 20}, 1, [] {
    const auto path = through({{NAN, 3}, {2, 2}, {18, NAN}, {INFINITY, 2}, {1e30f, 10}, {2, 10}});
    arc(*path, {5, 5}, INFINITY, 0, 90);
    path->fill();
  });
  const auto isDrawn = [](const Pixel& pixel) { return pixel != nothing; };
  EXPECT_EQ(boundsWhere(bitmap, isDrawn), (std::array<int, 4>{2, 10, 20, 18}));
  EXPECT_EQ(log.count("not a number"), 1);
  EXPECT_EQ(log.count("clamped"), 1);
}

TEST(Path, AOnePointStrokeOnHalfPointsCoversWholePixelRows) {
  const auto stroke = [] { through({{1, 1.5f}, {3, 1.5f}})->stroke(); };
  EXPECT_EQ(letters(painted({4, 3}, 1, stroke)), (Rows{"....", ".kk.", "...."}));
  EXPECT_EQ(letters(painted({4, 2}, 2, stroke)), (Rows{"..kkkk..", "..kkkk..", "........", "........"}));
}

TEST(AffineTransform, TheStepThatIsAddedLastComesFirst) {
  auto transform = NSAffineTransform::transform();
  transform.translateXBy_yBy(10, 0);
  transform.rotateByDegrees(90);
  transform.translateXBy_yBy(0, -2);
  const NSPoint mapped = transform.transformPoint({3, 0});
  EXPECT_NEAR(mapped.x, 12, 1e-5);
  EXPECT_NEAR(mapped.y, 3, 1e-5);
}
