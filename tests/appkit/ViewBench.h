#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "NSBundle.h"
#include "Stage.h"

/// Writes what it is asked to do into a list, as short strings that begin with a verb and its name.
class LogView : public NSView {
 public:
  LogView(std::string name, NSRect frame, Lines& seen) : NSView(frame), name_(std::move(name)), seen_(seen) {}

  void drawRect(NSRect dirty) override {
    write("draw", {NSMinX(dirty), NSMinY(dirty), NSWidth(dirty), NSHeight(dirty)}, onDraw);
  }
  bool isOpaque() const override { return opaque; }
  void mouseDown(const NSEvent& event) override {
    if (passesOn) return NSView::mouseDown(event);
    write("down", {event.locationInWindow.x, event.locationInWindow.y}, onDown);
  }
  void mouseDragged(const NSEvent& event) override {
    if (passesOn) return NSView::mouseDragged(event);
    write("drag", {event.deltaX, event.deltaY});
  }
  void mouseUp(const NSEvent& event) override {
    if (passesOn) return NSView::mouseUp(event);
    write("up", {event.locationInWindow.x, event.locationInWindow.y}, onUp);
  }
  void scrollWheel(const NSEvent& event) override {
    if (passesOn) return NSView::scrollWheel(event);
    write("wheel", {event.deltaY});
  }

  bool opaque = false;
  bool passesOn = false;
  std::function<void()> onDraw, onDown, onUp;

 private:
  void write(const std::string& verb, std::initializer_list<float> numbers,
             const std::function<void()>& then = nullptr) {
    std::string line = verb + " " + name_;
    for (const float number : numbers) line += " " + std::to_string(std::lround(number));
    seen_.push_back(line);
    if (then) then();
  }

  std::string name_;
  Lines& seen_;
};

/// A window of 200 × 100 points whose content is a LogView "root", shown and drawn. The fonts are there.
class ViewBench : public testing::Test, public Stage {
 protected:
  explicit ViewBench(float scale = 1) : Stage(scale), bundle(NSBundle::bundleWithPath(TOVIN_BUNDLE, error)) {
    root = std::make_shared<LogView>("root", NSMakeRect(0, 0, 200, 100), seen);
    show(root);
    drawn();
  }

  std::shared_ptr<LogView> add(std::string name, NSRect frame, NSView* parent = nullptr) {
    auto view = std::make_shared<LogView>(std::move(name), frame, seen);
    (parent ? *parent : static_cast<NSView&>(*root)).addSubview(view);
    drawn();
    return view;
  }
  Lines taken() { return std::exchange(seen, {}); }
  /// What a turn draws; forgets what was presented.
  Lines drawn() {
    turn();
    for (OffscreenWindow* w : display.windows()) presented = w->takePresented();
    return taken();
  }
  void click(NSPoint inWindow) {
    press(inWindow);
    release();
  }

  std::string error;
  std::shared_ptr<NSBundle> bundle;
  Lines seen;
  std::vector<NSRect> presented;
  std::shared_ptr<LogView> root;
};
