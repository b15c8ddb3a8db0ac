#include "NSMenuItem.h"

#include "Class.h"

const Class& NSMenuItem::isa() const {
  return record();
}

const Class& NSMenuItem::record() {
  static const Class c = Class::of<NSMenuItem>("NSMenuItem", NSObject::record());
  return c;
}

void NSMenuItem::setAttributedTitle(NSAttributedString title) {
  title_ = title.string();
  attributedTitle_ = std::move(title);
}

std::vector<NSAttributedString::Run> NSMenuItem::titleRuns(const NSTextAttributes& plain) const {
  return attributedTitle_ ? attributedTitle_->runs() : std::vector<NSAttributedString::Run>{{title_, plain}};
}
