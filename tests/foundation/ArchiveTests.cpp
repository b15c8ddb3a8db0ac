#include <gtest/gtest.h>

#include "NSArchiver.h"
#include "NSException.h"
#include "NSUnarchiver.h"

namespace {

int alive = 0;

/// Two values and two other objects.
class Node : public NSObject {
 public:
  Node() { ++alive; }
  explicit Node(NSCoder& coder) : Node() {
    coder.decodeValueOfObjCType_at("d", &number);
    coder.decodeValueOfObjCType_at("c", &flag);
    first = coder.decodeObject();
    second = coder.decodeObject();
  }
  ~Node() override { --alive; }
  void encodeWithCoder(NSCoder& coder) const {
    coder.encodeValueOfObjCType_at("d", &number);
    coder.encodeValueOfObjCType_at("c", &flag);
    coder.encodeObject(first.get());
    coder.encodeObject(second.get());
  }
  static const Class& record() {
    static const Class c = Class::of<Node>("Node", NSObject::record()).archived<Node>();
    return c;
  }
  const Class& isa() const override { return record(); }

  double number = -1.5e-300;
  bool flag = true;
  std::shared_ptr<NSObject> first, second;
};

class Archive : public testing::Test {
 protected:
  Archive() { Class::addToList(classes); }
  ~Archive() override { Class::removeFromList(classes); }

  const Class* const classes[1] = {&Node::record()};
};

std::string with(std::string data, size_t at, const std::string& bytes) {
  return data.replace(at, bytes.size(), bytes);
}

}  // namespace

TEST_F(Archive, GivesBackValuesNullsAndIdentity) {
  const auto root = std::make_shared<Node>(), shared = std::make_shared<Node>();
  root->first = root->second = shared;
  shared->flag = false;
  const std::string data = NSArchiver::archivedDataWithRootObject(*root);
  const auto read = std::dynamic_pointer_cast<Node>(NSUnarchiver::unarchiveObjectWithData(data));
  ASSERT_TRUE(read);
  EXPECT_TRUE(read->number == root->number && read->flag);
  EXPECT_EQ(read->first, read->second);
  const auto& inner = dynamic_cast<Node&>(*read->first);
  EXPECT_TRUE(!inner.flag && !inner.first);
}

TEST_F(Archive, SaysWhereAndWhatIsWrongAndLeavesNothing) {
  const auto node = std::make_shared<Node>();
  node->first = std::make_shared<Node>();
  const std::string good = NSArchiver::archivedDataWithRootObject(*node);
  // The root's letter stands at 16, its class's name at 22, its values at 26 and 35, its objects at 37.
  std::string deep = good.substr(0, 37);
  for (char i = 2; i < 120; ++i) deep += std::string{'@', i, 0, 0, 0, 4} + good.substr(22, 15);
  const struct {
    std::string data, message;
  } cases[] = {
      {"tovin archive 2\n", "byte 0: something else, expected an archive"},
      {with(good, 17, {2}), "byte 16: object 2, expected one that was read"},
      {with(good, 22, "Mode"), "byte 16: class \"Mode\", expected one that is archived"},
      {with(good, 26, "i"), "byte 26: a value of type \"i\", expected \"d\""},
      {with(good, 37, "@\1"), "byte 37: an object inside itself"},
      {deep, "too many objects in each other"},
      {good + "x", "something after the object, expected the end"},
  };
  node->first.reset();
  alive = 0;  // counts what is read from here on
  for (const auto& [data, message] : cases) {
    try {
      NSUnarchiver::unarchiveObjectWithData(data);
      FAIL() << message;
    } catch (const NSException& error) {
      EXPECT_NE(error.reason().find(message), std::string::npos) << error.reason();
    }
  }
  for (size_t length = 0; length < good.size(); ++length)
    EXPECT_THROW(NSUnarchiver::unarchiveObjectWithData(good.substr(0, length)), NSException) << length;
  EXPECT_EQ(alive, 0);
}
