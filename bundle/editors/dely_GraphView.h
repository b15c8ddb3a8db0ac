#pragma once

#include <memory>

#include "jxAUHandleGraphDisplay.h"
#include "jxAUParam.h"
#include "jxAUwrapper.h"

/// The echoes of the delay over three seconds: a bar for each, as high as the echo is loud, below the axis
/// when the feedback has turned it over, fainter with each pass through the lowpass. Below the axis are
/// seconds, above it the beats of the host's tempo. The handle sets delay time and feedback.
class dely_GraphView : public jxAUHandleGraphDisplay {
 public:
  explicit dely_GraphView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  /// Binds the parameters; a second time is an assertion failure.
  void setAU(std::shared_ptr<jxAUwrapper> wrapper);
  /// Beats per minute.
  void setTempo(double beatsPerMinute);
  void valueChanged(jxAUParam* binding);
  void drawRect(NSRect dirty) override;

 protected:
  void prepareBackground() override;
  void calculateHandle(int index) override;
  void setParamsForHandle_pos(int index, NSPoint position) override;

 private:
  float axisY() const;
  float xOfTime(float seconds) const;
  float fullHeight() const;
  NSPoint beatsOrigin() const;
  void drawBeats() const;
  void drawSeconds() const;
  std::shared_ptr<NSImage> renderedBeats() const;
  void drawEchoes() const;

  double tempo = 120;
  std::shared_ptr<NSImage> beats_;  // of the tempo; null until they are drawn
  std::shared_ptr<jxAUParam> delayTimeParam;
  std::shared_ptr<jxAUParam> feedbackParam;
  std::shared_ptr<jxAUParam> lowpassParam;
  std::shared_ptr<jxAUwrapper> mAU;
};
