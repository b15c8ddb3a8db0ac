#include <cmath>
#include <limits>

#include "BundleFixture.h"
#include "NSArchiver.h"
#include "NSException.h"
#include "NSUnarchiver.h"
#include "jxAURotaryKnob.h"

namespace {

class KnobArchiveTests : public BundleFixture {
 protected:
  static std::shared_ptr<jxAURotaryKnob> restored(const std::string& data) {
    return std::dynamic_pointer_cast<jxAURotaryKnob>(NSUnarchiver::unarchiveObjectWithData(data));
  }
  static std::string archive(const jxAURotaryKnob& knob) {
    return NSArchiver::archivedDataWithRootObject(knob);
  }
  std::shared_ptr<jxAURotaryKnob> knob_ = std::make_shared<jxAURotaryKnob>(NSMakeRect(3, 4.5f, 41, 50));
};

TEST_F(KnobArchiveTests, aRestoredKnobIsWhatWasArchived) {
  knob_->setMin_max(20, 20000);
  knob_->setLogarithmic(true);
  knob_->setDoubleValue(440);
  knob_->setNumberOfTickMarks(11);
  knob_->showEndpoints(true);
  knob_->setTag(-5);
  knob_->setHidden(true);
  knob_->setKnobColor(std::make_shared<NSColor>(0.1f, 0.2f, 0.3f, 0.4f));
  knob_->setMarkerColor(knob_->knobColor());
  const auto copy = restored(archive(*knob_));
  EXPECT_EQ(copy->frame(), knob_->frame());
  EXPECT_TRUE(copy->isHidden());
  EXPECT_EQ(copy->tag(), -5);
  EXPECT_TRUE(copy->knobColor()->isEqual(knob_->knobColor().get()));
  EXPECT_EQ(copy->markerColor(), copy->knobColor());
  EXPECT_TRUE(copy->logarithmic());
  EXPECT_EQ(copy->doubleValue(), knob_->doubleValue());
  EXPECT_EQ(copy->maxValue(), 20000);
  EXPECT_EQ(copy->numberOfTickMarks(), 11);
  EXPECT_TRUE(copy->endpoints());
  EXPECT_EQ(archive(*copy), archive(*knob_));
  knob_->setHidden(false);
  copy->setHidden(false);
  EXPECT_EQ(differences(drawn(*copy), drawn(*knob_), copy->bounds()), 0);  // the centre, too
}

TEST_F(KnobArchiveTests, aRestoredKnobTurns) {
  knob_->setMin_max(0, 10);
  const auto copy = restored(archive(*knob_)), made = std::make_shared<jxAURotaryKnob>(knob_->frame());
  made->setMin_max(0, 10);
  for (const auto& knob : {copy, made}) {
    const auto window = showInside({300, 200}, knob);
    press(*knob);
    display_.moveBy(0, 30);
    advance(0.2);
    display_.release();
  }
  EXPECT_GT(copy->doubleValue(), 0);
  EXPECT_EQ(copy->doubleValue(), made->doubleValue());
}

TEST_F(KnobArchiveTests, whatCannotBeAKnobIsCorrectedOrRefused) {
  knob_->setMin_max(1, 10);
  knob_->setLogarithmic(true);
  knob_->setMin_max(0, 10);  // has no logarithm any more
  const auto linear = restored(archive(*knob_));
  EXPECT_FALSE(linear->logarithmic());
  linear->setDoubleValue(5);
  EXPECT_EQ(linear->doubleValue(), 5);

  std::string data = archive(*knob_);
  const size_t position = data.find('i', data.find("NSColor") + 60);  // the tick count follows the position
  ASSERT_EQ(data[position - 9], 'd');
  const std::pair<double, double> positions[] = {{7, 10}, {-1, 0}, {std::nan(""), 0}};
  for (const auto& [written, value] : positions) {
    data.replace(position - 8, 8, reinterpret_cast<const char*>(&written), 8);
    EXPECT_EQ(restored(data)->doubleValue(), value) << written;
  }
  data.replace(data.find("NSColor"), 7, "NSCocoa");
  EXPECT_THROW(restored(data), NSException);
  knob_->setMarkerColor(nullptr);
  EXPECT_THROW(restored(archive(*knob_)), NSException);
}

}  // namespace
