#pragma once

#include <memory>
#include <string>

class Display;
class NSView;
class NSWindow;

/// The editor in a titled window, not shown yet, with a strip of the host's own above it if there is one. The
/// editor becomes what has the keyboard at first.
std::shared_ptr<NSWindow> windowForEditor(Display& display, const std::shared_ptr<NSView>& editor,
                                          const std::string& title,
                                          const std::shared_ptr<NSView>& strip = nullptr);
