#include "KeySymText.h"
#include "X11Test.h"

class X11Keys : public X11Test {};

TEST_F(X11Keys, ModifiersAreThoseAtTheEvent) {
  const std::pair<KeySym, unsigned> cases[] = {{NoSymbol, 0},
                                               {XK_Shift_L, NSShiftKeyMask},
                                               {XK_Control_L, NSControlKeyMask | NSAlternateKeyMask},
                                               {XK_Alt_L, NSAlternateKeyMask},
                                               {XK_Caps_Lock, NSAlphaShiftKeyMask}};
  Recorder client;
  const auto window = open(client);
  user.warpTo(150, 130);
  for (const auto& [key, flags] : cases) {
    user.hold(key);
    user.click();
    user.letGo(key);
    settle();
    EXPECT_EQ(client.last.modifierFlags, flags) << key;
  }
  user.type(XK_Caps_Lock);
}

TEST_F(X11Keys, KeysTypeTheirTextAndNameTheirMeaning) {
  struct {
    KeySym held;
    KeySym key;
    std::string text;
    NSKey meaning;
  } const cases[] = {{NoSymbol, XK_a, "a", NSKey::other},
                     {XK_Shift_L, XK_a, "A", NSKey::other},
                     {XK_Control_L, XK_a, "a", NSKey::other},
                     {NoSymbol, XK_minus, "-", NSKey::other},
                     {NoSymbol, XK_Return, "", NSKey::enter},
                     {XK_Shift_L, XK_Tab, "", NSKey::tab},
                     {NoSymbol, XK_BackSpace, "", NSKey::backspace},
                     {NoSymbol, XK_Escape, "", NSKey::escape},
                     {NoSymbol, XK_KP_End, "", NSKey::end},
                     {XK_Num_Lock, XK_KP_End, "1", NSKey::other},
                     {XK_Num_Lock, XK_KP_Delete, ".", NSKey::other}};
  Recorder client;
  const auto window = open(client);
  for (const auto& c : cases) {
    user.hold(c.held);
    user.type(c.key);
    user.letGo(c.held);
    if (c.held == XK_Num_Lock) user.type(XK_Num_Lock);
    settle();
    EXPECT_EQ(client.takeInput(), "key:" + c.text) << c.key;
    EXPECT_EQ(client.last.key, c.meaning) << c.key;
  }
}

TEST(KeySymText, KnowsEachKindOfSymbol) {
  const std::pair<unsigned long, const char*> cases[] = {
      {XK_udiaeresis, "ü"}, {0x1b3, "ł"},    {0x1b4, ""},      {0x7f3, "ς"},
      {0x101f600, "😀"},     {0x100d800, ""}, {XK_KP_Add, "+"}, {XK_Shift_L, ""}};
  for (const auto& [symbol, text] : cases) EXPECT_EQ(keySymText(symbol), text) << std::hex << symbol;
}
