#include "jxAUrenderQ.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<UInt32, 5> qualities{kRenderQuality_Max, kRenderQuality_High, kRenderQuality_Medium,
                                          kRenderQuality_Low, kRenderQuality_Min};

}  // namespace

const Class& jxAUrenderQ::isa() const {
  return record();
}

const Class& jxAUrenderQ::record() {
  static const Class c = Class::of<jxAUrenderQ>("jxAUrenderQ", NSPopUpButton::record())
                             .answers<&jxAUrenderQ::propertyChanged>("propertyChanged:")
                             .answers<&jxAUrenderQ::menuChanged>("menuChanged:");
  return c;
}

jxAUrenderQ::jxAUrenderQ(NSRect frame) : NSPopUpButton(frame) {
  setTarget(this);
  setAction(NSSelectorFromString("menuChanged:"));
}

void jxAUrenderQ::setProperty(const AudioUnitProperty& property) {
  mProperty.reset();
  mProperty = std::make_shared<jxAUProperty>(property, this, NSSelectorFromString("propertyChanged:"));
  propertyChanged(this);
}

void jxAUrenderQ::propertyChanged(NSObject*) {
  const auto quality = mProperty ? mProperty->value() : std::nullopt;
  if (!quality) return;
  const auto found = std::find(qualities.begin(), qualities.end(), *quality);
  if (found != qualities.end()) selectItemAtIndex(static_cast<int>(found - qualities.begin()));
}

void jxAUrenderQ::menuChanged(NSObject*) {
  const auto index = static_cast<size_t>(indexOfSelectedItem());  // none: beyond all
  if (mProperty && index < qualities.size()) mProperty->setValue(qualities[index]);
}
