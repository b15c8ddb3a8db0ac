#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "Recorder.h"
#include "X11Display.h"
#include "X11User.h"

/// A display on the tests' X server, and a user at it whose pointer is in the middle of the screen.
class X11Test : public testing::Test {
 protected:
  void SetUp() override { openDisplay(); }

  void openDisplay(float scale = 1);
  /// Lets everything that was done so far arrive.
  void settle();
  std::unique_ptr<DisplayWindow> open(Recorder& client, DisplayWindowOptions options);
  std::unique_ptr<DisplayWindow> open(Recorder& client, NSRect frame = place);
  std::unique_ptr<DisplayWindow> embed(Recorder& client, Window parent);
  /// Lets the user do these things and settles: at X Y (pixels of the screen), move DX DY, press, release,
  /// click BUTTON, wait MILLISECONDS.
  void play(const std::string& script);

  /// A window at (100, 100) of the screen's pixels, 200 by 100.
  static constexpr NSRect place{{100, X11User::screenHeight - 200}, {200, 100}};

  X11User user;
  std::unique_ptr<X11Display> display;
  Recorder client;
};
