// Drags on a Wayland desktop, where the pointer belongs to the compositor.

#include <gtest/gtest.h>

#include <cstdio>

#include "Eventually.h"
#include "OpenedEditor.h"
#include "WaylandDesktop.h"

namespace {

class Wayland : public testing::Test {
 protected:
  Wayland() {
    ground.makeWindow(0, 0, WaylandDesktop::width, WaylandDesktop::height);  // so that X knows of all motion
    editor = std::make_unique<OpenedEditor>("mcmp", Lines{}, Lines{}, desktop.server());
    editor->advance(0.3);
    editor->heard();
  }
  struct Pixel {
    int x, y;  // of the screen
  };
  Pixel pixelOf(const std::string& place) const {
    int x = 0, y = 0, left = 0, top = 0;
    Window child = None;
    std::sscanf(editor->pixelAt(place).c_str(), "%d,%d", &x, &y);
    XTranslateCoordinates(ground.x(), editor->window, ground.root(), x, y, &left, &top, &child);
    return {left, top};
  }
  void pointAt(const std::string& place) {
    const Pixel at = pixelOf(place);
    desktop.pointTo(at.x, at.y);
    editor->advance(0.1);
  }
  /// As a hand does it: in steps of 3 pixels, 100 a second.
  void drag(int dx, int dy) {
    desktop.press();
    editor->advance(0.05);
    const int steps = (std::abs(dx) + std::abs(dy)) / 3;
    for (int i = 0; i < steps; ++i) {
      desktop.moveBy(dx / static_cast<double>(steps), dy / static_cast<double>(steps));
      editor->advance(0.01);
    }
    editor->advance(0.06);  // a tick of the knob
    desktop.release();
  }
  void expectPointerAt(Pixel place) {
    // X is told where the compositor's pointer is with the next motion; nothing holds it any more.
    for (const Pixel expected : {place, Pixel{5, 5}}) {
      editor->advance(0.1);
      if (expected.x == 5) desktop.pointTo(5, 5);
      desktop.moveBy(1, 0);
      desktop.moveBy(-1, 0);
      editor->advance(0.1);
      int x = 0, y = 0;
      std::sscanf(ground.pointer().c_str(), "%d,%d", &x, &y);
      EXPECT_NEAR(x, expected.x, 1);
      EXPECT_NEAR(y, expected.y, 1);
    }
  }

  WaylandDesktop desktop;
  X11User ground{desktop.server()};
  std::unique_ptr<OpenedEditor> editor;
};

TEST_F(Wayland, QuickDragsOfAKnobAllTurnIt) {
  const std::string knob = "preGain.knob";  // its display hangs over the window's edge
  pointAt(knob);
  for (int i = 0; i < 10; ++i) {
    drag(0, i % 2 ? 15 : -15);
    editor->advance(0.2);
    EXPECT_EQ(editor->heard().size(), 1u) << "drag " << i;
  }
  expectPointerAt(pixelOf(knob));
}

TEST_F(Wayland, AKnobsPointerIsWhereItWasPressedAlsoAfterADragOutOfTheWindow) {
  const std::string knob = "postGain.knob";
  pointAt(knob);
  drag(-300, 0);
  expectPointerAt(pixelOf(knob));
  EXPECT_EQ(editor->heard().size(), 1u);
}

TEST_F(Wayland, AHandlesPointerEndsWhereItWasDraggedTo) {
  const Pixel handle = pixelOf("crossoverView#0");
  pointAt("crossoverView#0");
  drag(90, 0);
  expectPointerAt({handle.x + 90, handle.y});
}

}  // namespace
