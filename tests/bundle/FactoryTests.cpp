#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "AUCocoaUIBase.h"
#include "AppKitClasses.h"
#include "BundleFixture.h"
#include "TestUnit.h"

namespace fs = std::filesystem;

namespace {

constexpr const char* codes[] = {"mcmp", "dcmp", "lmtr", "filt", "lpas", "bpas",
                                 "pmeq", "mrev", "dely", "sdly", "tmpt"};

/// The built bundle with interface descriptions of the test's own. It stays for the life of the process,
/// because images that it gave stay registered.
class BundleCopy {
 public:
  BundleCopy()
      : folder_(fs::temp_directory_path() / ("tovin-bundle-" + std::to_string(getpid()) + ".bundle")) {
    fs::create_directories(folder_);
    fs::copy(TOVIN_BUNDLE, folder_, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
  }
  ~BundleCopy() { fs::remove_all(folder_); }
  BundleCopy(const BundleCopy&) = delete;
  BundleCopy& operator=(const BundleCopy&) = delete;

  std::string path() const { return folder_; }
  std::string description(const std::string& code) const {
    return folder_ / "Contents/Resources" / (code + "_cocoaUI.xml");
  }
  void write(const std::string& code, const std::string& text) const {
    std::ofstream(description(code)) << text;
  }

 private:
  fs::path folder_;
};

OSType four(const std::string& text) {
  OSType code = 0;
  for (const char c : text) code = code << 8 | static_cast<unsigned char>(c);
  return code;
}

class FactoryTests : public BundleFixture {
 protected:
  FactoryTests() {
    NSRegisterAppKitClasses();
    for (size_t i = 0; i < std::size(codes); ++i)  // each of another width
      copy().write(codes[i],
                   "<interface>\n<view class=\"jxAppleAUView\" outlet=\"uiFreshlyLoadedView\" frame=\"0 0 " +
                       std::to_string(100 + i) + " 90\"/></interface>");
    std::string error;
    bundle_ = NSBundle::bundleWithPath(copy().path(), error);
    if (!bundle_ || !bundle_->load(error)) throw std::runtime_error(error);
    factory_ = bundle_->principalClass()->make();
  }

  static const BundleCopy& copy() {
    static const BundleCopy made;
    return made;
  }
  std::shared_ptr<NSView> editorFor(const Unit& unit, NSSize size = {}) const {
    return dynamic_cast<AUCocoaUIBase&>(*factory_).uiViewForAudioUnit_withSize(unit.get(), size);
  }
  static Unit open(const char* type, const char* maker, const std::string& subtype) {
    return openUnit(RegisterComponent(
        {four(type), four(subtype), four(maker)}, "Test: AU" + subtype, 1,
        +[]() -> std::unique_ptr<AUEffectBase> {
          return std::make_unique<SilentEffect>(std::span<const AUParameterRow>());
        }));
  }
  bool holdsNothing() const {
    return !factory_->isa().outletNamed("uiFreshlyLoadedView")->connected(*factory_);
  }

  std::shared_ptr<NSBundle> bundle_;
  std::shared_ptr<NSObject> factory_;
};

TEST_F(FactoryTests, effectsAndTheirEditors) {
  const struct {
    const char *type, *maker, *subtype, *editor;
  } rows[] = {
      {"aufx", "Tovn", "mcmp", "mcmp"}, {"aufx", "Tovn", "dcmp", "dcmp"}, {"aufx", "Tovn", "lmtr", "lmtr"},
      {"aufx", "Tovn", "filt", "filt"}, {"aufx", "Tovn", "lpas", "lpas"}, {"aufx", "Tovn", "hpas", "lpas"},
      {"aufx", "Tovn", "lshf", "lpas"}, {"aufx", "appl", "hshf", "lpas"}, {"aufx", "Tovn", "bpas", "bpas"},
      {"aufx", "Tovn", "pmeq", "pmeq"}, {"aufx", "Tovn", "mrev", "mrev"}, {"aufx", "appl", "Qmrv", "mrev"},
      {"aufx", "Tovn", "dely", "dely"}, {"aufx", "appl", "sdly", "sdly"}, {"aufx", "Tovn", "sdly", "sdly"},
      {"aufx", "appl", "mcmp", "mcmp"}, {"aufx", "Tovn", "tmpt", "tmpt"}, {"aumu", "Tovn", "mcmp", ""},
      {"aumf", "appl", "mcmp", ""},     {"aufx", "Else", "mcmp", ""},     {"aufx", "Tovn", "zzzz", ""},
  };
  for (const auto& row : rows) {
    const auto view = editorFor(open(row.type, row.maker, row.subtype));
    const auto code = std::find(std::begin(codes), std::end(codes), std::string_view(row.editor));
    const float width = view ? NSWidth(view->frame()) : -1;
    const float expected =
        code == std::end(codes) ? -1 : static_cast<float>(100 + (code - std::begin(codes)));
    EXPECT_EQ(width, expected) << row.type << " " << row.maker << " " << row.subtype;
    EXPECT_TRUE(holdsNothing());
  }
  EXPECT_EQ(log_, Lines{});
  EXPECT_EQ(editorFor(Unit()), nullptr);
}

TEST_F(FactoryTests, whatIsWrongWithADescriptionIsLogged) {
  const std::string file = copy().description("mrev");
  const struct {
    const char *text, *says;
  } rows[] = {
      {nullptr, "mrev_cocoaUI.xml: no such interface description"},
      {"<interface>\n<view class=\"NoSuch\" frame=\"0 0 9 9\"/></interface>",
       ":2: class \"NoSuch\", expected the name of a view class"},
      {"<interface>\n\n<view class=\"jxAppleAUView\" frame=\"0 0 9\"/></interface>",
       ":3: frame \"0 0 9\", expected \"x y width height\" with a positive size, no number beyond 4096"},
      {"<interface><view class=\"sdly_UIView\" outlet=\"uiFreshlyLoadedView\" frame=\"0 0 9 "
       "9\"/></interface>",
       ":1: outlet \"inToOutDelay\" of sdly_UIView is not connected, expected a view with "
       "outlet=\"inToOutDelay\""},
      {"<interface><view class=\"NSView\" outlet=\"uiFreshlyLoadedView\" frame=\"0 0 9 9\"/></interface>",
       ":1: outlet \"uiFreshlyLoadedView\" of jxAppleAUGUI_ViewFactory does not take an object of class "
       "NSView"},
  };
  const Unit unit = open("aufx", "Tovn", "mrev");
  for (const auto& row : rows) {
    row.text ? copy().write("mrev", row.text) : void(fs::remove(file));
    EXPECT_EQ(editorFor(unit), nullptr);
    EXPECT_EQ(log_, (Lines{row.text ? file + row.says : row.says, "Unable to load nib for view."}));
    EXPECT_TRUE(holdsNothing());
    log_.clear();
  }
  copy().write("mrev", "<interface><view class=\"jxAppleAUView\" frame=\"0 0 9 9\"/></interface>");
  EXPECT_EQ(editorFor(unit), nullptr) << "an editor that is connected to nothing";
  EXPECT_EQ(log_, Lines{});
}

TEST_F(FactoryTests, anEditorThatCannotBeHookedIsGivenUp) {
  copy().write(
      "sdly",
      "<interface><view class=\"sdly_UIView\" outlet=\"uiFreshlyLoadedView\" frame=\"0 0 99 99\">"
      "<view class=\"jxAUParamKnobView\" outlet=\"inToOutDelay\" frame=\"0 0 92 76\"/></view></interface>");
  EXPECT_EQ(editorFor(open("aufx", "appl", "sdly")), nullptr);  // has no parameter 0
  EXPECT_EQ(log_,
            (Lines{"*** Assertion failure in -[jxAUParam initForAUParam:target:selector:], jxAUParam:50: "
                   "Error getting AudioUnitParameterInfo",
                   "making an editor failed: Error getting AudioUnitParameterInfo"}));
  EXPECT_TRUE(holdsNothing());
}

}  // namespace
