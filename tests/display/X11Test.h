#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "NSRunLoop.h"
#include "Recorder.h"
#include "X11Display.h"
#include "X11User.h"
#include "XServer.h"

/// A display on the tests' X server, and a user at it whose pointer is in the middle of the screen.
class X11Test : public testing::Test {
 protected:
  void SetUp() override;

  void openDisplay(float scale = 1);
  /// Lets everything that was done so far arrive.
  void settle();
  std::unique_ptr<DisplayWindow> open(Recorder& client, DisplayWindowOptions options);
  std::unique_ptr<DisplayWindow> open(Recorder& client, NSRect frame = place);
  std::unique_ptr<DisplayWindow> embed(Recorder& client, Window parent);

  /// A window at (100, 100) of the screen's pixels, 200 by 100.
  static constexpr NSRect place{{100, XServer::height - 200}, {200, 100}};

  X11User user;
  std::unique_ptr<X11Display> display;
};
