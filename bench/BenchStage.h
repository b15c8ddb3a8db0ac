#pragma once

#include <memory>

#include "NSDate.h"
#include "NSRunLoop.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"

/// An offscreen display under a clock that stands still until it is told to go on.
class BenchStage : private Clock {
 public:
  explicit BenchStage(float scale);
  ~BenchStage() override;

  OffscreenDisplay& display() { return display_; }
  /// A shown window at (100, 100) with that view, not drawn yet.
  static std::shared_ptr<NSWindow> show(const std::shared_ptr<NSView>& view);

  NSTimeInterval now() const override { return now_; }
  /// Puts the clock to the next time at which the run loop has something to do. False, and the clock at
  /// `end`, when there is nothing before that.
  bool waitUntil(NSTimeInterval end);
  void turn();
  /// Every turn that has something to do, and no other.
  void advance(NSTimeInterval seconds);

 private:
  NSTimeInterval now_ = 1000;
  Clock* previous_;
  OffscreenDisplay display_;
};
