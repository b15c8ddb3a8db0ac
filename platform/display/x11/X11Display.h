#pragma once

#include <memory>
#include <string>

#include "Display.h"

class X11Clipboard;
class X11Connection;
class X11Events;
class X11Pointer;
class X11Screens;

/// The display that the environment variable DISPLAY names, over a connection of its own. It is a source of
/// the run loop of the thread that makes it, and belongs to that thread. Nothing of the process is changed:
/// no error handler, no signal, no locale. Its windows die before it.
class X11Display final : public Display {
 public:
  /// Null, and the reason in `error`, when the display cannot be opened or cannot show true colours.
  /// `scale`: physical pixels to a point; 0 takes the user's setting (Xft.dpi / 96 in quarters), else 1.
  static std::unique_ptr<X11Display> create(std::string& error, float scale = 0);
  ~X11Display() override;

  std::unique_ptr<DisplayWindow> openWindow(const DisplayWindowOptions& options,
                                            DisplayClient& client) override;
  std::vector<NSRect> screens() const override;
  float scale() const override;
  /// Waits at most a quarter of a second for the program that owns the text.
  std::string clipboardText() override;
  void setClipboardText(const std::string& text) override;

 private:
  X11Display(std::unique_ptr<X11Connection> connection, float scale);

  std::unique_ptr<X11Connection> connection_;
  std::unique_ptr<X11Screens> screens_;
  std::unique_ptr<X11Clipboard> clipboard_;
  std::unique_ptr<X11Events> events_;
  std::unique_ptr<X11Pointer> pointer_;
};
