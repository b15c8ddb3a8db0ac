#include "MenuView.h"

#include <algorithm>
#include <cmath>

#include "NSGraphicsContext.h"
#include "NSRunLoop.h"
#include "PopUpLook.h"

namespace {

constexpr float padding = 4;  // above the first and below the last row
constexpr float rowInset = 4;
constexpr float titleInset = 10;
constexpr float markColumn = 12;
constexpr float scrollZoneHeight = 12;
constexpr NSTimeInterval scrollInterval = 0.05;

}  // namespace

const Class& MenuView::isa() const {
  return record();
}

const Class& MenuView::record() {
  static const Class c =
      Class::of<MenuView>("MenuView", NSView::record()).answers<&MenuView::scrollTimerProc>("scrollTimer:");
  return c;
}

MenuView::MenuView(Content content) : NSView(NSZeroRect), content_(std::move(content)), rowHeight_(16) {
  float widest = 0;
  for (const auto& item : content_.items) {
    const TextLine& title = titles_.emplace_back(item->titleRuns(popUpLook::plainText(content_.font)));
    widest = std::max(widest, std::ceil(title.width()));
    rowHeight_ = std::max(rowHeight_, std::ceil(title.ascent() + title.descent()) + 4);
  }
  const float width = 2 * titleInset + (content_.hasMarks ? markColumn : 0) + widest + 2;
  wantedSize_ = {std::max(width, content_.minimalWidth),
                 rowHeight_ * static_cast<float>(rowCount()) + 2 * padding};
}

void MenuView::setPanelSize(NSSize size) {
  setFrame({{0, 0}, {size.width + 2 * popUpLook::shadowReach, size.height + 2 * popUpLook::shadowReach}});
  if (!content_.marked) return;
  revealRow(*content_.marked);
  highlightRow(std::nullopt);
}

NSRect MenuView::panel() const {
  return NSInsetRect(bounds(), popUpLook::shadowReach, popUpLook::shadowReach);
}

NSRect MenuView::list() const {
  const bool isHighEnough = NSHeight(panel()) >= wantedSize_.height;
  return NSInsetRect(panel(), 0, isHighEnough ? padding : scrollZoneHeight);
}

float MenuView::highestScroll() const {
  return std::max(0.0f, rowHeight_ * static_cast<float>(rowCount()) - NSHeight(list()));
}

NSRect MenuView::rowRect(size_t row) const {
  const NSRect area = list();
  return NSMakeRect(NSMinX(area) + rowInset,
                    NSMaxY(area) + scroll_ - rowHeight_ * static_cast<float>(row + 1),
                    NSWidth(area) - 2 * rowInset, rowHeight_);
}

NSRect MenuView::scrollZone(bool upper) const {
  const NSRect whole = panel();
  return NSMakeRect(NSMinX(whole), upper ? NSMaxY(list()) : NSMinY(whole), NSWidth(whole), scrollZoneHeight);
}

bool MenuView::canScroll(bool up) const {
  return up ? scroll_ > 0 : scroll_ < highestScroll();
}

std::optional<size_t> MenuView::rowAt(NSPoint point) const {
  const NSRect area = list();
  if (!NSPointInRect(point, area)) return std::nullopt;
  const auto row = static_cast<size_t>(std::max(0.0f, (NSMaxY(area) + scroll_ - point.y) / rowHeight_));
  return std::min(row, rowCount() - 1);
}

void MenuView::highlightRow(std::optional<size_t> row) {
  if (row == highlighted_) return;
  for (const auto& changed : {highlighted_, row})
    if (changed) setNeedsDisplayInRect(NSIntersectionRect(rowRect(*changed), list()));
  highlighted_ = row;
}

void MenuView::revealRow(size_t row) {
  const NSRect rect = rowRect(row), area = list();
  if (NSMaxY(rect) > NSMaxY(area)) scrollBy(NSMaxY(area) - NSMaxY(rect));
  if (NSMinY(rect) < NSMinY(area)) scrollBy(NSMinY(area) - NSMinY(rect));
  highlightRow(row);
}

void MenuView::trackPointer(NSPoint point) {
  pointer_ = point;
  highlightRow(rowAt(point));
  const NSRect area = list();
  const bool isBeside = point.x < NSMinX(area) || point.x >= NSMaxX(area);
  scrollStep_ = isBeside                 ? 0
                : point.y > NSMaxY(area) ? -rowHeight_ / 2
                : point.y < NSMinY(area) ? rowHeight_ / 2
                                         : 0;
  if (scrollStep_ == 0 || highestScroll() == 0) return stopScrolling();
  if (scrollTimer_) return;
  scrollTimer_ =
      std::make_shared<NSTimer>(scrollInterval, this, NSSelectorFromString("scrollTimer:"), nullptr, true);
  NSRunLoop::currentRunLoop().addTimer_forMode(scrollTimer_, NSEventTrackingRunLoopMode);
}

void MenuView::scrollBy(float points) {
  const float to = std::clamp(scroll_ + points, 0.0f, highestScroll());
  if (to == scroll_) return;
  scroll_ = to;
  setNeedsDisplayInRect(popUpLook::panelInterior(panel()));
}

void MenuView::scrollTimerProc(NSTimer*) {
  scrollBy(scrollStep_);
  highlightRow(rowAt(pointer_));
}

void MenuView::stopScrolling() {
  if (scrollTimer_) scrollTimer_->invalidate();
  scrollTimer_.reset();
}

void MenuView::drawRect(NSRect dirty) {
  if (NSContainsRect(popUpLook::panelInterior(panel()), dirty))
    popUpLook::drawPanelInterior(dirty);
  else
    popUpLook::drawPanel(panel());
  if (canScroll(true)) popUpLook::drawScrollArrow(scrollZone(true), true);
  if (canScroll(false)) popUpLook::drawScrollArrow(scrollZone(false), false);

  NSGraphicsContext::currentContext()->clipToRect(list());
  for (size_t row = 0; row < rowCount(); ++row) {
    const NSRect rect = rowRect(row);
    if (!NSIntersectsRect(rect, dirty) || !NSIntersectsRect(rect, list())) continue;
    if (row == highlighted_) popUpLook::drawHighlight(rect);
    if (row == content_.marked)
      popUpLook::drawCheckMark(
          NSMakeRect(NSMinX(rect), NSMinY(rect), titleInset + markColumn, NSHeight(rect)));
    const float x = NSMinX(panel()) + titleInset + (content_.hasMarks ? markColumn : 0);
    popUpLook::drawRowTitle(rect, x, titles_[row]);
  }
}
