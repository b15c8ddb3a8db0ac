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

}  // namespace

TEST(Bundle, SaysWhatIsWrongWithItsInfo) {
  const ScratchBundle scratch;
  const auto says = [&](const std::string& part) {
    std::string error;
    EXPECT_EQ(scratch.open(error), nullptr);
    EXPECT_NE(error.find("Info.xml"), std::string::npos) << error;
    EXPECT_NE(error.find(part), std::string::npos) << error;
  };
  says("not found");
  scratch.write("Info.xml", "<bundle identifier=");
  says("attribute");
  scratch.write("Info.xml", "<bundle identifier='org.example.test' version='1.2' principalClass='Thing'/>");
  says("\"module\"");
}

TEST(Bundle, IsOneObjectPerFolderAndItsClassesAreKnownAsLongAsItLives) {
  const ScratchBundle scratch;
  scratch.write("Info.xml", ScratchBundle::info("Thing"));
  std::string error;
  auto bundle = scratch.open(error);
  ASSERT_NE(bundle, nullptr) << error;
  EXPECT_EQ(scratch.open(error), bundle);
  EXPECT_EQ(NSBundle::bundleForClass(Thing::record()), nullptr);
  bundle->loadLinked([](std::vector<const Class*>& classes) { classes.push_back(&Thing::record()); });
  EXPECT_EQ(bundle->principalClass(), &Thing::record());
  EXPECT_EQ(NSBundle::bundleForClass(Thing::record()), bundle.get());
  EXPECT_EQ(Class::named("Thing"), &Thing::record());
  bundle = nullptr;
  EXPECT_EQ(Class::named("Thing"), nullptr);
}
