#include "jxAUCurveOutline.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "Canvas.h"
#include "NSBezierPath.h"
#include "jxAUFreqResponseView.h"

namespace {

Bitmap drawnWith(const std::vector<NSPoint>& points, float tolerance, float scale) {
  return painted({464, 164}, scale, [&] {
    colorOf(white)->set();
    NSBezierPath::fillRect({{0, 0}, {464, 164}});
    const auto path = NSBezierPath::bezierPath();
    path->moveToPoint({0, 0});
    jxAUCurveOutline outline(*path, tolerance / scale);
    for (const NSPoint& p : points) tolerance == 0 ? path->lineToPoint(p) : outline.add(p);
    outline.end();
    path->lineToPoint({464, 0});
    jxAUFreqResponseView::graphColor()->set();
    path->fill();
  });
}

TEST(CurveOutline, LooksLikeTheFullCurve) {
  std::minstd_rand random(1);
  // The last is a thicket, which has 16 samples in a pixel: three of them make 24 grey steps.
  const std::pair<std::function<float(float)>, int> curves[] = {
      {[](float x) { return 20 + 120 / (1 + (x - 300) * (x - 300)); }, 8},
      {[](float x) { return x < 250 ? 130.0f : 30.0f; }, 8},
      {[&](float) { return static_cast<float>(random() % 160); }, 24},
  };
  for (const auto& [curve, allowed] : curves) {
    std::vector<NSPoint> points;
    for (int i = 1; i < 2048; ++i) {
      const float x = (std::log2(static_cast<float>(i)) - 2.2f) * 464 / 8.8f;
      points.push_back({x, curve(x)});
    }
    for (const float scale : {1.0f, 2.0f}) {
      const Bitmap full = drawnWith(points, 0, scale), fast = drawnWith(points, 0.05f, scale);
      int most = 0;
      double sum = 0;
      for (int y = 0; y < full.physicalHeight(); ++y)
        for (int x = 0; x < full.physicalWidth(); ++x) {
          const int d = std::abs(full.pixel(x, y)[0] - fast.pixel(x, y)[0]);
          most = std::max(most, d);
          sum += d;
        }
      EXPECT_LE(most, allowed);
      EXPECT_LE(sum / (full.physicalWidth() * full.physicalHeight()), 0.5);
    }
  }
}

}  // namespace
