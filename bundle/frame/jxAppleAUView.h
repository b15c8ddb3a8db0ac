#pragma once

#include <memory>
#include <string>

#include "NSImageView.h"
#include "NSTimer.h"
#include "jxAUwrapper.h"

inline constexpr const char* kjxBackgroundImage = "jxAUBackground";
inline constexpr const char* kjxSeparatorImage = "jxAUSeparator";
/// The maker's credit; the effect's name follows with a leading blank of its own.
inline constexpr const char* kjxAppleAUNotice = "Tovin";

/// Base of every editor: gradient background, separator, the line with credit and effect name, a timer
/// that calls idle while the editor is on screen, and labelled sections. An editor overrides setAU: (calling
/// this one), idle and drawRect: (letting this one draw first).
class jxAppleAUView : public NSImageView {
 public:
  explicit jxAppleAUView(NSRect frame);
  const Class& isa() const override;
  static const Class& record();

  void awakeFromNib();
  bool wantsTransparentWindow() const { return true; }

  /// Attaches the effect. The view keeps the wrapper.
  virtual void setAU(std::shared_ptr<jxAUwrapper> wrapper);
  const std::shared_ptr<jxAUwrapper>& auWrapper() const { return mAUwrapper; }

  /// Called by the timer while the view has an effect and its window is visible.
  virtual void idle() {}
  /// Starts the timer, in place of one that runs, in all modes of the run loop. Seconds.
  void startTimerWithInterval(NSTimeInterval interval);
  void timerProc(NSTimer* timer);

  /// The rectangle grown on each side; negative amounts shrink.
  static NSRect rectExpand_left_top_right_bottom(NSRect rect, float left, float top, float right,
                                                 float bottom);
  /// The section round a group of controls, room for its label included.
  static NSRect standardRectExpand(NSRect rect);
  /// From the lower left corner of the first view's frame to the upper right corner of the last one's.
  static NSRect sectionRectFrom_to(const NSView& first, const NSView& last);
  /// `color` is that of the band or handle that the section belongs to. Sections stay grey and white: only
  /// values and handles are coloured.
  static void drawSectionRect_color_name(NSRect rect, const NSColor& color, const std::string& name);

  void drawRect(NSRect dirty) override;
  void mouseDown(const NSEvent& event) override;
  bool acceptsFirstResponder() const override { return true; }
  bool isOpaque() const override { return false; }

 private:
  std::shared_ptr<NSImage> renderedBottomLine() const;

  std::shared_ptr<jxAUwrapper> mAUwrapper;
  std::shared_ptr<NSTimer> mTimer;
  std::shared_ptr<NSImage> mBottomLine;  // shaped and shadowed once; null until it is first drawn
};
