#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "NSBezierPath.h"
#include "NSColor.h"
#include "NSImage.h"

/// Closed path of four quarter circles, counter-clockwise from the lower left corner. The radius is not
/// limited to half the width or height.
std::shared_ptr<NSBezierPath> bezierPathWithRoundedRect_cornerRadius(NSRect rect, float radius);

/// Draws the image in nine pieces: the corners at their own size, the edges stretched in one direction, the
/// centre in both. The corners are limited to half the target less one point.
void drawInRect_cornerSizeX_cornerSizeY_operation_fraction(const NSImage& image, NSRect target,
                                                           float cornerSizeX, float cornerSizeY,
                                                           NSCompositingOperation operation, float fraction);

/// The colour 0xRRGGBB; the top byte is ignored.
std::shared_ptr<NSColor> vellColor_alpha(uint32_t rgb, float alpha);

/// Four decimals, cut (not rounded) to `digits` characters, then without trailing zeros of the fraction:
/// with 6, 12.3456 reads "12.345", 1 reads "1", 100000 reads "100000".
std::string stringWithNiceFloatValue_digits(float value, int digits);

/// The image registered under `name`; the first time, it is made from the bundle's image resource.
std::shared_ptr<NSImage> imageNamed_fromResource(const char* name, const char* resource,
                                                 const Class& classOfBundle);
