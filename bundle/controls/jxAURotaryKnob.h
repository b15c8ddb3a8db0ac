#pragma once

#include <memory>
#include <string>

#include "NSAffineTransform.h"
#include "NSBezierPath.h"
#include "NSColor.h"
#include "NSControl.h"
#include "NSTimer.h"

class jxAUKnobOverlayWindow;

/// A round control: a value between two limits, shown as a wedge over a sweep of 270 degrees that rises
/// clockwise from the lower left to the lower right. Its state is the position, 0 to 1; value and position
/// are mapped linearly or logarithmically. It draws no face: its owner paints drawKnobBackgroundInRect:
/// into a background once.
///
/// Turning (jxAURotaryKnobTracking.cpp): while the button is down the pointer is hidden and every 0.05
/// seconds the gathered motion becomes a smoothed velocity whose power of 1.5 moves the position; Shift is
/// fine, Option returns to the default. The target hears "beginAction:" and "endAction:" if it answers
/// them, and the action on each change and at release. The wheel moves by 1/50 a notch. Main thread.
class jxAURotaryKnob : public NSControl {
 public:
  /// 0 to 100, linear, at 0.
  explicit jxAURotaryKnob(NSRect frame);
  /// From an archive: colours, range, position, tick marks, centre and mapping; the rest as of a new knob,
  /// the mouse range too. A knob archived as logarithmic whose range has no logarithm is linear; a position
  /// that is none is the nearest end; a limit that is no finite float and a senseless count of tick marks are
  /// refused.
  explicit jxAURotaryKnob(NSCoder& coder);
  void encodeWithCoder(NSCoder& coder) const override;
  ~jxAURotaryKnob() override;
  const Class& isa() const override;
  static const Class& record();

  // Value and range. A value is clamped, one that is not a number ignored; no action is sent.
  void setDoubleValue(double value);
  void setFloatValue(float value) override { setDoubleValue(value); }
  double doubleValue() const override;
  float floatValue() const override { return static_cast<float>(doubleValue()); }
  /// Taken only if it is below the maximum and not above the value; the position stays. 1e-7 for a minimum
  /// that has no logarithm on a logarithmic knob.
  void setMinValue(double value);
  /// Taken only if it is above the minimum and not below the value; the position stays.
  void setMaxValue(double value);
  void setMin_max(double min, double max);
  double minValue() const { return m_min; }
  double maxValue() const { return m_max; }
  /// On only while the limits are above 0.
  void setLogarithmic(bool logarithmic);
  bool logarithmic() const { return m_logarithmic; }
  /// The value is rounded to whole numbers, halves away from zero.
  void setIntegerOnly(bool integerOnly) { m_integerOnly = integerOnly; }
  void setDefaultValue(double value);
  /// Points of motion that count as one unit of drag; 0 counts as 100.
  void setMouseRange(double range) { mouseRange = range; }
  void setUnit(std::string newUnit) { unit = std::move(newUnit); }

  // Appearance.
  void setKnobColor(std::shared_ptr<NSColor> color);
  const std::shared_ptr<NSColor>& knobColor() const { return m_knobColor; }
  void setMarkerColor(std::shared_ptr<NSColor> color);
  const std::shared_ptr<NSColor>& markerColor() const { return m_markerColor; }
  void setKnob(std::shared_ptr<NSBezierPath> path) { m_knob = std::move(path); }
  void setMarker(std::shared_ptr<NSBezierPath> path) { m_marker = std::move(path); }
  /// The wedge starts at the top of the sweep.
  void setPanStyle(bool panStyle);
  bool panStyle() const { return m_panStyle; }
  void setNumberOfTickMarks(int count);
  int numberOfTickMarks() const { return m_tickCount; }
  void showEndpoints(bool show);
  bool endpoints() const { return m_showEndpoints; }

  /// +135 at position 0 to −135 at 1; 90 more is the direction on screen.
  static float calcDegrees(double position);
  /// Rotates about the origin, then moves by the knob's centre.
  NSAffineTransform rotateAround_byDegrees(NSPoint point, float degrees) const;
  void drawRect(NSRect dirty) override;
  void showValueMarker() const;
  /// Tick marks in the current colour; for owners.
  void showTicks() const;
  /// A white face with a soft shadow, for the owner's background.
  static void drawKnobBackgroundInRect(NSRect rect);
  /// Refreshes the overlay's text if the overlay is this knob's.
  void updateToolTip() const;

  void setTarget(NSObject* target) override { m_target = target; }
  void setAction(SEL action) override { m_action = action; }
  /// The value display shared by all knobs; null before the first press on one.
  static const std::shared_ptr<jxAUKnobOverlayWindow>& overlayWindow() { return gArrowWindow; }

  void mouseDown(const NSEvent& event) override;
  void mouseDragged(const NSEvent& event) override;
  void mouseUp(const NSEvent& event) override;
  void scrollWheel(const NSEvent& event) override;
  bool acceptsFirstMouse() const override { return true; }
  void knobTimerProc(NSTimer* timer);
  void hideRedLimit(NSTimer* timer);
  /// At an end of the sweep the end-stop flag is raised for 1.5 seconds.
  bool showsRedLimit() const { return m_showRedLimit; }

 private:
  void commonInit();
  void checkNeedTimer();
  void returnToDefault() { setDoubleValue(m_defaultValue); }
  bool wantsDefault(const NSEvent& event) const;
  void positionChanged();

  static std::shared_ptr<jxAUKnobOverlayWindow> gArrowWindow;

  NSObject* m_target = nullptr;
  SEL m_action = nullptr;
  std::shared_ptr<NSBezierPath> m_knob;
  std::shared_ptr<NSBezierPath> m_tick;
  std::shared_ptr<NSBezierPath> m_marker;
  std::shared_ptr<NSColor> m_knobColor = NSColor::blueColor();
  std::shared_ptr<NSColor> m_markerColor = NSColor::colorWithCalibratedWhite_alpha(0.48f, 1);
  double m_min = 0;
  double m_max = 100;
  double m_value = 0;  // the position
  NSPoint m_offset;    // the centre
  NSPoint downPoint;
  NSPoint m_downPoint;  // in the window
  bool m_showEndpoints = false;
  int m_tickCount = 0;
  bool m_logarithmic = false;
  double m_logMin;
  double m_logMax;
  bool m_showRedLimit = false;
  std::shared_ptr<NSTimer> m_timer;
  bool m_panStyle = false;
  bool m_integerOnly = false;
  bool m_hasDefault = false;
  double m_defaultValue = 0;
  double mouseRange = 40;
  std::string unit;
  std::shared_ptr<NSTimer> knobTimer;
  double lastMouseEventTime = 0;
  NSPoint mouseDelta;
  NSPoint currentVelocity;  // mouse ranges per tenth of a second
};
