#pragma once

#include <sys/types.h>

#include <string>

#include "X11Headers.h"

/// Somebody else at an X server: the user's hands and eyes, a host, another program. What was done has
/// reached the server when the call returns.
class X11User {
 public:
  /// A virtual server of the program's own, such as ":7", running while the program does. Throws
  /// std::runtime_error when it does not start.
  static const std::string& virtualServer();
  static constexpr int screenWidth = 1280, screenHeight = 800;  // its pixels

  /// Names the server in DISPLAY for all that the test opens.
  explicit X11User(const std::string& server = virtualServer());
  ~X11User() { XCloseDisplay(x_); }
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
  void press(unsigned number = 1) { button(number, True); }
  void release(unsigned number = 1) { button(number, False); }
  void click(unsigned number = 1);
  void hold(KeySym symbol) { key(symbol, True); }  // NoSymbol is no key
  void letGo(KeySym symbol) { key(symbol, False); }
  void type(KeySym symbol);
  /// "x,y"
  std::string pointer() const;
  /// The colour on the screen, 0xrrggbb.
  unsigned long colorAt(int x, int y) const;

  /// A plain window, shown, at a place of the screen; it hears keys.
  Window makeWindow(int x, int y, int width, int height);
  /// The titled window that a program shows; None when it shows none.
  Window windowOf(pid_t program) const;
  /// As a window manager does it.
  void closePolitely(Window window);

 private:
  void button(unsigned number, Bool down);
  void key(KeySym symbol, Bool down);

  XConnection* x_;
  Window origin_;
};
