#pragma once

#include <memory>
#include <string>
#include <vector>

#include "NSControl.h"
#include "NSMenu.h"

enum class NSControlSize { regular = 0, small = 1, mini = 2 };
inline constexpr NSControlSize NSRegularControlSize = NSControlSize::regular;
inline constexpr NSControlSize NSSmallControlSize = NSControlSize::small;
inline constexpr NSControlSize NSMiniControlSize = NSControlSize::mini;

/// A button that shows one item of its menu and opens the menu below itself. A pull-down shows item 0 as
/// its own title instead, does not list it, and keeps showing it.
///
/// The menu opens by a press (releasing on an item chooses it, releasing on the button leaves the menu open
/// for another press), or, while the button has the keyboard, by Space, Return, Up or Down. Choosing closes
/// the menu, selects the item (not in a pull-down) and then sends exactly one action, also when the item
/// was selected already: the item's own, with the item as sender, else that of the button with the button
/// as sender. Selecting from code sends none. While the menu is open the run loop is in the event-tracking
/// mode; no loop is nested. The wheel changes nothing. Tab stops here. Main thread.
class NSPopUpButton : public NSControl {
 public:
  explicit NSPopUpButton(NSRect frame, bool pullsDown = false);
  const Class& isa() const override;
  static const Class& record();

  const std::shared_ptr<NSMenu>& menu() const { return menu_; }
  /// In place of the present one; selects item 0. Null: an empty menu.
  void setMenu(std::shared_ptr<NSMenu> menu);
  void addItemWithTitle(std::string title);
  /// All of them, in order, equal titles too.
  void addItemsWithTitles(const std::vector<std::string>& titles);
  int numberOfItems() const { return menu_->numberOfItems(); }
  NSMenuItem* itemAtIndex(int index) const { return menu_->itemAtIndex(index); }

  /// −1 clears the selection; an index beyond the items is ignored.
  void selectItemAtIndex(int index);
  /// −1 when nothing is selected; at first 0, if there are items.
  int indexOfSelectedItem() const { return itemAtIndex(selected_) ? selected_ : -1; }
  /// The title of the selected item; empty without one.
  std::string stringValue() const override;

  void setPullsDown(bool pullsDown);
  bool pullsDown() const { return pullsDown_; }
  /// Of the button and of the menu; LucidaGrande at 9 points at first.
  void setFont(std::shared_ptr<NSFont> font);
  /// Without border, title and arrows stand on whatever is below.
  void setBordered(bool bordered);
  /// The button is its own cell.
  NSPopUpButton* cell() { return this; }
  /// The plain font at 12, 11 or 9 points (mini: for a button 15 or 16 points high).
  void setControlSize(NSControlSize size);

  /// The menu is open.
  bool isOpen() const;

  void drawRect(NSRect dirty) override;
  void mouseDown(const NSEvent& event) override;
  void mouseDragged(const NSEvent& event) override { static_cast<void>(event); }
  void mouseUp(const NSEvent& event) override { static_cast<void>(event); }
  void keyDown(const NSEvent& event) override;
  bool acceptsFirstMouse() const override { return true; }
  bool acceptsFirstResponder() const override { return acceptsTyping(); }
  bool becomeFirstResponder() override;
  bool resignFirstResponder() override;
  bool acceptsTyping() const override { return !listedItems().empty(); }

 private:
  friend class MenuTracking;

  /// What the open menu shows.
  std::vector<std::shared_ptr<NSMenuItem>> listedItems() const;
  /// The user chose the item; the menu is closed again.
  void choose(NSMenuItem& item);

  std::shared_ptr<NSMenu> menu_ = std::make_shared<NSMenu>();
  int selected_ = 0;
  bool pullsDown_;
  bool bordered_ = true;
  std::shared_ptr<NSFont> font_;
};
