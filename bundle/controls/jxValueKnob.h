#pragma once

#include <memory>
#include <string>

#include "NSImageView.h"
#include "NSNotification.h"
#include "NSTextField.h"
#include "jxAURotaryKnob.h"

/// The complete knob: a rotary knob with its name above, limits beside its foot, the unit below and an
/// editable value field at the bottom, over a background with the knob's face. 92 × 76 points. Actions and
/// gesture brackets of the knob reach its target; a typed value is clamped to the limits. Main thread.
class jxValueKnob : public NSImageView {
 public:
  /// A range symmetric about 0 gives a knob whose wedge starts at the top.
  jxValueKnob(NSRect frame, const std::string& name, const std::string& unit, bool logarithmical, float min,
              float max, float value, float defaultValue);
  const Class& isa() const override;
  static const Class& record();

  /// Text without background, border or bezel that cannot be edited or selected.
  static std::shared_ptr<NSTextField> labelTextFieldWithFrame_fontSize(NSRect frame, float fontSize);

  /// Not owned.
  void setTarget_action(NSObject* newTarget, SEL newAction);

  /// Sets knob and field; no action.
  void setFloatValue(float value) override;
  /// The same with another text in the field.
  void setFloatValue_string(float value, const std::string& text);
  float floatValue() const override { return knob->floatValue(); }
  void setColor(std::shared_ptr<NSColor> color) { knob->setMarkerColor(std::move(color)); }
  void setIntegerOnly(bool integerOnly) { knob->setIntegerOnly(integerOnly); }
  void setDefaultValue(double value) { knob->setDefaultValue(value); }

  void knobChanged(NSControl* sender);
  void valueViewChanged(NSControl* sender);
  void beginAction(NSObject* sender);
  void endAction(NSObject* sender);
  /// Clamps what was typed; text without a number calls the editing off, which restores the old value.
  bool control_textShouldEndEditing(NSControl* control, NSObject* editor);
  void controlTextDidEndEditing(NSNotification* notification);

  void mouseDown(const NSEvent& event) override;
  bool acceptsFirstResponder() const override { return true; }

  /// Paints what lies behind the view into its background, so that it need not be composed again.
  void prerenderBackground();
  bool isBackgroundCached() const { return bgCached; }

 private:
  void addLabel(NSRect frame, const char* fontName, float points, float white, NSTextAlignment alignment,
                const std::string& text);
  void sendAction();

  std::shared_ptr<NSTextField> valueView;
  std::shared_ptr<jxAURotaryKnob> knob;
  NSObject* target = nullptr;
  SEL action = nullptr;
  bool bgCached = false;
  float m_min;
  float m_max;
};
