#include <chrono>
#include <thread>

#include "KeySymText.h"
#include "X11Fixture.h"

using Log = Recorder::Log;

namespace {

const NSRect place = NSMakeRect(100, screenHeight - 200, 200, 100);

}  // namespace

class X11Keys : public X11Test {};

TEST_F(X11Keys, ModifiersAreThoseAtTheEvent) {
  struct {
    KeySym key;
    unsigned flags;
  } const cases[] = {{NoSymbol, 0},
                     {XK_Shift_L, NSShiftKeyMask},
                     {XK_Control_L, NSControlKeyMask | NSAlternateKeyMask},
                     {XK_Alt_L, NSAlternateKeyMask},
                     {XK_Caps_Lock, NSAlphaShiftKeyMask}};
  Recorder client;
  const auto window = open(client, place);
  user->warpTo(150, 130);
  for (const auto& c : cases) {
    if (c.key != NoSymbol) user->hold(c.key);
    user->click();
    if (c.key != NoSymbol) user->letGo(c.key);
    settle();
    EXPECT_EQ(client.last.modifierFlags, c.flags) << c.key;
  }
  user->type(XK_Caps_Lock);
}

TEST_F(X11Keys, KeysTypeTheirTextAndNameTheirMeaning) {
  struct {
    KeySym held;
    KeySym key;
    const char* characters;
    NSKey meaning;
  } const cases[] = {{NoSymbol, XK_a, "a", NSKey::other},
                     {XK_Shift_L, XK_a, "A", NSKey::other},
                     {XK_Control_L, XK_a, "a", NSKey::other},
                     {NoSymbol, XK_minus, "-", NSKey::other},
                     {NoSymbol, XK_space, " ", NSKey::other},
                     {NoSymbol, XK_Return, "", NSKey::enter},
                     {NoSymbol, XK_KP_Enter, "", NSKey::enter},
                     {XK_Shift_L, XK_Tab, "", NSKey::tab},
                     {NoSymbol, XK_BackSpace, "", NSKey::backspace},
                     {NoSymbol, XK_Delete, "", NSKey::forwardDelete},
                     {NoSymbol, XK_Escape, "", NSKey::escape},
                     {NoSymbol, XK_KP_End, "", NSKey::end},
                     {XK_Num_Lock, XK_KP_End, "1", NSKey::other},
                     {XK_Num_Lock, XK_KP_Delete, ".", NSKey::other},
                     {NoSymbol, XK_KP_Add, "+", NSKey::other}};
  Recorder client;
  const auto window = open(client, place);
  EXPECT_EQ(client.takeWindow(), (Log{"shown", "keys"}));
  for (const auto& c : cases) {
    if (c.held != NoSymbol) user->hold(c.held);
    user->type(c.key);
    if (c.held != NoSymbol) user->letGo(c.held);
    if (c.held == XK_Num_Lock) user->type(XK_Num_Lock);
    settle();
    EXPECT_EQ(client.takeInput(), (Log{std::string("key ") + c.characters})) << c.key;
    EXPECT_EQ(client.last.key, c.meaning) << c.key;
  }
}

TEST(KeySymText, KnowsAllPagesOfSymbols) {
  struct {
    unsigned long symbol;
    const char* text;
  } const cases[] = {{XK_asciitilde, "~"},   {XK_udiaeresis, "ü"}, {0x1b3, "ł"},     {0x1b4, ""},
                     {0x6c1, "а"},           {0x7f3, "ς"},         {0xce0, "א"},     {XK_EuroSign, "€"},
                     {0x1000263a, ""},       {0x100263a, "☺"},     {0x101f600, "😀"}, {0x100d800, ""},
                     {XK_KP_Separator, "."}, {XK_dead_acute, ""},  {XK_Shift_L, ""}};
  for (const auto& c : cases) EXPECT_EQ(keySymText(c.symbol), c.text) << std::hex << c.symbol;
}
