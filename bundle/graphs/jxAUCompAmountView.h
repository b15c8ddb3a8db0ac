#pragma once

#include <memory>
#include <vector>

#include "jxAUGraphDisplay.h"
#include "jxAUProperty.h"

/// The scrolling history of an effect's momentary gain reduction, 0 to 20 dB, the newest value at the right
/// edge. Its editor polls it with update on each tick of its timer; the parameter is read only while the
/// effect has it in its parameter list. Main thread.
class jxAUCompAmountView : public jxAUGraphDisplay {
 public:
  using jxAUGraphDisplay::jxAUGraphDisplay;
  const Class& isa() const override;
  static const Class& record();

  /// Starts an empty history of that many samples, in place of one that there is.
  void startWatchingAUparam_numSamples(const AudioUnitParameter& parameter, int samples);
  void paramListChanged(NSObject* sender);
  /// Takes one sample. A value that the effect refuses to tell repeats the one before. The view is not marked
  /// when every sample that it shows is the same already: no pixel would change.
  void update();
  /// Tint of the area, drawn at alpha 0.8; in force from the next redraw on.
  void setColor(std::shared_ptr<NSColor> color) { mColor = std::move(color); }

  /// 0 dB on the plot's lower edge, 20 dB on its upper; not limited.
  float yForValue(float level) const;
  void drawRect(NSRect dirty) override;

 private:
  bool addHoriRefLine_weight(float level, float weight);

  AudioUnitParameter mAUparam;
  std::shared_ptr<jxAUProperty> mParamListProperty;
  std::vector<float> amounts;  // a ring
  int amountPos = 0;           // of the newest
  int numAmounts = 0;
  std::shared_ptr<NSColor> mColor;
  bool parameterExists = false;
  int equalAmounts = 0;  // how many of the newest are the same
};
