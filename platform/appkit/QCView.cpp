#include "QCView.h"

#include <algorithm>

#include "NSAssertionHandler.h"
#include "NSGraphicsContext.h"
#include "NSLog.h"
#include "NSWindow.h"

namespace {

// At most twenty pictures a second in the mean; a caller's timer may be a little early after a late tick.
constexpr NSTimeInterval stay = 0.05;
constexpr NSTimeInterval slack = 0.005;

}  // namespace

const Class& QCView::isa() const {
  return record();
}

const Class& QCView::record() {
  static const Class c = Class::of<QCView>("QCView", NSView::record())
                             .answers<&QCView::pauseIsOver>("pauseIsOver:")
                             .attribute<&QCView::setComposition>("composition");
  return c;
}

QCView::~QCView() {
  if (pause_) pause_->invalidate();
}

void QCView::setComposition(const Class* compositionClass) {
  composition_ = std::dynamic_pointer_cast<QCComposition>(compositionClass->make());
  if (!composition_)
    NSAssertionHandler::currentHandler().handleFailureInMethod(
        "setComposition:", this, "QCView", __LINE__,
        compositionClass->name() + " is no class of compositions");
  values_.clear();
  for (const QCComposition::Input& input : composition_->inputs()) values_.push_back(input.value);
  ground_ = nullptr;
  setNeedsDisplay(true);
}

size_t QCView::indexOf(std::string_view key) const {
  if (!composition_) return values_.size();
  const auto inputs = composition_->inputs();
  const auto found =
      std::find_if(inputs.begin(), inputs.end(), [&](const auto& input) { return input.key == key; });
  return static_cast<size_t>(found - inputs.begin());
}

bool QCView::setValue_forInputKey(float value, std::string_view key) {
  const size_t index = indexOf(key);
  if (index == values_.size()) {
    NSLogOnce("A composition has no input \"" + std::string(key) + "\"");
    return false;
  }
  if (values_[index] == value) return true;
  values_[index] = value;
  inputChanged();
  return true;
}

float QCView::valueForInputKey(std::string_view key) const {
  const size_t index = indexOf(key);
  return index < values_.size() ? values_[index] : 0;
}

bool QCView::isRendering() const {
  if (!composition_ || !window() || !window()->isVisible()) return false;
  for (const NSView* view = this; view; view = view->superview())
    if (view->isHidden()) return false;
  return true;
}

void QCView::inputChanged() {
  if (pause_) return;
  const NSTimeInterval now = NSDate::timeIntervalSinceReferenceDate();
  const NSTimeInterval rest = nextPicture_ - slack - now;
  if (rest > 0) {
    pause_ = NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(
        rest, this, NSSelectorFromString("pauseIsOver:"), nullptr, false);
    return;
  }
  nextPicture_ = std::max(nextPicture_, now - slack) + stay;
  setNeedsDisplay(true);
}

void QCView::pauseIsOver(NSTimer*) {
  pause_ = nullptr;
  inputChanged();
}

void QCView::drawRect(NSRect) {
  if (!composition_) return;
  if (!ground_) {
    ground_ = NSImage::initWithSize(bounds().size);
    ground_->lockFocus([this] { composition_->drawGround(bounds()); });
  }
  ground_->drawInRect_fromRect_operation_fraction(bounds(), NSZeroRect, NSCompositeSourceOver, 1);
  composition_->draw(bounds(), values_);
}
