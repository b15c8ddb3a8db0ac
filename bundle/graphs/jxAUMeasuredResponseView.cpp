#include "jxAUMeasuredResponseView.h"

#include "NSException.h"

namespace {

constexpr double measuringRate = 44100;

}  // namespace

const Class& jxAUMeasuredResponseView::isa() const {
  return record();
}

const Class& jxAUMeasuredResponseView::record() {
  static const Class c =
      Class::of<jxAUMeasuredResponseView>("jxAUMeasuredResponseView", jxAUFreqResponseView::record())
          .answers<&jxAUMeasuredResponseView::valueChanged>("valueChanged:");
  return c;
}

jxAUMeasuredResponseView::jxAUMeasuredResponseView(NSRect frame, UInt32 parameterCount, unsigned long order)
    : jxAUFreqResponseView(frame), parameterCount_(parameterCount), order_(order) {}

void jxAUMeasuredResponseView::setAudioUnit(AudioUnit unit) {
  for (UInt32 id = 0; id < parameterCount_; ++id)
    param.push_back(std::make_shared<jxAUParam>(AudioUnitParameter{unit, id, kAudioUnitScope_Global, 0}, this,
                                                NSSelectorFromString("valueChanged:")));
  impAUwrap = std::make_unique<ImpulseAUwrapper>(unit, measuringRate, order_, false);
  const Axes a = axes();
  setOrder_minFreq_maxFreq_minDB_maxDB(order_, a.minFreq, a.maxFreq, a.minDB, a.maxDB);
  setValues(impAUwrap->freqResponse());
  mAU = unit;
}

void jxAUMeasuredResponseView::valueChanged(jxAUParam*) {
  if (!mAU) return;
  changed_ = true;
  setPlotNeedsDisplay();
}

void jxAUMeasuredResponseView::drawRect(NSRect dirty) {
  if (changed_) {
    changed_ = false;
    NSGuardCallback("measurement", [this] { storeValues(impAUwrap->freqResponse()); });
  }
  jxAUFreqResponseView::drawRect(dirty);
}
