#pragma once

#include "HostedEditor.h"
#include "X11Hands.h"

/// Hands at the editor of a plug-in, in a window of the host's that is as large as it is.
class PluginHands : public X11Hands {
 public:
  explicit PluginHands(const std::string& code, float scale = 1) : X11Hands(code), code_(code) {
    reopen(scale);
  }
  /// Another editor in place of the one before, in a window of its own.
  void reopen(float scale = 1) {
    editor.reset();
    const NSSize size = map.window->frame().size;
    const auto width = static_cast<int>(size.width), height = static_cast<int>(size.height);
    parent = user.makeWindow(50, 50, width, height);
    editor = std::make_unique<HostedEditor>(code_, parent, scale);
    use(parent, height);
    arrive();
  }

  /// Lets the editor idle.
  void advance(double seconds) override { editor->idle(seconds); }
  void set(unsigned parameter, float value) override { editor->set(parameter, value); }
  Lines heard() override {
    arrive();
    return editor->takeLog();
  }

  Window parent = None;
  std::unique_ptr<HostedEditor> editor;

 private:
  void arrive() override {
    // The server may answer first whoever asked; then it has told everybody else.
    for (int turn = 0; turn < 3; ++turn) {
      user.sync();
      editor->idle(0);
    }
  }

  const std::string code_;
  const std::shared_ptr<void> object_ = HostedEditor::load();
};
