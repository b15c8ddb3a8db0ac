#include <cairo.h>

#include <atomic>
#include <thread>

#include "Bitmap.h"
#include "NSRunLoop.h"
#include "X11Test.h"

namespace {

constexpr NSRect everything{{0, 0}, {200, 100}};

/// One colour with an alpha.
Bitmap filled(double red, double green, double blue, double alpha = 1, float scale = 1) {
  Bitmap bitmap({200, 100}, scale);
  const graphics::CairoPtr cairo(cairo_create(bitmap.surface()));
  cairo_set_source_rgba(cairo.get(), red, green, blue, alpha);
  cairo_paint(cairo.get());
  return bitmap;
}

void present(DisplayWindow& window, const Bitmap& bitmap, NSRect rect = everything) {
  window.present(bitmap, std::span(&rect, 1));
}

}  // namespace

class X11Windows : public X11Test {
 protected:
  /// Somebody else owns that selection from now on.
  void takeSelection(const char* name) {
    XSetSelectionOwner(user.x(), XInternAtom(user.x(), name, False), user.makeWindow(0, 0, 10, 10),
                       CurrentTime);
    user.sync();
  }
};

TEST_F(X11Windows, PresentsTheGivenRectanglesAtTheScreensScale) {
  openDisplay(1.25f);
  EXPECT_EQ(display->screens(), std::vector{NSMakeRect(0, 0, 1024, 640)});
  const auto window = open(client, NSMakeRect(80, 480, 200, 100));
  EXPECT_EQ(client.takeWindow(), "shown keys");
  EXPECT_EQ(client.takeExposed(), std::vector{everything});
  present(*window, filled(1, 0, 0, 1, 1.25f));
  present(*window, filled(0, 1, 0, 1, 1.25f), NSMakeRect(10.5f, 0, 20, 10));
  user.workIn(window->native().handle);
  const std::tuple<int, int, unsigned long> cases[] = {
      {0, 0, 0xff0000},    {249, 124, 0xff0000}, {13, 113, 0x00ff00}, {38, 124, 0x00ff00},
      {12, 119, 0xff0000}, {39, 119, 0xff0000},  {25, 111, 0xff0000}};
  for (const auto& [x, y, color] : cases) EXPECT_EQ(user.colorAt(x, y), color) << x << "," << y;
}

TEST_F(X11Windows, TellsOfWhatOthersDoToTheWindow) {
  const auto window = open(client);
  client.takeWindow();
  const Window id = window->native().handle;
  XMoveResizeWindow(user.x(), id, 300, 50, 220, 120);
  settle();
  EXPECT_EQ(client.frame, NSMakeRect(300, X11User::screenHeight - 170, 220, 120));
  window->setFrame(place);
  settle();
  client.takeExposed();
  XDestroyWindow(user.x(), user.makeWindow(110, 110, 30, 20));
  settle();
  EXPECT_EQ(client.takeExposed(), std::vector{NSMakeRect(10, 70, 30, 20)});
  XSetInputFocus(user.x(), PointerRoot, RevertToNone, CurrentTime);
  XUnmapWindow(user.x(), id);
  settle();
  user.closePolitely(id);
  settle();
  EXPECT_EQ(client.takeWindow(), "no-keys hidden closed");
}

TEST_F(X11Windows, AnOverlayIsCutOutWithoutACompositorAndLetsEventsThrough) {
  for (const bool compositor : {false, true}) {
    SCOPED_TRACE(compositor);
    if (compositor) takeSelection("_NET_WM_CM_S0");
    Recorder above;
    const auto window = open(client);
    present(*window, filled(0, 0, 1));
    const auto overlay = open(above, {.frame = place,
                                      .title = {},
                                      .borderless = true,
                                      .translucent = true,
                                      .ignoresMouse = true,
                                      .owner = window.get()});
    present(*overlay, filled(1, 0, 0, 0.75));
    present(*overlay, filled(1, 0, 0, 0.25), NSMakeRect(0, 0, 50, 100));
    settle();
    present(*window, filled(0, 0, 1));
    XWindowAttributes attributes;
    XGetWindowAttributes(user.x(), overlay->native().handle, &attributes);
    EXPECT_EQ(attributes.depth, compositor ? 32 : 24);
    if (!compositor) {
      EXPECT_EQ(user.colorAt(120, 150), 0x0000fful);
      EXPECT_EQ(user.colorAt(180, 150), 0xff0000ul);
    }
    play("at 180 150 click 1 click 4");
    EXPECT_EQ(client.takeInput(), "down up wheel:0,1");
    EXPECT_EQ(above.takeInput(), "");
  }
}

TEST_F(X11Windows, TheClipboardWorksBothWays) {
  const std::string text = "−6.0 dB ü";
  display->setClipboardText(text);
  EXPECT_EQ(display->clipboardText(), text);

  // Another program of ours takes and gives it; it runs on a loop of its own.
  std::string seen;
  std::atomic<bool> ready = false, finished = false;
  std::thread other([&] {
    std::string error;
    const auto program = X11Display::create(error);
    seen = program->clipboardText();
    program->setClipboardText("from elsewhere");
    ready = true;
    while (!finished) NSRunLoop::currentRunLoop().runTurn();
  });
  while (!ready) NSRunLoop::currentRunLoop().runTurn();
  settle();
  EXPECT_EQ(display->clipboardText(), "from elsewhere");
  finished = true;
  other.join();
  EXPECT_EQ(seen, text);

  takeSelection("CLIPBOARD");
  EXPECT_EQ(display->clipboardText(), "") << "an owner that never answers";
}
