#include "X11Connection.h"

#include <string_view>

namespace {

bool isBgrx(const Visual& visual) {
  return visual.red_mask == 0xff0000 && visual.green_mask == 0xff00 && visual.blue_mask == 0xff;
}

bool isPacked32(XConnection* x, int depth) {
  int count = 0;
  XPixmapFormatValues* formats = XListPixmapFormats(x, &count);
  bool found = false;
  for (int i = 0; i < count; ++i) found |= formats[i].depth == depth && formats[i].bits_per_pixel == 32;
  if (formats) XFree(formats);
  return found;
}

}  // namespace

std::unique_ptr<X11Connection> X11Connection::open(std::string& error) {
  XConnection* x = XOpenDisplay(nullptr);
  if (!x) {
    const char* name = XDisplayName(nullptr);
    error = *name ? std::string("cannot open the display \"") + name + "\" (DISPLAY)" : "DISPLAY is not set";
    return nullptr;
  }
  std::unique_ptr<X11Connection> connection(new X11Connection(x));
  error = connection->findFormats();
  if (error.empty()) error = connection->findExtensions();
  if (!error.empty()) {
    error = std::string("display \"") + XDisplayString(x) + "\": " + error;
    return nullptr;
  }
  return connection;
}

X11Connection::X11Connection(XConnection* x)
    : x_(x),
      screen_(DefaultScreen(x)),
      errors_(std::make_unique<X11Errors>(x)),
      pixels_(std::make_unique<X11PixelBuffer>(x, *errors_)) {
  const std::string compositor = "_NET_WM_CM_S" + std::to_string(screen_);
  const std::array<const char*, static_cast<size_t>(X11Atom::count)> names{"WM_PROTOCOLS",
                                                                           "WM_DELETE_WINDOW",
                                                                           "WM_STATE",
                                                                           "_NET_WM_NAME",
                                                                           "_NET_WM_PID",
                                                                           "_NET_WM_WINDOW_TYPE",
                                                                           "_NET_WM_WINDOW_TYPE_TOOLTIP",
                                                                           "_NET_WM_WINDOW_TYPE_POPUP_MENU",
                                                                           "_NET_SUPPORTING_WM_CHECK",
                                                                           compositor.c_str(),
                                                                           "UTF8_STRING",
                                                                           "CLIPBOARD",
                                                                           "TARGETS",
                                                                           "TIMESTAMP",
                                                                           "TOVIN_TRANSFER"};
  XInternAtoms(x, const_cast<char**>(names.data()), static_cast<int>(names.size()), False, atoms_.data());
}

X11Connection::~X11Connection() {
  pixels_.reset();
  errors_.reset();
  XCloseDisplay(x_);
}

std::string X11Connection::findFormats() {
  XVisualInfo info;
  if (ImageByteOrder(x_) == LSBFirst) {
    Visual* standard = DefaultVisual(x_, screen_);
    const int depth = DefaultDepth(x_, screen_);
    if ((depth == 24 || depth == 32) && standard->c_class == TrueColor && isBgrx(*standard) &&
        isPacked32(x_, depth))
      opaque_ = {standard, depth, DefaultColormap(x_, screen_)};
    else if (XMatchVisualInfo(x_, screen_, 24, TrueColor, &info) && isBgrx(*info.visual) &&
             isPacked32(x_, 24))
      opaque_ = {info.visual, 24, XCreateColormap(x_, root(), info.visual, AllocNone)};
    if (XMatchVisualInfo(x_, screen_, 32, TrueColor, &info) && isBgrx(*info.visual) && isPacked32(x_, 32))
      translucent_ = {info.visual, 32, XCreateColormap(x_, root(), info.visual, AllocNone)};
  }
  if (opaque_.visual) return {};
  return "no visual of 24 or 32 bits with 8 bits for each of red, green and blue, little-endian";
}

std::string X11Connection::findExtensions() {
  int major = 0;
  int minor = 0;
  int event = 0;
  int error = 0;
  // The server refuses all other requests of this extension until its version was asked.
  if (!XFixesQueryExtension(x_, &event, &error) || !XFixesQueryVersion(x_, &major, &minor) || major < 4)
    return "the XFixes extension is missing or older than version 4";
  if (!XShapeQueryExtension(x_, &event, &error)) return "the Shape extension is missing";

  int opcode = 0;
  major = 2;
  minor = 2;
  if (XQueryExtension(x_, "XInputExtension", &opcode, &event, &error) &&
      XIQueryVersion(x_, &major, &minor) == Success && major * 100 + minor >= 201)
    inputOpcode_ = opcode;
  hasMonitors_ = XRRQueryExtension(x_, &event, &error) && XRRQueryVersion(x_, &major, &minor) &&
                 major * 100 + minor >= 105;
  isXwayland_ = hasMonitors_ && hasMonitorOfXwayland();
  return {};
}

bool X11Connection::hasMonitorOfXwayland() const {
  int count = 0;
  XRRMonitorInfo* monitors = XRRGetMonitors(x_, root(), True, &count);
  bool found = false;
  for (int i = 0; i < count && !found; ++i) {
    char* name = XGetAtomName(x_, monitors[i].name);
    found = name && std::string_view(name).starts_with("XWAYLAND");
    if (name) XFree(name);
  }
  if (monitors) XRRFreeMonitors(monitors);
  return found;
}

const X11Connection::PixelFormat* X11Connection::translucentFormat() {
  if (!translucent_.visual || XGetSelectionOwner(x_, atom(X11Atom::compositor)) == None) return nullptr;
  return &translucent_;
}

bool X11Connection::hasWindowManager() const {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long rest = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(x_, root(), atom(X11Atom::netSupportingWmCheck), 0, 1, False, XA_WINDOW, &type, &format,
                     &count, &rest, &data);
  if (data) XFree(data);
  return type == XA_WINDOW && count == 1;
}
