#include "NSColorCoding.h"

#include "NSCoder.h"
#include "NSColor.h"

namespace {

void encode(const NSObject& object, NSCoder& coder) {
  const auto& color = static_cast<const NSColor&>(object);
  for (const double component :
       {color.redComponent(), color.greenComponent(), color.blueComponent(), color.alphaComponent()})
    coder.encodeValueOfObjCType_at("d", &component);
}

std::shared_ptr<NSObject> decode(NSCoder& coder) {
  float components[4];
  for (float& component : components) {
    double value;
    coder.decodeValueOfObjCType_at("d", &value);
    component = value > 0 ? static_cast<float>(std::min(value, 1.0)) : 0;  // nor what is no number
  }
  return NSColor::colorWithCalibratedRed_green_blue_alpha(components[0], components[1], components[2],
                                                          components[3]);
}

}  // namespace

const Class& archivedColorRecord() {
  static const Class c =
      Class::of<NSColor>(NSColor::record().name(), NSObject::record()).archivedBy({encode, decode});
  return c;
}
