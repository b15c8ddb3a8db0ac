#include <chrono>
#include <thread>

#include "X11Test.h"

class X11Input : public X11Test {
 protected:
  void pressAt(int x, int y) {
    user.warpTo(x, y);
    user.press();
    settle();
  }
  void clickAt(int x, int y) {
    pressAt(x, y);
    user.release();
    settle();
  }

  Recorder client;
};

TEST_F(X11Input, PressDragsAndReleaseOutsideGoToThePressedWindow) {
  const auto window = open(client);
  pressAt(110, 120);
  EXPECT_EQ(client.last.locationInWindow, NSMakePoint(10.5f, 79.5f));
  user.moveBy(300, 5);
  user.moveBy(7, 200);
  user.release();
  user.moveBy(1, 1);
  settle();
  EXPECT_EQ(client.takeInput(), "down drag up");
  EXPECT_EQ(client.motion(), "307,205");
  EXPECT_EQ(client.last.locationInWindow, NSMakePoint(317.5f, -125.5f));
}

TEST_F(X11Input, PressesBesideAllWindowsComeWhileTheyAreWanted) {
  Recorder other;
  const auto window = open(client);
  const auto second = open(other, NSOffsetRect(place, 400, 0));
  user.warpTo(110, 120);
  settle();
  EXPECT_EQ(client.pointer, NSMakePoint(10.5f, 79.5f));
  for (const bool wanted : {false, true, false}) {
    window->setForeignPressesWanted(wanted);
    clickAt(350, 500);
    EXPECT_EQ(client.takeInput(), wanted ? "down up" : "");
    clickAt(510, 120);
    EXPECT_EQ(client.takeInput(), "");
    EXPECT_EQ(other.takeInput(), "down up");
  }
  window->setForeignPressesWanted(true);
  pressAt(110, 120);
  window->setForeignPressesWanted(false);  // in the middle of a press: its end elsewhere is not seen
  user.moveBy(0, 300);
  user.release();
  clickAt(110, 120);
  EXPECT_EQ(client.takeInput(), "down lost down up");
}

TEST_F(X11Input, MotionOfATurnIsOneDragInPointsOfTheScale) {
  openDisplay(2);
  int drags = 0;
  client.onEvent = [&](const NSEvent& e) { drags += e.type == NSEventType::leftMouseDragged; };
  const auto window = open(client, NSMakeRect(50, 300, 100, 50));
  pressAt(110, 120);
  for (int i = 0; i < 10; ++i) user.moveBy(3, -1);
  display->screens();
  NSRunLoop::currentRunLoop().runTurn();
  EXPECT_EQ(drags, 1);
  EXPECT_EQ(client.motion(), "15,-5");
  user.release();
  settle();
}

TEST_F(X11Input, HiddenPointerMovesOnBeyondEveryEdgeAndComesBack) {
  const std::pair<int, int> directions[] = {{-9, 0}, {9, 0}, {0, -9}, {0, 9}, {-7, 8}};
  for (const auto& [dx, dy] : directions) {
    Recorder each;
    const auto window = open(each);
    each.onEvent = [&](const NSEvent& event) {
      if (event.type == NSEventType::leftMouseDown) window->beginRelativeMotion();
      if (event.type == NSEventType::leftMouseUp) window->endRelativeMotion({50.5f, 69.5f});
    };
    pressAt(150, 130);
    for (int i = 0; i < 200; ++i) {
      user.moveBy(dx, dy);
      if (i % 7 == 0) settle();
    }
    user.release();
    settle();
    EXPECT_EQ(each.takeInput(), "down drag up");
    EXPECT_EQ(each.motion(), std::to_string(200 * dx) + "," + std::to_string(200 * dy));
    EXPECT_EQ(user.pointer(), "150,130");
  }
}

TEST_F(X11Input, APointerThatIsPutSomewhereDuringAPressMakesNoMotion) {
  const auto window = open(client);
  pressAt(150, 130);
  window->beginRelativeMotion();
  window->endRelativeMotion({300, -100});
  settle();
  EXPECT_EQ(client.takeInput(), "down");
  user.moveBy(3, 2);
  user.release();
  settle();
  EXPECT_EQ(client.takeInput(), "drag up");
  EXPECT_EQ(client.motion(), "3,2");
  window->beginRelativeMotion();
  window->endRelativeMotion({-500, -9999});
  EXPECT_EQ(user.pointer(), "0,799");
}

TEST_F(X11Input, WheelNotchesComeOnceAndOtherButtonsNotAtAll) {
  const auto window = open(client);
  user.warpTo(150, 130);
  for (const unsigned button : {4u, 5u, 6u, 7u, 2u, 3u}) user.click(button);
  settle();
  EXPECT_EQ(client.takeInput(), "wheel:0,1 wheel:0,-1 wheel:1,0 wheel:-1,0");
  user.press();
  user.click(3);
  user.click(4);
  user.release();
  settle();
  EXPECT_EQ(client.takeInput(), "down up");
}

TEST_F(X11Input, ClicksAreCountedByTimeAndPlace) {
  struct {
    int awayBy;
    int waitFor;  // milliseconds
    int count;
  } const cases[] = {{0, 0, 2}, {3, 0, 2}, {9, 0, 1}, {0, 500, 1}};
  for (const auto& c : cases) {
    Recorder each;
    const auto window = open(each);
    user.warpTo(150, 130);
    user.click();
    std::this_thread::sleep_for(std::chrono::milliseconds(c.waitFor));
    user.moveBy(c.awayBy, 0);
    user.click();
    settle();
    EXPECT_EQ(each.last.clickCount, c.count) << c.awayBy << " pixels, " << c.waitFor << " ms";
  }
}

TEST_F(X11Input, APressThatCanHaveNoReleaseIsLost) {
  const Window host = user.makeWindow(100, 100, 300, 200);
  const auto window = embed(client, host);
  pressAt(110, 110);
  window->hide();
  settle();
  EXPECT_EQ(client.takeInput(), "down lost");
  user.release();
  window->show(false);
  settle();

  // The host hides for a moment: the server ends the grab, and the release goes elsewhere.
  pressAt(110, 110);
  XUnmapWindow(user.x(), host);
  user.release();
  XMapWindow(user.x(), host);
  user.moveBy(1, 0);
  settle();
  EXPECT_EQ(client.takeInput(), "down lost");
}

TEST_F(X11Input, AWindowMayCloseInsideItsOwnEvent) {
  auto window = open(client);
  client.onEvent = [&](const NSEvent&) { window.reset(); };
  pressAt(150, 130);
  user.moveBy(5, 5);
  user.release();
  settle();
  EXPECT_EQ(client.takeInput(), "down");

  window = open(client);
  client.onEvent = [&](const NSEvent&) {
    window.reset();
    display.reset();
  };
  user.click();
  while (display) NSRunLoop::currentRunLoop().runTurn();
  EXPECT_EQ(client.takeInput(), "down");
}
