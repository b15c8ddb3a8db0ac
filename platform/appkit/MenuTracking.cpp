#include "MenuTracking.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "NSWindow.h"
#include "PopUpLook.h"

namespace {

constexpr float gapToButton = 2;
constexpr float gapToScreen = 4;
constexpr float clickReach = 3;  // a press that moves further is a drag
constexpr float wheelStep = 32;  // a notch

/// Goes when its owner or anybody else hides it: the menu is then closed.
class MenuWindow : public NSWindow {
 public:
  explicit MenuWindow(std::shared_ptr<NSView> content)
      : NSWindow(content->frame(), NSBorderlessWindowMask, NSBackingStoreBuffered, false) {
    setContentView(std::move(content));
    setOpaque(false);
    setBackgroundColor(NSColor::clearColor());
  }
  void orderOut(NSObject* sender) override {
    const auto self = shared_from_this();  // the menu may be the only one that keeps it
    MenuTracking::closeIn(*this);
    NSWindow::orderOut(sender);
  }
};

NSRect screenAround(const Display& display, NSPoint place) {
  const std::vector<NSRect> screens = display.screens();
  const auto found =
      std::ranges::find_if(screens, [&](NSRect screen) { return NSPointInRect(place, screen); });
  return found == screens.end() ? screens.front() : *found;
}

/// On whole physical pixels of a window, seen from its corner.
NSRect onPixels(NSRect rect, NSPoint corner, float scale) {
  const auto whole = [scale](float v) { return std::round(v * scale) / scale; };
  const auto enough = [scale](float v) { return std::ceil(v * scale - 1e-3f) / scale; };
  return NSMakeRect(corner.x + whole(NSMinX(rect) - corner.x), corner.y + whole(NSMinY(rect) - corner.y),
                    enough(NSWidth(rect)), enough(NSHeight(rect)));
}

/// Its bytes, ASCII letters in lower case.
std::string firstLetter(const std::string& text) {
  size_t length = text.empty() ? 0 : 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) ++length;
  std::string letter = text.substr(0, length);
  if (length == 1 && letter[0] >= 'A' && letter[0] <= 'Z') letter[0] = static_cast<char>(letter[0] + 32);
  return letter;
}

}  // namespace

std::shared_ptr<MenuTracking> MenuTracking::current_;

void MenuTracking::open(NSPopUpButton& button, const NSEvent* press) {
  close();
  NSWindow* window = button.window();
  if (!window || !window->isVisible() || !window->display() || button.listedItems().empty()) return;
  window->endGesture();  // what follows is the menu's
  current_ = std::make_shared<MenuTracking>(Passkey(), button);
  if (press)
    current_->pressPlace_ = window->convertBaseToScreen(press->locationInWindow);
  else
    current_->moveHighlight(0);
  current_->show();
}

MenuTracking::MenuTracking(Passkey, NSPopUpButton& button)
    : button_(std::static_pointer_cast<NSPopUpButton>(button.shared_from_this())), owner_(*button.window()) {
  const int marked = button.indexOfSelectedItem();
  const bool hasMarks = !button.pullsDown();
  view_ = std::make_shared<MenuView>(MenuView::Content{
      .items = button.listedItems(),
      .marked = hasMarks && marked >= 0 ? std::optional(static_cast<size_t>(marked)) : std::nullopt,
      .hasMarks = hasMarks,
      .font = button.font_,
      .minimalWidth = NSWidth(button.bounds())});
  const NSRect inWindow = button.convertRect_toView(button.bounds(), nullptr);
  const NSRect onScreen{owner_.convertBaseToScreen(inWindow.origin), inWindow.size};
  const NSPoint centre{NSMinX(onScreen) + NSWidth(onScreen) / 2, NSMinY(onScreen) + NSHeight(onScreen) / 2};
  const Display& display = *owner_.display();
  const NSRect panel = onPixels(panelFrame(view_->wantedSize(), onScreen, screenAround(display, centre)),
                                owner_.frame().origin, display.scale());
  view_->setPanelSize(panel.size);
  window_ = std::make_shared<MenuWindow>(view_);
  window_->setFrame(NSInsetRect(panel, -popUpLook::shadowReach, -popUpLook::shadowReach));
}

void MenuTracking::show() {
  loop_->setCurrentMode(NSEventTrackingRunLoopMode);
  window_->orderFront(button_.get());
  owner_.updateKeyboard();
  button_->setNeedsDisplay(true);
}

void MenuTracking::close() {
  const auto menu = std::exchange(current_, nullptr);
  if (!menu) return;
  menu->view_->stopScrolling();
  menu->loop_->setCurrentMode(menu->modeBefore_);
  menu->window_->orderOut(nullptr);
  menu->owner_.updateKeyboard();
  menu->button_->setNeedsDisplay(true);
}

void MenuTracking::closeIn(const NSView& tree) {
  if (current_ && current_->button_->isDescendantOf(tree)) close();
}

void MenuTracking::closeIn(const NSWindow& window) {
  if (current_ && (isOpenIn(window) || current_->window_.get() == &window)) close();
}

bool MenuTracking::isOpenFor(const NSPopUpButton& button) {
  return current_ && current_->button_.get() == &button;
}

bool MenuTracking::isOpenIn(const NSWindow& window) {
  return current_ && &current_->owner_ == &window;
}

NSRect MenuTracking::panelFrame(NSSize wanted, NSRect button, NSRect screen) {
  const NSRect room = NSInsetRect(screen, gapToScreen, gapToScreen);
  const float height = std::min(wanted.height, NSHeight(room));
  const float width = std::min(wanted.width, NSWidth(room));
  const float below = NSMinY(button) - gapToButton - height;
  const float above = NSMaxY(button) + gapToButton;
  const bool fitsAbove = above + height <= NSMaxY(room) && above >= NSMinY(room);
  const float y = below < NSMinY(room) && fitsAbove ? above : below;
  return NSMakeRect(std::clamp(NSMinX(button), NSMinX(room), NSMaxX(room) - width),
                    std::clamp(y, NSMinY(room), NSMaxY(room) - height), width, height);
}

void MenuTracking::handle(const NSEvent& event, const NSWindow& window) {
  const auto self = current_;  // closing lets it go
  const NSPoint place = window.convertBaseToScreen(event.locationInWindow);
  switch (event.type) {
    case NSEventType::leftMouseDown:
      if (!NSPointInRect(inView(place), view_->panel())) return close();
      pressPlace_ = place;
      hasMoved_ = true;  // a click in the menu chooses
      return pointTo(place, true);
    case NSEventType::leftMouseDragged:
      if (pressPlace_) pointTo(place, true);
      return;
    case NSEventType::leftMouseUp:
      if (pressPlace_) release(place);
      return;
    case NSEventType::scrollWheel:
      view_->scrollBy(-wheelStep * event.deltaY);
      return pointTo(place, false);
    case NSEventType::keyDown:
      return keyDown(event);
  }
}

NSPoint MenuTracking::inView(NSPoint place) const {
  return {place.x - window_->frame().origin.x, place.y - window_->frame().origin.y};
}

void MenuTracking::pointTo(NSPoint place, bool held) {
  if (held && !hasMoved_) {
    hasMoved_ = std::hypot(place.x - pressPlace_->x, place.y - pressPlace_->y) > clickReach;
    if (!hasMoved_) return;
  }
  const NSPoint point = inView(place);
  const bool wasInside = std::exchange(isPointerInside_, NSPointInRect(point, view_->panel()));
  if (held || isPointerInside_) return view_->trackPointer(point);
  view_->stopScrolling();
  if (wasInside) view_->highlightRow(std::nullopt);  // else it is what the keys have chosen
}

void MenuTracking::release(NSPoint place) {
  pressPlace_.reset();
  if (!hasMoved_) return;  // a click on the button leaves the menu open
  view_->stopScrolling();
  const NSPoint onButton = button_->convertPoint_fromView(
      {place.x - owner_.frame().origin.x, place.y - owner_.frame().origin.y}, nullptr);
  if (view_->rowAt(inView(place))) {
    view_->highlightRow(view_->rowAt(inView(place)));
    choose();
  } else if (!NSPointInRect(inView(place), view_->panel()) && !NSPointInRect(onButton, button_->bounds())) {
    close();
  }
}

void MenuTracking::keyDown(const NSEvent& event) {
  const auto last = static_cast<int>(view_->rowCount());
  switch (event.key) {
    case NSKey::escape:
      return close();
    case NSKey::enter:
      return choose();
    case NSKey::up:
      return moveHighlight(-1);
    case NSKey::down:
      return moveHighlight(1);
    case NSKey::home:
      return moveHighlight(-last);
    case NSKey::end:
      return moveHighlight(last);
    case NSKey::other:
      if (event.characters == " ") return choose();
      return highlightInitial(firstLetter(event.characters));
    default:
      return;
  }
}

void MenuTracking::moveHighlight(int by) {
  const auto last = static_cast<int>(view_->rowCount()) - 1;
  int row = 0;
  if (const auto highlighted = view_->highlightedRow())
    row = static_cast<int>(*highlighted) + by;
  else if (std::abs(by) > 1)
    row = by < 0 ? 0 : last;
  else
    row = static_cast<int>(view_->markedRow().value_or(by < 0 ? static_cast<size_t>(last) : 0));
  view_->revealRow(static_cast<size_t>(std::clamp(row, 0, last)));
}

void MenuTracking::highlightInitial(const std::string& letter) {
  if (letter.empty()) return;
  const size_t start = view_->highlightedRow() ? *view_->highlightedRow() + 1 : 0;
  for (size_t i = 0; i < view_->rowCount(); ++i) {
    const size_t row = (start + i) % view_->rowCount();
    if (firstLetter(view_->itemOfRow(row).title()) == letter) return view_->revealRow(row);
  }
}

void MenuTracking::choose() {
  const auto highlighted = view_->highlightedRow();
  const auto button = button_;
  const auto item =
      highlighted ? std::static_pointer_cast<NSMenuItem>(view_->itemOfRow(*highlighted).shared_from_this())
                  : nullptr;
  close();
  if (item) button->choose(*item);
}
