#include "PluginHands.h"

PluginHands::PluginHands(const std::string& code, float scale) : X11Hands(code), code_(code) {
  reopen(scale);
}

void PluginHands::reopen(float scale) {
  editor.reset();
  const NSSize size = map.window->frame().size;
  const auto width = static_cast<int>(size.width), height = static_cast<int>(size.height);
  parent = user.makeWindow(50, 50, width, height);
  editor = std::make_unique<HostedEditor>(object, code_, parent, scale);
  use(parent, height);
  arrive();
}

void PluginHands::arrive() {
  // The server may answer first whoever asked; then it has told everybody else.
  for (int turn = 0; turn < 3; ++turn) {
    user.sync();
    editor->idle(0);
  }
}

Lines PluginHands::heard() {
  arrive();
  return editor->takeLog();
}
