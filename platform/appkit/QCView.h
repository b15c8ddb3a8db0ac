#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "NSImage.h"
#include "NSTimer.h"
#include "NSView.h"
#include "QCComposition.h"

/// Plays a composition: draws it when an input has changed, at most 20 times a second, and never while it is
/// not on screen. Main thread.
class QCView : public NSView {
 public:
  explicit QCView(NSRect frame) : NSView(frame) {}
  ~QCView() override;
  const Class& isa() const override;
  static const Class& record();

  /// A class of compositions; another one is an assertion failure. An attribute of interface descriptions.
  void setComposition(const Class* compositionClass);

  /// Shows at the next drawing; marks the view only if the number differs. False, and one line in the log,
  /// for a key that the composition does not have.
  bool setValue_forInputKey(float value, std::string_view key);
  float valueForInputKey(std::string_view key) const;
  /// It has a composition and is in a visible window, and nothing hides it.
  bool isRendering() const;

  void drawRect(NSRect dirty) override;

 private:
  size_t indexOf(std::string_view key) const;
  void inputChanged();
  void pauseIsOver(NSTimer* timer);

  std::shared_ptr<QCComposition> composition_;
  std::vector<float> values_;
  std::shared_ptr<NSImage> ground_;  // null until it is first drawn
  NSTimeInterval nextPicture_ = 0;   // not before
  std::shared_ptr<NSTimer> pause_;   // runs while a change waits for that
};
