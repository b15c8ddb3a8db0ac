#pragma once

#include <string>

#include "Display.h"
#include "PixelRect.h"
#include "X11Connection.h"

/// What every window hears of; keys come on top, in an embedded window only while it has the keyboard.
inline constexpr long x11WindowEvents = ButtonPressMask | ButtonReleaseMask | PointerMotionMask |
                                        EnterWindowMask | LeaveWindowMask | ExposureMask |
                                        StructureNotifyMask | FocusChangeMask;

/// Makes a window, not yet shown, of the kind that the options ask for. `owner` is the window that a
/// floating one is to stay above, 0 for none.
Window createX11Window(X11Connection& connection, const DisplayWindowOptions& options, PixelRect pixels,
                       const X11Connection::PixelFormat& format, Window owner);

/// Tells the window manager that the window has this size and no other.
void fixX11WindowSize(X11Connection& connection, Window window, PixelRect pixels);

/// The window that a window manager knows: the ancestor below the root that it manages, else the outermost.
Window managedAncestor(X11Connection& connection, Window window);

/// The parent; 0 for the root window and windows that are gone.
Window parentOf(X11Connection& connection, Window window);
