#pragma once

// Everything of Xlib that this folder uses. Xlib's name of a connection is also that of the interface that
// is implemented here, so its headers are read with that name replaced; the type itself stays the same.
#define Display XConnection
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XInput2.h>
#include <X11/extensions/XShm.h>
#include <X11/extensions/Xfixes.h>
#include <X11/extensions/Xrandr.h>
#include <X11/extensions/shape.h>
#include <X11/keysym.h>
#undef Display
