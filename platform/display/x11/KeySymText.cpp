#include "KeySymText.h"

#include <array>
#include <string_view>

#include "X11Headers.h"

namespace {

/// Symbols from before Unicode, as runs of consecutive codes; a blank stands for an unused code.
struct Run {
  unsigned long first;
  std::u16string_view text;
};
constexpr std::array runs = std::to_array<Run>({
    {0x1a1,
     u"Ą˘Ł ĽŚ  ŠŞŤŹ ŽŻ ą˛ł ľśˇ šşťź˝žżŔ  Ă ĹĆ Č Ę Ě  ĎĐŃŇ  Ő  ŘŮ Ű  Ţ ŕ  ă ĺć č ę ě  ďđ"
     u"ńň  ő  řů ű  ţ˙"},
    {0x2a1,
     u"Ħ    Ĥ  İ ĞĴ    ħ    ĥ  ı ğĵ        ĊĈ              Ġ  Ĝ    ŬŜ      ċĉ          "
     u"    ġ  ĝ    ŭŝ"},
    {0x3a2,
     u"ĸŖ ĨĻ   ĒĢŦ      ŗ ĩļ   ēģŧŊ ŋĀ      Į    Ė  Ī ŅŌĶ     Ų   ŨŪ ā      į    ė  ī ņ"
     u"ōķ     ų   ũū"},
    {0x6a1,
     u"ђѓёєѕіїјљњћќґўџ№ЂЃЁЄЅІЇЈЉЊЋЌҐЎЏюабцдефгхийклмнопярстужвьызшэщчъЮАБЦДЕФГХИЙКЛМНОП"
     u"ЯРСТУЖВЬЫЗШЭЩЧЪ"},
    {0x7a1,
     u"ΆΈΉΊΪ ΌΎΫ Ώ  ΅― άέήίϊΐόύϋΰώ     ΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟΠΡΣ ΤΥΦΧΨΩ       αβγδεζηθικλμνξοπ"
     u"ρσςτυφχψω"},
    {0x13bc, u"ŒœŸ"},
    {0x20ac, u"€"},
});

/// Scripts whose old codes stand in the order of Unicode.
struct Shift {
  unsigned long first;
  unsigned long last;
  unsigned long unicode;
};
constexpr std::array shifts = std::to_array<Shift>({
    {0x5ac, 0x5f2, 0x60c},  // Arabic
    {0xce0, 0xcfa, 0x5d0},  // Hebrew
    {0xda1, 0xdf9, 0xe01},  // Thai
});

unsigned long keypad(unsigned long symbol) {
  if (symbol >= XK_KP_0 && symbol <= XK_KP_9) return '0' + (symbol - XK_KP_0);
  switch (symbol) {
    case XK_KP_Space:
      return ' ';
    case XK_KP_Equal:
      return '=';
    case XK_KP_Multiply:
      return '*';
    case XK_KP_Add:
      return '+';
    case XK_KP_Subtract:
      return '-';
    case XK_KP_Divide:
      return '/';
    case XK_KP_Decimal:
    case XK_KP_Separator:
      return '.';
    default:
      return 0;
  }
}

unsigned long unicode(unsigned long symbol) {
  if ((symbol >= 0x20 && symbol <= 0x7e) || (symbol >= 0xa0 && symbol <= 0xff)) return symbol;
  if (symbol >= 0x1000100 && symbol <= 0x110ffff) return symbol - 0x1000000;
  for (const Shift& shift : shifts)
    if (symbol >= shift.first && symbol <= shift.last) return symbol - shift.first + shift.unicode;
  for (const Run& run : runs) {
    if (symbol < run.first || symbol - run.first >= run.text.size()) continue;
    const char16_t c = run.text[symbol - run.first];
    return c == u' ' ? 0 : c;
  }
  return keypad(symbol);
}

}  // namespace

std::string keySymText(unsigned long symbol) {
  const unsigned long c = unicode(symbol);
  const bool surrogate = c >= 0xd800 && c <= 0xdfff;
  if (c == 0 || surrogate) return {};
  const auto tail = [&](int shift) { return static_cast<char>(0x80 | (c >> shift & 0x3f)); };
  if (c < 0x80) return {static_cast<char>(c)};
  if (c < 0x800) return {static_cast<char>(0xc0 | c >> 6), tail(0)};
  if (c < 0x10000) return {static_cast<char>(0xe0 | c >> 12), tail(6), tail(0)};
  return {static_cast<char>(0xf0 | c >> 18), tail(12), tail(6), tail(0)};
}
