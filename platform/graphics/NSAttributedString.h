#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "NSColor.h"
#include "NSFont.h"
#include "NSGeometry.h"
#include "NSShadow.h"

enum class NSTextAlignment { left, right, center };
inline constexpr NSTextAlignment NSLeftTextAlignment = NSTextAlignment::left;
inline constexpr NSTextAlignment NSRightTextAlignment = NSTextAlignment::right;
inline constexpr NSTextAlignment NSCenterTextAlignment = NSTextAlignment::center;

/// How a run of text looks. Null: LucidaGrande at 12 points, black.
struct NSTextAttributes {
  std::shared_ptr<NSFont> font;
  std::shared_ptr<NSColor> foregroundColor;
  std::optional<NSShadow> shadow;
};

class TextLine;

/// UTF-8 text in runs of equal attributes.
class NSAttributedString {
 public:
  struct Run {
    std::string text;
    NSTextAttributes attributes;
  };

  NSAttributedString(std::string_view text, NSTextAttributes attributes);

  std::string string() const;
  const std::vector<Run>& runs() const { return runs_; }

  /// Measures one line for drawing from its baseline: origin (0, −descent), size (sum of advances,
  /// ascent + descent).
  NSRect boundingRect() const;
  /// The point is the lower left corner of the line.
  void drawAtPoint(NSPoint point) const;
  /// The first line's top at the rectangle's top, aligned within its width; a line that is wider is wrapped
  /// between words; lines that do not start inside the height are not drawn. Clips nothing.
  void drawInRect(NSRect rect) const;

 protected:
  std::vector<Run> runs_;
  NSTextAlignment alignment_ = NSLeftTextAlignment;

 private:
  std::vector<TextLine> linesWithin(float width) const;
};

class NSMutableAttributedString : public NSAttributedString {
 public:
  using NSAttributedString::NSAttributedString;

  /// Appends the runs with nothing between.
  void appendAttributedString(const NSAttributedString& other);
  /// Of the whole paragraph.
  void setAlignment(NSTextAlignment alignment) { alignment_ = alignment; }
};
