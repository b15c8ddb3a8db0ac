#include "NSAttributedString.h"

#include <algorithm>

#include "TextLine.h"

namespace {

/// The part of the runs between two bytes of their whole text.
std::vector<NSAttributedString::Run> slice(const std::vector<NSAttributedString::Run>& runs, size_t from,
                                           size_t to) {
  std::vector<NSAttributedString::Run> part;
  size_t start = 0;
  for (const auto& run : runs) {
    const size_t end = start + run.text.size();
    const size_t a = std::max(from, start), b = std::min(to, end);
    if (a < b) part.push_back({run.text.substr(a - start, b - a), run.attributes});
    start = end;
  }
  return part;
}

}  // namespace

NSAttributedString::NSAttributedString(std::string_view text, NSTextAttributes attributes) {
  if (!attributes.font) attributes.font = NSFont::fontWithName_size("LucidaGrande", 12);
  if (!attributes.foregroundColor) attributes.foregroundColor = NSColor::blackColor();
  runs_.push_back({std::string(text), std::move(attributes)});
}

std::string NSAttributedString::string() const {
  std::string text;
  for (const Run& run : runs_) text += run.text;
  return text;
}

NSRect NSAttributedString::boundingRect() const {
  const TextLine line(runs_);
  return NSMakeRect(0, -line.descent(), line.width(), line.ascent() + line.descent());
}

void NSAttributedString::drawAtPoint(NSPoint point) const {
  const TextLine line(runs_);
  line.draw(point.x, point.y + line.descent());
}

std::vector<TextLine> NSAttributedString::linesWithin(float width) const {
  TextLine whole(runs_);
  if (whole.width() <= width) return {whole};
  const std::string text = string();
  std::vector<TextLine> lines;
  for (size_t start = 0; start < text.size();) {
    // At least one word stands on a line, however narrow it is.
    size_t end = text.size();
    TextLine line;
    for (size_t blank = text.find(' ', start + 1);; blank = text.find(' ', blank + 1)) {
      TextLine longer(slice(runs_, start, std::min(blank, text.size())));
      if (longer.width() > width && end != text.size()) break;
      line = longer;
      end = std::min(blank, text.size());
      if (blank == std::string::npos || longer.width() > width) break;
    }
    lines.push_back(line);
    start = std::min(text.size(), text.find_first_not_of(' ', end));
  }
  return lines;
}

void NSAttributedString::drawInRect(NSRect rect) const {
  float top = NSMaxY(rect);
  for (const TextLine& line : linesWithin(NSWidth(rect))) {
    if (top <= NSMinY(rect)) break;
    const float spare = NSWidth(rect) - line.width();
    const float indent = alignment_ == NSRightTextAlignment    ? spare
                         : alignment_ == NSCenterTextAlignment ? spare / 2
                                                               : 0;
    line.draw(NSMinX(rect) + indent, top - line.ascent());
    top -= line.ascent() + line.descent();
  }
}

void NSMutableAttributedString::appendAttributedString(const NSAttributedString& other) {
  const std::vector<Run> added = other.runs();  // a copy: a string may be appended to itself
  runs_.insert(runs_.end(), added.begin(), added.end());
}
