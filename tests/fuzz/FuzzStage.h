#pragma once

#include <memory>
#include <string>
#include <vector>

#include "EditorBundle.h"
#include "EffectInstance.h"
#include "EffectParameters.h"
#include "NSWindow.h"
#include "OffscreenDisplay.h"

/// All effects registered and the bundle's classes listed, once for the process.
const EditorBundle& fuzzBundle();

/// An effect and its editor in a window on an offscreen display, in virtual time. A line in the log is a
/// fault.
class FuzzStage {
 public:
  static constexpr size_t effects = 15;
  /// `effect` counts in the order of the four-letter codes' registration.
  explicit FuzzStage(size_t effect);
  explicit FuzzStage(const std::string& code);
  /// Closes, and sees that nothing is left.
  ~FuzzStage();
  FuzzStage(const FuzzStage&) = delete;
  FuzzStage& operator=(const FuzzStage&) = delete;

  void open();
  void close();
  /// Lets time pass, and sees that nothing was drawn outside a window.
  void advance(double seconds);
  void press(NSPoint inWindow, unsigned modifiers = 0, int clickCount = 1);
  float value(AudioUnitParameterID id) const;
  /// Every parameter that can be set is in its range.
  void checkParameters() const;
  /// Views of the editor, parents first, that are of a class.
  template <class View>
  std::vector<View*> all() const {
    std::vector<View*> found;
    collect(*editor, [&](NSView& view) {
      if (auto* wanted = dynamic_cast<View*>(&view)) found.push_back(wanted);
    });
    return found;
  }
  static NSPoint middle(const NSView& view);

  VirtualClock clock;
  OffscreenDisplay display;
  EffectInstance effect;
  std::vector<EffectParameter> parameters;
  std::shared_ptr<NSView> editor;
  std::shared_ptr<NSWindow> window;

 private:
  explicit FuzzStage(Component component);
  template <class Visit>
  static void collect(NSView& view, const Visit& visit) {
    visit(view);
    for (const auto& child : view.subviews()) collect(*child, visit);
  }
};
