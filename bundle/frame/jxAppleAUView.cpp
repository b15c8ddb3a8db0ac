#include "jxAppleAUView.h"

#include "NSAttributedString.h"
#include "NSImageUtils.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "jxAUSectionStyle.h"

namespace {

constexpr float separatorY = 30;

NSTextAttributes bottomStyle(const char* fontName, float points, float white, float blurRadius,
                             float shadowAlpha) {
  NSShadow shadow;
  shadow.setShadowBlurRadius(blurRadius);
  shadow.setShadowColor(NSColor::colorWithCalibratedWhite_alpha(0, shadowAlpha));
  shadow.setShadowOffset({0, -1});
  return {.font = NSFont::fontWithName_size(fontName, points),
          .foregroundColor = NSColor::colorWithCalibratedWhite_alpha(white, 1),
          .shadow = shadow};
}

}  // namespace

const Class& jxAppleAUView::isa() const {
  return record();
}

const Class& jxAppleAUView::record() {
  static const Class c = Class::of<jxAppleAUView>("jxAppleAUView", NSImageView::record())
                             .answers<&jxAppleAUView::awakeFromNib>("awakeFromNib")
                             .answers<&jxAppleAUView::idle>("idle")
                             .answers<&jxAppleAUView::timerProc>("timerProc:");
  return c;
}

jxAppleAUView::jxAppleAUView(NSRect frame) : NSImageView(frame) {
  const auto background = imageNamed_fromResource(kjxBackgroundImage, "auGradientBackground", record());
  imageNamed_fromResource(kjxSeparatorImage, "auBeveledSeparator", record());

  const auto rendered = NSImage::initWithSize(frame.size);
  rendered->lockFocus([background, all = bounds()] {
    drawInRect_cornerSizeX_cornerSizeY_operation_fraction(*background, all, 20, 20, NSCompositeSourceOver, 1);
  });
  setImage(rendered);
}

void jxAppleAUView::awakeFromNib() {
  if (NSWindow* w = window()) w->setInitialFirstResponder(this);
}

void jxAppleAUView::setAU(std::shared_ptr<jxAUwrapper> wrapper) {
  mAUwrapper = std::move(wrapper);
  mBottomLine = nullptr;
  setNeedsDisplay(true);
}

void jxAppleAUView::startTimerWithInterval(NSTimeInterval interval) {
  if (mTimer) mTimer->invalidate();
  static const SEL tick = NSSelectorFromString("timerProc:");
  mTimer = NSTimer::scheduledTimerWithTimeInterval_target_selector_userInfo_repeats(interval, this, tick,
                                                                                    nullptr, true);
  NSRunLoop::currentRunLoop().addTimer_forMode(mTimer, NSEventTrackingRunLoopMode);
  NSRunLoop::currentRunLoop().addTimer_forMode(mTimer, NSModalPanelRunLoopMode);
}

void jxAppleAUView::timerProc(NSTimer*) {
  if (!window()) {
    if (mTimer) mTimer->invalidate();
    mTimer = nullptr;
  } else if (mAUwrapper && window()->isVisible()) {
    idle();
  }
}

NSRect jxAppleAUView::rectExpand_left_top_right_bottom(NSRect rect, float left, float top, float right,
                                                       float bottom) {
  return NSMakeRect(NSMinX(rect) - left, NSMinY(rect) - bottom, NSWidth(rect) + left + right,
                    NSHeight(rect) + bottom + top);
}

NSRect jxAppleAUView::standardRectExpand(NSRect rect) {
  return rectExpand_left_top_right_bottom(rect, -3, 15, -3, 5);
}

NSRect jxAppleAUView::sectionRectFrom_to(const NSView& first, const NSView& last) {
  const NSPoint origin = first.frame().origin;
  return NSMakeRect(origin.x, origin.y, NSMaxX(last.frame()) - origin.x, NSMaxY(last.frame()) - origin.y);
}

void jxAppleAUView::drawSectionRect_color_name(NSRect rect, const NSColor&, const std::string& name) {
  drawSectionCard(NSInsetRect(rect, -0.5f, -0.5f), name);
}

void jxAppleAUView::drawRect(NSRect dirty) {
  NSImageView::drawRect(dirty);
  const auto separator = NSImage::imageNamed(kjxSeparatorImage);
  separator->drawInRect_fromRect_operation_fraction(
      NSMakeRect(0, separatorY, NSWidth(frame()), separator->size().height), {{0, 0}, separator->size()},
      NSCompositeSourceOver, 1);
  if (!mAUwrapper) return;
  if (!mBottomLine) mBottomLine = renderedBottomLine();
  mBottomLine->drawInRect_fromRect_operation_fraction({{0, 0}, mBottomLine->size()}, NSZeroRect,
                                                      NSCompositeSourceOver, 1);
}

std::shared_ptr<NSImage> jxAppleAUView::renderedBottomLine() const {
  NSMutableAttributedString line(kjxAppleAUNotice, bottomStyle("Skia", 10, 106.0f / 255, 2, 0.19f));
  line.appendAttributedString(
      NSAttributedString(mAUwrapper->auName(), bottomStyle("Futura Medium", 18, 77.0f / 255, 3, 0.33f)));
  line.setAlignment(NSRightTextAlignment);

  const auto rendered = NSImage::initWithSize({NSWidth(bounds()), separatorY});
  rendered->lockFocus(
      [line, width = NSWidth(bounds())] { line.drawInRect(NSMakeRect(8, 4, width - 16, 26)); });
  return rendered;
}

void jxAppleAUView::mouseDown(const NSEvent& event) {
  NSImageView::mouseDown(event);
  if (window()) window()->makeFirstResponder(this);
}
