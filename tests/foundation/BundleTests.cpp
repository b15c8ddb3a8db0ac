#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "Class.h"
#include "NSBundle.h"

namespace fs = std::filesystem;

namespace {

class Thing : public NSObject {
 public:
  static const Class& record() {
    static const Class c = Class::of<Thing>("Thing", NSObject::record());
    return c;
  }
  const Class& isa() const override { return record(); }
};

class Bundle : public testing::Test {
 protected:
  Bundle() : folder(fs::path(testing::TempDir()) / (name() + ".bundle")) {
    fs::remove_all(folder);
    fs::create_directories(folder / "Contents" / "Resources");
  }
  ~Bundle() override { fs::remove_all(folder); }

  static std::string name() { return testing::UnitTest::GetInstance()->current_test_info()->name(); }
  void write(const std::string& file, const std::string& text) {
    std::ofstream(folder / "Contents" / file) << text;
  }
  std::shared_ptr<NSBundle> open() {
    error = "left from before";
    return NSBundle::bundleWithPath(folder.string(), error);
  }

  fs::path folder;
  std::string error;
  const std::string info =
      R"(<bundle identifier="org.example.thing" version="1.2" principalClass="Thing" module="Thing.so"/>)";
};

}  // namespace

TEST_F(Bundle, SaysWhatIsWrongWithItsInfo) {
  const auto says = [&](const std::string& part) {
    EXPECT_EQ(open(), nullptr);
    EXPECT_NE(error.find("Info.xml"), std::string::npos) << error;
    EXPECT_NE(error.find(part), std::string::npos) << error;
  };
  says("not found");
  write("Info.xml", "<bundle identifier=");
  says("attribute");
  write("Info.xml", "<bungle/>");
  says("identifier");
  for (const std::string key : {"identifier", "version", "principalClass", "module"}) {
    std::string without = info;
    without.replace(without.find(key), key.size(), "forgotten");
    write("Info.xml", without);
    says("\"" + key + "\"");
  }
}

TEST_F(Bundle, FindsItsPartsAndIsOneObjectPerFolder) {
  write("Info.xml", info);
  write("Resources/face.png", "");
  const auto bundle = open();
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(open(), bundle);
  EXPECT_EQ(bundle->version(), "1.2");
  EXPECT_EQ(bundle->pathForImageResource("face"), (folder / "Contents/Resources/face.png").string());
  EXPECT_EQ(bundle->pathForImageResource("hand"), "");
}

TEST_F(Bundle, KnowsTheClassesOfItsModuleAsLongAsItLives) {
  write("Info.xml", info);
  auto bundle = open();
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(NSBundle::bundleForClass(Thing::record()), nullptr);
  bundle->loadLinked([](std::vector<const Class*>& classes) { classes.push_back(&Thing::record()); });
  EXPECT_EQ(bundle->principalClass(), &Thing::record());
  EXPECT_EQ(NSBundle::bundleForClass(Thing::record()), bundle.get());
  EXPECT_EQ(Class::named("Thing"), &Thing::record());
  bundle = nullptr;
  EXPECT_EQ(Class::named("Thing"), nullptr);
}
