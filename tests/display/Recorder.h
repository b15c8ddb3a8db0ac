#pragma once

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "Display.h"

/// What a window was told.
class Recorder final : public DisplayClient {
 public:
  /// Since it was taken last, such as "down drag:30,-5 up down2"; drags in a row are one.
  std::string takeInput() { return std::exchange(input_, {}); }
  std::string takeWindow() { return std::exchange(window_, {}); }
  std::vector<NSRect> takeExposed() { return std::exchange(exposed_, {}); }

  NSEvent last;
  NSPoint pointer;  // without a press
  NSRect frame;
  std::function<void(const NSEvent&)> onEvent;

 private:
  void displayEvent(const NSEvent& event) override {
    constexpr const char* words[] = {"down", "drag:", "up", "wheel:", "key:"};  // in the order of NSEventType
    const bool isDrag = event.type == NSEventType::leftMouseDragged;
    if (!isDrag) motion_ = {};
    motion_ = {motion_.x + event.deltaX, motion_.y + event.deltaY};
    std::ostringstream word;
    word << words[static_cast<size_t>(event.type)] << event.characters;
    if (isDrag || event.type == NSEventType::scrollWheel) word << motion_.x << "," << motion_.y;
    if (event.type == NSEventType::leftMouseDown && event.clickCount > 1) word << event.clickCount;
    if (const size_t before = input_.rfind(' ') + 1; isDrag && input_.substr(before).starts_with("drag:"))
      input_.erase(before > 0 ? before - 1 : 0);
    note(input_, word.str());
    last = event;
    if (onEvent) onEvent(event);
  }
  void displayPointerMoved(NSPoint at) override { pointer = at; }
  void displayLostPointer() override { note(input_, "lost"); }
  void displayExposed(NSRect rect) override { exposed_.push_back(rect); }
  void displayChangedFrame(NSRect changed) override { frame = changed; }
  void displayChangedVisibility(bool visible) override { note(window_, visible ? "shown" : "hidden"); }
  void displayChangedKeyboard(bool focused) override { note(window_, focused ? "keys" : "no-keys"); }
  void displayClosed() override { note(window_, "closed"); }

  static void note(std::string& log, const std::string& word) { log += (log.empty() ? "" : " ") + word; }
  std::string input_, window_;
  std::vector<NSRect> exposed_;
  NSPoint motion_;  // of the drags in a row
};
