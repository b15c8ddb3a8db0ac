#include "MenuTracking.h"
#include "NSPopUpButton.h"
#include "NSTextField.h"
#include "ViewBench.h"

namespace {

/// Is the target: writes down which item was chosen.
class PopUp : public ViewBench, public NSObject {
 protected:
  PopUp() {
    window->setContentSize({400, 300});
    button->addItemsWithTitles({"alpha", "beta", "beta", "Gamma"});
    button->setTarget(this);
    button->setAction(NSSelectorFromString("act:"));
    root->addSubview(button);
    drawn();
  }
  const Class& isa() const override {
    static const Class c = Class::of<NSObject>("PopUp", NSObject::record()).answers<&PopUp::act>("act:");
    return c;
  }
  void act(NSObject*) {
    actions.push_back(std::to_string(button->indexOfSelectedItem()));
    EXPECT_FALSE(isOpen());
    onAction();
  }
  bool isOpen() const {
    const bool isTracking = NSRunLoop::currentRunLoop().currentMode() == NSEventTrackingRunLoopMode;
    EXPECT_EQ(isTracking, MenuTracking::current() != nullptr);
    return isTracking;
  }
  bool wantsKeyboard() { return display.windows()[0]->isKeyboardWanted(); }
  /// The number of a row, "button", or "out" for beside both.
  NSPoint place(const std::string& name) override {
    if (name == "out") return {350, 280};
    const float below = name == "button" ? -8 : 14 + 16 * std::stof(name);
    return {70, NSMinY(button->frame()) - below};
  }
  Lines heard() override { return std::exchange(actions, {}); }

  Lines actions;
  std::function<void()> onAction = [] {};
  std::shared_ptr<NSPopUpButton> button = std::make_shared<NSPopUpButton>(NSMakeRect(40, 250, 83, 16), false);
};

}  // namespace

TEST_F(PopUp, ChoosesAsPressesAndKeysSay) {
  constexpr int none = -1, open = -2;  // else the item that is chosen
  const std::pair<const char*, int> cases[] = {
      {"press button; drag to 1; release", 1},
      {"click button; click 2", 2},
      {"click button", open},
      {"click button; click button", none},
      {"click button; click out", none},
      {"press button; drag to 1; drag to out; release", none},
      {"click button; type <return>", none},
      {"click button; type <down*2><return>", 1},
      {"click button; type <end><up><return>", 2},
      {"click button; type gx<return>", 3},
      {"click button; type bb<return>", 2},
      {"press button; release; drag to 2; type <return>", 2},
      {"press button; release; drag to 2; drag to out; type <return>", none},
  };
  for (const float y : {250.0f, 20.0f}) {  // the menu is a layer, or a window
    button->setFrame(NSMakeRect(40, y, 83, 16));
    for (const auto& [script, result] : cases) {
      button->selectItemAtIndex(0);
      EXPECT_EQ(play(script), result < 0 ? "" : std::to_string(result)) << script;
      EXPECT_EQ(button->indexOfSelectedItem(), std::max(0, result)) << script;
      EXPECT_TRUE(isOpen() == (result == open) && wantsKeyboard() == (result == open)) << script;
      EXPECT_EQ(display.windows().size(), result == open && y < 100 ? 2u : 1u) << script;
      EXPECT_EQ(taken(), Lines{}) << script;  // other views saw nothing of it
      play("type <escape>");
      taken();
    }
  }
}

TEST_F(PopUp, HoweverTheMenuGoesNothingIsChosen) {
  const NSRect aside = NSMakeRect(900, 100, 50, 50);
  const auto other =
      std::make_shared<NSWindow>(aside, NSTitledWindowMask, NSBackingStoreBuffered, false, &display);
  other->orderFront(nullptr);
  button->setFrame(NSMakeRect(40, 20, 83, 16));  // the menu is a window
  const std::function<void()> ways[] = {
      [&] { display.press(NSMakePoint(920, 120)); },
      [&] { root->setHidden(true), root->setHidden(false); },
      [&] { button->removeFromSuperview(), root->addSubview(button); },
      [&] { display.windows()[2]->client().displayClosed(); },
      [&] { client().displayChangedKeyboard(false); },
      [&] { client().displayChangedVisibility(false), client().displayChangedVisibility(true); },
      [&] { window->close(), window->makeKeyAndOrderFront(); },
      [&] { root.reset(), window.reset(); },
  };
  for (const auto& go : ways) {
    play("press button; drag to 1");
    ASSERT_TRUE(isOpen()) << &go - ways;
    go();
    release();
    EXPECT_TRUE(!isOpen() && actions.empty() && display.windows().size() == (window ? 2 : 1)) << &go - ways;
  }
}

TEST_F(PopUp, TheActionMayTakeTheButtonAndItsWindowAway) {
  onAction = [this] { root->setHidden(true), button.reset(), root.reset(), window.reset(); };
  EXPECT_EQ(play("click button; click 1"), "1");
}

TEST_F(PopUp, TabStopsAtIt) {
  const auto field = std::make_shared<NSTextField>(NSMakeRect(350, 280, 60, 16));
  root->addSubview(field);
  play("click out; type <tab>");
  EXPECT_TRUE(window->firstResponder() == button.get() && wantsKeyboard());
  EXPECT_EQ(play("type <down*2><return> <escape><tab>x"), "1");  // the first arrow opens
  EXPECT_EQ(field->stringValue(), "x");
}

TEST_F(PopUp, AMenuStaysOnTheScreenAndScrollsIfItIsHigher) {
  const auto placed = [](float height, NSPoint at) {
    return MenuTracking::panelFrame({100, height}, {at, {83, 16}}, NSMakeRect(-200, 100, 1000, 600));
  };
  EXPECT_EQ(placed(100, {0, 400}), NSMakeRect(0, 298, 100, 100));
  EXPECT_EQ(placed(100, {750, 200}), NSMakeRect(696, 218, 100, 100));    // above
  EXPECT_EQ(placed(900, {-210, 400}), NSMakeRect(-196, 104, 100, 592));  // over the button
  for (int i = 4; i < 100; ++i) button->addItemWithTitle("item " + std::to_string(i));
  const auto chosen = [&](float y, float thenY) {  // held at y for a while, released elsewhere
    play("press button");
    moveBy(0, y - display.pointer().y);
    advance(4);
    moveBy(0, thenY - display.pointer().y);
    release();
    return button->indexOfSelectedItem();
  };
  EXPECT_EQ(chosen(1, 24), 99);
  EXPECT_EQ(chosen(24, 24), 99);  // it opens where the selection is
  EXPECT_EQ(chosen(1190, 1180), 0);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
}

TEST_F(PopUp, ShowsWhatIsMarkedAndHighlighted) {
  const auto grey = [this](float x, float row) { return at(*window->snapshot(), x, 236 - 16 * row)[1]; };
  button->selectItemAtIndex(1);
  play("press button; drag to 2; wait 0.1; drag to 3; wait 0.1");
  EXPECT_TRUE(grey(115, 3) < 230 && grey(115, 2) > 230);
  EXPECT_TRUE(grey(56, 1) < 160 && grey(56, 2) > 160);
  play("type <escape>; wait 0.1");
  EXPECT_TRUE(grey(56, 1) == 255 && grey(32, 2) == 255);  // the shadow is gone, too
}
