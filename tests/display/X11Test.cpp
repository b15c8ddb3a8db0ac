#include "X11Test.h"

#include <chrono>
#include <sstream>
#include <thread>

#include "NSRunLoop.h"

void X11Test::openDisplay(float scale) {
  user.warpTo(X11User::screenWidth / 2, X11User::screenHeight / 2);
  display.reset();
  std::string error;
  display = X11Display::create(error, scale);
  ASSERT_TRUE(display) << error;
}

void X11Test::settle() {
  user.sync();
  for (int turn = 0; turn < 4; ++turn) {
    display->screens();  // asks the server: what it sent before has arrived then
    NSRunLoop::currentRunLoop().runTurn();
  }
}

std::unique_ptr<DisplayWindow> X11Test::open(Recorder& told, DisplayWindowOptions options) {
  auto window = display->openWindow(options, told);
  window->show(true);
  settle();
  return window;
}

std::unique_ptr<DisplayWindow> X11Test::open(Recorder& told, NSRect frame) {
  return open(told, {.frame = frame, .title = "test"});
}

std::unique_ptr<DisplayWindow> X11Test::embed(Recorder& told, Window parent) {
  return open(told, {.frame = {{}, place.size}, .title = {}, .parent = {NativeWindow::System::x11, parent}});
}

void X11Test::play(const std::string& script) {
  std::istringstream words(script);
  int x = 0, y = 0;
  for (std::string word; words >> word;) {
    if (word == "press") user.press();
    if (word == "release") user.release();
    if (word == "click" && words >> x) user.click(static_cast<unsigned>(x));
    if (word == "at" && words >> x >> y) user.warpTo(x, y);
    if (word == "move" && words >> x >> y) user.moveBy(x, y);
    if (word == "wait" && words >> x) std::this_thread::sleep_for(std::chrono::milliseconds(x));
  }
  settle();
}
