#include <gtest/gtest.h>

#include <array>
#include <filesystem>

#include "NSArchiver.h"
#include "NSException.h"
#include "NSUnarchiver.h"

namespace {

int alive = 0;

/// One value of each type and two other objects.
class Node : public NSObject {
 public:
  Node() { ++alive; }
  explicit Node(NSCoder& coder) : Node() {
    coder.decodeValueOfObjCType_at("d", &number);
    coder.decodeValueOfObjCType_at("i", &count);
    coder.decodeValueOfObjCType_at("c", &flag);
    point = coder.decodePoint();
    first = coder.decodeObject();
    second = isPicky ? coder.decodeObjectOfClass<Node>() : coder.decodeObject();
  }
  ~Node() override { --alive; }
  void encodeWithCoder(NSCoder& coder) const {
    coder.encodeValueOfObjCType_at("d", &number);
    coder.encodeValueOfObjCType_at("i", &count);
    coder.encodeValueOfObjCType_at("c", &flag);
    coder.encodePoint(point);
    coder.encodeObject(first.get());
    coder.encodeObject(second.get());
  }
  static const Class& record() {
    static const Class c = Class::of<Node>("Node", NSObject::record()).archived<Node>();
    return c;
  }
  const Class& isa() const override { return record(); }

  double number = -1.5e-300;
  int count = -70000;
  bool flag = true;
  NSPoint point{0.1f, -3e30f};
  std::shared_ptr<NSObject> first, second;
  static inline bool isPicky = false;
};

class Archive : public testing::Test {
 protected:
  Archive() { Class::addToList(classes); }
  ~Archive() override { Class::removeFromList(classes); }

  static inline const std::array<const Class*, 1> classes{&Node::record()};
};

std::string with(std::string data, size_t at, const std::string& bytes) {
  return data.replace(at, bytes.size(), bytes);
}

}  // namespace

TEST_F(Archive, GivesBackValuesNullsAndIdentity) {
  const auto root = std::make_shared<Node>(), shared = std::make_shared<Node>();
  root->first = root->second = shared;
  shared->count = 7;
  shared->flag = false;
  const std::string file = (std::filesystem::path(testing::TempDir()) / "tovin.archive").string();
  NSArchiver::archiveRootObject_toFile(*root, file);
  const auto read = std::dynamic_pointer_cast<Node>(NSUnarchiver::unarchiveObjectWithFile(file));
  std::filesystem::remove(file);
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->number == root->number && read->count == -70000 && read->flag);
  EXPECT_EQ(read->point, root->point);
  EXPECT_EQ(read->first, read->second);
  const auto& inner = dynamic_cast<Node&>(*read->first);
  EXPECT_TRUE(inner.count == 7 && !inner.flag && !inner.first);
  EXPECT_THROW(NSUnarchiver::unarchiveObjectWithFile(file), NSException);
}

TEST_F(Archive, SaysWhereAndWhatIsWrongAndLeavesNothing) {
  const auto node = std::make_shared<Node>();
  node->first = std::make_shared<Node>();
  const std::string good = NSArchiver::archivedDataWithRootObject(*node);
  // The root's letter stands at 16, its class's name at 22, its values at 26, 35, 40, 42, 47, its objects
  // at 52.
  std::string deep = good.substr(0, 52);
  for (char i = 2; i < 120; ++i) deep += std::string{'@', i, 0, 0, 0, 4} + good.substr(22, 30);
  const struct {
    std::string data, message;
  } cases[] = {
      {"tovin archive 2\n", "byte 0: something else, expected an archive"},
      {with(good, 16, "d"), "byte 16: a value of type \"d\", expected \"@\""},
      {with(good, 17, {0}), "byte 21: no object"},
      {with(good, 17, {2}), "byte 16: object 2, expected one that was read"},
      {with(good, 22, "Mode"), "byte 16: class \"Mode\", expected one that is archived"},
      {with(good, 26, "i"), "byte 26: a value of type \"i\", expected \"d\""},
      {with(good, 40, "i"), "byte 40: a value of type \"i\", expected \"c\""},
      {with(good, 52, "@\1"), "byte 52: an object inside itself"},
      {with(good, good.size() - 1, "x"), "expected the end of an object of class Node"},
      {deep, "too many objects in each other"},
      {good + "x", "something after the object, expected the end"},
  };
  node->first.reset();
  alive = 0;  // counts what is read from here on
  for (const auto& [data, message] : cases) {
    try {
      NSUnarchiver::unarchiveObjectWithData(data, "test");
      FAIL() << message;
    } catch (const NSException& error) {
      EXPECT_EQ(error.reason().rfind("test: ", 0), 0u) << error.reason();
      EXPECT_NE(error.reason().find(message), std::string::npos) << error.reason();
    }
  }
  for (size_t length = 0; length < good.size(); ++length)
    EXPECT_THROW(NSUnarchiver::unarchiveObjectWithData(good.substr(0, length)), NSException) << length;
  Node::isPicky = true;
  EXPECT_THROW(NSUnarchiver::unarchiveObjectWithData(good), NSException);
  Node::isPicky = false;
  EXPECT_EQ(alive, 0);

  node->first = std::make_shared<NSObject>();  // is not archived
  EXPECT_THROW(NSArchiver::archivedDataWithRootObject(*node), NSException);
}
