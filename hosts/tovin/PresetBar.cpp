#include "PresetBar.h"

#include "AudioUnitProperties.h"
#include "Class.h"
#include "NSBezierPath.h"
#include "NSColor.h"

namespace {

constexpr float menuWidth = 140, menuHeight = 16, margin = 24;

void fill(NSRect rect, float white) {
  NSColor::colorWithCalibratedWhite_alpha(white, 1)->set();
  NSBezierPath::fillRect(rect);
}

}  // namespace

const Class& PresetBar::isa() const {
  return record();
}

const Class& PresetBar::record() {
  static const Class c =
      Class::of<PresetBar>("PresetBar", NSView::record()).answers<&PresetBar::presetChosen>("presetChosen:");
  return c;
}

PresetBar::PresetBar(AudioUnit unit, float width)
    : NSView(NSMakeRect(0, 0, width, height)),
      unit_(unit),
      menu_(std::make_shared<NSPopUpButton>(
          NSMakeRect(margin, (height - menuHeight) / 2, menuWidth, menuHeight), /*pullsDown=*/true)) {
  menu_->addItemWithTitle("presets");
  CFArrayRef names = nullptr;
  UInt32 size = sizeof names;
  if (AudioUnitGetProperty(unit, kAudioUnitProperty_FactoryPresets, kAudioUnitScope_Global, 0, &names,
                           &size) == noErr) {
    for (size_t i = 0; i < CFArrayGetCount(names); ++i)
      menu_->addItemWithTitle(CFStringGetText(CFArrayGetStringAtIndex(names, i)));
    CFRelease(names);
  }
  for (int i = 1; i < menu_->numberOfItems(); ++i) {
    menu_->itemAtIndex(i)->setTarget(this);
    menu_->itemAtIndex(i)->setAction(NSSelectorFromString("presetChosen:"));
  }
  addSubview(menu_);
}

void PresetBar::presetChosen(NSMenuItem* item) {
  const AUPreset preset{menu_->menu()->indexOfItem(*item) - 1, nullptr};
  AudioUnitSetProperty(unit_, kAudioUnitProperty_PresentPreset, kAudioUnitScope_Global, 0, &preset,
                       sizeof preset);
}

void PresetBar::drawRect(NSRect) {
  fill(bounds(), 0.84f);
  fill(NSMakeRect(0, 0, NSWidth(bounds()), 1), 0.68f);
}
