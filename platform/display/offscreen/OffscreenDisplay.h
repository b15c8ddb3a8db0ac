#pragma once

#include <string>
#include <vector>

#include "Bitmap.h"
#include "Display.h"

class OffscreenWindow;

/// A display without a screen: pictures are drawn, what was presented is recorded, and events are direct
/// calls. One screen of 1600 × 1200 points. For tests and for drawing to files.
class OffscreenDisplay : public Display {
 public:
  explicit OffscreenDisplay(float scale = 1) : scale_(scale) {}

  std::unique_ptr<DisplayWindow> openWindow(const DisplayWindowOptions& options,
                                            DisplayClient& client) override;
  std::vector<NSRect> screens() const override { return {NSMakeRect(0, 0, 1600, 1200)}; }
  float scale() const override { return scale_; }
  std::string clipboardText() override { return clipboard_; }
  void setClipboardText(const std::string& text) override { clipboard_ = text; }

  /// The windows that are open, in order of opening.
  const std::vector<OffscreenWindow*>& windows() const { return windows_; }

  // The user. Places are screen points, y up; the topmost shown window there that takes the mouse gets it.
  void press(NSPoint place, unsigned modifiers = 0, int clickCount = 1);
  /// Moves the pointer; while it is hidden also beyond the screen's edge. A drag if a button is held, else
  /// motion over the window that is there.
  void moveBy(float dx, float dy, unsigned modifiers = 0);  // dy grows upwards
  void release();
  void wheel(NSPoint place, float deltaY, float deltaX = 0);
  /// Keys go to the newest shown window that takes the mouse; typing is a key for each UTF-8 character.
  void type(const std::string& characters, unsigned modifiers = 0);
  void key(NSKey key, unsigned modifiers = 0);

  NSPoint pointer() const { return pointer_; }
  bool isPointerHidden() const { return pointerHidden_; }

 private:
  friend OffscreenWindow;

  OffscreenWindow* windowAt(NSPoint place) const;
  void send(OffscreenWindow& window, NSEvent event, NSPoint place);
  void sendKey(NSEvent event);

  float scale_;
  std::vector<OffscreenWindow*> windows_;
  OffscreenWindow* pressed_ = nullptr;
  NSPoint pointer_;
  bool pointerHidden_ = false;
  std::string clipboard_;
};

/// One window of an offscreen display, with what was presented to it.
class OffscreenWindow : public DisplayWindow {
 public:
  OffscreenWindow(OffscreenDisplay& display, const DisplayWindowOptions& options, DisplayClient& client);
  ~OffscreenWindow() override;

  void setFrame(NSRect frame) override { frame_ = frame; }
  void show(bool takesKeyboard) override;
  void hide() override { shown_ = false; }
  void setKeyboardWanted(bool wanted) override { keyboardWanted_ = wanted; }
  void setForeignPressesWanted(bool wanted) override { foreignPressesWanted_ = wanted; }
  void present(const Bitmap& bitmap, std::span<const NSRect> rects) override;
  void beginRelativeMotion() override { display_.pointerHidden_ = true; }
  void endRelativeMotion(NSPoint place) override;

  NSRect frame() const { return frame_; }
  bool isShown() const { return shown_; }
  bool ignoresMouse() const { return ignoresMouse_; }
  bool isKeyboardWanted() const { return keyboardWanted_; }
  bool areForeignPressesWanted() const { return foreignPressesWanted_; }
  DisplayClient& client() const { return client_; }
  /// Rectangles presented since the last call, in points.
  std::vector<NSRect> takePresented();
  /// The window's pixels when something was presented last; null before. Valid until the window is resized or
  /// gone.
  const Bitmap* picture() const { return picture_; }

 private:
  OffscreenDisplay& display_;
  DisplayClient& client_;
  NSRect frame_;
  bool ignoresMouse_;
  bool shown_ = false;
  bool keyboardWanted_ = false;
  bool foreignPressesWanted_ = false;
  std::vector<NSRect> presented_;
  const Bitmap* picture_ = nullptr;
};
