// What the window of `tovin open` is beyond its editor: automation, presets, and ways to end.

#include <gtest/gtest.h>
#include <signal.h>

#include "Gestures.h"
#include "OpenedEditor.h"

namespace {

const std::string knob = "inToOutDelay.knob";

bool isOrange(unsigned long c) {
  return (c >> 16) > 0xd0 && (c & 255) < 0x60;
}

TEST(OpenEditor, HearsOfEveryGesture) {
  for (const Gesture& gesture : gestures) {
    OpenedEditor editor(gesture.effect);
    EXPECT_EQ(editor.play(gesture.script), withoutTouches(gesture.heard)) << gesture.name;
  }
}

TEST(OpenEditor, ADragShowsTheBarAndTheKnobAndGivesThePointerBack) {
  OpenedEditor editor("sdly");
  const std::string bar = knob + "+-150,0";  // left of its text
  const std::string wedge = knob + "+-12,0";
  const unsigned long before = editor.colorAt(bar);
  EXPECT_FALSE(isOrange(editor.colorAt(wedge)));
  editor.play("press " + knob + "; drag 0 9; drag 0 9000; wait 0.3");
  EXPECT_NE(editor.colorAt(bar), before);
  EXPECT_TRUE(isOrange(editor.colorAt(wedge)));
  editor.play("release; wait 0.1");
  EXPECT_EQ(editor.colorAt(bar), before);
  EXPECT_EQ(editor.user.pointer(), editor.pixelAt(knob));
}

TEST(OpenEditor, InALargerWindowIsCentredOnAGroundAsLarge) {
  OpenedEditor editor("sdly");  // 420 by 158 below a strip of 28
  const unsigned long face = editor.colorAt(knob), bottom = editor.user.colorAt(5, 184);
  XResizeWindow(editor.user.x(), editor.window, 720, 428);
  editor.user.sync();
  editor.advance(0.2);
  EXPECT_EQ(editor.user.colorAt(360, 28 + 121 + 66), face);
  EXPECT_EQ(editor.user.colorAt(715, 426), bottom);
  EXPECT_EQ(editor.user.colorAt(5, 260), editor.user.colorAt(160, 260));
}

TEST(OpenEditor, AutomationTurnsTheKnobAndBadLinesAreReported) {
  OpenedEditor editor("sdly");
  editor.host.write("0 44100\n0 1 2\n7 1\ntempo fast\n\n0 1000\n");
  EXPECT_TRUE(editor.host.waitForOutput("0 1000\n", 5));
  EXPECT_EQ(editor.host.errors(),
            "tovin: standard input, line 2: \"0 1 2\", expected ID VALUE\n"
            "tovin: standard input, line 3: \"7 1\", expected the identifier of a parameter that can be set\n"
            "tovin: standard input, line 4: \"tempo fast\", expected tempo BPM, from 1 to 999\n");
  editor.play("set 0 44100; wait 0.1");
  EXPECT_TRUE(isOrange(editor.colorAt(knob + "+12,0")));
  editor.host.write("0 2000");
  editor.host.closeInput();
  EXPECT_TRUE(editor.host.waitForOutput("\n0 2000\n", 5)) << "a last line without its end";
  EXPECT_EQ(editor.host.wait(0.2), -1) << "the end of standard input ends nothing";
}

TEST(OpenEditor, FollowsTheTempoAndChoosesPresetsAlsoInALocaleWithCommas) {
  OpenedEditor editor("dely", {}, {"LC_ALL=de_DE.UTF-8"});
  const std::string fourthBeat = "graphView+33.7,3";  // at 140 a minute
  const unsigned long before = editor.colorAt(fourthBeat);
  editor.host.write("tempo 140\n");
  editor.advance(0.7);
  EXPECT_NE(editor.colorAt(fourthBeat), before);
  EXPECT_EQ(editor.play("click +-178,173; type <end><return>"), "1 = 0.004, 2 = -80, 3 = 6000");
  EXPECT_EQ(editor.play("click delayTime.field; type 0.5<return>; set 0 12.5"), "1 = 0.5");
  EXPECT_NE(editor.host.output().find("\n0 12.5\n"), std::string::npos) << editor.host.output();
}

TEST(OpenEditor, EndsCleanlyInTheMiddleOfADrag) {
  for (const std::string way : {"SIGTERM", "closed by the user", "its time"}) {
    OpenedEditor editor("sdly", {"--seconds", way == "its time" ? "0.7" : "60"});
    editor.play("press " + knob + "; drag 0 20");
    const std::string errors = editor.host.errors();
    if (way == "SIGTERM") editor.host.signal(SIGTERM);
    if (way == "closed by the user") editor.user.closePolitely(editor.window);
    EXPECT_EQ(editor.host.wait(5), 0) << way;
    EXPECT_EQ(editor.host.errors(), errors) << way;
    editor.user.release();
  }
}

}  // namespace
