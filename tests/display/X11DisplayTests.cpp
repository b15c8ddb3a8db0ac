#include <cairo.h>

#include <atomic>
#include <clocale>
#include <thread>

#include "Bitmap.h"
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

int processErrors = 0;

}  // namespace

class X11Windows : public X11Test {
 protected:
  /// Somebody else owns that selection from now on.
  void takeSelection(const char* name) {
    XSetSelectionOwner(user.x(), XInternAtom(user.x(), name, False), user.makeWindow(0, 0, 10, 10),
                       CurrentTime);
    user.sync();
  }

  Recorder client, above;
};

TEST_F(X11Windows, PresentsTheGivenRectanglesAndNoMore) {
  const auto window = open(client);
  EXPECT_EQ(client.takeWindow(), "shown keys");
  EXPECT_EQ(client.takeExposed(), std::vector{everything});
  present(*window, filled(1, 0, 0));
  present(*window, filled(0, 1, 0), NSMakeRect(10.5f, 0, 20, 10));
  user.workIn(window->native().handle);
  const std::tuple<int, int, unsigned long> cases[] = {
      {0, 0, 0xff0000},  {199, 99, 0xff0000}, {10, 90, 0x00ff00}, {30, 99, 0x00ff00},
      {9, 95, 0xff0000}, {31, 95, 0xff0000},  {20, 89, 0xff0000}};
  for (const auto& [x, y, color] : cases) EXPECT_EQ(user.colorAt(x, y), color) << x << "," << y;
}

TEST_F(X11Windows, ScalesPlacesAndScreens) {
  openDisplay(1.25f);
  EXPECT_EQ(display->screens(), std::vector{NSMakeRect(0, 0, 1024, 640)});
  const auto window = open(client, NSMakeRect(80, 480, 200, 100));
  present(*window, filled(1, 0, 0, 1, 1.25f));
  EXPECT_EQ(user.colorAt(100, 75), 0xff0000ul);
  EXPECT_EQ(user.colorAt(349, 199), 0xff0000ul);
  EXPECT_NE(user.colorAt(350, 199), 0xff0000ul);
}

TEST_F(X11Windows, TellsOfWhatOthersDoToTheWindow) {
  const auto window = open(client);
  client.takeWindow();
  client.takeExposed();
  const Window id = window->native().handle;
  XMoveResizeWindow(user.x(), id, 300, 50, 220, 120);
  settle();
  EXPECT_EQ(client.frame, NSMakeRect(300, XServer::height - 170, 220, 120));
  client.frame = {};
  window->setFrame(place);
  settle();
  EXPECT_EQ(client.frame, NSZeroRect) << "our own doing is no news";
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
  XDestroyWindow(user.x(), id);
  settle();
  EXPECT_EQ(client.takeWindow(), "closed");
  present(*window, filled(1, 0, 0));
  window->setFrame(NSMakeRect(0, 0, 10, 10));
  window->show(true);
  settle();
}

TEST_F(X11Windows, AnOverlayLetsEventsThrough) {
  const auto window = open(client);
  const auto overlay = open(above, {.frame = place,
                                    .title = {},
                                    .borderless = true,
                                    .translucent = true,
                                    .ignoresMouse = true,
                                    .owner = window.get()});
  user.warpTo(150, 150);
  user.click();
  user.click(4);
  settle();
  EXPECT_EQ(client.takeInput(), "down up wheel:0,1");
  EXPECT_EQ(above.takeInput(), "");
}

TEST_F(X11Windows, TranslucentPixelsAreCutOutWithoutACompositorAndKeptWithOne) {
  for (const bool compositor : {false, true}) {
    SCOPED_TRACE(compositor);
    if (compositor) takeSelection("_NET_WM_CM_S0");
    const auto window = open(client);
    present(*window, filled(0, 0, 1));
    client.takeExposed();
    const auto overlay = open(above, {.frame = place, .title = {}, .borderless = true, .translucent = true});
    present(*overlay, filled(1, 0, 0, 0.75));
    present(*overlay, filled(1, 0, 0, 0.25), NSMakeRect(0, 0, 50, 100));
    settle();
    EXPECT_EQ(client.takeExposed().size(), compositor ? 0u : 1u);
    present(*window, filled(0, 0, 1));
    XWindowAttributes attributes;
    XGetWindowAttributes(user.x(), overlay->native().handle, &attributes);
    EXPECT_EQ(attributes.depth, compositor ? 32 : 24);
    if (!compositor) {
      EXPECT_EQ(user.colorAt(120, 150), 0x0000fful);
      EXPECT_EQ(user.colorAt(180, 150), 0xff0000ul);
    }
  }
}

TEST_F(X11Windows, NothingOfTheProcessIsChanged) {
  const std::string locale = setlocale(LC_ALL, nullptr);
  const auto mine = [](XConnection*, XErrorEvent*) { return ++processErrors; };
  const XErrorHandler before = XSetErrorHandler(mine);
  const Window host = user.makeWindow(100, 100, 300, 200);
  auto window = embed(client, host);
  for (int twice = 0; twice < 2; ++twice) window->beginRelativeMotion();
  for (int twice = 0; twice < 2; ++twice) window->endRelativeMotion({10, 10});
  XDestroyWindow(user.x(), host);
  user.sync();
  window.reset();
  settle();
  display.reset();
  EXPECT_EQ(XSetErrorHandler(before), static_cast<XErrorHandler>(mine));
  EXPECT_EQ(processErrors, 0);
  EXPECT_EQ(setlocale(LC_ALL, nullptr), locale);
}

TEST_F(X11Windows, TheClipboardWorksBothWays) {
  std::string error;
  const std::string text = "−6.0 dB ü";
  EXPECT_EQ(display->clipboardText(), "");
  display->setClipboardText(text);
  EXPECT_EQ(display->clipboardText(), text);

  // Another program of ours takes and gives it; it runs on a loop of its own.
  std::string seen;
  std::atomic<bool> ready = false;
  std::atomic<bool> finished = false;
  std::thread other([&] {
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

TEST_F(X11Windows, ADisplayThatCannotBeOpenedIsNamed) {
  std::string error;
  setenv("DISPLAY", ":54321", 1);
  EXPECT_FALSE(X11Display::create(error));
  EXPECT_NE(error.find(":54321"), std::string::npos) << error;
  unsetenv("DISPLAY");
  EXPECT_FALSE(X11Display::create(error));
  EXPECT_EQ(error, "DISPLAY is not set");
}
