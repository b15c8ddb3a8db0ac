#include "KeySymText.h"
#include "NSRunLoop.h"
#include "X11Test.h"

class X11Input : public X11Test {};

TEST_F(X11Input, AWindowHearsOfPressesDragsAndTheWheel) {
  const struct {
    const char* script;
    const char* heard;
  } rows[] = {
      {"at 110 120 press move 300 5 move 7 200 release move 1 1", "down drag:307,205 up"},
      {"click 4 click 5 click 6 click 7 click 2 click 3", "wheel:0,1 wheel:0,-1 wheel:1,0 wheel:-1,0"},
      {"press click 3 click 4 release", "down up"},
      {"click 1 move 3 0 click 1", "down up down2 up"},
      {"click 1 move 9 0 click 1", "down up down up"},
      {"click 1 wait 500 click 1", "down up down up"},
  };
  for (const auto& row : rows) {
    Recorder each;
    const auto window = open(each);
    play("at 150 130");
    play(row.script);
    EXPECT_EQ(each.takeInput(), row.heard);
  }
}

TEST_F(X11Input, PressesBesideAllWindowsComeWhileTheyAreWanted) {
  Recorder other;
  const auto window = open(client);
  const auto second = open(other, NSOffsetRect(place, 400, 0));
  play("at 110 120");
  EXPECT_EQ(client.pointer, NSMakePoint(10.5f, 79.5f));
  for (const bool wanted : {false, true, false}) {
    window->setForeignPressesWanted(wanted);
    play(std::string("at 350 500 click 1 at 510 ") + (wanted ? "140" : "120") + " click 1");
    EXPECT_EQ(client.takeInput(), wanted ? "down up" : "");
    EXPECT_EQ(other.takeInput(), "down up");
  }
  window->setForeignPressesWanted(true);
  play("at 110 120 press");
  window->setForeignPressesWanted(false);  // in the middle of a press: its end elsewhere is not seen
  play("move 0 300 release at 140 120 click 1");
  EXPECT_EQ(client.takeInput(), "down lost down up");
}

TEST_F(X11Input, MotionOfATurnIsOneDragInPointsOfTheScale) {
  openDisplay(2);
  const auto window = open(client, NSMakeRect(50, 300, 100, 50));
  play("at 110 120 press move 3 -1 move 27 -9");
  EXPECT_EQ(client.takeInput(), "down drag:15,-5");
  EXPECT_EQ(client.last.deltaX, 15);
  EXPECT_EQ(client.last.locationInWindow, NSMakePoint(20.25f, 44.75f));
  user.release();
}

TEST_F(X11Input, HiddenPointerMovesOnBeyondEveryEdgeAndComesBack) {
  const std::pair<int, int> directions[] = {{-9, 0}, {9, 0}, {0, -9}, {-7, 8}};
  for (const auto& [dx, dy] : directions) {
    Recorder each;
    const auto window = open(each);
    play("at 150 130 press");
    window->beginRelativeMotion();
    const std::string motion = std::to_string(dx) + " " + std::to_string(dy);
    for (int i = 0; i < 200; ++i) play("move " + motion);
    window->endRelativeMotion({50.5f, 69.5f});
    play("release");
    EXPECT_EQ(each.takeInput(),
              "down drag:" + std::to_string(200 * dx) + "," + std::to_string(200 * dy) + " up");
    EXPECT_EQ(user.pointer(), "150,130");
  }
}

TEST_F(X11Input, APointerThatIsPutSomewhereDuringAPressMakesNoMotion) {
  const auto window = open(client);
  play("at 150 130 press");
  window->beginRelativeMotion();
  window->endRelativeMotion({300, -100});
  settle();
  play("move 3 2 release");
  EXPECT_EQ(client.takeInput(), "down drag:3,2 up");
}

TEST_F(X11Input, KeysTypeTheirTextWithTheModifiersOfTheEvent) {
  const struct {
    KeySym held, key;
    const char* text;
    NSKey meaning;
    unsigned modifiers;
  } rows[] = {{NoSymbol, XK_a, "a", NSKey::other, 0},
              {XK_Shift_L, XK_a, "A", NSKey::other, NSShiftKeyMask},
              {XK_Control_L, XK_a, "a", NSKey::other, NSControlKeyMask | NSAlternateKeyMask},
              {XK_Shift_L, XK_Tab, "", NSKey::tab, NSShiftKeyMask},
              {XK_Alt_L, XK_KP_End, "", NSKey::end, NSAlternateKeyMask},
              {XK_Num_Lock, XK_KP_End, "1", NSKey::other, 0},
              {XK_Num_Lock, XK_KP_Delete, ".", NSKey::other, 0}};
  const auto window = open(client);
  for (const auto& row : rows) {
    user.hold(row.held);
    user.type(row.key);
    user.letGo(row.held);
    if (row.held == XK_Num_Lock) user.type(XK_Num_Lock);
    settle();
    EXPECT_EQ(client.takeInput(), std::string("key:") + row.text) << row.key;
    EXPECT_EQ(client.last.key, row.meaning) << row.key;
    EXPECT_EQ(client.last.modifierFlags, row.modifiers) << row.key;
  }
  EXPECT_EQ(keySymText(0x1b3), "ł");
}
