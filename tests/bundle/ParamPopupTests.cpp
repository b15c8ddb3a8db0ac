#include "BundleFixture.h"
#include "NSTextField.h"
#include "TestUnit.h"
#include "jxAUParamPopupView.h"

namespace {

class ParamPopupTests : public BundleFixture {
 protected:
  std::shared_ptr<jxAUParamPopupView> hooked(AudioUnitParameterID id) {
    auto view = std::make_shared<jxAUParamPopupView>(NSMakeRect(0, 0, 92, 35));
    view->setAUParameter(addressOf(unit_, id));
    return view;
  }
  static NSPopUpButton& menuOf(NSView& view) { return *all<NSPopUpButton>(view).front(); }

  Unit unit_ = openTestUnit();
};

TEST_F(ParamPopupTests, showsNameAndValueNamesAndFollowsTheParameter) {
  hostSets(unit_, modeParameter, 1);
  const auto view = hooked(modeParameter);
  EXPECT_EQ(all<NSTextField>(*view).front()->stringValue(), "mode");
  EXPECT_EQ(menuOf(*view).frame(), NSMakeRect(4.5f, 2, 83, 16));
  ASSERT_EQ(menuOf(*view).numberOfItems(), 3);
  EXPECT_EQ(menuOf(*view).stringValue(), "soft");  // whatever the value is, until a change is told
  hostSets(unit_, modeParameter, 2);
  advance(0.05);
  EXPECT_EQ(menuOf(*view).stringValue(), "off");
  const std::pair<double, const char*> scales[] = {
      {0.95, "hard"}, {1.6, "hard"}, {1.35, "off"}, {0.49, "soft"}};
  for (const auto& [scale, title] : scales) {  // cut towards zero; beyond the items nothing changes
    view->setCustomScale(scale);
    EXPECT_EQ(menuOf(*view).stringValue(), title) << scale;
  }
}

TEST_F(ParamPopupTests, aChoiceIsWrittenOnceAndChangesWaitWhileTheMenuIsOpen) {
  const auto view = hooked(modeParameter);
  const auto window = showInside({600, 300}, view);
  int writes = 0;
  const auto hear = [](void* count, void*, const AudioUnitEvent*, UInt64, Float32) {
    ++*static_cast<int*>(count);
  };
  AUEventListenerRef listener = nullptr;
  AUEventListenerCreate(hear, &writes, CFRunLoopGetCurrent(), kCFRunLoopDefaultMode, 0, 0, &listener);
  const AudioUnitEvent event = AudioUnitEvent::parameterChange(addressOf(unit_, modeParameter));
  AUEventListenerAddEventType(listener, nullptr, &event);

  press(menuOf(*view));
  display_.release();
  hostSets(unit_, modeParameter, 2);
  advance(1);
  EXPECT_EQ(menuOf(*view).stringValue(), "soft");
  display_.key(NSKey::escape);
  advance(0.05);
  EXPECT_EQ(menuOf(*view).stringValue(), "off");
  EXPECT_EQ(writes, 1);

  press(menuOf(*view));
  display_.moveBy(0, -34);  // to the second item
  display_.release();
  EXPECT_EQ(valueOf(unit_, modeParameter), 1);
  advance(1);
  EXPECT_EQ(menuOf(*view).stringValue(), "hard");
  EXPECT_EQ(writes, 2);
  AUListenerDispose(listener);
}

TEST_F(ParamPopupTests, aParameterWithoutValueNamesHasAnEmptyMenu) {
  const auto view = hooked(gainParameter);
  const auto window = showInside({600, 300}, view);
  press(menuOf(*view));
  EXPECT_FALSE(menuOf(*view).isOpen());
  hostSets(unit_, gainParameter, 1);
  advance(0.05);
  EXPECT_EQ(menuOf(*view).indexOfSelectedItem(), -1);
  EXPECT_EQ(log_, Lines{});
}

}  // namespace
