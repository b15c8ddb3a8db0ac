#pragma once

#include <memory>

#include "AudioUnit.h"
#include "NSDate.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"

/// An editor on a live effect in a shown window of an offscreen display, under a virtual clock.
class BenchEditor {
 public:
  BenchEditor(const char (&subtype)[5], float scale);
  ~BenchEditor();
  BenchEditor(const BenchEditor&) = delete;
  BenchEditor& operator=(const BenchEditor&) = delete;

  static std::shared_ptr<NSView> makeView(AudioUnit unit);
  AudioUnit unit() const { return unit_; }
  NSView& view() const { return *window_->contentView(); }
  /// Draws what is marked.
  void redraw();
  void advance(double seconds);
  OffscreenWindow& shown() const { return *display_.windows().front(); }

 private:
  VirtualClock clock_;
  OffscreenDisplay display_;
  AudioUnit unit_;
  std::shared_ptr<NSWindow> window_;
};

/// A new instance; the caller closes it.
AudioUnit openEffect(const char (&subtype)[5]);
