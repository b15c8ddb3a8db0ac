#include "EditorFixture.h"

#include <stdexcept>

#include "jxAppleAUGUI_ViewFactory.h"

EditorTest::~EditorTest() {
  close();
}

void EditorTest::open(const std::string& subtype) {
  OSType code = 0;
  for (const char c : subtype) code = code << 8 | static_cast<unsigned char>(c);
  const ComponentDescription wanted{FourCharCode("aufx"), code, FourCharCode("Tovn")};
  open(FindNextComponent(nullptr, &wanted));
}

void EditorTest::open(Component component) {
  unit = openUnit(component);
  const auto view = std::make_shared<jxAppleAUGUI_ViewFactory>()->uiViewForAudioUnit_withSize(unit.get(), {});
  if (!view) throw std::runtime_error("there is no editor");
  show(view);
}

void EditorTest::show(const std::shared_ptr<NSView>& view) {
  editor = view;
  window = std::make_shared<NSWindow>(NSRect{{100, 100}, view->frame().size}, NSTitledWindowMask,
                                      NSBackingStoreBuffered, false);
  window->setContentView(view);
  window->setInitialFirstResponder(view.get());
  window->makeKeyAndOrderFront();
  advance(0.2);
  takeDamage();
}

void EditorTest::close() {
  if (window) window->close();
  window.reset();
  editor.reset();
  advance(2);  // an end-stop timer may still hold a knob
  unit.reset();
}

unsigned EditorTest::colorAt(NSPoint p) const {
  const auto [r, g, b, a] = at(*window->snapshot(), p.x, p.y);
  return static_cast<unsigned>(r) << 16 | static_cast<unsigned>(g) << 8 | b;
}
