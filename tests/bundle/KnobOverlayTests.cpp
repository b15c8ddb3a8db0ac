#include <cmath>
#include <numbers>

#include "BundleFixture.h"
#include "jxAUKnobOverlayWindow.h"
#include "jxAURotaryKnob.h"

namespace {

class KnobOverlayTests : public BundleFixture {
 protected:
  static std::shared_ptr<jxAURotaryKnob> knob(NSRect frame, double max = 1000) {
    auto made = std::make_shared<jxAURotaryKnob>(frame);
    made->setMin_max(0, max);
    made->setIntegerOnly(true);
    return made;
  }
  static jxAUKnobOverlayWindow& overlay() { return *jxAURotaryKnob::overlayWindow(); }
};

TEST_F(KnobOverlayTests, itLiesRoundThePressedKnobAndShowsItsValueAndUnit) {
  const auto ground = std::make_shared<NSView>(NSMakeRect(0, 0, 700, 300));
  const auto first = knob(NSMakeRect(300, 100, 40, 40)), second = knob(NSMakeRect(500, 150, 40, 40));
  first->setUnit("smp");
  first->setDoubleValue(441);
  second->setDoubleValue(12);
  ground->addSubview(first);
  ground->addSubview(second);
  const auto window = show(ground);

  press(*first);
  EXPECT_EQ(overlay().view().text(), "441 smp");
  EXPECT_EQ(NSMaxX(overlay().frame()), 200 + 340 + 15) << "the ring is round the knob";
  EXPECT_EQ(NSMinY(overlay().frame()), 300 + 100 - 15);
  second->setDoubleValue(13);
  EXPECT_EQ(overlay().view().text(), "441 smp") << "another knob's value";
  first->setDoubleValue(500);
  EXPECT_EQ(overlay().view().text(), "500 smp");
  EXPECT_EQ(display_.windows().size(), 1u) << "inside the window it is a layer";
  display_.release();
  EXPECT_FALSE(overlay().isVisible());
  EXPECT_FALSE(overlay().ownerIsEqualTo(first.get()));
  first->setDoubleValue(1);
  EXPECT_EQ(overlay().view().text(), "500 smp");

  press(*second);
  EXPECT_EQ(overlay().view().text(), "13");
  EXPECT_EQ(overlay().frame(), NSMakeRect(200 + 500 - 110, 300 + 150 - 15, 165, 70));
  display_.release();

  NSObject stranger;
  const NSRect before = overlay().frame();
  overlay().orderFront(&stranger);
  EXPECT_EQ(overlay().frame(), before);
  EXPECT_TRUE(overlay().ownerIsEqualTo(&stranger));
  overlay().orderOut(nullptr);
}

}  // namespace
