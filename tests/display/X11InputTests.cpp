#include <chrono>
#include <thread>

#include "X11Fixture.h"

using Log = Recorder::Log;

namespace {

// A window at (100, 100) of the screen's pixels, 200 by 100.
const NSRect place = NSMakeRect(100, screenHeight - 200, 200, 100);

class X11Input : public X11Test {
 protected:
  void pressAt(int x, int y) {
    user->warpTo(x, y);
    user->press();
    settle();
  }
};

}  // namespace

TEST_F(X11Input, PressDragsAndReleaseOutsideGoToThePressedWindow) {
  Recorder client;
  const auto window = open(client, place);
  pressAt(110, 120);
  EXPECT_EQ(client.last.locationInWindow, NSMakePoint(10.5f, 79.5f));
  user->moveBy(300, 5);
  user->moveBy(7, 200);
  settle();
  user->release();
  user->moveBy(1, 1);
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"down", "drag", "up"}));
  EXPECT_EQ(client.motion(), "307.0,205.0");
  EXPECT_EQ(client.last.locationInWindow, NSMakePoint(317.5f, -125.5f));
}

TEST_F(X11Input, PressesBesideAllWindowsComeWhileTheyAreWanted) {
  Recorder client, other;
  const auto window = open(client, place);
  const auto second = open(other, NSOffsetRect(place, 400, 0));
  const auto clickAt = [&](int x, int y) {
    user->warpTo(x, y);
    user->click();
    settle();
  };
  user->warpTo(110, 120);
  settle();
  EXPECT_EQ(client.pointer, NSMakePoint(10.5f, 79.5f));
  for (const bool wanted : {false, true, false}) {
    window->setForeignPressesWanted(wanted);
    clickAt(350, 500);
    EXPECT_EQ(client.takeInput(), wanted ? (Log{"down", "up"}) : Log{});
    clickAt(510, 120);
    EXPECT_EQ(client.takeInput(), Log{});
    EXPECT_EQ(other.takeInput(), (Log{"down", "up"}));
  }
  window->setForeignPressesWanted(true);
  pressAt(110, 120);
  window->setForeignPressesWanted(false);  // in the middle of a press: its end elsewhere is not seen
  user->moveBy(0, 300);
  user->release();
  clickAt(110, 120);
  EXPECT_EQ(client.takeInput(), (Log{"down", "lost", "down", "up"}));
}

TEST_F(X11Input, MotionOfATurnIsOneDragInPointsOfTheScale) {
  openDisplay(2);
  Recorder client;
  int drags = 0;
  client.onEvent = [&](const NSEvent& e) { drags += e.type == NSEventType::leftMouseDragged; };
  const auto window = open(client, NSMakeRect(50, 300, 100, 50));
  pressAt(110, 120);
  for (int i = 0; i < 10; ++i) user->moveBy(3, -1);
  XSync(user->x(), False);
  display->screens();
  NSRunLoop::currentRunLoop().runTurn();
  EXPECT_EQ(drags, 1);
  EXPECT_EQ(client.motion(), "15.0,-5.0");
  user->release();
  settle();
}

TEST_F(X11Input, HiddenPointerMovesOnBeyondEveryEdgeAndComesBack) {
  struct {
    int dx, dy;
  } const directions[] = {{-9, 0}, {9, 0}, {0, -9}, {0, 9}, {-7, 8}};
  for (const auto& [dx, dy] : directions) {
    SCOPED_TRACE(std::to_string(dx) + "," + std::to_string(dy));
    Recorder client;
    const auto window = open(client, place);
    client.onEvent = [&](const NSEvent& event) {
      if (event.type == NSEventType::leftMouseDown) display->hidePointer();
      if (event.type != NSEventType::leftMouseUp) return;
      display->warpPointer({150, 130});
      display->showPointer();
    };
    pressAt(150, 130);
    for (int i = 0; i < 200; ++i) {
      user->moveBy(dx, dy);
      if (i % 7 == 0) settle();
    }
    settle();
    user->release();
    settle();
    EXPECT_EQ(client.takeInput(), (Log{"down", "drag", "up"}));
    EXPECT_EQ(client.motion(), std::to_string(200 * dx) + ".0," + std::to_string(200 * dy) + ".0");
    EXPECT_EQ(user->pointer(), "150,130");
  }
}

TEST_F(X11Input, AWarpDuringAPressIsNoMotion) {
  Recorder client;
  const auto window = open(client, place);
  pressAt(150, 130);
  display->warpPointer({400, 300});
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"down"}));
  user->moveBy(3, 2);
  user->release();
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"drag", "up"}));
  EXPECT_EQ(client.motion(), "3.0,2.0");
  display->warpPointer({-5, 99999});
  EXPECT_EQ(user->pointer(), "0,799");
}

TEST_F(X11Input, WheelNotchesComeOnceAndOtherButtonsNotAtAll) {
  Recorder client;
  const auto window = open(client, place);
  user->warpTo(150, 130);
  for (const unsigned button : {4u, 5u, 6u, 7u, 2u, 3u}) user->click(button);
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"wheel 0.0,1.0", "wheel 0.0,-1.0", "wheel 1.0,0.0", "wheel -1.0,0.0"}));
  user->press();
  user->click(3);
  user->click(4);
  user->release();
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"down", "up"}));
}

TEST_F(X11Input, ClicksAreCountedByTimeAndPlace) {
  struct {
    int awayBy;
    int waitFor;  // milliseconds
    int count;
  } const cases[] = {{0, 0, 2}, {3, 0, 2}, {9, 0, 1}, {0, 500, 1}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::to_string(c.awayBy) + " pixels, " + std::to_string(c.waitFor) + " ms");
    Recorder client;
    const auto window = open(client, place);
    user->warpTo(150, 130);
    user->click();
    XSync(user->x(), False);
    std::this_thread::sleep_for(std::chrono::milliseconds(c.waitFor));
    user->moveBy(c.awayBy, 0);
    user->click();
    settle();
    EXPECT_EQ(client.last.clickCount, c.count);
  }
}

TEST_F(X11Input, APressThatCanHaveNoReleaseIsLost) {
  Recorder client;
  const Window host = user->makeWindow(100, 100, 300, 200);
  const auto window = embed(client, host);
  pressAt(110, 110);
  window->hide();
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"down", "lost"}));
  user->release();
  window->show(false);
  settle();

  // The host hides for a moment: the server ends the grab, and the release goes elsewhere.
  pressAt(110, 110);
  XUnmapWindow(user->x(), host);
  user->release();
  XMapWindow(user->x(), host);
  user->moveBy(1, 0);
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"down", "lost"}));
}

TEST_F(X11Input, AWindowMayCloseInsideItsOwnEvent) {
  Recorder client;
  auto window = open(client, place);
  client.onEvent = [&](const NSEvent&) { window.reset(); };
  user->warpTo(150, 130);
  user->press();
  user->moveBy(5, 5);
  user->release();
  settle();
  EXPECT_EQ(client.takeInput(), (Log{"down"}));

  window = open(client, place);
  client.onEvent = [&](const NSEvent&) {
    window.reset();
    display.reset();
  };
  user->click();
  XSync(user->x(), False);
  while (display) NSRunLoop::currentRunLoop().runTurn();
  EXPECT_EQ(client.takeInput(), (Log{"down"}));
}
