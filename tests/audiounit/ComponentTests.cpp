#include <gtest/gtest.h>

#include "AUEffectBase.h"
#include "Components.h"

namespace {

Component registered(const char (&subtype)[5], const char (&maker)[5], UInt32 flags) {
  return RegisterComponent({FourCharCode("tst1"), FourCharCode(subtype), FourCharCode(maker), flags, 0}, "",
                           1, [] { return std::unique_ptr<AUEffectBase>(); });
}

}  // namespace

TEST(Components, AreFoundByPatternInOrderOfRegistration) {
  const Component a = registered("aaaa", "One ", 3), b = registered("bbbb", "One ", 1),
                  c = registered("aaaa", "Two ", 2);
  EXPECT_EQ(registered("aaaa", "One ", 3), a);

  const OSType type = FourCharCode("tst1");
  const struct {
    ComponentDescription pattern;
    std::vector<Component> matches;
  } rows[] = {{{type}, {a, b, c}},
              {{type, FourCharCode("aaaa")}, {a, c}},
              {{type, 0, FourCharCode("One ")}, {a, b}},
              {{type, FourCharCode("bbbb"), FourCharCode("Two ")}, {}},
              {{type, 0, 0, 1, 1}, {a, b}}};
  for (const auto& row : rows) {
    std::vector<Component> found;
    for (Component at = FindNextComponent(nullptr, &row.pattern); at;
         at = FindNextComponent(at, &row.pattern))
      found.push_back(at);
    EXPECT_EQ(found, row.matches) << &row - rows;
  }
}
