#include <span>

#include "Bitmap.h"
#include "X11Test.h"

class X11Embedding : public X11Test {
 protected:
  bool hostGotKeys() {
    XEvent event;
    bool any = false;
    while (XCheckTypedEvent(user.x(), KeyPress, &event)) any = true;
    return any;
  }
  Window focus() {
    Window focus = None;
    int revert = 0;
    XGetInputFocus(user.x(), &focus, &revert);
    return focus;
  }

  Window host = user.makeWindow(100, 100, 300, 200);
  Recorder client;
};

TEST_F(X11Embedding, KeysStayWithTheHostUntilTheyAreWanted) {
  XSetInputFocus(user.x(), host, RevertToParent, CurrentTime);
  const auto window = embed(client, host);
  user.warpTo(150, 130);
  for (const bool wanted : {false, true, false}) {
    SCOPED_TRACE(wanted);
    window->setKeyboardWanted(wanted);
    user.type(XK_a);
    settle();
    EXPECT_EQ(client.takeInput(), wanted ? "key:a" : "");
    EXPECT_EQ(hostGotKeys(), !wanted);
  }
  EXPECT_EQ(client.takeWindow(), "shown keys no-keys");
  EXPECT_EQ(focus(), host);
}

TEST_F(X11Embedding, AnEmbeddedWindowFollowsItsHost) {
  const auto window = embed(client, host);
  EXPECT_EQ(client.frame, place);
  XMoveWindow(user.x(), host, 150, 110);
  settle();
  EXPECT_EQ(client.frame, NSOffsetRect(place, 50, -10));
  window->setFrame(NSMakeRect(0, 0, 250, 120));
  XUnmapWindow(user.x(), host);
  settle();
  EXPECT_EQ(client.takeWindow(), "shown hidden");

  XDestroyWindow(user.x(), host);
  user.sync();
  const Bitmap picture({250, 120}, 1);
  const NSRect all = NSMakeRect(0, 0, 250, 120);
  window->present(picture, std::span(&all, 1));
  window->setKeyboardWanted(true);
  settle();
  EXPECT_EQ(client.takeWindow(), "closed");
}
