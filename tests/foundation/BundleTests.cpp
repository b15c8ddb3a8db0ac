#include <gtest/gtest.h>

#include "Class.h"
#include "ScratchBundle.h"

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
  std::shared_ptr<NSBundle> open() {
    error = "left from before";
    return scratch.open(error);
  }

  ScratchBundle scratch;
  std::string error;
  const std::string info = ScratchBundle::info("Thing");
};

}  // namespace

TEST_F(Bundle, SaysWhatIsWrongWithItsInfo) {
  const auto says = [&](const std::string& part) {
    EXPECT_EQ(open(), nullptr);
    EXPECT_NE(error.find("Info.xml"), std::string::npos) << error;
    EXPECT_NE(error.find(part), std::string::npos) << error;
  };
  says("not found");
  scratch.write("Info.xml", "<bundle identifier=");
  says("attribute");
  for (const std::string key : {"identifier", "version", "principalClass", "module"}) {
    std::string without = info;
    without.replace(without.find(key), key.size(), "forgotten");
    scratch.write("Info.xml", without);
    says("\"" + key + "\"");
  }
}

TEST_F(Bundle, IsOneObjectPerFolderAndKnowsItsPartsAndClassesAsLongAsItLives) {
  scratch.write("Info.xml", info);
  scratch.write("Resources/face.png", "");
  auto bundle = open();
  ASSERT_NE(bundle, nullptr);
  EXPECT_EQ(open(), bundle);
  EXPECT_EQ(bundle->version(), "1.2");
  EXPECT_EQ(bundle->pathForImageResource("face"), scratch.file("Resources/face.png"));
  EXPECT_EQ(bundle->pathForImageResource("hand"), "");

  EXPECT_EQ(NSBundle::bundleForClass(Thing::record()), nullptr);
  bundle->loadLinked([](std::vector<const Class*>& classes) { classes.push_back(&Thing::record()); });
  EXPECT_EQ(bundle->principalClass(), &Thing::record());
  EXPECT_EQ(NSBundle::bundleForClass(Thing::record()), bundle.get());
  EXPECT_EQ(Class::named("Thing"), &Thing::record());
  bundle = nullptr;
  EXPECT_EQ(Class::named("Thing"), nullptr);
}
