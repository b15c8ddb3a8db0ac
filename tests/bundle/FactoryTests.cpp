// The module as a host loads it.

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

#include "AUCocoaUIBase.h"
#include "AppKitClasses.h"
#include "NSBundle.h"
#include "RegisterEffects.h"
#include "ScratchBundle.h"
#include "SilentEffect.h"
#include "Stage.h"
#include "TestEffect.h"

namespace {

class Factory : public testing::Test, public Stage {
 protected:
  Factory() {
    NSRegisterAppKitClasses();
    RegisterEffects();
    std::string error;
    bundle = copy().open(error);
    if (!bundle || !bundle->load(error)) throw std::runtime_error(error);
    factory = bundle->principalClass()->make();
  }
  std::shared_ptr<NSView> editorFor(const Unit& unit) const {
    const auto view = dynamic_cast<AUCocoaUIBase&>(*factory).uiViewForAudioUnit_withSize(unit.get(), {});
    EXPECT_FALSE(factory->isa().outletNamed("uiFreshlyLoadedView")->connected(*factory))
        << "it keeps nothing";
    return view;
  }
  template <class Effect>
  static std::unique_ptr<AUEffectBase> make() {
    return std::make_unique<Effect>();
  }

  /// Stays for the life of the process, since images that it gave stay registered.
  static const ScratchBundle& copy() {
    static const ScratchBundle made(TOVIN_BUNDLE);
    return made;
  }
  std::shared_ptr<NSBundle> bundle;
  std::shared_ptr<NSObject> factory;
};

struct Nothing : SilentEffect {
  Nothing() : SilentEffect(std::span<AUParameterRow>()) {}
};

constexpr ComponentDescription effect(const char (&subtype)[5], const char (&maker)[5] = "Tovn",
                                      const char (&type)[5] = "aufx") {
  return {FourCharCode(type), FourCharCode(subtype), FourCharCode(maker)};
}

TEST_F(Factory, GivesEachEffectItsOwnEditorAndOthersNone) {
  const struct {
    ComponentDescription description;
    const char* editor;
  } rows[] = {{effect("mcmp"), "mcmp_UIView"},
              {effect("dcmp"), "dcmp_UIView"},
              {effect("lmtr"), "lmtr_UIView"},
              {effect("filt"), "filt_UIView"},
              {effect("lpas"), "lpas_UIView"},
              {effect("hpas"), "lpas_UIView"},
              {effect("lshf"), "lpas_UIView"},
              {effect("hshf"), "lpas_UIView"},
              {effect("bpas"), "bpas_UIView"},
              {effect("pmeq"), "pmeq_UIView"},
              {effect("mrev"), "mrev_UIView"},
              {effect("Qmrv"), "mrev_UIView"},
              {effect("dely"), "dely_UIView"},
              {effect("sdly"), "sdly_UIView"},
              {effect("tmpt"), "tmpt_UIView"},
              {effect("sdly", "appl"), "sdly_UIView"},
              {effect("sdly", "Tovn", "aumu"), ""},
              {effect("sdly", "Else"), ""},
              {effect("zzzz"), ""}};
  for (const auto& row : rows) {
    Component component = FindNextComponent(nullptr, &row.description);
    if (!component) component = RegisterComponent(row.description, "Test: AUOther", 1, &make<TestEffect>);
    const auto view = editorFor(openUnit(component));
    EXPECT_EQ(view ? view->isa().name() : "", row.editor);
  }
  EXPECT_EQ(log, Lines{});
  EXPECT_EQ(editorFor(Unit()), nullptr);
}

TEST_F(Factory, SaysWhatIsWrongWithADescriptionOrAnEffectAndGoesOn) {
  const auto open = [](const char(&subtype)[5], ComponentFactory made) {
    return openUnit(RegisterComponent(effect(subtype, "appl"), "Test: AU", 1, made));
  };
  const std::string name = "Resources/mrev_cocoaUI.xml", file = copy().file(name);
  copy().write(name, "<interface>\n<view class=\"NoSuch\" frame=\"0 0 9 9\"/></interface>");
  EXPECT_EQ(editorFor(open("mrev", &make<TestEffect>)), nullptr);
  EXPECT_EQ(editorFor(open("dely", &make<Nothing>)), nullptr) << "it has no parameter";
  EXPECT_EQ(
      log,
      (Lines{file + ":2: class \"NoSuch\", expected the name of a view class", "Unable to load nib for view.",
             "*** Assertion failure in -[jxAUParam initForAUParam:target:selector:], jxAUParam:50: "
             "Error getting AudioUnitParameterInfo",
             "making an editor failed: Error getting AudioUnitParameterInfo"}));
  EXPECT_NE(editorFor(open("sdly", &make<TestEffect>)), nullptr);
  std::filesystem::copy(TOVIN_BUNDLE "/Contents/" + name, file,
                        std::filesystem::copy_options::overwrite_existing);
}

}  // namespace
