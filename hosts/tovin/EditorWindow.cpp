#include "EditorWindow.h"

#include "NSScreen.h"
#include "NSWindow.h"

std::shared_ptr<NSWindow> windowForEditor(const std::shared_ptr<NSView>& editor, const std::string& title,
                                          const std::shared_ptr<NSView>& strip) {
  NSSize size = editor->frame().size;
  std::shared_ptr<NSView> content = editor;
  if (strip) {
    strip->setFrame(NSMakeRect(0, size.height, size.width, NSHeight(strip->frame())));
    size.height += NSHeight(strip->frame());
    content = std::make_shared<NSView>(NSRect{{0, 0}, size});
    content->addSubview(editor);
    content->addSubview(strip);
  }
  const NSRect screen = NSScreen::screens()[0].frame();
  const NSRect centred = NSMakeRect((NSWidth(screen) - size.width) / 2, (NSHeight(screen) - size.height) / 2,
                                    size.width, size.height);
  auto window = std::make_shared<NSWindow>(centred, NSTitledWindowMask, NSBackingStoreBuffered, false);
  window->setTitle(title);
  window->setContentView(content);
  window->setInitialFirstResponder(editor.get());
  return window;
}
