#pragma once

#include <memory>
#include <string>

class NSView;
class NSWindow;

/// The editor in a titled window of its size, not shown yet. It becomes what has the keyboard at first.
std::shared_ptr<NSWindow> windowForEditor(const std::shared_ptr<NSView>& editor, const std::string& title);
