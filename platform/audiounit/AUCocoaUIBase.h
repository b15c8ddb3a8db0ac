#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"
#include "NSGeometry.h"

class NSView;

/// What the principal class of a bundle of editors answers to a host: the object that the bundle's principal
/// class makes is an NSObject and one of these.
class AUCocoaUIBase {
 public:
  virtual ~AUCocoaUIBase() = default;

  /// 0: this interface.
  virtual unsigned interfaceVersion() const = 0;
  virtual std::string description() const = 0;
  /// A new editor of the effect, handed over; null when there is none for it. The instance stays the
  /// host's and must outlive the view. The size is a wish. Main thread.
  virtual std::shared_ptr<NSView> uiViewForAudioUnit_withSize(AudioUnit unit, NSSize preferredSize) = 0;
};
