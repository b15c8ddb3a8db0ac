#include "X11User.h"

#define Display XConnection
#include <X11/extensions/XRes.h>
#include <X11/extensions/XTest.h>
#undef Display

#include <cstdlib>
#include <set>
#include <stdexcept>


namespace {

XConnection* connect(const std::string& server) {
  if (server.empty()) throw std::runtime_error("Xvfb does not start; it is in the package xvfb");
  setenv("DISPLAY", server.c_str(), 1);
  return XOpenDisplay(nullptr);
}

/// The first number of a property of type CARDINAL; 0 without one.
unsigned long cardinal(XConnection* x, Window window, const char* name) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0, rest = 0, number = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(x, window, XInternAtom(x, name, False), 0, 1, False, XA_CARDINAL, &type, &format, &count,
                     &rest, &data);
  if (count == 1 && format == 32) number = *reinterpret_cast<unsigned long*>(data);
  if (data) XFree(data);
  return number;
}

}  // namespace

X11User::X11User(const std::string& server) : x_(connect(server)), origin_(root()) {}
X11User::~X11User() {
  XCloseDisplay(x_);
}

void X11User::warpTo(int x, int y) {
  XWarpPointer(x_, None, origin_, 0, 0, 0, 0, x, y);
  sync();
}
void X11User::moveBy(int dx, int dy) {
  XTestFakeRelativeMotionEvent(x_, dx, dy, 0);
  sync();
}
void X11User::press(unsigned button) {
  XTestFakeButtonEvent(x_, button, True, 0);
  sync();
}
void X11User::release(unsigned button) {
  XTestFakeButtonEvent(x_, button, False, 0);
  sync();
}
void X11User::click(unsigned button) {
  press(button);
  release(button);
}
void X11User::hold(KeySym symbol) {
  key(symbol, True);
}
void X11User::letGo(KeySym symbol) {
  key(symbol, False);
}
void X11User::type(KeySym symbol) {
  hold(symbol);
  letGo(symbol);
}

void X11User::key(KeySym symbol, Bool down) {
  if (symbol != NoSymbol) XTestFakeKeyEvent(x_, XKeysymToKeycode(x_, symbol), down, 0);
  sync();
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

size_t X11User::colorsIn(int x, int y, int width, int height) const {
  XImage* image = XGetImage(x_, origin_, x, y, static_cast<unsigned>(width), static_cast<unsigned>(height),
                            AllPlanes, ZPixmap);
  std::set<unsigned long> different;
  for (int row = 0; row < height; ++row)
    for (int column = 0; column < width; ++column) different.insert(XGetPixel(image, column, row));
  XDestroyImage(image);
  return different.size();
}

Window X11User::makeWindow(int x, int y, int width, int height) {
  const Window window = XCreateSimpleWindow(x_, root(), x, y, static_cast<unsigned>(width),
                                            static_cast<unsigned>(height), 0, 0, 0x0000ff);
  XSelectInput(x_, window, KeyPressMask | StructureNotifyMask | PropertyChangeMask);
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
    if (XGetWindowAttributes(x_, children[i], &a) && a.map_state == IsViewable && !a.override_redirect &&
        cardinal(x_, children[i], "_NET_WM_PID") == static_cast<unsigned long>(program))
      found = children[i];
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
