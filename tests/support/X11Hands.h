#pragma once

#include <functional>

#include "EditorStage.h"
#include "X11User.h"

/// Hands at an editor in a real window and in real time. Where its views are is looked up in the same editor
/// on a stage, as it is after opening. One modifier at a time: shift or option.
class X11Hands : public Hands {
 public:
  NSPoint place(const std::string& name) override { return map.place(name); }
  void press(NSPoint inWindow, unsigned modifiers = 0, int clickCount = 1) override;
  void moveBy(float dx, float dy, unsigned modifiers = 0) override;
  void release() override;
  void wheel(NSPoint inWindow, float notches) override;
  void key(NSKey key, unsigned modifiers = 0) override;
  void type(const std::string& text, unsigned modifiers = 0) override;
  std::string play(const std::string& script) { return ::play(*this, script); }

  /// 0xRRGGBB of what the screen shows at a place, once all that was done has arrived.
  unsigned long colorAt(const std::string& placeName);
  /// Where that is in the window's pixels, "x,y".
  std::string pixelAt(const std::string& placeName);
  /// The middle of some knob of the editor.
  NSPoint anyKnob() { return Stage::middleOf(*find(*map.editor, "jxAURotaryKnob")); }

  X11User user;

 protected:
  /// One point is a pixel.
  explicit X11Hands(const std::string& effectCode, const std::string& server = X11User::virtualServer())
      : user(server) {
    map.open(effectCode);
  }
  /// The window with the editor at its lower left corner, so many pixels high.
  void use(Window window, int height);
  /// Lets what was done reach the editor, and what follows at once happen.
  virtual void arrive() = 0;

  EditorStage map;

 private:
  struct Pixel {
    int x, y;
  };
  Pixel pixelOf(NSPoint inWindow) const;
  /// Does it while they are held.
  void doWith(unsigned modifiers, const std::function<void()>& act);

  int height_ = 0;
};
