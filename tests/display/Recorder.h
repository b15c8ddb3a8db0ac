#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "Display.h"

/// What a window was told.
class Recorder final : public DisplayClient {
 public:
  /// Since it was taken last, such as "down drag up"; drags in a row are one.
  std::string takeInput() { return std::exchange(input_, {}); }
  std::string takeWindow() { return std::exchange(window_, {}); }
  std::vector<NSRect> takeExposed() { return std::exchange(exposed_, {}); }
  /// Sum of all drags, "x,y" in points.
  std::string motion() const;

  NSEvent last;
  NSPoint pointer;  // without a press
  NSRect frame;
  std::function<void(const NSEvent&)> onEvent;

 private:
  void displayEvent(const NSEvent& event) override;
  void displayPointerMoved(NSPoint at) override { pointer = at; }
  void displayLostPointer() override { note(input_, "lost"); }
  void displayExposed(NSRect rect) override { exposed_.push_back(rect); }
  void displayChangedFrame(NSRect changed) override { frame = changed; }
  void displayChangedVisibility(bool visible) override { note(window_, visible ? "shown" : "hidden"); }
  void displayChangedKeyboard(bool focused) override { note(window_, focused ? "keys" : "no-keys"); }
  void displayClosed() override { note(window_, "closed"); }
  static void note(std::string& log, const std::string& word);

  std::string input_;
  std::string window_;
  std::vector<NSRect> exposed_;
  float sumX_ = 0;
  float sumY_ = 0;
};
