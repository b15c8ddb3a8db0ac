// The sample delay's editor on its live effect, through the module as a host loads it.

#include <cmath>
#include <stdexcept>

#include "AUCocoaUIBase.h"
#include "AppKitClasses.h"
#include "BundleFixture.h"
#include "NSTextField.h"
#include "RegisterEffects.h"
#include "TestUnit.h"

namespace {

class SampleDelayEditorTests : public BundleFixture {
 protected:
  SampleDelayEditorTests() {
    NSRegisterAppKitClasses();
    RegisterEffects();
    std::string error;
    bundle_ = NSBundle::bundleWithPath(TOVIN_BUNDLE, error);
    if (!bundle_ || !bundle_->load(error)) throw std::runtime_error(error);
    unit_ = openSampleDelay();
    window_ = show(editorFor(unit_));
  }

  static Unit openSampleDelay() {
    const ComponentDescription wanted{FourCharCode("aufx"), FourCharCode("sdly"), FourCharCode("Tovn")};
    return openUnit(FindNextComponent(nullptr, &wanted));
  }
  std::shared_ptr<NSView> editorFor(const Unit& unit) const {
    const auto factory = bundle_->principalClass()->make();
    return dynamic_cast<AUCocoaUIBase&>(*factory).uiViewForAudioUnit_withSize(unit.get(), {});
  }
  NSView& editor() const { return *window_->contentView(); }
  NSControl& knob() const { return dynamic_cast<NSControl&>(*find(editor(), "jxAURotaryKnob")); }
  NSTextField& field() const { return *all<NSTextField>(editor()).back(); }

  std::shared_ptr<NSBundle> bundle_;
  Unit unit_;
  std::shared_ptr<NSWindow> window_;
};

TEST_F(SampleDelayEditorTests, everyTextIsInsideItsField) {
  for (const float scale : {1.0f, 1.5f, 2.0f}) {
    const OffscreenDisplay display(scale);
    for (const float value : {0.0f, 38888.0f, 44100.0f}) {
      hostSets(unit_, 0, value);
      const auto view = editorFor(unit_);
      const auto fields = all<NSTextField>(*view);
      EXPECT_EQ(fields.size(), 5u);
      for (const NSTextField* text : fields) {
        EXPECT_GE(NSMinX(text->textRect()), 0) << text->stringValue() << " at scale " << scale;
        EXPECT_LE(NSMaxX(text->textRect()), NSWidth(text->bounds()))
            << text->stringValue() << " at scale " << scale;
        EXPECT_TRUE(NSContainsRect(view->bounds(), text->convertRect_toView(text->bounds(), view.get())));
      }
    }
  }
}

TEST_F(SampleDelayEditorTests, automationDrawsTheKnobAndItsFieldAlone) {
  advance(1);
  OffscreenWindow& shown = *display_.windows().front();
  shown.takePresented();
  hostSets(unit_, 0, 12345);
  advance(0.05);
  EXPECT_EQ(knob().floatValue(), 12345);
  EXPECT_EQ(field().stringValue(), "12345");
  const auto presented = shown.takePresented();
  EXPECT_EQ(presented.size(), 2u);
  for (const NSRect& rect : presented) {
    const auto inside = [&](const NSView& view) {
      return NSContainsRect(NSInsetRect(view.convertRect_toView(view.bounds(), nullptr), -1, -1), rect);
    };
    EXPECT_TRUE(inside(knob()) || inside(field()));
  }
}

TEST_F(SampleDelayEditorTests, closingTheWindowDuringADragFreesTheEditorAndTheEffect) {
  press(knob());
  display_.moveBy(0, 10);
  const std::weak_ptr<NSObject> watched = editor().weak_from_this();
  window_->close();
  EXPECT_FALSE(display_.isPointerHidden());
  window_.reset();
  advance(2);
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(valueOf(unit_, 0), 0);
  hostSets(unit_, 0, 5);
  unit_.reset();
  advance(0.1);
  EXPECT_EQ(log_, Lines{});
}

}  // namespace
