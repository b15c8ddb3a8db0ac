#pragma once

#include <optional>
#include <string>
#include <vector>

#include "NSAttributedString.h"
#include "NSObject.h"

/// One choice of a menu. With an action of its own, choosing it sends that to its own target, with the item
/// as argument; without one, the pop-up button's action is sent. Main thread.
class NSMenuItem : public NSObject {
 public:
  explicit NSMenuItem(std::string title) : title_(std::move(title)) {}
  const Class& isa() const override;
  static const Class& record();

  const std::string& title() const { return title_; }
  /// Shown with its own attributes; `title` is its characters.
  void setAttributedTitle(NSAttributedString title);
  /// The title to be drawn: its own attributes, else those given.
  std::vector<NSAttributedString::Run> titleRuns(const NSTextAttributes& plain) const;

  /// Not owned; whoever dies first clears it.
  void setTarget(NSObject* target) { target_ = target; }
  NSObject* target() const { return target_; }
  void setAction(SEL action) { action_ = action; }
  SEL action() const { return action_; }

 private:
  std::string title_;
  std::optional<NSAttributedString> attributedTitle_;
  NSObject* target_ = nullptr;
  SEL action_ = nullptr;
};
