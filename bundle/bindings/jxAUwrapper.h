#pragma once

#include <memory>
#include <string>

#include "AudioUnitProperties.h"
#include "jxAUProperty.h"

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

  /// Begins to follow the callbacks that the host installs on the effect; an editor that needs the tempo
  /// sends it from its setAU:.
  void perpareHostCallbacks();
  void callbacksChanged();
  /// Asks the host. Beats per minute, above 0; what it said last when it says nothing or no tempo, at first
  /// 120.
  double auTempo();

 private:
  AudioUnit mAU;
  UInt32 auVersion_ = 0;  // 0: not read yet
  double tempo = 120;
  HostCallbackInfo mHostCallbackInfo;
  std::shared_ptr<jxAUProperty> hostCallbackProperty;
};
