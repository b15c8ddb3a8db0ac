#include <gtest/gtest.h>

#include <clocale>
#include <limits>
#include <string>

#include "CoreFoundation.h"
#include "MacRoman.h"
#include "NumberText.h"

using namespace foundation;

/// In the locale of hosts that have a decimal comma, as well as without one.
class NumberText : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!std::setlocale(LC_ALL, GetParam()))
      GTEST_SKIP() << "this machine has no locale with a decimal comma";
  }
  void TearDown() override { std::setlocale(LC_ALL, "C"); }
};
INSTANTIATE_TEST_SUITE_P(InLocale, NumberText, testing::Values("C", "de_DE.UTF-8"),
                         [](const auto& locale) { return std::string(locale.param).substr(0, 2); });

TEST_P(NumberText, IsPrintedWithAPoint) {
  EXPECT_EQ(fixedText(1234.56789, 4), "1234.5679");
  EXPECT_EQ(fixedText(-0.4, 0), "-0");
  EXPECT_EQ(signedWholeText(2.5), "+2");
  EXPECT_EQ(exactText(0.1f), "0.1");
}

TEST_P(NumberText, IsReadFromTheBeginningOfAText) {
  const struct {
    const char* text;
    double value;
    size_t length;  // 0: no number
  } rows[] = {{"12.5 Hz", 12.5, 4}, {" \t-3", -3, 4}, {"+.5x", 0.5, 3}, {"1e3", 1000, 3},
              {"1e", 1, 1},         {"1,5", 1, 1},    {"", 0, 0},       {"+-1", 0, 0},
              {"-nan", 0, 0},       {"0x10", 0, 1},   {"1e-999", 0, 6}, {"Hz 5", 0, 0}};
  for (const auto& row : rows) {
    const ParsedNumber number = numberPrefix(row.text);
    EXPECT_EQ(number.found, row.length != 0) << row.text;
    EXPECT_EQ(number.value, row.value) << row.text;
    EXPECT_EQ(number.length, row.length) << row.text;
  }
  EXPECT_EQ(floatValue("1e999"), std::numeric_limits<float>::infinity());
}

TEST(MacRoman, EveryByteSurvivesTheWayThroughUtf8AndWhatItLacksDoesNotConvert) {
  for (int byte = 1; byte < 256; ++byte) {
    const std::string one(1, static_cast<char>(byte));
    EXPECT_EQ(macRomanFromUtf8(utf8FromMacRoman(one)), one) << byte;
  }
  EXPECT_EQ(utf8FromMacRoman("\xA1\xBE\x8A"), "°æä");
  for (const char* text : {"a→b", "日本", "\xFF", "\xC3", "\xE2\x80"})
    EXPECT_EQ(macRomanFromUtf8(text), std::nullopt) << text;
}
