#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

/// One line of UTF-8 text being edited: a caret and the other end of the selection, as byte positions that
/// always lie between characters.
class TextEditing {
 public:
  /// All of it is selected.
  explicit TextEditing(std::string text);

  const std::string& text() const { return text_; }
  void replaceText(std::string text);
  size_t caret() const { return caret_; }
  size_t selectionStart() const { return std::min(caret_, anchor_); }
  size_t selectionEnd() const { return std::max(caret_, anchor_); }
  std::string selectedText() const;
  bool isChanged() const { return text_ != original_; }
  const std::string& original() const { return original_; }

  /// In place of the selection; control characters are left out.
  void insert(std::string_view characters);
  void deleteBackward();
  void deleteForward();
  void moveTo(size_t position, bool extendsSelection);
  /// One character; without extending, a selection collapses to that end.
  void moveLeft(bool extendsSelection);
  void moveRight(bool extendsSelection);
  void selectAll();
  /// What lies between two blanks round the position.
  void selectWordAt(size_t position);

 private:
  size_t before(size_t position) const;
  size_t after(size_t position) const;

  std::string original_;
  std::string text_;
  size_t caret_ = 0;
  size_t anchor_ = 0;
};
