#include "NSPopUpButton.h"

#include "MenuTracking.h"
#include "NSWindow.h"
#include "PopUpLook.h"

const Class& NSPopUpButton::isa() const {
  return record();
}

const Class& NSPopUpButton::record() {
  static const Class c = Class::of<NSPopUpButton>("NSPopUpButton", NSControl::record())
                             .attribute<&NSPopUpButton::setPullsDown>("pullsDown");
  return c;
}

NSPopUpButton::NSPopUpButton(NSRect frame, bool pullsDown) : NSControl(frame), pullsDown_(pullsDown) {
  setControlSize(NSMiniControlSize);
}

void NSPopUpButton::setMenu(std::shared_ptr<NSMenu> menu) {
  MenuTracking::closeIn(*this);
  menu_ = menu ? std::move(menu) : std::make_shared<NSMenu>();
  selected_ = 0;
  setNeedsDisplay(true);
}

void NSPopUpButton::addItemWithTitle(std::string title) {
  menu_->addItemWithTitle(std::move(title));
  setNeedsDisplay(true);
}

void NSPopUpButton::addItemsWithTitles(const std::vector<std::string>& titles) {
  for (const std::string& title : titles) addItemWithTitle(title);
}

void NSPopUpButton::selectItemAtIndex(int index) {
  if (index == selected_ || (index != -1 && !itemAtIndex(index))) return;
  selected_ = index;
  setNeedsDisplay(true);
}

std::string NSPopUpButton::stringValue() const {
  const NSMenuItem* item = itemAtIndex(selected_);
  return item ? item->title() : std::string();
}

void NSPopUpButton::setPullsDown(bool pullsDown) {
  pullsDown_ = pullsDown;
  setNeedsDisplay(true);
}

void NSPopUpButton::setFont(std::shared_ptr<NSFont> font) {
  font_ = std::move(font);
  setNeedsDisplay(true);
}

void NSPopUpButton::setBordered(bool bordered) {
  bordered_ = bordered;
  setNeedsDisplay(true);
}

void NSPopUpButton::setControlSize(NSControlSize size) {
  const float points = size == NSRegularControlSize ? 12 : size == NSSmallControlSize ? 11 : 9;
  setFont(NSFont::fontWithName_size("LucidaGrande", points));
}

bool NSPopUpButton::isOpen() const {
  return MenuTracking::isOpenFor(*this);
}

std::vector<std::shared_ptr<NSMenuItem>> NSPopUpButton::listedItems() const {
  std::vector<std::shared_ptr<NSMenuItem>> items = menu_->itemArray();
  if (pullsDown_ && !items.empty()) items.erase(items.begin());
  return items;
}

void NSPopUpButton::drawRect(NSRect) {
  const bool focused = window() && window()->firstResponder() == this;
  popUpLook::drawButton(
      bounds(), {.bordered = bordered_, .pressed = isOpen(), .focused = focused, .pullsDown = pullsDown_});
  if (const NSMenuItem* item = itemAtIndex(pullsDown_ ? 0 : selected_))
    popUpLook::drawButtonTitle(bounds(), item->titleRuns(popUpLook::plainText(font_)));
}

void NSPopUpButton::mouseDown(const NSEvent& event) {
  MenuTracking::open(*this, &event);
}

void NSPopUpButton::keyDown(const NSEvent& event) {
  const bool space = event.key == NSKey::other && event.characters == " ";
  if (space || event.key == NSKey::enter || event.key == NSKey::up || event.key == NSKey::down) {
    MenuTracking::open(*this, nullptr);
  } else if (event.key == NSKey::tab && window()) {
    window()->selectNextField(*this, event.modifierFlags & NSShiftKeyMask);
  } else if (event.key == NSKey::escape && window()) {
    window()->makeFirstResponder(window()->initialFirstResponder());
  } else {
    NSControl::keyDown(event);
  }
}

bool NSPopUpButton::becomeFirstResponder() {
  setNeedsDisplay(true);
  return true;
}

bool NSPopUpButton::resignFirstResponder() {
  setNeedsDisplay(true);
  return true;
}

void NSPopUpButton::choose(NSMenuItem& item) {
  const int index = menu_->indexOfItem(item);
  if (index < 0) return;  // taken out while the menu was open
  if (!pullsDown_) selectItemAtIndex(index);
  if (item.action())
    NSPerformIfAnswered(item.target(), item.action(), &item);
  else
    sendAction_to(action(), target());
}
