#pragma once

#include <array>
#include <memory>

#include "AudioUnit.h"
#include "QCView.h"
#include "jxAUParam.h"

/// The moving picture of one of the reverb's rooms: feeds the composition from the effect's parameters and
/// turns the phase of its modulation. A subclass says which parameters. Main thread.
class mrev_RoomView : public QCView {
 public:
  const Class& isa() const override;
  static const Class& record();

  /// The effect is the host's and must outlive the view. Once.
  void setAudioUnit(AudioUnit unit);
  void valueChanged(jxAUParam* binding);
  /// One tick of 0.05 seconds.
  void update();

 protected:
  enum Slot : size_t { depth, rate, preDelay, brightness, delayRange, density, size, roomDelay, slotCount };
  static constexpr AudioUnitParameterID unused = 0xFFFFFFFF;
  using Identifiers = std::array<AudioUnitParameterID, slotCount>;

  /// `roomDelay` may be unused.
  mrev_RoomView(NSRect frame, const Identifiers& identifiers) : QCView(frame), identifiers_(identifiers) {}

 private:
  float valueOf(Slot slot) const { return param[slot] ? param[slot]->floatValue() : 0; }

  const Identifiers identifiers_;
  std::array<std::shared_ptr<jxAUParam>, slotCount> param;
  float modPos = 0;  // degrees, from -90 to 90
  float modRate = 1;
};
