#include "NSImageUtils.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "NSBundle.h"
#include "NumberText.h"

std::shared_ptr<NSBezierPath> bezierPathWithRoundedRect_cornerRadius(NSRect rect, float radius) {
  const float left = NSMinX(rect) + radius, right = NSMaxX(rect) - radius;
  const float bottom = NSMinY(rect) + radius, top = NSMaxY(rect) - radius;
  auto path = NSBezierPath::bezierPath();
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({left, bottom}, radius, 180, 270);
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({right, bottom}, radius, 270, 0);
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({right, top}, radius, 0, 90);
  path->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({left, top}, radius, 90, 180);
  path->closePath();
  return path;
}

void drawInRect_cornerSizeX_cornerSizeY_operation_fraction(const NSImage& image, NSRect target,
                                                           float cornerSizeX, float cornerSizeY,
                                                           NSCompositingOperation operation, float fraction) {
  const auto limited = [](float corner, float side) {
    return static_cast<float>(std::min<double>(corner, std::floor(side * 0.5) - 1));
  };
  const float cx = limited(cornerSizeX, NSWidth(target));
  const float cy = limited(cornerSizeY, NSHeight(target));

  struct Band {
    float to, toSize, from, fromSize;
  };
  const auto bands = [](float origin, float size, float corner, float imageSize) {
    return std::array<Band, 3>{{{origin, corner, 0, corner},
                                {origin + corner, size - 2 * corner, corner, imageSize - 2 * corner},
                                {origin + size - corner, corner, imageSize - corner, corner}}};
  };
  const auto columns = bands(NSMinX(target), NSWidth(target), cx, image.size().width);
  const auto rows = bands(NSMinY(target), NSHeight(target), cy, image.size().height);
  for (const Band& row : rows)
    for (const Band& column : columns)
      image.drawInRect_fromRect_operation_fraction(
          NSMakeRect(column.to, row.to, column.toSize, row.toSize),
          NSMakeRect(column.from, row.from, column.fromSize, row.fromSize), operation, fraction);
}

std::shared_ptr<NSColor> vellColor_alpha(uint32_t rgb, float alpha) {
  const auto component = [&](int shift) { return static_cast<float>(rgb >> shift & 255) / 255; };
  return NSColor::colorWithCalibratedRed_green_blue_alpha(component(16), component(8), component(0), alpha);
}

std::string stringWithNiceFloatValue_digits(float value, int digits) {
  std::string text = foundation::fixedText(value, 4).substr(0, static_cast<size_t>(std::max(digits, 0)));
  if (text.find('.') == std::string::npos) return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.') text.pop_back();
  return text;
}

std::shared_ptr<NSImage> imageNamed_fromResource(const char* name, const char* resource,
                                                 const Class& classOfBundle) {
  if (auto image = NSImage::imageNamed(name)) return image;
  const NSBundle* bundle = NSBundle::bundleForClass(classOfBundle);
  auto image =
      NSImage::initByReferencingFile(bundle ? bundle->pathForImageResource(resource) : std::string());
  image->setName(name);
  return image;
}
