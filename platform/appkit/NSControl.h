#pragma once

#include <string>

#include "NSView.h"

/// A view that holds a value and tells a target when the user changes it. Setting the value from code never
/// sends the action.
class NSControl : public NSView {
 public:
  using NSView::NSView;
  /// The view's part, then the tag; targets are not archived.
  explicit NSControl(NSCoder& coder);
  void encodeWithCoder(NSCoder& coder) const override;
  const Class& isa() const override;
  static const Class& record();

  virtual float floatValue() const { return 0; }
  virtual double doubleValue() const { return floatValue(); }
  virtual void setFloatValue(float value) { static_cast<void>(value); }
  virtual std::string stringValue() const { return {}; }

  /// A number for its owner's use; 0 at first.
  void setTag(int tag) { tag_ = tag; }
  int tag() const { return tag_; }

  /// Not owned; whoever dies first clears it.
  virtual void setTarget(NSObject* target) { target_ = target; }
  NSObject* target() const { return target_; }
  virtual void setAction(SEL action) { action_ = action; }
  SEL action() const { return action_; }

  /// Sends the selector with this control as argument if the target answers it; tells whether it did.
  bool sendAction_to(SEL action, NSObject* target);

 private:
  NSObject* target_ = nullptr;
  SEL action_ = nullptr;
  int tag_ = 0;
};
