#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "NSMenuItem.h"
#include "NSTimer.h"
#include "NSView.h"
#include "TextLine.h"

/// The panel of an open menu: its rows, one of which may be highlighted, and how far it is scrolled when it
/// is lower than its rows. It takes no events: MenuTracking tells it what to show.
class MenuView : public NSView {
 public:
  struct Content {
    std::vector<std::shared_ptr<NSMenuItem>> items;
    std::optional<size_t> marked;  // has the check mark
    bool hasMarks;                 // there is a column for it
    std::shared_ptr<NSFont> font;  // of titles without attributes
    float minimalWidth;
  };

  explicit MenuView(Content content);
  const Class& isa() const override;
  static const Class& record();

  /// Of a panel that shows all rows, as wide as the widest title.
  NSSize wantedSize() const { return wantedSize_; }
  /// Gives the panel its size; the view is larger by the panel's shadow. Shows the marked row.
  void setPanelSize(NSSize size);
  /// In the view's coordinates.
  NSRect panel() const;

  size_t rowCount() const { return content_.items.size(); }
  NSMenuItem& itemOfRow(size_t row) const { return *content_.items[row]; }
  std::optional<size_t> markedRow() const { return content_.marked; }
  std::optional<size_t> highlightedRow() const { return highlighted_; }
  std::optional<size_t> rowAt(NSPoint point) const;
  void highlightRow(std::optional<size_t> row);
  /// Highlights the row and scrolls until it is seen.
  void revealRow(size_t row);
  /// Highlights what is below the pointer; near the ends of a panel that is too low it scrolls as long as
  /// the pointer stays there.
  void trackPointer(NSPoint point);
  void scrollBy(float points);
  void scrollTimerProc(NSTimer* timer);
  void stopScrolling();

  void drawRect(NSRect dirty) override;

 private:
  NSRect list() const;
  NSRect rowRect(size_t row) const;
  NSRect scrollZone(bool upper) const;
  bool canScroll(bool up) const;
  float highestScroll() const;

  Content content_;
  std::vector<TextLine> titles_;
  NSSize wantedSize_;
  float rowHeight_;
  std::optional<size_t> highlighted_;
  float scroll_ = 0;  // rows' points above the list's upper edge
  NSPoint pointer_;
  float scrollStep_ = 0;  // a tick, downwards positive
  std::shared_ptr<NSTimer> scrollTimer_;
};
