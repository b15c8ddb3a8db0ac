#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Canvas.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"

using Lines = std::vector<std::string>;

/// Writes what it is asked to do into a log, as short strings that begin with a verb and its name.
class LogView : public NSView {
 public:
  LogView(std::string name, NSRect frame, Lines& log) : NSView(frame), name_(std::move(name)), log_(log) {}

  void drawRect(NSRect dirty) override {
    log_.push_back("draw " + name_ + text({NSMinX(dirty), NSMinY(dirty), NSWidth(dirty), NSHeight(dirty)}));
    if (onDraw) onDraw();
  }
  bool isOpaque() const override { return opaque; }
  void mouseDown(const NSEvent& event) override {
    if (passesOn) return NSView::mouseDown(event);
    log_.push_back("down " + name_ + place(event));
    if (onDown) onDown();
  }
  void mouseDragged(const NSEvent& event) override {
    if (passesOn) return NSView::mouseDragged(event);
    log_.push_back("drag " + name_ + text({event.deltaX, event.deltaY}));
  }
  void mouseUp(const NSEvent& event) override {
    if (passesOn) return NSView::mouseUp(event);
    log_.push_back("up " + name_ + place(event));
    if (onUp) onUp();
  }
  void scrollWheel(const NSEvent& event) override {
    if (passesOn) return NSView::scrollWheel(event);
    log_.push_back("wheel " + name_ + text({event.deltaY}));
  }
  void keyDown(const NSEvent& event) override { log_.push_back("key " + name_ + " " + event.characters); }

  bool opaque = false;
  bool passesOn = false;
  std::function<void()> onDraw, onDown, onUp;

 private:
  static std::string text(std::initializer_list<float> numbers) {
    std::string line;
    for (const float number : numbers) line += " " + std::to_string(std::lround(number));
    return line;
  }
  static std::string place(const NSEvent& event) {
    return text({event.locationInWindow.x, event.locationInWindow.y});
  }

  std::string name_;
  Lines& log_;
};

/// A window of 200 × 100 points at (100, 100) whose content is a LogView "root", shown and drawn.
class ViewBench : public testing::Test {
 protected:
  explicit ViewBench(float scale = 1) : display(scale) {
    window = std::make_shared<NSWindow>(NSMakeRect(100, 100, 200, 100), NSTitledWindowMask,
                                        NSBackingStoreBuffered, false);
    root = std::make_shared<LogView>("root", NSZeroRect, log);
    window->setContentView(root);
    window->makeKeyAndOrderFront();
    turn();
    drawn();
  }

  static void turn() { NSRunLoop::currentRunLoop().runTurn(); }
  std::shared_ptr<LogView> add(std::string name, NSRect frame, NSView* parent = nullptr) {
    auto view = std::make_shared<LogView>(std::move(name), frame, log);
    (parent ? *parent : static_cast<NSView&>(*root)).addSubview(view);
    turn();
    drawn();
    return view;
  }
  Lines taken() { return std::exchange(log, {}); }
  /// What a turn draws; forgets what was presented.
  Lines drawn() {
    turn();
    for (OffscreenWindow* w : display.windows()) presented = w->takePresented();
    return taken();
  }
  void pressAt(float x, float y, int clickCount = 1, unsigned modifiers = 0) {
    display.press({window->frame().origin.x + x, window->frame().origin.y + y}, modifiers, clickCount);
  }
  DisplayClient& client() { return display.windows().at(0)->client(); }

  OffscreenDisplay display;
  Lines log;
  std::vector<NSRect> presented;
  std::shared_ptr<NSWindow> window;
  std::shared_ptr<LogView> root;
};
