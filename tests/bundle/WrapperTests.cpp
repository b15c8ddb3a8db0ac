#include "jxAUwrapper.h"

#include "BundleFixture.h"
#include "NSException.h"
#include "TestUnit.h"

namespace {

class WrapperTests : public BundleFixture {};

Component component(const char* name, SInt32 version = 0) {
  static OSType subtype = FourCharCode("wr00");
  return RegisterComponent(
      {FourCharCode("aufx"), ++subtype, FourCharCode("Test")}, name, version,
      +[]() -> std::unique_ptr<AUEffectBase> {
        return std::make_unique<SilentEffect>(std::span<const AUParameterRow>());
      });
}

TEST_F(WrapperTests, nameIsWithoutMakerAndPrefix) {
  const std::string longest = "V:" + std::string(253, 'x');
  const struct {
    std::string component, name;
  } rows[] = {
      {"Vendor: AUEcho", " Echo"},
      {"Vendor: Echo", " Echo"},
      {"AUEcho", "AUEcho"},
      {"Vendor: AU", " "},
      {"A: B: AUEcho", " B: AUEcho"},
      {"Vendor:AUEcho", "AUEcho"},
      {"V: AUGröße", " Größe"},
      {"", ""},
      {longest, std::string(253, 'x')},
  };
  for (const auto& row : rows) {
    const Unit unit = openUnit(component(row.component.c_str()));
    EXPECT_EQ(jxAUwrapper(unit.get()).auName(), row.name) << row.component;
  }
}

TEST_F(WrapperTests, nullInstanceAndOneWithoutNameAreReported) {
  jxAUwrapper none(nullptr);
  EXPECT_EQ(none.auVersion(), 0u);
  EXPECT_EQ(none.auName(), "");
  EXPECT_EQ(none.globalParameter(5).mAudioUnit, nullptr);

  const Unit unit = openUnit(component("V: AULost"));
  const Component known = unit->component();
  unit->setComponent(nullptr);
  EXPECT_THROW(jxAUwrapper(unit.get()).auName(), NSException);
  EXPECT_EQ(
      log_,
      Lines{"*** Assertion failure in -[jxAUwrapper auName], jxAUwrapper:76: Getting the AU name failed"});
  unit->setComponent(known);
}

}  // namespace
