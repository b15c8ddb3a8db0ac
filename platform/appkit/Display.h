#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "NSEvent.h"
#include "NSGeometry.h"

class Bitmap;

/// A window of the window system itself, such as a host's that an editor is embedded in.
struct NativeWindow {
  enum class System { none, x11 };
  System system = System::none;
  uintptr_t handle = 0;

  explicit operator bool() const { return system != System::none; }
};

/// What a display tells a window. Called in turns of the run loop, on its thread.
class DisplayClient {
 public:
  /// Presses, drags, release, wheel and keys. A press, its drags and its release come in that order; drags
  /// only when the pointer moved; the wheel not during a press.
  virtual void displayEvent(const NSEvent& event) = 0;
  /// The pointer is here now (window points, y up), without a press. Only an open menu looks at it; a display
  /// may do without it.
  virtual void displayPointerMoved(NSPoint place) { static_cast<void>(place); }
  /// The press will see no more events: its release was lost, or the pointer was taken away.
  virtual void displayLostPointer() = 0;
  /// Part of the window (points, y up) has to be presented again.
  virtual void displayExposed(NSRect rect) = 0;
  /// The window stands elsewhere or has another size: its content rectangle in screen points.
  virtual void displayChangedFrame(NSRect frame) = 0;
  virtual void displayChangedVisibility(bool visible) = 0;
  virtual void displayChangedKeyboard(bool focused) = 0;
  /// The user or the host closed the window; it is still there, but may be gone on the screen.
  virtual void displayClosed() = 0;

 protected:
  ~DisplayClient() = default;
};

/// One real window. Destroying it closes it. Screen points have their origin at the lower left corner of
/// the first screen; sizes and places are those of the content, without a frame.
class DisplayWindow {
 public:
  virtual ~DisplayWindow() = default;
  virtual void setFrame(NSRect frame) = 0;
  /// Shows in front. `takesKeyboard`: may become the active window.
  virtual void show(bool takesKeyboard) = 0;
  virtual void hide() = 0;
  /// Asks for the keyboard, or gives it back to whoever had it (an embedding host).
  virtual void setKeyboardWanted(bool wanted) = 0;
  /// While on (a menu is open), a press beside all our windows, wherever on the screen, comes to this one
  /// too. Without effect on a display that cannot do it.
  virtual void setForeignPressesWanted(bool wanted) { static_cast<void>(wanted); }
  /// Hides the pointer; from now on motion is relative and not bounded by the screen's edges, whatever is
  /// done to the pointer meanwhile. Without effect while one of the display's windows has it so already.
  virtual void beginRelativeMotion() = 0;
  /// The pointer is shown again, at that place of the window or, where that is off the screen, the nearest on
  /// it. Getting there is no motion.
  virtual void endRelativeMotion(NSPoint place) = 0;
  /// Brings these rectangles (points, y up) of the bitmap, which is as large as the window, to the screen.
  virtual void present(const Bitmap& bitmap, std::span<const NSRect> rects) = 0;
  /// What an embedding host knows it by.
  virtual NativeWindow native() const { return {}; }
};

struct DisplayWindowOptions {
  NSRect frame;
  std::string title;
  bool borderless = false;
  /// Pixels may be transparent; the display does what it can (compositor, else a shape).
  bool translucent = false;
  bool ignoresMouse = false;
  /// A window of the same system to be a child of; none for a window of its own.
  NativeWindow parent{};
  /// The window that a floating one belongs to and stays above; may be null.
  DisplayWindow* owner = nullptr;
};

/// Where windows are. Implementations: X11, and offscreen for tests and pictures. Outlives its windows.
class Display {
 public:
  virtual ~Display() = default;

  virtual std::unique_ptr<DisplayWindow> openWindow(const DisplayWindowOptions& options,
                                                    DisplayClient& client) = 0;
  /// Frames in points, y up; the first has its lower left corner at the origin. Never empty.
  virtual std::vector<NSRect> screens() const = 0;
  /// Physical pixels to a point.
  virtual float scale() const = 0;

  virtual std::string clipboardText() = 0;
  virtual void setClipboardText(const std::string& text) = 0;
};
