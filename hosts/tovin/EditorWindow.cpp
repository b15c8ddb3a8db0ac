#include "EditorWindow.h"

#include "EditorDesk.h"
#include "NSWindow.h"

std::shared_ptr<NSWindow> windowForEditor(Display& display, const std::shared_ptr<NSView>& editor,
                                          const std::string& title, const std::shared_ptr<NSView>& strip) {
  const auto desk = std::make_shared<EditorDesk>(editor, strip);
  const NSSize size = desk->frame().size;
  const NSRect screen = display.screens().front();
  const NSRect centred = NSMakeRect((NSWidth(screen) - size.width) / 2, (NSHeight(screen) - size.height) / 2,
                                    size.width, size.height);
  auto window =
      std::make_shared<NSWindow>(centred, NSTitledWindowMask, NSBackingStoreBuffered, false, &display);
  window->setTitle(title);
  window->setContentView(desk);
  window->setInitialFirstResponder(editor.get());
  return window;
}
