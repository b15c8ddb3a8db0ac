#include "X11User.h"

#define Display XConnection
#include <X11/extensions/XTest.h>
#undef Display

#include <cstdlib>
#include <stdexcept>

#include "ChildProcess.h"

const std::string& X11User::virtualServer() {
  static const std::string screen = std::to_string(screenWidth) + "x" + std::to_string(screenHeight) + "x24";
  static const ChildProcess server(
      {"Xvfb", "-displayfd", "1", "-screen", "0", screen, "-nolisten", "tcp", "-noreset"});
  if (!server.waitForOutput("\n", 20))
    throw std::runtime_error("Xvfb does not start; it is in the package xvfb: " + server.errors());
  static const std::string name = ":" + std::to_string(std::stoi(server.output()));
  return name;
}

X11User::X11User(const std::string& server) {
  setenv("DISPLAY", server.c_str(), 1);
  x_ = XOpenDisplay(nullptr);
  origin_ = root();
}

void X11User::warpTo(int x, int y) {
  XWarpPointer(x_, None, origin_, 0, 0, 0, 0, x, y);
  sync();
}

void X11User::moveBy(int dx, int dy) {
  XTestFakeRelativeMotionEvent(x_, dx, dy, 0);
  sync();
}

void X11User::button(unsigned number, Bool down) {
  XTestFakeButtonEvent(x_, number, down, 0);
  sync();
}

void X11User::click(unsigned number) {
  press(number);
  release(number);
}

void X11User::key(KeySym symbol, Bool down) {
  if (symbol != NoSymbol) XTestFakeKeyEvent(x_, XKeysymToKeycode(x_, symbol), down, 0);
  sync();
}

void X11User::type(KeySym symbol) {
  hold(symbol);
  letGo(symbol);
}

std::string X11User::pointer() const {
  Window none = None;
  int rootX = 0, rootY = 0, x = 0, y = 0;
  unsigned state = 0;
  XQueryPointer(x_, origin_, &none, &none, &rootX, &rootY, &x, &y, &state);
  return std::to_string(x) + "," + std::to_string(y);
}

unsigned long X11User::colorAt(int x, int y) const {
  XImage* image = XGetImage(x_, origin_, x, y, 1, 1, AllPlanes, ZPixmap);
  const unsigned long color = XGetPixel(image, 0, 0) & 0xffffff;
  XDestroyImage(image);
  return color;
}

Window X11User::makeWindow(int x, int y, int width, int height) {
  const Window window = XCreateSimpleWindow(x_, root(), x, y, static_cast<unsigned>(width),
                                            static_cast<unsigned>(height), 0, 0, 0x0000ff);
  XSelectInput(x_, window, KeyPressMask);
  XMapWindow(x_, window);
  sync();
  return window;
}

Window X11User::windowOf(pid_t program) const {
  Window root = None, parent = None, found = None, *children = nullptr;
  unsigned count = 0;
  XGrabServer(x_);  // no window goes while it is looked at
  XQueryTree(x_, this->root(), &root, &parent, &children, &count);
  for (unsigned i = 0; i < count; ++i) {
    XWindowAttributes a;
    XTextProperty id;
    XGetWindowAttributes(x_, children[i], &a);
    if (!XGetTextProperty(x_, children[i], &id, XInternAtom(x_, "_NET_WM_PID", False))) continue;
    if (a.map_state == IsViewable && !a.override_redirect && *reinterpret_cast<long*>(id.value) == program)
      found = children[i];
    XFree(id.value);
  }
  XUngrabServer(x_);
  XFree(children);
  sync();
  return found;
}

void X11User::closePolitely(Window window) {
  XEvent event{};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(x_, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(x_, "WM_DELETE_WINDOW", False));
  XSendEvent(x_, window, False, NoEventMask, &event);
  sync();
}
