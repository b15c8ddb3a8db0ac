#include "jxAURotaryKnob.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "EditorStage.h"
#include "NSTextField.h"
#include "jxValueKnob.h"

namespace {

TEST(RotaryKnob, ShowsAValueOfItsRangeAtItsPosition) {
  const struct {
    double min, max;
    bool logarithmic, integer;
    double set, value, position;
  } rows[] = {{-12, 12, false, false, 6, 6, 0.75}, {0, 100, false, false, 130, 100, 1},
              {0, 100, false, false, -1, 0, 0},    {20, 20000, true, false, 632.45553203, 632.45553203, 0.5},
              {1, 100, true, true, 10, 10, 0.5},   {-10, 10, false, true, -2.5, -3, 0.375},
              {0, 10, true, false, 5, 5, 0.5}};  // cannot be logarithmic
  for (const auto& row : rows) {
    const auto knob = std::make_shared<jxAURotaryKnob>(NSMakeRect(0, 0, 41, 41));
    knob->setMin_max(row.min, row.max);
    knob->setLogarithmic(row.logarithmic);
    knob->setIntegerOnly(row.integer);
    knob->setDoubleValue(row.set);
    EXPECT_NEAR(knob->doubleValue(), row.value, 1e-6) << row.set;
    EXPECT_EQ(knob->logarithmic(), row.logarithmic && row.min > 0);
    knob->setIntegerOnly(false);
    knob->setLogarithmic(false);  // the position stays
    EXPECT_NEAR((knob->doubleValue() - row.min) / (row.max - row.min), row.position, 1e-9) << row.set;
  }
}

TEST(RotaryKnob, ItsWedgeLeadsFromTheBeginningOrTheMiddleToTheValue) {
  constexpr int angles[] = {235, 215, 120, 95, 85, 60, -35, -55};  // counter-clockwise from the right
  const struct {
    bool panStyle;
    double position;
    const char* filled;  // one letter for each angle
  } rows[] = {
      {false, 0, "--------"}, {false, 0.5, "-xxx----"}, {true, 0.25, "--xx----"}, {true, 1, "----xxx-"}};
  for (const auto& row : rows) {
    const auto knob = std::make_shared<jxAURotaryKnob>(NSMakeRect(0, 0, 41, 41));
    knob->setMin_max(0, 1);
    knob->setPanStyle(row.panStyle);
    knob->setDoubleValue(row.position);
    knob->setMarkerColor(colorOf(red));
    const Bitmap picture = drawn(*knob, 2);
    std::string filled;
    for (const int angle : angles) {
      const double radians = angle * std::numbers::pi / 180;
      const auto x = static_cast<float>(20.5 + 15 * std::cos(radians));
      const auto y = static_cast<float>(20.5 + 15 * std::sin(radians));
      filled += at(picture, x, y) == red ? 'x' : '-';
    }
    EXPECT_EQ(filled, row.filled) << (row.panStyle ? "pan " : "") << row.position;
  }
}

TEST(ValueKnob, LimitsWhatIsTyped) {
  EditorStage stage;
  const auto knob = std::make_shared<jxValueKnob>(NSMakeRect(0, 0, 92, 76), "name", "ms", false, -50.0f,
                                                  100.0f, 20.0f, 0.0f);
  stage.show(knob);
  stage.play("click .field; type 999<return>");
  EXPECT_EQ(all<NSTextField>(*knob).back()->stringValue(), "100");
}

}  // namespace
