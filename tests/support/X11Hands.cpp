#include "X11Hands.h"

#include <cmath>
#include <cstdlib>
#include <functional>

namespace {

constexpr std::pair<unsigned, KeySym> modifierKeys[] = {{NSShiftKeyMask, XK_Shift_L},
                                                        {NSAlternateKeyMask, XK_Alt_L},
                                                        {NSControlKeyMask, XK_Control_L},
                                                        {NSCommandKeyMask, XK_Super_L}};

/// In the order of NSKey.
constexpr KeySym symbols[] = {NoSymbol, XK_Return, XK_Tab, XK_Escape, XK_BackSpace, XK_Delete,
                              XK_Left,  XK_Right,  XK_Up,  XK_Down,   XK_Home,      XK_End};

/// Modifiers that are held for a while.
class Held {
 public:
  Held(X11User& user, unsigned modifiers) : user_(user), modifiers_(modifiers) {
    for (const auto& [mask, symbol] : modifierKeys)
      if (modifiers_ & mask) user_.hold(symbol);
  }
  ~Held() {
    for (const auto& [mask, symbol] : modifierKeys)
      if (modifiers_ & mask) user_.letGo(symbol);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  X11User& user_;
  unsigned modifiers_;
};

}  // namespace

void X11Hands::use(Window window, int height) {
  user.workIn(window);
  height_ = height;
}

X11Hands::Pixel X11Hands::pixelOf(NSPoint inWindow) const {
  return {static_cast<int>(std::floor(inWindow.x)), height_ - 1 - static_cast<int>(std::floor(inWindow.y))};
}

void X11Hands::press(NSPoint inWindow, unsigned modifiers, int) {
  const auto [x, y] = pixelOf(inWindow);
  user.warpTo(x, y);
  const Held held(user, modifiers);
  user.press();
  arrive();
}

void X11Hands::moveBy(float dx, float dy, unsigned modifiers) {
  const Held held(user, modifiers);
  user.moveBy(static_cast<int>(std::lround(dx)), static_cast<int>(std::lround(-dy)));
  arrive();
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

void X11Hands::tap(KeySym symbol, unsigned modifiers) {
  const Held held(user, modifiers);
  user.type(symbol);
}

void X11Hands::key(NSKey key, unsigned modifiers) {
  tap(symbols[static_cast<size_t>(key)], modifiers);
  arrive();
}

void X11Hands::type(const std::string& text, unsigned modifiers) {
  // The symbol of a character is its number.
  for (const char c : text) tap(static_cast<unsigned char>(c), modifiers);
  arrive();
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
