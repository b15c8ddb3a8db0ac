#include "X11WindowSetup.h"

#include <unistd.h>

namespace {

void setAtoms(X11Connection& c, Window window, X11Atom property, Atom type, Atom value) {
  XChangeProperty(c.x(), window, c.atom(property), type, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(&value), 1);
}

void setText(X11Connection& c, Window window, Atom property, const std::string& text) {
  XChangeProperty(c.x(), window, property, c.atom(X11Atom::utf8String), 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
}

/// A process number means something only together with the machine that it is of.
void setProcess(X11Connection& c, Window window) {
  char host[256] = {};
  if (gethostname(host, sizeof host - 1) != 0) return;
  XChangeProperty(c.x(), window, XA_WM_CLIENT_MACHINE, XA_STRING, 8, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(host), static_cast<int>(std::string(host).size()));
  setAtoms(c, window, X11Atom::netWmPid, XA_CARDINAL, static_cast<Atom>(getpid()));
}

void introduce(X11Connection& c, Window window, const DisplayWindowOptions& options) {
  std::string name = "tovin";
  XClassHint names{name.data(), name.data()};
  XSetClassHint(c.x(), window, &names);
  setProcess(c, window);
  if (options.borderless) {
    setAtoms(
        c, window, X11Atom::netWmWindowType, XA_ATOM,
        c.atom(options.ignoresMouse ? X11Atom::netWmWindowTypeTooltip : X11Atom::netWmWindowTypePopupMenu));
    return;
  }
  setText(c, window, XA_WM_NAME, options.title);
  setText(c, window, c.atom(X11Atom::netWmName), options.title);
  Atom closing = c.atom(X11Atom::wmDeleteWindow);
  XSetWMProtocols(c.x(), window, &closing, 1);
  XWMHints hints{};
  hints.flags = InputHint | StateHint;
  hints.input = True;
  hints.initial_state = NormalState;
  XSetWMHints(c.x(), window, &hints);
}

bool isManaged(X11Connection& c, Window window) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(c.x(), window, c.atom(X11Atom::wmState), 0, 0, False, AnyPropertyType, &type, &format,
                     &count, &rest, &data);
  if (data) XFree(data);
  return type != None;
}

}  // namespace

Window createX11Window(X11Connection& connection, const DisplayWindowOptions& options, PixelRect pixels,
                       const X11Connection::PixelFormat& format, Window owner) {
  XConnection* x = connection.x();
  XSetWindowAttributes attributes{};
  attributes.border_pixel = 0;
  attributes.colormap = format.colormap;
  attributes.override_redirect = options.borderless && !options.parent;
  attributes.event_mask = options.parent ? x11WindowEvents : x11WindowEvents | KeyPressMask;
  const Window window = XCreateWindow(
      x, options.parent ? options.parent.handle : connection.root(), options.parent ? 0 : pixels.x,
      options.parent ? 0 : pixels.y, static_cast<unsigned>(pixels.width),
      static_cast<unsigned>(pixels.height), 0, format.depth, InputOutput, format.visual,
      CWBorderPixel | CWColormap | CWOverrideRedirect | CWEventMask, &attributes);
  if (!options.parent) introduce(connection, window, options);
  if (!options.parent && !options.borderless) fixX11WindowSize(connection, window, pixels);
  if (owner) XSetTransientForHint(x, window, owner);
  if (options.ignoresMouse) {
    const XserverRegion nowhere = XFixesCreateRegion(x, nullptr, 0);
    XFixesSetWindowShapeRegion(x, window, ShapeInput, 0, 0, nowhere);
    XFixesDestroyRegion(x, nowhere);
  }
  return window;
}

void fixX11WindowSize(X11Connection& connection, Window window, PixelRect pixels) {
  XSizeHints hints{};
  hints.flags = PPosition | PSize | PMinSize | PMaxSize | PWinGravity;
  hints.win_gravity = StaticGravity;  // the place is that of the content, not of the frame around it
  hints.x = pixels.x;
  hints.y = pixels.y;
  hints.width = hints.min_width = hints.max_width = pixels.width;
  hints.height = hints.min_height = hints.max_height = pixels.height;
  XSetWMNormalHints(connection.x(), window, &hints);
}

Window parentOf(X11Connection& connection, Window window) {
  Window root = None;
  Window parent = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (!XQueryTree(connection.x(), window, &root, &parent, &children, &count)) return None;
  if (children) XFree(children);
  return parent;
}

Window managedAncestor(X11Connection& connection, Window window) {
  while (!isManaged(connection, window)) {
    const Window parent = parentOf(connection, window);
    if (parent == None || parent == connection.root()) break;
    window = parent;
  }
  return window;
}
