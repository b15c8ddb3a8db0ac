#include <cairo.h>

#include <atomic>
#include <clocale>
#include <thread>

#include "Bitmap.h"
#include "X11Fixture.h"
#include "X11Screens.h"

using Log = Recorder::Log;

namespace {

// A window at (100, 100) of the screen's pixels, 200 by 100.
const NSRect place = NSMakeRect(100, screenHeight - 200, 200, 100);
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

class X11Windows : public X11Test {};

TEST_F(X11Windows, PresentsTheGivenRectanglesAndNoMore) {
  Recorder client;
  const auto window = open(client, place);
  EXPECT_EQ(client.takeWindow(), (Log{"shown", "keys"}));
  EXPECT_EQ(client.exposed, std::vector{everything});
  present(*window, filled(1, 0, 0));
  present(*window, filled(0, 1, 0), NSMakeRect(10.5f, 0, 20, 10));
  settle();
  const std::vector<std::pair<NSPoint, unsigned long>> cases{
      {{100, 100}, 0xff0000}, {{299, 199}, 0xff0000}, {{110, 190}, 0x00ff00}, {{130, 199}, 0x00ff00},
      {{109, 195}, 0xff0000}, {{131, 195}, 0xff0000}, {{120, 189}, 0xff0000}};
  for (const auto& [at, color] : cases)
    EXPECT_EQ(user->colorAt(static_cast<int>(at.x), static_cast<int>(at.y)), color) << at.x << "," << at.y;
}

TEST_F(X11Windows, ScalesPlacesAndScreens) {
  openDisplay(1.25f);
  EXPECT_EQ(display->screens(), std::vector{NSMakeRect(0, 0, 1024, 640)});
  Recorder client;
  const auto window = open(client, NSMakeRect(80, 480, 200, 100));
  present(*window, filled(1, 0, 0, 1, 1.25f));
  settle();
  EXPECT_EQ(user->colorAt(100, 75), 0xff0000ul);
  EXPECT_EQ(user->colorAt(349, 199), 0xff0000ul);
  EXPECT_NE(user->colorAt(350, 199), 0xff0000ul);
}

TEST_F(X11Windows, TellsOfWhatOthersDoToTheWindow) {
  Recorder client;
  const auto window = open(client, place);
  client.takeWindow();
  const Window id = nativeWindow(*window);
  XMoveResizeWindow(user->x(), id, 300, 50, 220, 120);
  settle();
  EXPECT_EQ(client.frame, NSMakeRect(300, screenHeight - 170, 220, 120));
  client.frame = {};
  window->setFrame(place);
  settle();
  EXPECT_EQ(client.frame, NSZeroRect) << "our own doing is no news";
  client.exposed.clear();
  XDestroyWindow(user->x(), user->makeWindow(110, 110, 30, 20));
  settle();
  EXPECT_EQ(client.exposed, std::vector{NSMakeRect(10, 70, 30, 20)});
  XSetInputFocus(user->x(), PointerRoot, RevertToNone, CurrentTime);
  XUnmapWindow(user->x(), id);
  settle();
  user->closePolitely(id);
  settle();
  EXPECT_EQ(client.takeWindow(), (Log{"no keys", "hidden", "closed"}));
  XDestroyWindow(user->x(), id);
  settle();
  EXPECT_EQ(client.takeWindow(), (Log{"closed"}));
  present(*window, filled(1, 0, 0));
  window->setFrame(NSMakeRect(0, 0, 10, 10));
  window->show(true);
  settle();
}

TEST_F(X11Windows, AnOverlayLetsEventsThrough) {
  Recorder below;
  Recorder above;
  const auto window = open(below, place);
  const auto overlay = open(above, {.frame = place,
                                    .title = {},
                                    .borderless = true,
                                    .translucent = true,
                                    .ignoresMouse = true,
                                    .owner = window.get()});
  user->warpTo(150, 150);
  user->click();
  user->click(4);
  settle();
  EXPECT_EQ(below.takeInput(), (Log{"down", "up", "wheel 0.0,1.0"}));
  EXPECT_EQ(above.takeInput(), Log{});
}

TEST_F(X11Windows, TranslucentPixelsAreCutOutWithoutACompositorAndKeptWithOne) {
  for (const bool compositor : {false, true}) {
    SCOPED_TRACE(compositor);
    const Window somebody = user->makeWindow(0, 0, 10, 10);
    if (compositor)
      XSetSelectionOwner(user->x(), XInternAtom(user->x(), "_NET_WM_CM_S0", False), somebody, CurrentTime);
    XSync(user->x(), False);
    Recorder below;
    Recorder above;
    const auto window = open(below, place);
    present(*window, filled(0, 0, 1));
    const auto overlay = open(above, {.frame = place, .title = {}, .borderless = true, .translucent = true});
    present(*overlay, filled(1, 0, 0, 0.75));
    present(*overlay, filled(1, 0, 0, 0.25), NSMakeRect(0, 0, 50, 100));
    settle();
    EXPECT_EQ(below.exposed.size(), compositor ? 1u : 2u);
    present(*window, filled(0, 0, 1));
    settle();
    XWindowAttributes attributes;
    XGetWindowAttributes(user->x(), nativeWindow(*overlay), &attributes);
    EXPECT_EQ(attributes.depth, compositor ? 32 : 24);
    if (!compositor) {
      EXPECT_EQ(user->colorAt(120, 150), 0x0000fful);
      EXPECT_EQ(user->colorAt(180, 150), 0xff0000ul);
    }
    XDestroyWindow(user->x(), somebody);
  }
}

TEST_F(X11Windows, NothingOfTheProcessIsChanged) {
  const std::string locale = setlocale(LC_ALL, nullptr);
  const auto mine = [](XConnection*, XErrorEvent*) { return ++processErrors; };
  const XErrorHandler before = XSetErrorHandler(mine);
  Recorder client;
  const Window host = user->makeWindow(100, 100, 300, 200);
  auto window = embed(client, host);
  display->hidePointer();
  display->hidePointer();
  display->showPointer();
  display->showPointer();
  XDestroyWindow(user->x(), host);
  XSync(user->x(), False);
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

  // An owner that never answers.
  const Window silent = user->makeWindow(0, 0, 10, 10);
  XSetSelectionOwner(user->x(), XInternAtom(user->x(), "CLIPBOARD", False), silent, CurrentTime);
  XSync(user->x(), False);
  EXPECT_EQ(display->clipboardText(), "");
}

TEST_F(X11Windows, ADisplayThatCannotBeOpenedIsNamed) {
  std::string error;
  const std::string right = getenv("DISPLAY");
  setenv("DISPLAY", ":54321", 1);
  EXPECT_FALSE(X11Display::create(error));
  EXPECT_NE(error.find(":54321"), std::string::npos) << error;
  unsetenv("DISPLAY");
  EXPECT_FALSE(X11Display::create(error));
  EXPECT_EQ(error, "DISPLAY is not set");
  setenv("DISPLAY", right.c_str(), 1);
}
