#include "jxAURotaryKnob.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "BundleFixture.h"
#include "NSGraphicsContext.h"

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class RotaryKnobTests : public BundleFixture {
 protected:
  static std::shared_ptr<jxAURotaryKnob> knob(double min, double max, bool logarithmic = false,
                                              bool integer = false) {
    auto made = std::make_shared<jxAURotaryKnob>(NSMakeRect(0, 0, 41, 41));
    made->setMin_max(min, max);
    made->setLogarithmic(logarithmic);
    made->setIntegerOnly(integer);
    return made;
  }
  /// The value over 0 to 1 that a linear knob would show there.
  static double position(jxAURotaryKnob& k) {
    k.setIntegerOnly(false);
    k.setLogarithmic(false);
    return (k.doubleValue() - k.minValue()) / (k.maxValue() - k.minValue());
  }
};

TEST_F(RotaryKnobTests, valueAndPosition) {
  const struct {
    double min, max;
    bool logarithmic, integer;
    double set, value, position;
  } rows[] = {
      {0, 100, false, false, 25, 25, 0.25},
      {-12, 12, false, false, 6, 6, 0.75},
      {0, 100, false, false, 130, 100, 1},
      {0, 100, false, false, -1, 0, 0},
      {20, 20000, true, false, 632.45553203, 632.45553203, 0.5},
      {20, 20000, true, false, 20, 20, 0},
      {20, 20000, true, false, 99999, 20000, 1},
      {0, 10, false, true, 2.5, 3, 0.25},
      {-10, 10, false, true, -2.5, -3, 0.375},
      {0, 10, false, true, 2.4, 2, 0.24},
      {0, 10, true, false, 5, 5, 0.5},  // cannot be logarithmic
      {1, 100, true, true, 10, 10, 0.5},
  };
  for (const auto& row : rows) {
    const auto k = knob(row.min, row.max, row.logarithmic, row.integer);
    k->setDoubleValue(row.set);
    EXPECT_NEAR(k->doubleValue(), row.value, 1e-6) << row.set;
    EXPECT_EQ(k->logarithmic(), row.logarithmic && row.min > 0);
    EXPECT_NEAR(position(*k), row.position, 1e-9) << row.set;
  }
}

TEST_F(RotaryKnobTests, rangeIsGuardedAndItsChangeMovesTheValueNotThePosition) {
  const struct {
    bool logarithmic, setsMax;
    double set, min, max;
  } rows[] = {
      // of 10 to 90 at its middle
      {false, false, 20, 20, 90},  {false, false, 50, 50, 90},  {false, false, 51, 10, 90},
      {false, false, 95, 10, 90},  {false, false, -5, -5, 90},  {true, false, 0, 1e-7, 90},
      {false, false, nan, 10, 90}, {false, true, 70, 10, 70},   {false, true, 49, 10, 90},
      {false, true, 10, 10, 90},   {false, true, 200, 10, 200}, {false, true, nan, 10, 90},
  };
  for (const auto& row : rows) {
    const auto k = knob(10, 90, row.logarithmic);
    k->setDoubleValue(row.logarithmic ? 30 : 50);  // the middle of either scale
    row.setsMax ? k->setMaxValue(row.set) : k->setMinValue(row.set);
    EXPECT_EQ(k->minValue(), row.min) << row.set;
    EXPECT_EQ(k->maxValue(), row.max) << row.set;
    EXPECT_NEAR(k->doubleValue(), row.logarithmic ? std::sqrt(row.min * row.max) : (row.min + row.max) / 2,
                1e-9);
  }
}

TEST_F(RotaryKnobTests, wedge) {
  constexpr int angles[] = {235, 215, 170, 120, 95,
                            85,  60,  10,  -35, -55};  // counter-clockwise from the right
  const struct {
    bool panStyle;
    double position;
    const char* filled;  // one letter for each angle
  } rows[] = {
      {false, 0, "----------"},   {false, 0.1, "-x--------"},  {false, 0.25, "-xx-------"},
      {false, 0.5, "-xxxx-----"}, {false, 0.75, "-xxxxxx---"}, {false, 1, "-xxxxxxxx-"},
      {true, 0.5, "----------"},  {true, 0.25, "---xx-----"},  {true, 0, "-xxxx-----"},
      {true, 0.75, "-----xx---"}, {true, 1, "-----xxxx-"},
  };
  for (const auto& row : rows) {
    const auto k = knob(0, 1);
    k->setPanStyle(row.panStyle);
    k->setDoubleValue(row.position);
    k->setMarkerColor(NSColor::colorWithCalibratedRed_green_blue_alpha(1, 0, 0, 1));
    for (const float scale : {1.0f, 2.0f}) {
      const Bitmap picture = drawn(*k, scale);
      std::string filled;
      for (const int angle : angles) {
        const double radians = angle * std::numbers::pi / 180;
        const auto probe = [&](double radius) {
          return at(picture, static_cast<float>(20.5 + radius * std::cos(radians)),
                    static_cast<float>(20.5 + radius * std::sin(radians)));
        };
        filled += probe(15) == Rgba{255, 0, 0, 255} ? 'x' : '-';
        // The rim is grey at radius 19.5 wherever the sweep goes, whatever the value.
        const bool onSweep = angle < 225 && angle > -45;
        EXPECT_NEAR(probe(19.5)[3] == 255 ? probe(19.5)[2] : 0, onSweep ? 111 : 0, 3) << angle;
      }
      EXPECT_EQ(filled, row.filled) << (row.panStyle ? "pan " : "") << row.position << " at scale " << scale;
    }
  }
}

}  // namespace
