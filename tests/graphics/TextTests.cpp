#include <gtest/gtest.h>

#include <cmath>

#include "Canvas.h"
#include "NSAttributedString.h"
#include "NSBundle.h"

namespace {

constexpr float ascent = 0.967f, descent = 0.211f;  // of Lucida Grande, for each point of its size

class Text : public testing::Test {
 protected:
  Text() : bundle(NSBundle::bundleWithPath(TOVIN_BUNDLE, error)) {}

  static NSMutableAttributedString string(std::string_view text, float size) {
    const auto font = NSFont::fontWithName_size("LucidaGrande", size);
    return {text, {.font = font, .foregroundColor = nullptr, .shadow = {}}};
  }
  static std::array<int, 4> boundsOfInk(const Bitmap& bitmap, int leastAlpha = 1) {
    return boundsWhere(bitmap, [leastAlpha](const Pixel& pixel) { return pixel[3] >= leastAlpha; });
  }

  std::string error;
  std::shared_ptr<NSBundle> bundle;  // fonts are found in open bundles
};

}  // namespace

TEST_F(Text, TheBaselineStandsOnAWholePixel) {
  for (const float scale : {1.0f, 1.5f}) {
    for (const float y : {5.0f, 5.3f, 5.9f}) {
      const Bitmap bitmap = painted({30, 50}, scale, [&] { string("E", 24).drawAtPoint({3, y}); });
      const int foot = boundsOfInk(bitmap)[3];
      EXPECT_EQ(boundsOfInk(bitmap, 255)[3], foot) << "a faint row at scale " << scale << " y " << y;
      EXPECT_NEAR(bitmap.physicalHeight() - foot, (y + 24 * descent) * scale, 0.501) << scale << " " << y;
    }
  }
}

TEST_F(Text, RunsOfDifferentSizesShareTheBaselineAndTheLargestMeasures) {
  auto text = string("E", 10);
  text.appendAttributedString(string("E", 26));
  text.appendAttributedString(string("E", 10));
  const NSRect box = text.boundingRect();
  EXPECT_FLOAT_EQ(NSMinY(box), -26 * descent);
  EXPECT_FLOAT_EQ(NSHeight(box), 26 * (ascent + descent));
  const Bitmap bitmap = painted({80, 50}, 1, [&] { text.drawAtPoint({4, 6}); });
  const int foot = boundsOfInk(bitmap)[3];
  for (const int x : {6, 16}) EXPECT_TRUE(bitmap.pixel(x, foot - 1)[3] && !bitmap.pixel(x, foot)[3]) << x;
}

TEST_F(Text, LinesAreAlignedWithinTheRectangle) {
  auto text = string("Level", 13);
  const float width = NSWidth(text.boundingRect());
  const auto left = boundsOfInk(painted({80, 40}, 1, [&] {
    text.drawAtPoint({7, 35 - 13 * (ascent + descent)});
  }));
  const std::pair<NSTextAlignment, float> cases[] = {
      {NSLeftTextAlignment, 0}, {NSCenterTextAlignment, 0.5f}, {NSRightTextAlignment, 1}};
  for (const auto& [alignment, share] : cases) {
    text.setAlignment(alignment);
    const auto ink = boundsOfInk(painted({80, 40}, 1, [&] { text.drawInRect(NSMakeRect(7, 5, 60, 30)); }));
    EXPECT_NEAR(ink[0] - left[0], share * (60 - width), 1) << share;
  }
}

TEST_F(Text, WrapsBetweenWordsOnlyWhenTheLineIsWider) {
  const auto widthOf = [](std::string_view words) { return NSWidth(string(words, 12).boundingRect()); };
  const float line = 12 * (ascent + descent), whole = widthOf("HHH HHH HH"), word = widthOf("HHH");
  const struct {
    float width, height;
    int lines;
  } cases[] = {{whole, 80, 1},
               {whole - 0.5f, 80, 2},
               {1, 80, 3},           // words are not broken
               {word, line + 1, 2},  // a line that starts inside is drawn
               {word, line - 1, 1}};
  const auto inkOf = [](std::string_view words, float width, float height) {
    return boundsOfInk(painted(
        {200, 100}, 1, [&] { string(words, 12).drawInRect(NSMakeRect(4, 90 - height, width, height)); }));
  };
  for (const auto& c : cases) {
    const auto bottom = static_cast<float>(inkOf("HHH HHH HH", c.width, c.height)[3]);
    EXPECT_EQ(std::ceil((bottom - 10) / line), c.lines) << c.width << " " << c.height;
  }
  EXPECT_EQ(inkOf("HHH HHH", word, 80)[2], inkOf("HHH", word, 80)[2]) << "no blank leads the second line";
}
