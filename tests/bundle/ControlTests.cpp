#include <gtest/gtest.h>

#include "ActionLog.h"
#include "EditorStage.h"
#include "jxAUParamPopupView.h"
#include "jxValueKnob.h"

namespace {

class ValueKnob : public testing::Test, public EditorStage {
 protected:
  void make(float min, float max, float value) {
    view =
        std::make_shared<jxValueKnob>(NSMakeRect(0, 0, 92, 76), "name", "ms", false, min, max, value, 0.0f);
    view->setTarget_action(target.get(), NSSelectorFromString("turned:"));
    showInside({600, 300}, view);
  }
  NSTextField& field() const { return *all<NSTextField>(*view).back(); }

  std::shared_ptr<jxValueKnob> view;
  std::shared_ptr<ActionLog> target = std::make_shared<ActionLog>();
};

TEST_F(ValueKnob, TakesWhatIsTyped) {
  const struct {
    const char *typed, *text;
    float value;
    const char* told;
  } rows[] = {{"30<tab>", "30", 30, "turned 30.00"},
              {"999<tab>", "100", 100, "turned 100.00"},
              {"-1e9<return>", "-50", -50, "turned -50.00"},
              {"12.345678 ms<tab>", "12.345", 12.345f, "turned 12.35"},
              {"abc<return>", "20", 20, ""},
              {"<return>", "20", 20, "turned 20.00"},
              {"<tab>", "20", 20, ""},
              {"77<escape>", "20", 20, ""}};
  for (const auto& row : rows) {
    make(-50, 100, 20);
    play("click .field");
    EXPECT_TRUE(field().isEditing());
    play(std::string("type ") + row.typed);
    EXPECT_FALSE(field().isEditing());
    EXPECT_EQ(field().stringValue(), row.text) << row.typed;
    EXPECT_NEAR(view->floatValue(), row.value, 1e-5) << row.typed;
    EXPECT_EQ(target->take(), row.told) << row.typed;
  }
  play("click .field; type 64");
  EXPECT_EQ(target->take(), "") << "before the end";
  press(view->convertPoint_toView({1, 40}, nullptr));
  EXPECT_EQ(target->take(), "turned 64.00") << "a press beside ends it";
  EXPECT_EQ(window->firstResponder(), view.get());
}

TEST_F(ValueKnob, ReturnsToItsDefaultNotToWhereItBegan) {
  make(-50, 100, 20);
  play("click .knob option");
  EXPECT_EQ(target->take(), "begin, end, turned 0.00");
}

class ParamPopup : public testing::Test, public EditorStage {
 protected:
  ParamPopup() {
    unit = openTestEffect();
    set(modeParameter, 1);
    view->setAUParameter(addressOf(unit, modeParameter));
    showInside({600, 300}, view);
  }
  std::string shown() const { return all<NSPopUpButton>(*view).front()->stringValue(); }

  std::shared_ptr<jxAUParamPopupView> view = std::make_shared<jxAUParamPopupView>(NSMakeRect(0, 0, 92, 35));
};

TEST_F(ParamPopup, ShowsTheNameOfTheValue) {
  EXPECT_EQ(all<NSTextField>(*view).front()->stringValue(), "mode");
  EXPECT_EQ(shown(), "soft") << "whatever the value is, until a change is told";
  set(modeParameter, 2);
  advance(0.05);
  EXPECT_EQ(shown(), "off");
  const std::pair<double, const char*> scales[] = {
      {0.95, "hard"}, {1.6, "hard"}, {1.35, "off"}, {0.49, "soft"}};
  for (const auto& [scale, title] : scales) {  // cut towards zero; beyond the items nothing changes
    view->setCustomScale(scale);
    EXPECT_EQ(shown(), title) << scale;
  }
}

TEST_F(ParamPopup, AChoiceIsWrittenOnceAndChangesWaitWhileTheMenuIsOpen) {
  EXPECT_EQ(play("click .menu; set 3 2; wait 1"), "");
  EXPECT_EQ(shown(), "soft");
  EXPECT_EQ(play("type <escape>; wait 0.05"), "");
  EXPECT_EQ(shown(), "off");
  EXPECT_EQ(play("press .menu; drag 0 -34; release"), "3 = 1") << "down to the second item";
  advance(1);
  EXPECT_EQ(shown(), "hard");
}

}  // namespace
