#pragma once

#include <string>

#include "NSView.h"

/// A titled group of views. Its content view fills the whole bounds; views nested in a box are the content
/// view's.
class NSBox : public NSView {
 public:
  explicit NSBox(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  const std::string& title() const { return title_; }
  void setTitle(std::string title);
  NSView* contentView() const { return contentView_.get(); }

  NSView& viewForSubviews() override { return *contentView_; }
  void setFrame(NSRect frame) override;
  /// Nothing: the press ends here.
  void mouseDown(const NSEvent& event) override { static_cast<void>(event); }

 private:
  std::string title_;
  std::shared_ptr<NSView> contentView_;
};
