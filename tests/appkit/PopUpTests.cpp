#include "MenuTracking.h"
#include "NSPopUpButton.h"
#include "NSTextField.h"
#include "ViewBench.h"

namespace {

/// Is the target: writes down which item was chosen; its title, if it was the sender.
class PopUp : public ViewBench, public NSObject {
 protected:
  PopUp() {
    window->setContentSize({400, 300});
    make({"alpha", "beta", "beta", "Gamma"}, false);
    drawn();
  }
  const Class& isa() const override {
    static const Class c = Class::of<NSObject>("PopUp", NSObject::record()).answers<&PopUp::act>("act:");
    return c;
  }
  void act(NSObject* sender) {
    const auto* item = dynamic_cast<NSMenuItem*>(sender);
    const std::string from = item ? item->title() : std::to_string(button->indexOfSelectedItem());
    actions.push_back(from + (isOpen() ? " too early" : ""));
    onAction();
  }
  void make(const Lines& titles, bool pullsDown) {
    button = std::make_shared<NSPopUpButton>(NSMakeRect(40, 250, 83, 16), pullsDown);
    button->addItemsWithTitles(titles);
    button->setTarget(this);
    button->setAction(NSSelectorFromString("act:"));
    root->addSubview(button);
  }
  bool isOpen() const {
    const bool isTracking = NSRunLoop::currentRunLoop().currentMode() == NSEventTrackingRunLoopMode;
    EXPECT_EQ(isTracking, MenuTracking::current() != nullptr);
    return isTracking;
  }
  bool wantsKeyboard() { return display.windows()[0]->isKeyboardWanted(); }
  /// The number of a row, 'b' for the button, 'o' for beside both.
  NSPoint placeOf(char name) const {
    const float below = name == 'b' ? -8 : 14 + 16 * static_cast<float>(name - '0');
    return name == 'o' ? NSPoint{450, 380} : NSPoint{170, NSMinY(button->frame()) + 100 - below};
  }
  /// Before a place: '-' a press, '>' a drag, '~' motion. '^' releases; keys are capitals, the rest is typed.
  void play(std::string_view script) {
    constexpr std::string_view keys = "_RTE____UDHL", places = "->~";  // Return, Tab, Escape, ...
    for (size_t i = 0; i < script.size(); ++i) {
      const char c = script[i];
      const NSPoint at = placeOf(places.find(c) < 99 ? script[++i] : 'o'), from = display.pointer();
      if (c == '-') display.press(at);
      if (c == '>') moveBy(at.x - from.x, at.y - from.y);
      if (c == '~') client().displayPointerMoved({at.x - 100, at.y - 100});
      if (c == '^') release();
      if (keys.find(c) < 99) display.key(static_cast<NSKey>(keys.find(c)));
      if (c == ' ' || (c >= 'a' && c <= 'z')) display.type({c});
    }
  }

  Lines actions;
  std::function<void()> onAction = [] {};
  std::shared_ptr<NSPopUpButton> button;
};

}  // namespace

TEST_F(PopUp, ChoosesAsPressesAndKeysSay) {
  constexpr int none = -1, open = -2;  // else the item that is chosen
  const std::pair<const char*, int> cases[] = {
      {"-b>1^", 1},      {"-b^-2^", 2},    {"-b^-0>3^", 3},  {"-b>0^", 0},       {"-b^", open},
      {"-b>1>b^", open}, {"-b^-b^", none}, {"-b^-o^", none}, {"-b^-o>1^", none}, {"-b>1>o^", none},
      {"-b>1E^", none},  {"-b^R", none},   {"-b>2R^", 2},    {"-b^D ", 0},       {"-b^DDR", 1},
      {"-b^UUR", 0},     {"-b^LUR", 2},    {"-b^HDR", 1},    {"-b^LDR", 3},      {"-b^gxR", 3},
      {"-b^bbR", 2},     {"-b^bbbR", 1},   {"-b^~2R", 2},    {"-b^~2~oR", none}, {"-b^D~oR", 0}};
  for (const float y : {250.0f, 20.0f}) {  // the menu is a layer, or a window
    button->setFrame(NSMakeRect(40, y, 83, 16));
    for (const auto& [script, result] : cases) {
      button->selectItemAtIndex(0);
      play(script);
      const Lines expected = result < 0 ? Lines{} : Lines{std::to_string(result)};
      EXPECT_EQ(std::exchange(actions, {}), expected) << script;
      EXPECT_EQ(button->indexOfSelectedItem(), std::max(0, result)) << script;
      EXPECT_TRUE(isOpen() == (result == open) && wantsKeyboard() == (result == open)) << script;
      EXPECT_EQ(display.windows().size(), result == open && y < 100 ? 2u : 1u) << script;
      EXPECT_EQ(taken(), Lines{}) << script;  // other views saw nothing of it
      play("^E");
      taken();
    }
  }
}

TEST_F(PopUp, APullDownKeepsItsTitleAndAnItemsOwnActionComesFirst) {
  make({"title", "1/4", "1/8"}, true);
  button->itemAtIndex(2)->setTarget(this);
  button->itemAtIndex(2)->setAction(NSSelectorFromString("act:"));
  button->itemAtIndex(2)->setAttributedTitle(NSAttributedString("1/8.", {}));
  play("-b>0^-b^DDR");  // row 0 is item 1
  EXPECT_EQ(actions, (Lines{"0", "1/8."}));
  EXPECT_EQ(button->stringValue(), "title");
  make({"only a title"}, true);
  play("-b");
  EXPECT_FALSE(isOpen());
}

TEST_F(PopUp, HoweverTheMenuGoesNothingIsChosen) {
  const NSRect aside = NSMakeRect(900, 100, 50, 50);
  const auto other =
      std::make_shared<NSWindow>(aside, NSTitledWindowMask, NSBackingStoreBuffered, false, &display);
  other->orderFront(nullptr);
  button->setFrame(NSMakeRect(40, 20, 83, 16));  // the menu is a window
  const std::function<void()> ways[] = {
      [&] {
        display.press({920, 120}), release();
      },
      [&] { root->setHidden(true), root->setHidden(false); },
      [&] { button->removeFromSuperview(), root->addSubview(button); },
      [&] { button->setMenu(button->menu()); },
      [&] { display.windows()[2]->client().displayClosed(); },
      [&] { display.windows()[2]->client().displayChangedVisibility(false); },
      [&] { client().displayChangedKeyboard(false); },
      [&] { client().displayChangedVisibility(false), client().displayChangedVisibility(true); },
      [&] { client().displayChangedFrame(NSMakeRect(100, 100, 400, 310)); },
      [&] { window->close(), window->makeKeyAndOrderFront(); },
      [&] { root.reset(), window.reset(); },
  };
  for (const auto& go : ways) {
    play("-b>1");
    ASSERT_TRUE(isOpen()) << &go - ways;
    go();
    release();
    EXPECT_TRUE(!isOpen() && actions.empty() && display.windows().size() == (window ? 2 : 1)) << &go - ways;
  }
}

TEST_F(PopUp, TheActionMayTakeTheButtonAndItsWindowAway) {
  onAction = [this] { root->setHidden(true), button.reset(), root.reset(), window.reset(); };
  play("-b^-1^");
  EXPECT_EQ(actions, Lines{"1"});
}

TEST_F(PopUp, TabStopsAtIt) {
  const auto field = std::make_shared<NSTextField>(NSMakeRect(350, 280, 60, 16));
  root->addSubview(field);
  play("-o^T");
  EXPECT_TRUE(window->firstResponder() == button.get() && wantsKeyboard());
  play("DDR ETxTR");  // the first arrow opens
  EXPECT_EQ(actions, Lines{"1"});
  EXPECT_EQ(field->stringValue(), "x");
  EXPECT_TRUE(isOpen());
  play("EE");
  EXPECT_FALSE(window->firstResponder() || wantsKeyboard());
}

TEST_F(PopUp, AMenuStaysOnTheScreenAndScrollsIfItIsHigher) {
  const auto placed = [](float height, NSPoint at) {
    return MenuTracking::panelFrame({100, height}, {at, {83, 16}}, NSMakeRect(-200, 100, 1000, 600));
  };
  EXPECT_EQ(placed(100, {0, 400}), NSMakeRect(0, 298, 100, 100));
  EXPECT_EQ(placed(100, {750, 200}), NSMakeRect(696, 218, 100, 100));    // above
  EXPECT_EQ(placed(900, {-210, 400}), NSMakeRect(-196, 104, 100, 592));  // over the button
  for (int i = 4; i < 99; ++i) button->addItemWithTitle("item " + std::to_string(i));
  button->addItemWithTitle("an item with a title that is very much wider than the button is");
  const auto chosen = [&](float y, float thenY, int wheel) {  // held at y for a while, released elsewhere
    play("-b");
    moveBy(0, y - display.pointer().y);
    advance(4);
    for (int i = 0; i < wheel; ++i) display.wheel({180, 600}, -1);
    moveBy(0, thenY - display.pointer().y);
    release();
    return button->indexOfSelectedItem();
  };
  EXPECT_EQ(chosen(24, 24, 60), 99);
  EXPECT_EQ(chosen(24, 24, 0), 99);  // it opens where the selection is
  EXPECT_EQ(chosen(1190, 1180, 0), 0);
  EXPECT_EQ(chosen(1, 24, 0), 99);
  EXPECT_EQ(NSRunLoop::currentRunLoop().timerCount(), 0u);
  play("-b^");
  EXPECT_TRUE(isOpen());  // though an item is under the pointer
  EXPECT_GT(NSWidth(display.windows()[1]->frame()), 300);
}

TEST_F(PopUp, ShowsWhatIsMarkedAndHighlighted) {
  const auto grey = [this](float x, float row) { return at(*window->snapshot(), x, 236 - 16 * row)[1]; };
  button->selectItemAtIndex(1);
  play("-b>2");
  turn();
  play(">3");
  turn();
  for (const float row : {0.0f, 1.0f, 2.0f, 3.0f}) {
    EXPECT_EQ(grey(115, row) < 230, row == 3) << row;
    EXPECT_EQ(grey(56, row) < 160, row == 1) << row;
  }
  play("E");
  turn();
  EXPECT_TRUE(grey(56, 1) == 255 && grey(32, 2) == 255);  // the shadow is gone, too
}
