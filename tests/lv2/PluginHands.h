#pragma once

#include "HostedEditor.h"
#include "X11Hands.h"

/// Hands at the editor of a plug-in, in a window of the host's that is as large as it is.
class PluginHands : public X11Hands {
 public:
  explicit PluginHands(const std::string& code, float scale = 1);
  /// Another editor in place of the one before, in a window of its own.
  void reopen(float scale = 1);

  /// Lets the editor idle.
  void advance(double seconds) override { editor->idle(seconds); }
  void set(unsigned parameter, float value) override { editor->set(parameter, value); }
  Lines heard() override;

  EditorObject object;
  Window parent = None;
  std::unique_ptr<HostedEditor> editor;

 private:
  void arrive() override;

  const std::string code_;
};
