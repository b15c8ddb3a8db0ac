#pragma once

#include <memory>
#include <string>
#include <vector>

#include "NSMenuItem.h"

/// A list of choices, numbered from 0, that a pop-up button shows. It owns its items; equal titles are
/// different items. Main thread.
class NSMenu : public NSObject {
 public:
  const Class& isa() const override;
  static const Class& record();

  void addItem(std::shared_ptr<NSMenuItem> item) { items_.push_back(std::move(item)); }
  void addItemWithTitle(std::string title) { addItem(std::make_shared<NSMenuItem>(std::move(title))); }

  int numberOfItems() const { return static_cast<int>(items_.size()); }
  /// Null when there is none.
  NSMenuItem* itemAtIndex(int index) const;
  /// −1 when it is not in this menu.
  int indexOfItem(const NSMenuItem& item) const;
  const std::vector<std::shared_ptr<NSMenuItem>>& itemArray() const { return items_; }

 private:
  std::vector<std::shared_ptr<NSMenuItem>> items_;
};
