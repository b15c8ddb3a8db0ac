#include "X11Hands.h"

#include <cmath>

namespace {

/// In the order of NSKey.
constexpr KeySym symbols[] = {NoSymbol, XK_Return, XK_Tab, XK_Escape, XK_BackSpace, XK_Delete,
                              XK_Left,  XK_Right,  XK_Up,  XK_Down,   XK_Home,      XK_End};

}  // namespace

void X11Hands::use(Window window, int height) {
  user.workIn(window);
  height_ = height;
}

X11Hands::Pixel X11Hands::pixelOf(NSPoint inWindow) const {
  return {static_cast<int>(std::floor(inWindow.x)), height_ - 1 - static_cast<int>(std::floor(inWindow.y))};
}

void X11Hands::doWith(unsigned modifiers, const std::function<void()>& act) {
  const KeySym held = modifiers & NSShiftKeyMask ? XK_Shift_L : modifiers ? XK_Alt_L : NoSymbol;
  user.hold(held);
  act();
  user.letGo(held);
  arrive();
}

void X11Hands::press(NSPoint inWindow, unsigned modifiers, int) {
  const auto [x, y] = pixelOf(inWindow);
  user.warpTo(x, y);
  doWith(modifiers, [&] { user.press(); });
}

void X11Hands::moveBy(float dx, float dy, unsigned modifiers) {
  doWith(modifiers,
         [&] { user.moveBy(static_cast<int>(std::lround(dx)), -static_cast<int>(std::lround(dy))); });
}

void X11Hands::release() {
  user.release();
  arrive();
}

void X11Hands::wheel(NSPoint inWindow, float notches) {
  const auto [x, y] = pixelOf(inWindow);
  user.warpTo(x, y);
  for (long i = std::lround(std::abs(notches)); i > 0; --i) user.click(notches > 0 ? 4 : 5);
  arrive();
}

void X11Hands::key(NSKey key, unsigned modifiers) {
  doWith(modifiers, [&] { user.type(symbols[static_cast<size_t>(key)]); });
}

void X11Hands::type(const std::string& text, unsigned modifiers) {
  // The symbol of a character is its number.
  for (const char c : text) doWith(modifiers, [&] { user.type(static_cast<unsigned char>(c)); });
}

unsigned long X11Hands::colorAt(const std::string& placeName) {
  arrive();
  const auto [x, y] = pixelOf(place(placeName));
  return user.colorAt(x, y);
}

std::string X11Hands::pixelAt(const std::string& placeName) {
  const auto [x, y] = pixelOf(place(placeName));
  return std::to_string(x) + "," + std::to_string(y);
}
