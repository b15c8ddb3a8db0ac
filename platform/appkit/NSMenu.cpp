#include "NSMenu.h"

#include <algorithm>

#include "Class.h"

const Class& NSMenu::isa() const {
  return record();
}

const Class& NSMenu::record() {
  static const Class c = Class::of<NSMenu>("NSMenu", NSObject::record());
  return c;
}

NSMenuItem* NSMenu::itemAtIndex(int index) const {
  return index >= 0 && index < numberOfItems() ? items_[static_cast<size_t>(index)].get() : nullptr;
}

int NSMenu::indexOfItem(const NSMenuItem& item) const {
  const auto found =
      std::find_if(items_.begin(), items_.end(), [&](const auto& own) { return own.get() == &item; });
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}
