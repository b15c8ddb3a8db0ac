#include "TextEditing.h"

namespace {

bool isContinuation(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

}  // namespace

TextEditing::TextEditing(std::string text) : original_(text), text_(std::move(text)) {
  selectAll();
}

void TextEditing::replaceText(std::string text) {
  text_ = std::move(text);
  caret_ = anchor_ = text_.size();
}

std::string TextEditing::selectedText() const {
  return text_.substr(selectionStart(), selectionEnd() - selectionStart());
}

void TextEditing::insert(std::string_view characters) {
  std::string typed;
  for (const char c : characters)
    if (static_cast<unsigned char>(c) >= 32 && c != 127) typed += c;
  const size_t start = selectionStart();
  text_.replace(start, selectionEnd() - start, typed);
  caret_ = anchor_ = start + typed.size();
}

void TextEditing::deleteBackward() {
  if (caret_ == anchor_) anchor_ = before(caret_);
  insert({});
}

void TextEditing::deleteForward() {
  if (caret_ == anchor_) anchor_ = after(caret_);
  insert({});
}

void TextEditing::moveTo(size_t position, bool extendsSelection) {
  caret_ = std::min(position, text_.size());
  if (!extendsSelection) anchor_ = caret_;
}

void TextEditing::moveLeft(bool extendsSelection) {
  const bool collapses = !extendsSelection && caret_ != anchor_;
  moveTo(collapses ? selectionStart() : before(caret_), extendsSelection);
}

void TextEditing::moveRight(bool extendsSelection) {
  const bool collapses = !extendsSelection && caret_ != anchor_;
  moveTo(collapses ? selectionEnd() : after(caret_), extendsSelection);
}

void TextEditing::selectAll() {
  anchor_ = 0;
  caret_ = text_.size();
}

void TextEditing::selectWordAt(size_t position) {
  size_t start = std::min(position, text_.size());
  size_t end = start;
  while (start > 0 && text_[start - 1] != ' ') --start;
  while (end < text_.size() && text_[end] != ' ') ++end;
  anchor_ = start;
  caret_ = end;
}

size_t TextEditing::before(size_t position) const {
  if (position == 0) return 0;
  do --position;
  while (position > 0 && isContinuation(text_[position]));
  return position;
}

size_t TextEditing::after(size_t position) const {
  if (position >= text_.size()) return text_.size();
  do ++position;
  while (position < text_.size() && isContinuation(text_[position]));
  return position;
}
