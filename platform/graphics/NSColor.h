#pragma once

#include <memory>

#include "NSObject.h"

/// An immutable colour: sRGB values and alpha from 0 to 1, used as they are ("calibrated" means no
/// conversion). Equal by value.
class NSColor : public NSObject {
 public:
  NSColor(float red, float green, float blue, float alpha)
      : red_(red), green_(green), blue_(blue), alpha_(alpha) {}

  static std::shared_ptr<NSColor> colorWithCalibratedWhite_alpha(float white, float alpha);
  static std::shared_ptr<NSColor> colorWithCalibratedRed_green_blue_alpha(float red, float green, float blue,
                                                                          float alpha);
  static std::shared_ptr<NSColor> blackColor();
  static std::shared_ptr<NSColor> whiteColor();
  static std::shared_ptr<NSColor> grayColor();  // white 0.5
  static std::shared_ptr<NSColor> blueColor();
  static std::shared_ptr<NSColor> clearColor();

  /// The same colour with that alpha, whatever its alpha was.
  std::shared_ptr<NSColor> colorWithAlphaComponent(float alpha) const;

  float redComponent() const { return red_; }
  float greenComponent() const { return green_; }
  float blueComponent() const { return blue_; }
  float alphaComponent() const { return alpha_; }

  /// Makes it the fill and stroke colour of the current graphics state.
  void set() const;

  bool isEqual(const NSObject* other) const override;
  const Class& isa() const override;
  static const Class& record();

 private:
  float red_, green_, blue_, alpha_;
};
