#include "PresetBar.h"

#include "Class.h"
#include "EffectPresets.h"
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
  for (const std::string& name : effectPresets(unit)) menu_->addItemWithTitle(name);
  for (int i = 1; i < menu_->numberOfItems(); ++i) {
    menu_->itemAtIndex(i)->setTarget(this);
    menu_->itemAtIndex(i)->setAction(NSSelectorFromString("presetChosen:"));
  }
  addSubview(menu_);
}

void PresetBar::presetChosen(NSMenuItem* item) {
  chooseEffectPreset(unit_, menu_->menu()->indexOfItem(*item) - 1);
}

void PresetBar::drawRect(NSRect) {
  fill(bounds(), 0.84f);
  fill(NSMakeRect(0, 0, NSWidth(bounds()), 1), 0.68f);
}
