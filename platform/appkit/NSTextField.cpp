#include "NSTextField.h"

#include <cmath>
#include <utility>

#include "Display.h"
#include "NSBezierPath.h"
#include "NSGraphicsContext.h"
#include "NSNotification.h"
#include "NSWindow.h"
#include "NumberText.h"
#include "TextLine.h"

namespace {

constexpr float sideInset = 2;

}  // namespace

const Class& NSTextField::isa() const {
  return record();
}

const Class& NSTextField::record() {
  static const Class c = Class::of<NSTextField>("NSTextField", NSControl::record())
                             .attribute<&NSTextField::setStringValue>("stringValue")
                             .attribute<&NSTextField::setEditable>("editable");
  return c;
}

NSTextField::NSTextField(NSRect frame)
    : NSControl(frame), font_(NSFont::fontWithName_size("LucidaGrande", 12)), color_(NSColor::blackColor()) {}

const std::string& NSTextField::shownText() const {
  return editing_ ? editing_->text() : text_;
}

std::string NSTextField::stringValue() const {
  return shownText();
}

void NSTextField::setStringValue(const std::string& text) {
  if (editing_ && ending_) {
    editing_->replaceText(text);
  } else {
    // While the user types, what comes from elsewhere waits behind the typing.
    if (text == text_) return;
    text_ = text;
    if (editing_) return;
  }
  setNeedsDisplay(true);
}

float NSTextField::floatValue() const {
  return foundation::floatValue(shownText());
}

void NSTextField::setFont(std::shared_ptr<NSFont> font) {
  font_ = std::move(font);
  line_ = nullptr;
  setNeedsDisplay(true);
}

void NSTextField::setTextColor(std::shared_ptr<NSColor> color) {
  color_ = std::move(color);
  line_ = nullptr;
  setNeedsDisplay(true);
}

void NSTextField::setAlignment(NSTextAlignment alignment) {
  alignment_ = alignment;
  setNeedsDisplay(true);
}

void NSTextField::setDrawsBackground(bool draws) {
  background_ = draws;
  setNeedsDisplay(true);
}

void NSTextField::setBordered(bool bordered) {
  bordered_ = bordered;
  setNeedsDisplay(true);
}

const TextLine& NSTextField::textLine() const {
  if (!line_ || lineText_ != shownText()) {
    lineText_ = shownText();
    const NSTextAttributes attributes{.font = font_, .foregroundColor = color_, .shadow = {}};
    line_ = std::make_shared<TextLine>(std::vector<NSAttributedString::Run>{{lineText_, attributes}});
  }
  return *line_;
}

float NSTextField::textOrigin(const TextLine& line) const {
  const float spare = NSWidth(bounds()) - 2 * sideInset - line.width();
  // Typing that outgrows the field keeps its end in sight.
  if (alignment_ == NSRightTextAlignment || (editing_ && spare < 0)) return sideInset + spare;
  return alignment_ == NSCenterTextAlignment ? sideInset + spare / 2 : sideInset;
}

NSRect NSTextField::textRect() const {
  const TextLine& line = textLine();
  const float height = line.ascent() + line.descent();
  return NSMakeRect(textOrigin(line), NSHeight(bounds()) - height, line.width(), height);
}

void NSTextField::drawRect(NSRect) {
  const NSRect b = bounds();
  if (background_) {
    NSColor::whiteColor()->set();
    NSBezierPath::fillRect(b);
  }
  if (bordered_) {
    NSColor::colorWithCalibratedWhite_alpha(0.5f, 1)->set();
    NSBezierPath::bezierPathWithRect(NSInsetRect(b, 0.5f, 0.5f))->stroke();
  }
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  context->clipToRect(b);
  const TextLine& line = textLine();
  const float x = textOrigin(line);
  const float baseline = NSHeight(b) - line.ascent();
  if (editing_) {
    const float from = x + line.offsetOf(editing_->selectionStart());
    const float to = x + line.offsetOf(editing_->selectionEnd());
    if (from < to) {
      NSColor::colorWithCalibratedRed_green_blue_alpha(0.62f, 0.75f, 0.86f, 1)->set();
      NSBezierPath::fillRect(NSMakeRect(from, 0, to - from, NSHeight(b)));
    }
    color_->set();
    const float caret = std::round(x + line.offsetOf(editing_->caret()));
    NSBezierPath::fillRect(NSMakeRect(caret, 0, 1, NSHeight(b)));
  }
  line.draw(x, baseline);
}

bool NSTextField::becomeFirstResponder() {
  if (editable_) editing_.emplace(text_);
  setNeedsDisplay(true);
  return true;
}

bool NSTextField::resignFirstResponder() {
  return finishEditing(Ending::focusLost);
}

void NSTextField::abortEditing() {
  editing_.reset();
  setNeedsDisplay(true);
}

bool NSTextField::finishEditing(Ending ending) {
  if (!editing_) return true;
  if (ending == Ending::focusLost && !editing_->isChanged()) {
    abortEditing();
    return true;
  }
  static const SEL shouldEnd = NSSelectorFromString("control:textShouldEndEditing:");
  static const SEL didEnd = NSSelectorFromString("controlTextDidEndEditing:");
  ending_ = true;
  const bool agreed = !delegate_ || !delegate_->respondsToSelector(shouldEnd) ||
                      delegate_->performSelector_withObject_withObject(shouldEnd, this, this);
  ending_ = false;
  if (!agreed) return false;
  if (!editing_) return true;  // the delegate called it off
  text_ = editing_->text();
  abortEditing();
  NSNotification notification(this);
  NSPerformIfAnswered(delegate_, didEnd, &notification);
  if (ending == Ending::returnKey) sendAction_to(action(), target());
  return true;
}

size_t NSTextField::positionAt(const NSEvent& event) const {
  const TextLine& line = textLine();
  const NSPoint place = convertPoint_fromView(event.locationInWindow, nullptr);
  return line.indexNearest(place.x - textOrigin(line));
}

void NSTextField::mouseDown(const NSEvent& event) {
  if (!editable_ && !selectable_) return NSControl::mouseDown(event);
  if (!editing_) {
    pressPosition_ = positionAt(event);
    if (!window()) return;
    // After Return the field may be the first responder still, but without editing.
    if (window()->firstResponder() == this)
      becomeFirstResponder();
    else
      window()->makeFirstResponder(this);
    return;
  }
  if (event.clickCount >= 2)
    editing_->selectWordAt(positionAt(event));
  else
    editing_->moveTo(positionAt(event), event.modifierFlags & NSShiftKeyMask);
  setNeedsDisplay(true);
}

void NSTextField::mouseDragged(const NSEvent& event) {
  if (!editable_ && !selectable_) return NSControl::mouseDragged(event);
  if (!editing_) return;
  // The press that began the editing selected everything; a drag selects from where it was pressed.
  if (pressPosition_) editing_->moveTo(*std::exchange(pressPosition_, std::nullopt), false);
  editing_->moveTo(positionAt(event), true);
  setNeedsDisplay(true);
}

void NSTextField::mouseUp(const NSEvent& event) {
  pressPosition_.reset();
  if (!editable_ && !selectable_) NSControl::mouseUp(event);
}

void NSTextField::keyDown(const NSEvent& event) {
  if (!editing_) return NSControl::keyDown(event);
  const auto self = shared(this);
  switch (event.key) {
    case NSKey::enter:
      if (finishEditing(Ending::returnKey) && window())
        window()->makeFirstResponder(window()->initialFirstResponder());
      return;
    case NSKey::tab:
      if (window()) {
        const bool backwards = event.modifierFlags & NSShiftKeyMask;
        if (!window()->selectNextField(*this, backwards))
          window()->makeFirstResponder(window()->initialFirstResponder());
      }
      return;
    case NSKey::escape:
      abortEditing();
      if (window()) window()->makeFirstResponder(window()->initialFirstResponder());
      return;
    case NSKey::backspace:
      editing_->deleteBackward();
      break;
    case NSKey::forwardDelete:
      editing_->deleteForward();
      break;
    default:
      if (!handleMovementKey(event) && !handleClipboardKey(event)) editing_->insert(event.characters);
  }
  setNeedsDisplay(true);
}

bool NSTextField::handleMovementKey(const NSEvent& event) {
  const bool extends = event.modifierFlags & NSShiftKeyMask;
  switch (event.key) {
    case NSKey::left:
      editing_->moveLeft(extends);
      return true;
    case NSKey::right:
      editing_->moveRight(extends);
      return true;
    case NSKey::home:
    case NSKey::up:
      editing_->moveTo(0, extends);
      return true;
    case NSKey::end:
    case NSKey::down:
      editing_->moveTo(editing_->text().size(), extends);
      return true;
    default:
      return false;
  }
}

bool NSTextField::handleClipboardKey(const NSEvent& event) {
  if (!(event.modifierFlags & (NSControlKeyMask | NSCommandKeyMask)) || event.characters.size() != 1)
    return false;
  // Displays send Ctrl+letter as the letter or as its control character.
  const char c = event.characters[0] < 32 ? static_cast<char>(event.characters[0] + 96) : event.characters[0];
  Display* display = window() ? window()->display() : nullptr;
  if (c == 'a') editing_->selectAll();
  if (display && (c == 'c' || c == 'x') && !editing_->selectedText().empty())
    display->setClipboardText(editing_->selectedText());
  if (c == 'x') editing_->insert({});
  if (display && c == 'v') editing_->insert(display->clipboardText());
  return true;
}
