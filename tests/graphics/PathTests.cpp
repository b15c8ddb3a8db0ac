#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "Canvas.h"
#include "LogLines.h"
#include "NSAffineTransform.h"
#include "NSBezierPath.h"

namespace {

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
  const std::string all = "E NE N NW W SW S SE";
  const struct {
    float start, end;
    bool clockwise;
    std::string filled;
  } cases[] = {
      {0, 90, false, "NE"},
      {0, 90, true, "E N NW W SW S SE"},
      {90, 0, true, "NE"},
      {0, 360, false, all},
      {0, 360, true, ""},
      {90, 90, false, ""},
      {225, 495, false, "E NE N NW SW S SE"},
      {225, -45, true, "E NE N NW W SW SE"},
      {0, 800, false, all},
      {720, 90, false, "NE"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(filledBy(c.start, c.end, c.clockwise), c.filled)
        << c.start << " to " << c.end << (c.clockwise ? " clockwise" : "");
}

TEST(Path, ALineLeadsFromTheCurrentPointToAnArc) {
  const Bitmap bitmap = painted({40, 40}, 1, [] {
    const auto alone = NSBezierPath::bezierPath();
    arc(*alone, {20, 20}, 4, 180, 200);  // nothing leads there from the origin
    const auto joined = through({{30, 2}});
    arc(*joined, {30, 36}, 2, 270, 300);
    const auto closed = through({{2, 30}, {2, 36}, {8, 36}});
    closed->closePath();
    arc(*closed, {26, 30}, 2, 180, 200);  // the current point is (2, 30) again
    closed->setLineWidth(2);
    for (const auto& path : {alone, joined, closed}) path->stroke();
  });
  EXPECT_EQ(at(bitmap, 8, 10), nothing);
  EXPECT_GT(at(bitmap, 29.5f, 20)[3], 100);
  EXPECT_EQ(at(bitmap, 18, 30), black);
  EXPECT_EQ(at(bitmap, 18, 33), nothing);
}

TEST(Path, PointsThatAreNoNumbersAreDroppedAndFarOnesClampedWithOneLineEach) {
  LogLines log;
  const Bitmap bitmap = painted({20, 20}, 1, [] {
    for (int again = 0; again < 2; ++again) {
      const auto path = through({{NAN, 3}, {2, 2}, {18, NAN}, {INFINITY, 2}, {1e30f, 10}, {2, 10}});
      arc(*path, {NAN, NAN}, 3, 0, 90);
      arc(*path, {5, 5}, INFINITY, 0, 90);
      EXPECT_EQ(path->controlPointBounds(), NSMakeRect(2, 2, 15998, 8));
      path->fill();
    }
  });
  const auto isBlack = [](const Pixel& pixel) { return pixel == black; };
  EXPECT_EQ(boundsWhere(bitmap, isBlack), (std::array<int, 4>{2, 10, 20, 18}));
  EXPECT_EQ(log.count("not a number"), 1);
  EXPECT_EQ(log.count("clamped"), 1);
  EXPECT_EQ(log.all().size(), 3u) << "and one for the arc of no radius";
}

TEST(Path, AOnePointStrokeOnHalfPointsCoversWholePixelRows) {
  for (const int scale : {1, 2, 3}) {
    const Bitmap bitmap = painted({8, 8}, static_cast<float>(scale), [] {
      through({{1, 2.5f}, {7, 2.5f}})->stroke();
    });
    const size_t s = static_cast<size_t>(scale);
    std::vector<std::string> expected(8 * s, std::string(8 * s, '.'));
    for (size_t i = 0; i < s; ++i) expected[5 * s + i].replace(s, 6 * s, 6 * s, 'k');
    EXPECT_EQ(letters(bitmap), expected) << scale;
  }
}

TEST(AffineTransform, TheStepThatIsAddedLastComesFirst) {
  auto transform = NSAffineTransform::transform();
  transform.translateXBy_yBy(10, 0);
  transform.rotateByDegrees(90);
  transform.translateXBy_yBy(0, -2);
  const NSPoint mapped = transform.transformPoint({3, 0});
  EXPECT_NEAR(mapped.x, 12, 1e-5);
  EXPECT_NEAR(mapped.y, 3, 1e-5);

  const auto path = NSBezierPath::bezierPathWithRect(NSMakeRect(2, 0, 2, 4));
  path->setLineWidth(3);
  EXPECT_EQ(transform.transformBezierPath(*path)->lineWidth(), 3);
  const auto mappedPath = painted({20, 10}, 1, [&] { transform.transformBezierPath(*path)->fill(); });
  const auto concatenated = painted({20, 10}, 1, [&] { transform.concat(), path->fill(); });
  EXPECT_EQ(letters(mappedPath), letters(concatenated));
  EXPECT_EQ(at(mappedPath, 9, 3), black);
}
