#include <gtest/gtest.h>

#include <string>

#include "TestEffect.h"

namespace {

std::unique_ptr<AUEffectBase> makeEffect() {
  return std::make_unique<TestEffect>();
}

ComponentDescription described(const char (&subtype)[5], const char (&maker)[5], UInt32 flags) {
  return {FourCharCode("tst1"), FourCharCode(subtype), FourCharCode(maker), flags, 0};
}

}  // namespace

TEST(Components, AreFoundByPatternInOrderOfRegistration) {
  const Component a = RegisterComponent(described("aaaa", "One ", 3), "a", 1, makeEffect);
  const Component b = RegisterComponent(described("bbbb", "One ", 1), "b", 1, makeEffect);
  const Component c = RegisterComponent(described("aaaa", "Two ", 2), "c", 1, makeEffect);
  EXPECT_EQ(RegisterComponent(described("aaaa", "One ", 3), "again", 1, makeEffect), a);

  const OSType type = FourCharCode("tst1");
  const struct {
    ComponentDescription pattern;
    std::vector<Component> matches;
  } rows[] = {{{type}, {a, b, c}},
              {{type, FourCharCode("aaaa")}, {a, c}},
              {{type, 0, FourCharCode("One ")}, {a, b}},
              {{type, FourCharCode("bbbb"), FourCharCode("Two ")}, {}},
              {{type, 0, 0, 1, 1}, {a, b}},
              {{type, 0, 0, 0, 1}, {c}},
              {{type, 0, 0, 1, 0}, {a, b, c}}};
  for (const auto& row : rows) {
    std::vector<Component> found;
    for (Component at = FindNextComponent(nullptr, &row.pattern); at;
         at = FindNextComponent(at, &row.pattern))
      found.push_back(at);
    EXPECT_EQ(found, row.matches) << &row - rows;
  }
}

TEST(Components, HandOutTheirNameAsLengthAndMacRoman) {
  const Component component =
      RegisterComponent({FourCharCode("tst2")}, "ö→" + std::string(300, 'x'), 1, makeEffect);
  const Handle name = NewHandle(0);
  EXPECT_EQ(GetComponentInfo(component, nullptr, name, nullptr, nullptr), noErr);
  EXPECT_EQ(std::string(*name, GetHandleSize(name)), "\xFF\x9A?" + std::string(253, 'x'));
  DisposeHandle(name);
}

TEST(Components, AnInstanceAnswersLikeItsComponentAndNullDoesNot) {
  const Unit unit = openTestEffect();
  ComponentDescription description;
  EXPECT_EQ(GetComponentInfo(unit.get(), &description, nullptr, nullptr, nullptr), noErr);
  EXPECT_EQ(description.componentSubType, testDescription.componentSubType);
  EXPECT_EQ(FindNextComponent(nullptr, &description), unit->component());
  EXPECT_EQ(GetComponentVersion(unit.get()), 0x00010203);

  EXPECT_EQ(GetComponentInfo(ComponentInstance{}, &description, nullptr, nullptr, nullptr), paramErr);
  EXPECT_EQ(GetComponentVersion(nullptr), 0);
  EXPECT_EQ(CloseComponent(nullptr), paramErr);
}
