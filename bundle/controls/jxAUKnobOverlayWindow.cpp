#include "jxAUKnobOverlayWindow.h"

namespace {

constexpr float valueWidth = 110;
constexpr float ringWidth = 10;

}  // namespace

const Class& jxAUKnobOverlayWindow::isa() const {
  return record();
}

const Class& jxAUKnobOverlayWindow::record() {
  static const Class c = Class::of<jxAUKnobOverlayWindow>("jxAUKnobOverlayWindow", NSWindow::record());
  return c;
}

jxAUKnobOverlayWindow::jxAUKnobOverlayWindow()
    : NSWindow(NSMakeRect(0, 0, 100, 100), NSBorderlessWindowMask, NSBackingStoreBuffered, false),
      mView(std::make_shared<jxAUKnobOverlayView>(NSMakeRect(0, 0, 100, 100), ringWidth)) {
  setContentView(mView);
  setOpaque(false);
  setBackgroundColor(NSColor::clearColor());
  setIgnoresMouseEvents(true);
}

void jxAUKnobOverlayWindow::setText(const std::string& text) {
  mView->setText(unit.empty() ? text : text + " " + unit);
}

void jxAUKnobOverlayWindow::setKnobRect(NSRect rect) {
  // A square with the knob's width, its top edge kept.
  const float side = NSWidth(rect);
  knobRect = NSMakeRect(NSMinX(rect), NSMinY(rect) - (side - NSHeight(rect)), side, side);
  const float margin = knobOverlay::hilightWidth;
  const float extra =
      valueWidth + (unit.empty() ? 0 : jxAUKnobOverlayView::calculateTextSize(" " + unit).width);
  setFrame(NSMakeRect(NSMinX(knobRect) - extra, NSMinY(knobRect) - margin, extra + margin + side,
                      side + 2 * margin));
}

void jxAUKnobOverlayWindow::orderFront(NSObject* sender) {
  owner = sender;
  if (const auto* view = dynamic_cast<NSView*>(sender); view && view->window()) {
    const NSPoint inWindow = view->convertPoint_toView(view->bounds().origin, nullptr);
    setKnobRect({view->window()->convertBaseToScreen(inWindow), view->bounds().size});
  }
  NSWindow::orderFront(sender);
}

void jxAUKnobOverlayWindow::orderOut(NSObject* sender) {
  owner = nullptr;
  NSWindow::orderOut(sender);
}

bool jxAUKnobOverlayWindow::ownerIsEqualTo(const NSObject* object) const {
  return owner && owner->isEqual(object);
}
