#include "AudioUnitProperties.h"
#include "BundleFixture.h"
#include "TestUnit.h"
#include "jxAUrenderQ.h"

namespace {

class QualityEffect : public AUEffectBase {
 public:
  QualityEffect() : AUEffectBase({.parameters = {}, .presets = {}, .hasRenderQuality = true}) {}

 private:
  void prepare() override {}
  void clear() override {}
  void process(std::span<float* const>, UInt32) override {}
};

Unit openQualityUnit() {
  return openUnit(RegisterComponent(
      {FourCharCode("aufx"), FourCharCode("qlty"), FourCharCode("Test")}, "Test: AUQuality", 1,
      +[]() -> std::unique_ptr<AUEffectBase> { return std::make_unique<QualityEffect>(); }));
}

void setQuality(const Unit& unit, UInt32 quality) {
  AudioUnitSetProperty(unit.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                       sizeof quality);
}

UInt32 qualityOf(const Unit& unit) {
  UInt32 quality = 999, size = sizeof quality;
  AudioUnitGetProperty(unit.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0, &quality,
                       &size);
  return quality;
}

class RenderQualityTests : public BundleFixture {
 protected:
  RenderQualityTests() {
    popUp_->addItemsWithTitles({"maximum", "high", "medium", "low", "minimum", "none"});
  }
  static AudioUnitProperty quality(const Unit& unit) {
    return {unit.get(), kAudioUnitProperty_RenderQuality, kAudioUnitScope_Global, 0};
  }

  Unit first_ = openQualityUnit(), second_ = openQualityUnit();
  std::shared_ptr<jxAUrenderQ> popUp_ = std::make_shared<jxAUrenderQ>(NSMakeRect(0, 0, 92, 16));
};

TEST_F(RenderQualityTests, theMenuFollowsAndWritesThePropertyItIsBoundTo) {
  const auto window = showInside({600, 300}, popUp_);
  const auto choose = [&](NSKey key, int times) {
    press(*popUp_);
    display_.release();
    for (int i = 0; i < times; ++i) display_.key(key);
    display_.key(NSKey::enter);
  };
  choose(NSKey::down, 3);  // nothing to write to
  setQuality(first_, 64);
  popUp_->setProperty(quality(first_));
  EXPECT_EQ(popUp_->stringValue(), "medium");
  const std::pair<UInt32, const char*> rows[] = {
      {96, "high"}, {0, "minimum"}, {32, "low"}, {100, "low"}, {127, "maximum"}};
  for (const auto& [value, title] : rows) {
    setQuality(first_, value);
    advance(0.05);
    EXPECT_EQ(popUp_->stringValue(), title) << value;
  }
  const UInt32 written[] = {127, 96, 64, 32, 0, 0};  // the sixth item stands for nothing
  for (int i = 0; i < 6; ++i) {
    choose(NSKey::home, 1);
    choose(NSKey::down, i + 1);
    EXPECT_EQ(qualityOf(first_), i < 5 ? written[i] : 127u) << i;
    advance(0.05);
    EXPECT_EQ(popUp_->indexOfSelectedItem(), i < 5 ? i : 0) << i;
  }

  popUp_->setProperty(quality(second_));
  setQuality(first_, 32);
  advance(0.05);
  EXPECT_EQ(popUp_->stringValue(), "maximum");  // only the second counts
  choose(NSKey::down, 2);
  EXPECT_EQ(qualityOf(first_), 32u);
  EXPECT_EQ(qualityOf(second_), 96u);
}

}  // namespace
