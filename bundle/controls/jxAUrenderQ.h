#pragma once

#include <memory>

#include "NSPopUpButton.h"
#include "jxAUProperty.h"

/// A pop-up menu that shows and sets the effect's render quality. The interface description gives it five
/// items, which stand for the qualities 127, 96, 64, 32 and 0 in this order. Main thread.
class jxAUrenderQ : public NSPopUpButton {
 public:
  /// Its own target; not hooked, so that choosing writes nothing.
  explicit jxAUrenderQ(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  /// Follows and writes this property from now on, in place of an earlier one, and shows its value.
  void setProperty(const AudioUnitProperty& property);
  /// Selects the item of the property's value; another value leaves the selection.
  void propertyChanged(NSObject* sender);
  void menuChanged(NSObject* sender);

 private:
  std::shared_ptr<jxAUProperty> mProperty;
};
