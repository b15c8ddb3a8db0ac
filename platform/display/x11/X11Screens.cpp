#include "X11Screens.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string_view>

#include "NumberText.h"

namespace {

constexpr float roundingSlack = 1e-3f;

int rounded(float value) {
  return static_cast<int>(std::lround(value));
}
int pixelCount(float points, float scale) {
  return std::max(1, static_cast<int>(std::ceil(points * scale - roundingSlack)));
}

NSRect pointsFrom(PixelRect r, PixelRect primary, float scale) {
  const int below = primary.y + primary.height - (r.y + r.height);
  return NSMakeRect(static_cast<float>(r.x - primary.x) / scale, static_cast<float>(below) / scale,
                    static_cast<float>(r.width) / scale, static_cast<float>(r.height) / scale);
}

}  // namespace

std::vector<PixelRect> X11Screens::monitors() const {
  std::vector<PixelRect> list;
  XConnection* x = connection_.x();
  if (connection_.hasMonitors()) {
    int count = 0;
    XRRMonitorInfo* found = XRRGetMonitors(x, connection_.root(), True, &count);
    for (int i = 0; i < count; ++i) {
      const PixelRect monitor{found[i].x, found[i].y, found[i].width, found[i].height};
      if (!monitor.isEmpty()) list.insert(found[i].primary ? list.begin() : list.end(), monitor);
    }
    if (found) XRRFreeMonitors(found);
  }
  if (list.empty())
    list.push_back({0, 0, DisplayWidth(x, connection_.screen()), DisplayHeight(x, connection_.screen())});
  return list;
}

std::vector<NSRect> X11Screens::frames() const {
  std::vector<NSRect> list;
  const std::vector<PixelRect> all = monitors();
  for (const PixelRect& monitor : all) list.push_back(pointsFrom(monitor, all.front(), scale_));
  return list;
}

PixelRect X11Screens::toPixels(NSRect points) const {
  const PixelRect primary = monitors().front();
  const int height = pixelCount(points.size.height, scale_);
  const int bottom = primary.y + primary.height - rounded(points.origin.y * scale_);
  return {primary.x + rounded(points.origin.x * scale_), bottom - height,
          pixelCount(points.size.width, scale_), height};
}

NSRect X11Screens::toPoints(PixelRect pixels) const {
  return pointsFrom(pixels, monitors().front(), scale_);
}

PixelRect X11Screens::nearest(int x, int y) const {
  PixelRect best;
  long bestDistance = -1;
  for (const PixelRect& m : monitors()) {
    const int cx = std::clamp(x, m.x, m.x + m.width - 1);
    const int cy = std::clamp(y, m.y, m.y + m.height - 1);
    const long distance = std::labs(static_cast<long>(cx) - x) + std::labs(static_cast<long>(cy) - y);
    if (bestDistance >= 0 && distance >= bestDistance) continue;
    best = {cx, cy, 1, 1};
    bestDistance = distance;
  }
  return best;
}

float scaleFromResources(const char* resources) {
  constexpr std::string_view key = "Xft.dpi:";
  std::string_view rest = resources ? resources : "";
  while (!rest.empty()) {
    const size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (!line.starts_with(key)) continue;
    const double scale = std::round(foundation::numberPrefix(line.substr(key.size())).value / 96 * 4) / 4;
    return scale >= 0.5 && scale <= 8 ? static_cast<float>(scale) : 1;
  }
  return 1;
}
