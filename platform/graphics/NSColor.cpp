#include "NSColor.h"

#include "Class.h"
#include "NSGraphicsContext.h"

const Class& NSColor::isa() const {
  return record();
}

const Class& NSColor::record() {
  static const Class c = Class::of<NSColor>("NSColor", NSObject::record());
  return c;
}

std::shared_ptr<NSColor> NSColor::colorWithCalibratedWhite_alpha(float white, float alpha) {
  return std::make_shared<NSColor>(white, white, white, alpha);
}

std::shared_ptr<NSColor> NSColor::colorWithCalibratedRed_green_blue_alpha(float red, float green, float blue,
                                                                          float alpha) {
  return std::make_shared<NSColor>(red, green, blue, alpha);
}

std::shared_ptr<NSColor> NSColor::blackColor() {
  return colorWithCalibratedWhite_alpha(0, 1);
}
std::shared_ptr<NSColor> NSColor::whiteColor() {
  return colorWithCalibratedWhite_alpha(1, 1);
}
std::shared_ptr<NSColor> NSColor::grayColor() {
  return colorWithCalibratedWhite_alpha(0.5f, 1);
}
std::shared_ptr<NSColor> NSColor::blueColor() {
  return colorWithCalibratedRed_green_blue_alpha(0, 0, 1, 1);
}
std::shared_ptr<NSColor> NSColor::clearColor() {
  return colorWithCalibratedWhite_alpha(0, 0);
}

std::shared_ptr<NSColor> NSColor::colorWithAlphaComponent(float alpha) const {
  return std::make_shared<NSColor>(red_, green_, blue_, alpha);
}

void NSColor::set() const {
  if (NSGraphicsContext* context = NSGraphicsContext::currentContext()) context->setColor(*this);
}

bool NSColor::isEqual(const NSObject* other) const {
  const auto* color = dynamic_cast<const NSColor*>(other);
  return color && color->red_ == red_ && color->green_ == green_ && color->blue_ == blue_ &&
         color->alpha_ == alpha_;
}
