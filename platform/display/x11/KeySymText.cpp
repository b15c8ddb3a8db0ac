#include "KeySymText.h"

#include <xkbcommon/xkbcommon.h>

#include "X11Headers.h"

std::string keySymText(unsigned long symbol) {
  if (symbol == XK_KP_Decimal || symbol == XK_KP_Separator) return ".";
  const auto known = static_cast<xkb_keysym_t>(symbol);
  const uint32_t c = xkb_keysym_to_utf32(known);
  const bool isSurrogate = c >= 0xd800 && c <= 0xdfff;
  char text[8] = {};
  if (c >= ' ' && c != 0x7f && !isSurrogate) xkb_keysym_to_utf8(known, text, sizeof text);
  return text;
}
