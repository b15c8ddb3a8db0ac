#pragma once

#include <array>
#include <memory>
#include <string>

#include "X11Errors.h"
#include "X11Headers.h"
#include "X11PixelBuffer.h"

enum class X11Atom {
  wmProtocols,
  wmDeleteWindow,
  wmState,
  netWmName,
  netWmPid,
  netWmWindowType,
  netWmWindowTypeTooltip,
  netWmWindowTypePopupMenu,
  netSupportingWmCheck,
  compositor,
  utf8String,
  clipboard,
  targets,
  timestamp,
  transfer,
  count
};

/// A connection of our own to the server of DISPLAY, with what is asked once: extensions, atoms, visuals.
class X11Connection {
 public:
  struct PixelFormat {
    Visual* visual = nullptr;
    int depth = 0;
    Colormap colormap = 0;
  };

  /// Null with a message when the display cannot be opened or lacks something that we cannot do without.
  static std::unique_ptr<X11Connection> open(std::string& error);
  ~X11Connection();
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;

  XConnection* x() const { return x_; }
  int screen() const { return screen_; }
  Window root() const { return RootWindow(x_, screen_); }
  Atom atom(X11Atom which) const { return atoms_[static_cast<size_t>(which)]; }
  X11Errors& errors() { return *errors_; }

  const PixelFormat& opaqueFormat() const { return opaque_; }
  /// Null while no compositor runs: transparent pixels would be shown black.
  const PixelFormat* translucentFormat();
  bool hasWindowManager() const;
  /// XInput 2.1 or newer, whose raw motion also comes during grabs. 0: none.
  int inputOpcode() const { return inputOpcode_; }
  bool hasMonitors() const { return hasMonitors_; }
  /// The server is a client of a Wayland compositor, to which the pointer belongs.
  bool isXwayland() const { return isXwayland_; }
  X11PixelBuffer& pixels() { return *pixels_; }

 private:
  explicit X11Connection(XConnection* x);
  std::string findFormats();
  std::string findExtensions();
  bool hasMonitorOfXwayland() const;

  XConnection* x_;
  int screen_;
  std::unique_ptr<X11Errors> errors_;
  std::unique_ptr<X11PixelBuffer> pixels_;
  std::array<Atom, static_cast<size_t>(X11Atom::count)> atoms_{};
  PixelFormat opaque_;
  PixelFormat translucent_;
  int inputOpcode_ = 0;
  bool hasMonitors_ = false;
  bool isXwayland_ = false;
};
