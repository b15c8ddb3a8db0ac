#pragma once

#include <sys/types.h>

#include <string>

#include "X11Headers.h"
#include "XServer.h"

/// Somebody else at the tests' X server: the user's hands and eyes, a host, another program. What was done
/// has reached the server when the call returns.
class X11User {
 public:
  /// Starts the server when nobody has yet, and names it in DISPLAY for all that the test opens. Throws
  /// std::runtime_error when there is none.
  explicit X11User(const std::string& server = XServer::instance().name());
  ~X11User();
  X11User(const X11User&) = delete;
  X11User& operator=(const X11User&) = delete;

  XConnection* x() const { return x_; }
  Window root() const { return DefaultRootWindow(x_); }
  /// Lets everything that this connection asked for happen.
  void sync() const { XSync(x_, False); }

  /// Places are in pixels from the upper left corner of this window from now on; before, of the screen.
  void workIn(Window window) { origin_ = window; }
  void warpTo(int x, int y);    // without device motion
  void moveBy(int dx, int dy);  // with
  void press(unsigned button = 1);
  void release(unsigned button = 1);
  void click(unsigned button = 1);
  void hold(KeySym symbol);  // NoSymbol is no key
  void letGo(KeySym symbol);
  void type(KeySym symbol);
  /// "x,y"
  std::string pointer() const;
  /// The colour on the screen, 0xrrggbb.
  unsigned long colorAt(int x, int y) const;
  /// How many different colours are in a rectangle.
  size_t colorsIn(int x, int y, int width, int height) const;

  /// A plain window, shown, at a place of the screen; it hears keys.
  Window makeWindow(int x, int y, int width, int height);
  /// The titled window that a program shows; None when it shows none.
  Window windowOf(pid_t program) const;
  /// As a window manager does it.
  void closePolitely(Window window);
  /// Everything that any client has on the server.
  unsigned resources() const;

 private:
  void key(KeySym symbol, Bool down);

  XConnection* x_;
  Window origin_;
};
