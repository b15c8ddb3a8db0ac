#pragma once

#include <memory>
#include <span>
#include <vector>

#include "Display.h"
#include "X11Events.h"
#include "X11Screens.h"
#include "X11ShapeMask.h"
#include "X11Surface.h"

/// One window on the server. Requests about it may come too late, since the server, a host or the window
/// manager can end it at any time: they are then without effect. A place in it is the centre of a pixel, so
/// that it lies inside what was drawn there and, put through endRelativeMotion, is that pixel again.
class X11Window final : public DisplayWindow {
 public:
  X11Window(X11Connection& connection, X11Events& events, const X11Screens& screens,
            const DisplayWindowOptions& options, DisplayClient& client);
  ~X11Window() override;

  void setFrame(NSRect frame) override;
  void show(bool takesKeyboard) override;
  void hide() override;
  void setKeyboardWanted(bool wanted) override;
  void setForeignPressesWanted(bool wanted) override;
  void beginRelativeMotion() override;
  void endRelativeMotion(NSPoint place) override;
  void present(const Bitmap& bitmap, std::span<const NSRect> rects) override;
  NativeWindow native() const override { return {NativeWindow::System::x11, id_}; }

  Window id() const { return id_; }
  DisplayClient& client() const { return client_; }

  /// The place of a pixel of the root window in window points, y up.
  NSPoint placeOfRootPixel(int rootX, int rootY) const;
  /// A pointer event told where the window's corner is; an embedded window moves with its host unnoticed.
  void noteCorner(int rootX, int rootY);
  /// What concerns neither pointer nor keys; also that of the windows around it. Only remembers what has to
  /// be told in the end.
  void handle(const XEvent& event);
  /// All events of a turn were handled.
  void endTurn();

 private:
  bool isEmbedded() const { return static_cast<bool>(options_.parent); }
  bool isSurrounding(Window window) const;
  void watchSurroundings(bool watch);
  void refresh();
  void notePixels(PixelRect pixels);
  void handleFocus(const XFocusChangeEvent& event);
  void takeKeyboard();
  void returnKeyboard();
  void selectKeys(bool select);

  X11Connection& connection_;
  X11Events& events_;
  const X11Screens& screens_;
  DisplayWindowOptions options_;
  DisplayClient& client_;
  NSRect frame_;
  PixelRect pixels_;  // of frame_, in the root window
  const X11Connection::PixelFormat& format_;
  Window id_;
  X11Surface surface_;
  std::unique_ptr<X11ShapeMask> mask_;
  std::vector<Window> surroundings_;  // of an embedded window: its ancestors below the root

  bool placeKnown_;
  bool isGone_ = false;
  bool isFocused_ = false;
  bool takesKeyboard_ = false;
  bool keyboardWanted_ = false;
  bool holdsPointer_ = false;
  Window focusBefore_ = None;
  bool changed_ = false;  // place, size or visibility
  enum class Told { nothing, visible, hidden } told_ = Told::nothing;
  PixelRect exposed_;
};
