#pragma once

#include <memory>

#include "AudioUnit.h"
#include "NSPopUpButton.h"
#include "NSView.h"

/// The host's own strip above an editor: a menu of the effect's factory presets. Choosing one sets the
/// effect's present preset, of which the editor hears like any listener. Main thread.
class PresetBar : public NSView {
 public:
  static constexpr float height = 28;

  /// As wide as the editor. The effect must be open as long as this lives.
  PresetBar(AudioUnit unit, float width);
  const Class& isa() const override;
  static const Class& record();

  void presetChosen(NSMenuItem* item);
  void drawRect(NSRect dirty) override;
  bool isOpaque() const override { return true; }

 private:
  AudioUnit unit_;
  std::shared_ptr<NSPopUpButton> menu_;
};
