#pragma once

#include <memory>
#include <optional>
#include <string>

#include "NSAttributedString.h"
#include "NSControl.h"
#include "TextEditing.h"

class TextLine;

/// One line of text, 2 points inside the left and right edge, from the top of the frame, clipped to it. A
/// label when neither editable nor selectable: its presses go to its superview. Typing is ended by Return,
/// Tab, a press elsewhere or loss of the keyboard; the delegate hears "control:textShouldEndEditing:" (may
/// rewrite the text; false keeps editing) and "controlTextDidEndEditing:", and after Return the action is
/// sent. A session that changed nothing ends in silence, but for Return. Escape restores the old text.
class NSTextField : public NSControl {
 public:
  explicit NSTextField(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  std::string stringValue() const override;
  void setStringValue(const std::string& text);
  /// The number at the beginning of the text, 0 without one; of the text being typed while it is.
  float floatValue() const override;

  void setFont(std::shared_ptr<NSFont> font);
  void setTextColor(std::shared_ptr<NSColor> color);
  void setAlignment(NSTextAlignment alignment);
  void setEditable(bool editable) { editable_ = editable; }
  void setSelectable(bool selectable) { selectable_ = selectable; }
  void setDrawsBackground(bool draws);
  void setBordered(bool bordered);
  void setBezeled(bool bezeled) { setBordered(bezeled); }
  /// Not owned.
  void setDelegate(NSObject* delegate) { delegate_ = delegate; }

  bool isEditing() const { return editing_.has_value(); }
  /// Ends editing without a word; the value that came last from elsewhere is shown.
  void abortEditing();
  /// Horizontal extent of the text in the field's coordinates, for checks of layouts.
  NSRect textRect() const;

  void drawRect(NSRect dirty) override;
  void mouseDown(const NSEvent& event) override;
  void mouseDragged(const NSEvent& event) override;
  void mouseUp(const NSEvent& event) override;
  void keyDown(const NSEvent& event) override;
  bool acceptsFirstResponder() const override { return editable_ || selectable_; }
  bool becomeFirstResponder() override;
  bool resignFirstResponder() override;
  bool acceptsTyping() const override { return editable_; }

 private:
  enum class Ending { focusLost, returnKey };

  bool finishEditing(Ending ending);
  bool handleClipboardKey(const NSEvent& event);
  bool handleMovementKey(const NSEvent& event);
  const std::string& shownText() const;
  const TextLine& textLine() const;
  float textOrigin(const TextLine& line) const;
  size_t positionAt(const NSEvent& event) const;

  std::string text_;
  std::shared_ptr<NSFont> font_;
  std::shared_ptr<NSColor> color_;
  NSTextAlignment alignment_ = NSLeftTextAlignment;
  bool editable_ = true;
  bool selectable_ = true;
  bool background_ = true;
  bool bordered_ = true;
  bool ending_ = false;
  NSObject* delegate_ = nullptr;
  mutable std::shared_ptr<const TextLine> line_;  // what was shaped last
  mutable std::string lineText_;
  std::optional<TextEditing> editing_;
  std::optional<size_t> pressPosition_;  // of the press that began the editing
};
