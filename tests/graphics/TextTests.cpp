#include <gtest/gtest.h>

#include <cmath>

#include "Canvas.h"
#include "LogLines.h"
#include "NSAttributedString.h"
#include "NSBezierPath.h"
#include "NSBundle.h"

namespace {

constexpr float ascent = 0.967f, descent = 0.211f;  // of Lucida Grande, for each point of its size

class Text : public testing::Test {
 protected:
  Text() : bundle(NSBundle::bundleWithPath(TOVIN_BUNDLE, error)) {}

  static NSMutableAttributedString string(std::string_view text, float size,
                                          const char* font = "LucidaGrande") {
    return {text, {.font = NSFont::fontWithName_size(font, size), .foregroundColor = nullptr, .shadow = {}}};
  }
  static std::array<int, 4> boundsOfInk(const Bitmap& bitmap, int leastAlpha = 1) {
    return boundsWhere(bitmap, [leastAlpha](const Pixel& pixel) { return pixel[3] >= leastAlpha; });
  }

  std::string error;
  std::shared_ptr<NSBundle> bundle;  // fonts are found in open bundles
};

}  // namespace

TEST_F(Text, TheBaselineStandsOnAWholePixel) {
  for (const float scale : {1.0f, 1.5f, 2.0f}) {
    for (const float y : {5.0f, 5.3f, 5.5f, 5.9f}) {
      const Bitmap bitmap = painted({30, 50}, scale, [&] { string("E", 24).drawAtPoint({3, y}); });
      const int foot = boundsOfInk(bitmap)[3];
      EXPECT_EQ(boundsOfInk(bitmap, 255)[3], foot) << "a faint row at scale " << scale << " y " << y;
      EXPECT_NEAR(bitmap.physicalHeight() - foot, (y + 24 * descent) * scale, 0.501) << scale << " " << y;
    }
  }
}

TEST_F(Text, RunsOfDifferentFontsShareTheBaselineAndTheLargestMeasures) {
  auto text = string("E", 10);
  text.appendAttributedString(string("E", 26, "LucidaGrande-Bold"));
  text.appendAttributedString(string("E", 10, "Futura Medium"));
  const NSRect box = text.boundingRect();
  EXPECT_FLOAT_EQ(NSMinY(box), -26 * descent);
  EXPECT_FLOAT_EQ(NSHeight(box), 26 * (ascent + descent));
  const auto column = [&](float x) {  // what is drawn there: top and bottom
    const Bitmap bitmap = painted({80, 50}, 1, [&] {
      NSBezierPath::bezierPathWithRect(NSMakeRect(x, 0, 3, 50))->addClip();
      text.drawAtPoint({4, 6});
    });
    return boundsOfInk(bitmap);
  };
  const auto first = column(5), second = column(13), last = column(3 + NSWidth(box) - 5);
  EXPECT_TRUE(first[3] == second[3] && second[3] == last[3]);
  EXPECT_GT(first[1], second[1] + 8);
  EXPECT_GT(last[1], second[1] + 8);
}

TEST_F(Text, LinesAreAlignedWithinTheRectangle) {
  auto text = string("Level", 13);
  const float width = NSWidth(text.boundingRect());
  const std::pair<NSTextAlignment, float> cases[] = {{NSLeftTextAlignment, 0.0f},
                                                     {NSCenterTextAlignment, (60 - width) / 2},
                                                     {NSRightTextAlignment, 60 - width}};
  for (const auto& [alignment, indent] : cases) {
    text.setAlignment(alignment);
    const Bitmap inRect = painted({80, 40}, 2, [&] { text.drawInRect(NSMakeRect(7, 5, 60, 30)); });
    const Bitmap atPoint = painted({80, 40}, 2, [&, x = 7 + indent] {
      text.drawAtPoint({x, 35 - 13 * (ascent + descent)});
    });
    EXPECT_EQ(letters(inRect), letters(atPoint)) << indent;
    EXPECT_GT(boundsOfInk(inRect)[2], 0);
  }
}

TEST_F(Text, WrapsBetweenWordsOnlyWhenTheLineIsWider) {
  const auto widthOf = [](std::string_view words) { return NSWidth(string(words, 12).boundingRect()); };
  const float line = 12 * (ascent + descent), whole = widthOf("HHH HHH HH"), word = widthOf("HHH");
  const struct {
    const char* words;
    float width, height;
    int lines;
  } cases[] = {{"HHH HHH HH", whole, 80, 1},
               {"HHH HHH HH", whole - 0.5f, 80, 2},
               {"HHH HHH HH", word, 80, 3},
               {"HHH HHH HH", 1, 80, 3},  // words are not broken
               {"HHHHHHHHH", 1, 80, 1},
               {"HHH HHH HH", word, line + 1, 2},  // a line that starts inside is drawn
               {"HHH HHH HH", word, line - 1, 1}};
  const auto inkOf = [](std::string_view words, float width, float height) {
    return boundsOfInk(painted(
        {200, 100}, 1, [&] { string(words, 12).drawInRect(NSMakeRect(4, 90 - height, width, height)); }));
  };
  for (const auto& c : cases) {
    const auto bottom = static_cast<float>(inkOf(c.words, c.width, c.height)[3]);
    EXPECT_EQ(std::ceil((bottom - 10) / line), c.lines) << c.width << " " << c.height;
  }
  EXPECT_EQ(inkOf("HHH HHH", word, 80)[2], inkOf("HHH", word, 80)[2]) << "no blank leads the second line";
}

TEST_F(Text, AnUnknownFontIsReplacedAndLoggedOnce) {
  LogLines log;
  for (int again = 0; again < 2; ++again)
    EXPECT_EQ(NSFont::fontWithName_size("Nonesuch", 11)->fontName(), "LucidaGrande");
  EXPECT_EQ(log.count("\"Nonesuch\""), 1);
}
