#include "NSView.h"

#include <algorithm>
#include <utility>

#include "NSGraphicsContext.h"
#include "NSWindow.h"

const Class& NSView::isa() const {
  return record();
}

const Class& NSView::record() {
  static const Class c =
      Class::of<NSView>("NSView", NSObject::record()).attribute<&NSView::setHidden>("hidden");
  return c;
}

NSView::NSView(NSCoder& coder) {
  frame_.origin = coder.decodePoint();
  const NSPoint size = coder.decodePoint();
  frame_.size = {size.x, size.y};
  coder.decodeValueOfObjCType_at("c", &hidden_);
}

void NSView::encodeWithCoder(NSCoder& coder) const {
  coder.encodePoint(frame_.origin);
  coder.encodePoint({frame_.size.width, frame_.size.height});
  coder.encodeValueOfObjCType_at("c", &hidden_);
}

NSView::~NSView() {
  for (const auto& view : subviews_) view->superview_ = nullptr;
}

void NSView::addSubview(std::shared_ptr<NSView> view) {
  if (view->superview_) view->removeFromSuperview();
  view->superview_ = this;
  subviews_.push_back(view);
  view->setNeedsDisplay(true);
}

void NSView::removeFromSuperview() {
  if (!superview_) return;
  if (NSWindow* w = window()) w->viewWillLeave(*this);
  if (!superview_) return;  // the end of a gesture or of editing removed it
  setNeedsDisplay(true);
  NSView* parent = std::exchange(superview_, nullptr);
  std::erase_if(parent->subviews_, [this](const auto& view) { return view.get() == this; });
}

NSWindow* NSView::window() const {
  const NSView* root = this;
  while (root->superview_) root = root->superview_;
  return root->window_;
}

bool NSView::isDescendantOf(const NSView& ancestor) const {
  for (const NSView* view = this; view; view = view->superview_)
    if (view == &ancestor) return true;
  return false;
}

void NSView::setFrame(NSRect frame) {
  if (frame == frame_) return;
  setNeedsDisplay(true);
  frame_ = frame;
  setNeedsDisplay(true);
}

NSPoint NSView::originInRoot() const {
  NSPoint origin{0, 0};
  for (const NSView* view = this; view->superview_; view = view->superview_)
    origin = {origin.x + view->frame_.origin.x, origin.y + view->frame_.origin.y};
  return origin;
}

NSPoint NSView::convertPoint_toView(NSPoint point, const NSView* view) const {
  const NSPoint here = originInRoot();
  const NSPoint there = view ? view->originInRoot() : NSPoint{0, 0};
  return {point.x + here.x - there.x, point.y + here.y - there.y};
}

NSPoint NSView::convertPoint_fromView(NSPoint point, const NSView* view) const {
  const NSPoint zero = convertPoint_toView({0, 0}, view);
  return {point.x - zero.x, point.y - zero.y};
}

NSRect NSView::convertRect_toView(NSRect rect, const NSView* view) const {
  return {convertPoint_toView(rect.origin, view), rect.size};
}

void NSView::setHidden(bool hidden) {
  if (hidden == hidden_) return;
  if (hidden && window()) window()->viewWillLeave(*this);
  setNeedsDisplay(true);
  hidden_ = hidden;
  setNeedsDisplay(true);
}

void NSView::setNeedsDisplay(bool needs) {
  if (needs) setNeedsDisplayInRect(bounds());
}

void NSView::setNeedsDisplayInRect(NSRect rect) {
  rect = NSIntersectionRect(rect, bounds());
  const NSView* root = this;
  for (;; root = root->superview_) {
    if (root->hidden_) return;
    if (!root->superview_) break;
    rect = NSIntersectionRect(NSOffsetRect(rect, root->frame_.origin.x, root->frame_.origin.y),
                              root->superview_->bounds());
  }
  if (root->window_ && !NSIsEmptyRect(rect)) root->window_->addDamage(rect);
}

bool NSView::covers(NSRect rect) const {
  if (hidden_ || !NSContainsRect(bounds(), rect)) return false;
  return isOpaque() || std::any_of(subviews_.begin(), subviews_.end(), [&](const auto& view) {
           return view->covers(NSOffsetRect(rect, -view->frame_.origin.x, -view->frame_.origin.y));
         });
}

void NSView::displayRect(NSRect dirty) {
  dirty = NSIntersectionRect(dirty, bounds());
  if (hidden_ || NSIsEmptyRect(dirty)) return;

  // The topmost subview that hides everything below it in the dirty part is where drawing starts.
  const auto last = std::find_if(subviews_.rbegin(), subviews_.rend(), [&](const auto& view) {
    return view->covers(NSOffsetRect(dirty, -view->frame_.origin.x, -view->frame_.origin.y));
  });
  const auto hiding = static_cast<size_t>(subviews_.rend() - last);
  if (hiding == 0) {
    NSGraphicsContext::saveGraphicsState();
    NSGraphicsContext::currentContext()->clipToRect(dirty);
    drawRect(dirty);
    NSGraphicsContext::restoreGraphicsState();
  }
  for (size_t i = hiding == 0 ? 0 : hiding - 1; i < subviews_.size(); ++i) {
    const std::shared_ptr<NSView> view = subviews_[i];
    const NSRect part = NSOffsetRect(dirty, -view->frame_.origin.x, -view->frame_.origin.y);
    if (view->hidden_ || !NSIntersectsRect(part, view->bounds())) continue;
    NSGraphicsContext::saveGraphicsState();
    NSGraphicsContext::currentContext()->translate(view->frame_.origin.x, view->frame_.origin.y);
    view->displayRect(part);
    NSGraphicsContext::restoreGraphicsState();
  }
}

NSView* NSView::hitTest(NSPoint point) {
  if (hidden_ || !NSPointInRect(point, frame_)) return nullptr;
  const NSPoint inside{point.x - frame_.origin.x, point.y - frame_.origin.y};
  for (auto view = subviews_.rbegin(); view != subviews_.rend(); ++view)
    if (NSView* hit = (*view)->hitTest(inside)) return hit;
  return this;
}

void NSView::mouseDown(const NSEvent& event) {
  if (superview_) superview_->mouseDown(event);
}

void NSView::mouseDragged(const NSEvent& event) {
  if (superview_) superview_->mouseDragged(event);
}

void NSView::mouseUp(const NSEvent& event) {
  if (superview_) superview_->mouseUp(event);
}

void NSView::scrollWheel(const NSEvent& event) {
  if (superview_) superview_->scrollWheel(event);
}

void NSView::keyDown(const NSEvent& event) {
  if (superview_) superview_->keyDown(event);
}
