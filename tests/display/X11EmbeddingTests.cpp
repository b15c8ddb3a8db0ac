// Windows in a host's window, and windows that go while they are used.

#include "Bitmap.h"
#include "NSRunLoop.h"
#include "X11Test.h"

class X11Embedding : public X11Test {
 protected:
  Window host = user.makeWindow(100, 100, 300, 200);
};

TEST_F(X11Embedding, AnEmbeddedWindowFollowsItsHost) {
  const auto window = embed(client, host);
  EXPECT_EQ(client.frame, place);
  XMoveWindow(user.x(), host, 150, 110);
  settle();
  EXPECT_EQ(client.frame, NSOffsetRect(place, 50, -10));
  XUnmapWindow(user.x(), host);
  settle();
  EXPECT_EQ(client.takeWindow(), "shown hidden");

  XDestroyWindow(user.x(), host);
  user.sync();
  const NSRect all{{}, place.size};
  window->present(Bitmap(place.size, 1), std::span(&all, 1));
  window->setKeyboardWanted(true);
  settle();
  EXPECT_EQ(client.takeWindow(), "closed");
}

TEST_F(X11Embedding, APressThatCanHaveNoReleaseIsLost) {
  const auto window = embed(client, host);
  play("at 110 110 press");
  window->hide();
  settle();
  EXPECT_EQ(client.takeInput(), "down lost");
  user.release();
  window->show(false);
  settle();

  // The host hides for a moment: the server ends the grab, and the release goes elsewhere.
  play("at 140 110 press");
  XUnmapWindow(user.x(), host);
  user.release();
  XMapWindow(user.x(), host);
  play("move 1 0");
  EXPECT_EQ(client.takeInput(), "down lost");
}

TEST_F(X11Embedding, AWindowMayCloseInsideItsOwnEventAndItsDisplayWithIt) {
  for (const bool displayGoes : {false, true}) {
    auto window = open(client);
    client.onEvent = [&](const NSEvent&) {
      window.reset();
      if (displayGoes) display.reset();
    };
    user.warpTo(150, 130);
    user.click();
    while (window) NSRunLoop::currentRunLoop().runTurn();
    if (display) settle();
    EXPECT_EQ(client.takeInput(), "down");
  }
}
