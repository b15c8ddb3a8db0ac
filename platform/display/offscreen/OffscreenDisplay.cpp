#include "OffscreenDisplay.h"

#include <algorithm>
#include <utility>

std::unique_ptr<DisplayWindow> OffscreenDisplay::openWindow(const DisplayWindowOptions& options,
                                                            DisplayClient& client) {
  return std::make_unique<OffscreenWindow>(*this, options, client);
}

OffscreenWindow* OffscreenDisplay::windowAt(NSPoint place) const {
  for (auto window = windows_.rbegin(); window != windows_.rend(); ++window)
    if ((*window)->isShown() && !(*window)->ignoresMouse() && NSPointInRect(place, (*window)->frame()))
      return *window;
  return nullptr;
}

void OffscreenDisplay::send(OffscreenWindow& window, NSEvent event, NSPoint place) {
  event.locationInWindow = {place.x - window.frame().origin.x, place.y - window.frame().origin.y};
  window.client().displayEvent(event);
}

void OffscreenDisplay::press(NSPoint place, unsigned modifiers, int clickCount) {
  pointer_ = place;
  pressed_ = windowAt(place);
  if (!pressed_) {
    const auto wanting = std::find_if(windows_.begin(), windows_.end(),
                                      [](const auto* w) { return w->areForeignPressesWanted(); });
    if (wanting == windows_.end()) return;
    pressed_ = *wanting;
  }
  NSEvent event;
  event.modifierFlags = modifiers;
  event.clickCount = clickCount;
  send(*pressed_, event, place);
}

void OffscreenDisplay::moveBy(float dx, float dy, unsigned modifiers) {
  pointer_ = {pointer_.x + dx, pointer_.y + dy};
  if (!pointerHidden_) {
    const NSSize screen = screens()[0].size;
    pointer_ = {std::clamp(pointer_.x, 0.0f, screen.width - 1), std::clamp(pointer_.y, 1.0f, screen.height)};
  }
  if (!pressed_) {
    if (OffscreenWindow* window = windowAt(pointer_)) {
      const NSPoint corner = window->frame().origin;
      window->client().displayPointerMoved({pointer_.x - corner.x, pointer_.y - corner.y});
    }
    return;
  }
  NSEvent event;
  event.type = NSEventType::leftMouseDragged;
  event.modifierFlags = modifiers;
  event.deltaX = dx;
  event.deltaY = -dy;
  send(*pressed_, event, pointer_);
}

void OffscreenDisplay::release() {
  OffscreenWindow* window = std::exchange(pressed_, nullptr);
  if (!window) return;
  NSEvent event;
  event.type = NSEventType::leftMouseUp;
  send(*window, event, pointer_);
}

void OffscreenDisplay::wheel(NSPoint place, float deltaY, float deltaX) {
  OffscreenWindow* window = windowAt(place);
  if (!window) return;
  NSEvent event;
  event.type = NSEventType::scrollWheel;
  event.deltaX = deltaX;
  event.deltaY = deltaY;
  send(*window, event, place);
}

void OffscreenDisplay::type(const std::string& characters, unsigned modifiers) {
  for (size_t i = 0, next = 0; i < characters.size(); i = next) {
    do ++next;
    while (next < characters.size() && (static_cast<unsigned char>(characters[next]) & 0xC0) == 0x80);
    NSEvent event;
    event.characters = characters.substr(i, next - i);
    event.modifierFlags = modifiers;
    sendKey(event);
  }
}

void OffscreenDisplay::key(NSKey key, unsigned modifiers) {
  NSEvent event;
  event.key = key;
  event.modifierFlags = modifiers;
  sendKey(event);
}

void OffscreenDisplay::sendKey(NSEvent event) {
  event.type = NSEventType::keyDown;
  const auto window = std::find_if(windows_.rbegin(), windows_.rend(),
                                   [](const auto* w) { return w->isShown() && !w->ignoresMouse(); });
  if (window != windows_.rend()) (*window)->client().displayEvent(event);
}

OffscreenWindow::OffscreenWindow(OffscreenDisplay& display, const DisplayWindowOptions& options,
                                 DisplayClient& client)
    : display_(display), client_(client), frame_(options.frame), ignoresMouse_(options.ignoresMouse) {
  display_.windows_.push_back(this);
}

OffscreenWindow::~OffscreenWindow() {
  std::erase(display_.windows_, this);
  if (display_.pressed_ == this) display_.pressed_ = nullptr;
}

void OffscreenWindow::show(bool) {
  shown_ = true;
}

void OffscreenWindow::present(const Bitmap& bitmap, std::span<const NSRect> rects) {
  picture_ = &bitmap;
  presented_.insert(presented_.end(), rects.begin(), rects.end());
}

void OffscreenWindow::endRelativeMotion(NSPoint place) {
  const NSSize screen = display_.screens()[0].size;
  display_.pointer_ = {std::clamp(frame_.origin.x + place.x, 0.0f, screen.width - 1),
                       std::clamp(frame_.origin.y + place.y, 1.0f, screen.height)};
  display_.pointerHidden_ = false;
}

std::vector<NSRect> OffscreenWindow::takePresented() {
  return std::exchange(presented_, {});
}
