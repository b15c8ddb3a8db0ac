#include "jxValueKnob.h"

#include "BundleFixture.h"

namespace {

class ValueKnobTests : public BundleFixture {
 protected:
  std::shared_ptr<jxValueKnob> make(float min, float max, float value, float standard = 0) {
    auto view = std::make_shared<jxValueKnob>(NSMakeRect(0, 0, 92, 76), "name", "ms", false, min, max, value,
                                              standard);
    view->setTarget_action(target_.get(), NSSelectorFromString("turned:"));
    return view;
  }
  static jxAURotaryKnob& knobOf(jxValueKnob& view) { return *all<jxAURotaryKnob>(view).front(); }
  static NSTextField& fieldOf(jxValueKnob& view) { return *all<NSTextField>(view).back(); }

  std::shared_ptr<Recorder> target_ = std::make_shared<Recorder>();
};

TEST_F(ValueKnobTests, typing) {
  const struct {
    const char* typed;
    NSKey end;
    const char* text;
    float value;
    Lines heard;
  } rows[] = {
      {"30", NSKey::tab, "30", 30, {"turned: 30.00"}},
      {"30", NSKey::enter, "30", 30, {"turned: 30.00", "turned: 30.00"}},  // the end of typing and Return
      {"999", NSKey::tab, "100", 100, {"turned: 100.00"}},
      {"-1e9", NSKey::tab, "-50", -50, {"turned: -50.00"}},
      {"12.345678", NSKey::tab, "12.345", 12.345f, {"turned: 12.35"}},
      {"12 ms", NSKey::tab, "12", 12, {"turned: 12.00"}},
      {"abc", NSKey::tab, "20", 20, {}},
      {"abc", NSKey::enter, "20", 20, {}},
      {"", NSKey::enter, "20", 20, {"turned: 20.00", "turned: 20.00"}},  // Return on the unchanged value
      {"", NSKey::tab, "20", 20, {}},
      {"77", NSKey::escape, "20", 20, {}},
  };
  for (const auto& row : rows) {
    const auto view = make(-50, 100, 20);
    const auto window = showInside({400, 200}, view);
    NSTextField& field = fieldOf(*view);
    press(field);
    display_.release();
    EXPECT_TRUE(field.isEditing());
    display_.type(row.typed);
    EXPECT_EQ(target_->take(), Lines{}) << "before the end";
    display_.key(row.end);
    EXPECT_FALSE(field.isEditing());
    EXPECT_EQ(field.stringValue(), row.text) << row.typed;
    EXPECT_NEAR(view->floatValue(), row.value, 1e-5) << row.typed;
    EXPECT_EQ(target_->take(), row.heard) << row.typed;
  }
}

TEST_F(ValueKnobTests, aPressOnTheViewEndsTypingAndWrites) {
  const auto view = make(0, 100, 20);
  const auto window = showInside({400, 200}, view);
  press(fieldOf(*view));
  display_.release();
  display_.type("64");
  const NSPoint corner = window->convertBaseToScreen(view->convertPoint_toView({1, 40}, nullptr));
  display_.press(corner);
  display_.release();
  EXPECT_EQ(target_->take(), Lines{"turned: 64.00"});
  EXPECT_EQ(window->firstResponder(), view.get());
}

TEST_F(ValueKnobTests, automationDoesNotOverwriteTyping) {
  const auto view = make(0, 100, 20);
  const auto window = showInside({400, 200}, view);
  press(fieldOf(*view));
  display_.release();
  display_.type("7");
  view->setFloatValue(50);
  EXPECT_EQ(fieldOf(*view).stringValue(), "7");
  EXPECT_EQ(view->floatValue(), 50) << "the knob itself follows";
  display_.type("5");
  display_.key(NSKey::escape);
  EXPECT_EQ(fieldOf(*view).stringValue(), "50");
  EXPECT_EQ(target_->take(), Lines{});
}

TEST_F(ValueKnobTests, turningShowsTheValueAndTellsTheTarget) {
  const auto view = make(0, 10, 5);
  const auto window = showInside({600, 300}, view);
  for (const bool integer : {false, true}) {
    view->setFloatValue(5);
    view->setIntegerOnly(integer);
    press(knobOf(*view));
    display_.moveBy(0, 10);  // 100 points count as one unit of drag: 5 + 10 x 0.0316228
    advance(0.05);
    EXPECT_EQ(fieldOf(*view).stringValue(), integer ? "5" : "5.3162");
    EXPECT_EQ(target_->sender, view.get());
    EXPECT_EQ(target_->take(), (Lines{"beginAction:", integer ? "turned: 5.00" : "turned: 5.32"}));
    display_.release();
    EXPECT_EQ(target_->take(), (Lines{"endAction:", integer ? "turned: 5.00" : "turned: 5.32"}));
  }
}

}  // namespace
