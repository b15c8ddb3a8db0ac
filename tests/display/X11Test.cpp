#include "X11Test.h"

void X11Test::SetUp() {
  user.warpTo(XServer::width / 2, XServer::height / 2);
  openDisplay();
}

void X11Test::openDisplay(float scale) {
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

std::unique_ptr<DisplayWindow> X11Test::open(Recorder& client, DisplayWindowOptions options) {
  auto window = display->openWindow(options, client);
  window->show(true);
  settle();
  return window;
}

std::unique_ptr<DisplayWindow> X11Test::open(Recorder& client, NSRect frame) {
  return open(client, {.frame = frame, .title = "test"});
}

std::unique_ptr<DisplayWindow> X11Test::embed(Recorder& client, Window parent) {
  return open(
      client,
      {.frame = NSMakeRect(0, 0, 200, 100), .title = {}, .parent = {NativeWindow::System::x11, parent}});
}
