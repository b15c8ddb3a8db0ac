#include "X11Fixture.h"

#define Display XConnection
#include <X11/extensions/XRes.h>
#include <X11/extensions/XTest.h>
#undef Display

#include <cstdlib>

namespace {

std::string text(float value) {
  return std::to_string(value).substr(0, std::to_string(value).find('.') + 2);
}

}  // namespace

void Recorder::displayEvent(const NSEvent& event) {
  last = event;
  switch (event.type) {
    case NSEventType::leftMouseDown:
      input_.push_back("down");
      break;
    case NSEventType::leftMouseUp:
      input_.push_back("up");
      break;
    case NSEventType::leftMouseDragged:
      if (input_.empty() || input_.back() != "drag") input_.push_back("drag");
      sumX_ += event.deltaX;
      sumY_ += event.deltaY;
      break;
    case NSEventType::scrollWheel:
      input_.push_back("wheel " + text(event.deltaX) + "," + text(event.deltaY));
      break;
    case NSEventType::keyDown:
      input_.push_back("key " + event.characters);
      break;
  }
  if (onEvent) onEvent(event);
}

std::string Recorder::motion() const {
  return text(sumX_) + "," + text(sumY_);
}

X11User::X11User() : x_(XOpenDisplay(nullptr)) {}
X11User::~X11User() {
  XCloseDisplay(x_);
}

void X11User::warpTo(int x, int y) {
  XWarpPointer(x_, None, root(), 0, 0, 0, 0, x, y);
}
void X11User::moveBy(int dx, int dy) {
  XTestFakeRelativeMotionEvent(x_, dx, dy, 0);
}
void X11User::press(unsigned button) {
  XTestFakeButtonEvent(x_, button, True, 0);
}
void X11User::release(unsigned button) {
  XTestFakeButtonEvent(x_, button, False, 0);
}
void X11User::click(unsigned button) {
  press(button);
  release(button);
}
void X11User::hold(KeySym symbol) {
  XTestFakeKeyEvent(x_, XKeysymToKeycode(x_, symbol), True, 0);
}
void X11User::letGo(KeySym symbol) {
  XTestFakeKeyEvent(x_, XKeysymToKeycode(x_, symbol), False, 0);
}
void X11User::type(KeySym symbol) {
  hold(symbol);
  letGo(symbol);
}

std::string X11User::pointer() const {
  Window none = None;
  int x = 0;
  int y = 0;
  int local = 0;
  unsigned state = 0;
  XQueryPointer(x_, root(), &none, &none, &x, &y, &local, &local, &state);
  return std::to_string(x) + "," + std::to_string(y);
}

Window X11User::makeWindow(int x, int y, int width, int height) {
  const Window window = XCreateSimpleWindow(x_, root(), x, y, static_cast<unsigned>(width),
                                            static_cast<unsigned>(height), 0, 0, 0x0000ff);
  XSelectInput(x_, window, KeyPressMask | StructureNotifyMask | PropertyChangeMask);
  XMapWindow(x_, window);
  XSync(x_, False);
  return window;
}

unsigned long X11User::colorAt(int x, int y) const {
  XImage* image = XGetImage(x_, root(), x, y, 1, 1, AllPlanes, ZPixmap);
  const unsigned long color = XGetPixel(image, 0, 0) & 0xffffff;
  XDestroyImage(image);
  return color;
}

void X11User::closePolitely(Window window) {
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(x_, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(x_, "WM_DELETE_WINDOW", False));
  XSendEvent(x_, window, False, NoEventMask, &event);
}

unsigned X11User::resources() const {
  int clients = 0;
  XResClient* client = nullptr;
  XResQueryClients(x_, &clients, &client);
  unsigned sum = 0;
  for (int i = 0; i < clients; ++i) {
    int types = 0;
    XResType* type = nullptr;
    XResQueryClientResources(x_, client[i].resource_base, &types, &type);
    for (int t = 0; t < types; ++t) sum += type[t].count;
    XFree(type);
  }
  XFree(client);
  return sum;
}

void X11Test::SetUp() {
  const std::string& server = XServer::instance().name();
  ASSERT_FALSE(server.empty()) << "Xvfb does not start; it is in the package xvfb";
  setenv("DISPLAY", server.c_str(), 1);
  user = std::make_unique<X11User>();
  user->warpTo(640, 400);
  openDisplay();
}

void X11Test::TearDown() {
  display.reset();
  user.reset();
}

void X11Test::openDisplay(float scale) {
  display.reset();
  std::string error;
  display = X11Display::create(error, scale);
  ASSERT_TRUE(display) << error;
}

void X11Test::settle() {
  XSync(user->x(), False);
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
  return open(client, {.frame = NSMakeRect(0, 0, 200, 100), .title = {}, .parent = parent});
}
