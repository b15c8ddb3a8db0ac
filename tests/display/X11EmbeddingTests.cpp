#include <span>

#include "Bitmap.h"
#include "X11Fixture.h"

using Log = Recorder::Log;

class X11Embedding : public X11Test {};

TEST_F(X11Embedding, KeysStayWithTheHostUntilTheyAreWanted) {
  Recorder client;
  const Window host = user->makeWindow(100, 100, 300, 200);
  XSetInputFocus(user->x(), host, RevertToParent, CurrentTime);
  const auto window = embed(client, host);
  const auto hostGotKeys = [&] {
    XEvent event;
    bool any = false;
    while (XCheckTypedEvent(user->x(), KeyPress, &event)) any = true;
    return any;
  };
  user->warpTo(150, 130);
  for (const bool wanted : {false, true, false}) {
    SCOPED_TRACE(wanted);
    window->setKeyboardWanted(wanted);
    user->type(XK_space);
    settle();
    EXPECT_EQ(client.takeInput(), wanted ? Log{"key  "} : Log{});
    EXPECT_EQ(hostGotKeys(), !wanted);
  }
  EXPECT_EQ(client.takeWindow(), (Log{"shown", "keys", "no keys"}));
  Window focus = None;
  int revert = 0;
  XGetInputFocus(user->x(), &focus, &revert);
  EXPECT_EQ(focus, host);
}

TEST_F(X11Embedding, AnEmbeddedWindowFollowsItsHost) {
  Recorder client;
  const Window host = user->makeWindow(100, 100, 300, 200);
  const auto window = embed(client, host);
  EXPECT_EQ(client.frame, NSMakeRect(100, screenHeight - 200, 200, 100));
  XMoveWindow(user->x(), host, 150, 110);
  settle();
  EXPECT_EQ(client.frame, NSMakeRect(150, screenHeight - 210, 200, 100));
  window->setFrame(NSMakeRect(0, 0, 250, 120));
  XUnmapWindow(user->x(), host);
  settle();
  EXPECT_EQ(client.takeWindow(), (Log{"shown", "hidden"}));

  XDestroyWindow(user->x(), host);
  XSync(user->x(), False);
  const Bitmap picture({250, 120}, 1);
  const NSRect all = NSMakeRect(0, 0, 250, 120);
  window->present(picture, std::span(&all, 1));
  window->setKeyboardWanted(true);
  settle();
  EXPECT_EQ(client.takeWindow(), (Log{"closed"}));
}
