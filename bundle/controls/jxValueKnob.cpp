#include "jxValueKnob.h"

#include <algorithm>
#include <map>

#include "NSBundle.h"
#include "NSImageUtils.h"
#include "NSViewUtils.h"
#include "NSWindow.h"
#include "NumberText.h"
#include "jxAUGraphDisplay.h"

namespace {

constexpr float knobSide = 41;
constexpr int digits = 6;

std::string numberText(float value) {
  return stringWithNiceFloatValue_digits(value, digits);
}

/// The background with a knob's face at that place. Knobs that are made together share one: the shadow of the
/// face is expensive.
std::shared_ptr<NSImage> backgroundWithFace(NSRect knobFrame) {
  static std::map<float, std::weak_ptr<NSImage>> made;  // by place
  auto& known = made[NSMinX(knobFrame)];
  if (auto image = known.lock()) return image;
  const NSBundle* bundle = NSBundle::bundleForClass(jxValueKnob::record());
  const auto image = NSImage::initByReferencingFile(
      bundle ? bundle->pathForImageResource("auParamKnobBackground") : std::string());
  image->lockFocus([knobFrame] { jxAURotaryKnob::drawKnobBackgroundInRect(NSInsetRect(knobFrame, -9, -9)); });
  known = image;
  return image;
}

}  // namespace

const Class& jxValueKnob::isa() const {
  return record();
}

const Class& jxValueKnob::record() {
  static const Class c =
      Class::of<jxValueKnob>("jxValueKnob", NSImageView::record())
          .answers<&jxValueKnob::knobChanged>("knobChanged:")
          .answers<&jxValueKnob::valueViewChanged>("valueViewChanged:")
          .answers<&jxValueKnob::beginAction>("beginAction:")
          .answers<&jxValueKnob::endAction>("endAction:")
          .answers<&jxValueKnob::control_textShouldEndEditing>("control:textShouldEndEditing:")
          .answers<&jxValueKnob::controlTextDidEndEditing>("controlTextDidEndEditing:");
  return c;
}

std::shared_ptr<NSTextField> jxValueKnob::labelTextFieldWithFrame_fontSize(NSRect frame, float fontSize) {
  auto label = std::make_shared<NSTextField>(frame);
  label->setEditable(false);
  label->setSelectable(false);
  label->setDrawsBackground(false);
  label->setBordered(false);
  label->setBezeled(false);
  label->setFont(NSFont::fontWithName_size("LucidaGrande", fontSize));
  return label;
}

jxValueKnob::jxValueKnob(NSRect frame, const std::string& name, const std::string& unit, bool logarithmical,
                         float min, float max, float value, float defaultValue)
    : NSImageView(frame), m_min(min), m_max(max) {
  const float w = NSWidth(frame);
  const NSRect knobFrame = NSMakeRect(w / 2 - knobSide / 2, 21, knobSide, knobSide);
  const float kx = NSMinX(knobFrame);

  knob = std::make_shared<jxAURotaryKnob>(knobFrame);
  knob->setMin_max(min, max);
  knob->setDefaultValue(defaultValue);
  knob->setLogarithmic(logarithmical);
  knob->showEndpoints(false);
  knob->setTarget(this);
  knob->setAction(NSSelectorFromString("knobChanged:"));
  knob->setMarkerColor(jxAUGraphDisplay::orangeHandle());
  knob->setMouseRange(100);
  knob->setFloatValue(value);
  knob->setPanStyle(min == -max);
  knob->setUnit(unit);
  addSubview(knob);

  const char* const bold = "LucidaGrande-Bold";
  const char* const plain = "LucidaGrande";
  addLabel(NSMakeRect(0, 61, w, 14), bold, 9, 0.2f, NSCenterTextAlignment, name);
  addLabel(NSMakeRect(w / 2 - 14, 16, 28, 15), plain, 9, 0.4f, NSCenterTextAlignment, unit);
  addLabel(NSMakeRect(0, 18, kx + 7, 10), plain, 8, 0.4f, NSRightTextAlignment, numberText(min));
  addLabel(NSMakeRect(w - kx - 7, 18, kx + 5, 10), plain, 8, 0.4f, NSLeftTextAlignment, numberText(max));

  valueView = labelTextFieldWithFrame_fontSize(NSMakeRect(w / 2 - 21, 2, 42, 11), 9);
  valueView->setEditable(true);
  valueView->setSelectable(true);
  valueView->setFont(NSFont::fontWithName_size(bold, 9));
  valueView->setTextColor(NSColor::colorWithCalibratedWhite_alpha(0.2f, 1));
  valueView->setAlignment(NSCenterTextAlignment);
  valueView->setStringValue(numberText(value));
  valueView->setTarget(this);
  valueView->setDelegate(this);
  valueView->setAction(NSSelectorFromString("valueViewChanged:"));
  addSubview(valueView);

  setImage(backgroundWithFace(knobFrame));
}

void jxValueKnob::addLabel(NSRect frame, const char* fontName, float points, float white,
                           NSTextAlignment alignment, const std::string& text) {
  const auto label = labelTextFieldWithFrame_fontSize(frame, points);
  label->setFont(NSFont::fontWithName_size(fontName, points));
  label->setTextColor(NSColor::colorWithCalibratedWhite_alpha(white, 1));
  label->setAlignment(alignment);
  label->setStringValue(text);
  addSubview(label);
}

void jxValueKnob::setTarget_action(NSObject* newTarget, SEL newAction) {
  target = newTarget;
  action = newAction;
}

void jxValueKnob::setFloatValue(float value) {
  setFloatValue_string(value, numberText(value));
}

void jxValueKnob::setFloatValue_string(float value, const std::string& text) {
  // What a whole-numbered knob has been turned beyond its number stays, so that slow turning adds up.
  if (knob->floatValue() != value) knob->setFloatValue(value);
  valueView->setStringValue(text);
}

void jxValueKnob::knobChanged(NSControl* sender) {
  valueView->setStringValue(numberText(sender->floatValue()));
  sendAction();
}

void jxValueKnob::valueViewChanged(NSControl* sender) {
  knob->setFloatValue(sender->floatValue());
  sendAction();
}

void jxValueKnob::sendAction() {
  NSPerformIfAnswered(target, action, this);
}

void jxValueKnob::beginAction(NSObject* sender) {
  static const SEL begin = NSSelectorFromString("beginAction:");
  NSPerformIfAnswered(target, begin, sender);
}

void jxValueKnob::endAction(NSObject* sender) {
  static const SEL end = NSSelectorFromString("endAction:");
  NSPerformIfAnswered(target, end, sender);
}

bool jxValueKnob::control_textShouldEndEditing(NSControl*, NSObject*) {
  if (foundation::numberPrefix(valueView->stringValue()).found) {
    const float typed = std::min(std::max(valueView->floatValue(), m_min), m_max);
    valueView->setStringValue(numberText(typed));
  } else {
    valueView->abortEditing();
  }
  return true;
}

void jxValueKnob::controlTextDidEndEditing(NSNotification*) {
  valueViewChanged(valueView.get());
}

void jxValueKnob::mouseDown(const NSEvent& event) {
  NSImageView::mouseDown(event);
  if (window()) window()->makeFirstResponder(this);
}

void jxValueKnob::prerenderBackground() {
  bgCached = true;
  const auto over = image();
  const auto rendered = NSImage::initWithSize(over->size());
  rendered->lockFocus([this, over] {
    drawSuperViewsAsOpaqueBackground(*this);
    over->drawInRect_fromRect_operation_fraction({{0, 0}, over->size()}, NSZeroRect, NSCompositeSourceOver,
                                                 1);
  });
  setImage(rendered);
}
