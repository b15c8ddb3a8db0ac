#pragma once

#include <memory>
#include <vector>

#include "ImpulseAUwrapper.h"
#include "jxAUFreqResponseView.h"
#include "jxAUParam.h"

/// The response of a live effect, measured on a private instance of it: after a parameter has changed,
/// whoever changed it, once before the next drawing, so that a view that is not seen measures nothing.
///
/// A subclass names the parameters and the axes, and places and reads the handles. Until it has its effect
/// the view ignores changes, and its handles and their drags do nothing.
class jxAUMeasuredResponseView : public jxAUFreqResponseView {
 public:
  const Class& isa() const override;
  static const Class& record();

  /// Binds the parameters, opens the private instance, sets the axes and measures. The effect is the host's
  /// and must outlive the view. Once.
  void setAudioUnit(AudioUnit unit);
  void valueChanged(jxAUParam* binding);
  void drawRect(NSRect dirty) override;

 protected:
  /// Hz and dB, as setOrder:minFreq:maxFreq:minDB:maxDB: takes them.
  struct Axes {
    float minFreq = 0, maxFreq = 0, minDB = 0, maxDB = 0;
  };

  /// Parameters 0 to parameterCount − 1; 2^order values.
  jxAUMeasuredResponseView(NSRect frame, UInt32 parameterCount, unsigned long order);

  /// Hook; the parameters are bound by then.
  virtual Axes axes() const { return {}; }

  /// Whether that is a handle of a view that has its effect.
  bool canEdit(int handle) const { return mAU && handle >= 0 && handle < handleCount(); }
  jxAUParam& parameter(UInt32 identifier) const { return *param[identifier]; }
  float valueOf(UInt32 identifier) const { return param[identifier]->floatValue(); }

 private:
  std::vector<std::shared_ptr<jxAUParam>> param;  // the index is the identifier
  AudioUnit mAU = nullptr;                        // set last, by setAudioUnit:
  std::unique_ptr<ImpulseAUwrapper> impAUwrap;
  UInt32 parameterCount_;
  unsigned long order_;
  bool changed_ = false;  // since the last measurement
};
