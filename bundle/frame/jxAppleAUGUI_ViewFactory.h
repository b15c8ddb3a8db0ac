#pragma once

#include "AUCocoaUIBase.h"
#include "NSObject.h"
#include "jxAppleAUView.h"

/// The bundle's principal class: gives a host the editor of an effect. Keeps nothing between calls.
class jxAppleAUGUI_ViewFactory : public NSObject, public AUCocoaUIBase {
 public:
  const Class& isa() const override;
  static const Class& record();

  unsigned interfaceVersion() const override { return 0; }
  std::string description() const override { return "tovin: Apple AU Cocoa GUI"; }

  /// A fresh editor of an effect of type 'aufx', manufacturer 'appl' or 'Tovn' and a known subtype; null,
  /// silently, for any other, and with a line in the log when the editor cannot be made. The preferred size
  /// is ignored.
  std::shared_ptr<NSView> uiViewForAudioUnit_withSize(AudioUnit unit, NSSize preferredSize) override;

 private:
  std::shared_ptr<jxAppleAUView> uiFreshlyLoadedView;  // set while an interface description is loaded
};
