#include "ContactSheet.h"

#include <algorithm>
#include <cmath>

#include "Bitmap.h"
#include "NSBezierPath.h"
#include "NSColor.h"
#include "NSGraphicsContext.h"
#include "NSImage.h"

namespace {

constexpr float sheetWidth = 1248;
constexpr float gap = 24;

}  // namespace

void ContactSheet::add(std::string pngFile, NSSize size) {
  pictures_.push_back({std::move(pngFile), {{0, 0}, size}});
}

float ContactSheet::place() {
  std::vector<Picture> waiting;
  waiting.swap(pictures_);
  std::stable_sort(waiting.begin(), waiting.end(),
                   [](const Picture& a, const Picture& b) { return NSHeight(a.frame) > NSHeight(b.frame); });
  float top = gap;
  while (!waiting.empty()) {
    const size_t first = pictures_.size();
    float right = gap;
    for (auto next = waiting.begin(); next != waiting.end();) {
      const bool fits = right + NSWidth(next->frame) + gap <= sheetWidth || right == gap;
      if (!fits) {
        ++next;
        continue;
      }
      next->frame.origin = {right, top};
      right += NSWidth(next->frame) + gap;
      pictures_.push_back(std::move(*next));
      next = waiting.erase(next);
    }
    for (size_t i = first; i < pictures_.size(); ++i)
      pictures_[i].frame.origin.x += std::floor((sheetWidth - right) / 2);
    top += NSHeight(pictures_[first].frame) + gap;
  }
  return top;
}

void ContactSheet::writePng(const std::string& file) {
  const float height = place();
  Bitmap sheet({sheetWidth, height}, scale_);
  {
    NSGraphicsContext context(sheet);
    NSColor::colorWithCalibratedWhite_alpha(0.32f, 1)->set();
    NSBezierPath::fillRect(NSMakeRect(0, 0, sheetWidth, height));
    for (const Picture& picture : pictures_) {
      NSRect frame = picture.frame;
      frame.origin.y = height - NSMaxY(frame);
      NSImage::initByReferencingFile(picture.file)
          ->drawInRect_fromRect_operation_fraction(frame, {}, NSCompositeSourceOver, 1);
    }
  }
  sheet.writePng(file);
}
