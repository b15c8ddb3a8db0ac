#include "Gestures.h"

#include <gtest/gtest.h>

#include "OpenedEditor.h"

TEST(Gestures, DoTheSameOffscreen) {
  for (const Gesture& gesture : gestures) {
    EditorStage stage;
    stage.open(gesture.effect);
    EXPECT_EQ(stage.play(gesture.script), withoutTouches(gesture.heard)) << gesture.name;
  }
}

TEST(Gestures, DoTheSameInTheHostsWindow) {
  for (const Gesture& gesture : gestures) {
    OpenedEditor editor(gesture.effect);
    EXPECT_EQ(editor.play(gesture.script), withoutTouches(gesture.heard)) << gesture.name;
  }
}
