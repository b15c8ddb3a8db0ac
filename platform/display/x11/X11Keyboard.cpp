#include "X11Keyboard.h"

#include "KeySymText.h"

namespace {

NSKey meaning(KeySym symbol) {
  switch (symbol) {
    case XK_Return:
    case XK_KP_Enter:
      return NSKey::enter;
    case XK_Tab:
    case XK_KP_Tab:
    case XK_ISO_Left_Tab:
      return NSKey::tab;
    case XK_Escape:
      return NSKey::escape;
    case XK_BackSpace:
      return NSKey::backspace;
    case XK_Delete:
    case XK_KP_Delete:
      return NSKey::forwardDelete;
    case XK_Left:
    case XK_KP_Left:
      return NSKey::left;
    case XK_Right:
    case XK_KP_Right:
      return NSKey::right;
    case XK_Up:
    case XK_KP_Up:
      return NSKey::up;
    case XK_Down:
    case XK_KP_Down:
      return NSKey::down;
    case XK_Home:
    case XK_KP_Home:
      return NSKey::home;
    case XK_End:
    case XK_KP_End:
      return NSKey::end;
    default:
      return NSKey::other;
  }
}

}  // namespace

unsigned modifierFlags(unsigned state) {
  unsigned flags = 0;
  if (state & LockMask) flags |= NSAlphaShiftKeyMask;
  if (state & ShiftMask) flags |= NSShiftKeyMask;
  if (state & ControlMask) flags |= NSControlKeyMask | NSAlternateKeyMask;
  if (state & Mod1Mask) flags |= NSAlternateKeyMask;
  if (state & Mod4Mask) flags |= NSCommandKeyMask;
  return flags;
}

std::optional<NSEvent> keyDownEvent(XKeyEvent press) {
  // Only the symbol is taken: the text that Xlib would give is in the encoding of the process's locale.
  char ignored[8];
  KeySym symbol = NoSymbol;
  XLookupString(&press, ignored, sizeof ignored, &symbol, nullptr);
  if (IsModifierKey(symbol)) return std::nullopt;
  return NSEvent{.type = NSEventType::keyDown,
                 .locationInWindow = {},
                 .modifierFlags = modifierFlags(press.state),
                 .key = meaning(symbol),
                 .characters = keySymText(symbol)};
}
