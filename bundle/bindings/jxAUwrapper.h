#pragma once

#include <memory>
#include <string>

#include "AudioUnit.h"
#include "NSObject.h"

/// Stands for the effect instance that an editor edits. The instance is the host's and must outlive the
/// wrapper; it may be null. Main thread.
class jxAUwrapper : public NSObject {
 public:
  static std::shared_ptr<jxAUwrapper> wrapperWithAU(AudioUnit unit);
  explicit jxAUwrapper(AudioUnit unit) : mAU(unit) {}
  const Class& isa() const override;
  static const Class& record();

  AudioUnit audioUnit() const { return mAU; }
  /// The component's version, 0xMMMMmmbb; 0 for a null instance.
  UInt32 auVersion();
  /// The component's name without maker: of "Vendor: AUEcho" it is " Echo", with the blank in front. Empty
  /// for a null instance. An instance that does not tell its name is an assertion failure.
  std::string auName() const;

  /// Addresses in the global scope, element 0.
  AudioUnitParameter globalParameter(SInt32 identifier) const;
  AudioUnitProperty globalProperty(SInt32 identifier) const;

 private:
  AudioUnit mAU;
  UInt32 auVersion_ = 0;  // 0: not read yet
};
