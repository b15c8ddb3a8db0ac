#include "jxAURotaryKnob.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "EditorStage.h"
#include "NSArchiver.h"
#include "NSException.h"
#include "NSUnarchiver.h"

namespace {

class RotaryKnob : public testing::Test, public EditorStage {
 protected:
  static std::shared_ptr<jxAURotaryKnob> make(double min, double max, bool logarithmic = false,
                                              bool integer = false) {
    auto made = std::make_shared<jxAURotaryKnob>(NSMakeRect(0, 0, 41, 41));
    made->setMin_max(min, max);
    made->setLogarithmic(logarithmic);
    made->setIntegerOnly(integer);
    return made;
  }
  static std::string archive(const jxAURotaryKnob& knob) {
    return NSArchiver::archivedDataWithRootObject(knob);
  }
  static std::shared_ptr<jxAURotaryKnob> restored(const std::string& data) {
    return std::dynamic_pointer_cast<jxAURotaryKnob>(NSUnarchiver::unarchiveObjectWithData(data));
  }
};

TEST_F(RotaryKnob, ShowsAValueOfItsRangeAtItsPosition) {
  const struct {
    double min, max;
    bool logarithmic, integer;
    double set, value, position;
  } rows[] = {
      {-12, 12, false, false, 6, 6, 0.75},       {0, 100, false, false, 130, 100, 1},
      {0, 100, false, false, -1, 0, 0},          {20, 20000, true, false, 632.45553203, 632.45553203, 0.5},
      {20, 20000, true, false, 99999, 20000, 1}, {0, 10, false, true, 2.5, 3, 0.25},
      {-10, 10, false, true, -2.5, -3, 0.375},   {0, 10, true, false, 5, 5, 0.5},  // cannot be logarithmic
      {1, 100, true, true, 10, 10, 0.5}};
  for (const auto& row : rows) {
    const auto knob = make(row.min, row.max, row.logarithmic, row.integer);
    knob->setDoubleValue(row.set);
    EXPECT_NEAR(knob->doubleValue(), row.value, 1e-6) << row.set;
    EXPECT_EQ(knob->logarithmic(), row.logarithmic && row.min > 0);
    knob->setIntegerOnly(false);
    knob->setLogarithmic(false);  // the position stays
    EXPECT_NEAR((knob->doubleValue() - row.min) / (row.max - row.min), row.position, 1e-9) << row.set;
  }
}

TEST_F(RotaryKnob, ItsWedgeLeadsFromTheBeginningOrTheMiddleToTheValue) {
  constexpr int angles[] = {235, 215, 170, 120, 95,
                            85,  60,  10,  -35, -55};  // counter-clockwise from the right
  const struct {
    bool panStyle;
    double position;
    const char* filled;  // one letter for each angle
  } rows[] = {{false, 0, "----------"}, {false, 0.1, "-x--------"}, {false, 0.5, "-xxxx-----"},
              {false, 1, "-xxxxxxxx-"}, {true, 0.5, "----------"},  {true, 0.25, "---xx-----"},
              {true, 1, "-----xxxx-"}};
  for (const auto& row : rows) {
    const auto knob = make(0, 1);
    knob->setPanStyle(row.panStyle);
    knob->setDoubleValue(row.position);
    knob->setMarkerColor(colorOf(red));
    for (const float scale : {1.0f, 2.0f}) {
      const Bitmap picture = drawn(*knob, scale);
      std::string filled;
      for (const int angle : angles) {
        const double radians = angle * std::numbers::pi / 180;
        const auto probe = [&](double radius) {
          return at(picture, static_cast<float>(20.5 + radius * std::cos(radians)),
                    static_cast<float>(20.5 + radius * std::sin(radians)));
        };
        filled += probe(15) == red ? 'x' : '-';
        // The rim is grey at radius 19.5 wherever the sweep goes, whatever the value.
        const bool onSweep = angle < 225 && angle > -45;
        EXPECT_NEAR(probe(19.5)[3] == 255 ? probe(19.5)[2] : 0, onSweep ? 111 : 0, 3) << angle;
      }
      EXPECT_EQ(filled, row.filled) << (row.panStyle ? "pan " : "") << row.position << " at scale " << scale;
    }
  }
}

TEST_F(RotaryKnob, ComesBackFromAnArchiveAndTurnsOrIsRefused) {
  const auto knob = make(20, 20000, true);
  knob->setDoubleValue(440);
  knob->setNumberOfTickMarks(11);
  knob->showEndpoints(true);
  knob->setKnobColor(colorOf(green));
  knob->setMarkerColor(knob->knobColor());
  const auto copy = restored(archive(*knob));
  EXPECT_EQ(copy->markerColor(), copy->knobColor());
  EXPECT_EQ(archive(*copy), archive(*knob));
  EXPECT_EQ(differences(drawn(*copy), drawn(*knob), copy->bounds()), 0);
  for (const auto& each : {knob, copy}) {
    showInside({300, 200}, each);
    press(*each);
    moveBy(0, 30);
    advance(0.2);
    release();
  }
  EXPECT_GT(copy->doubleValue(), 440);
  EXPECT_EQ(copy->doubleValue(), knob->doubleValue());

  knob->setMin_max(0, 10);  // has no logarithm any more
  EXPECT_FALSE(restored(archive(*knob))->logarithmic());
  knob->setMarkerColor(nullptr);
  EXPECT_THROW(restored(archive(*knob)), NSException);
}

}  // namespace
