#include <gtest/gtest.h>

#include "Canvas.h"
#include "LogLines.h"
#include "NSAttributedString.h"
#include "NSBundle.h"

namespace {

class Text : public testing::Test {
 protected:
  Text() : bundle(NSBundle::bundleWithPath(TOVIN_BUNDLE, error)) {}

  static NSTextAttributes font(const char* name, float size) {
    return {.font = NSFont::fontWithName_size(name, size), .foregroundColor = nullptr, .shadow = {}};
  }
  static NSMutableAttributedString string(std::string_view text, float size,
                                          const char* name = "LucidaGrande") {
    return {text, font(name, size)};
  }
  struct Ink {
    int left = 9999, top = 9999, right = -1, bottom = -1;  // physical pixels, the last two exclusive
    int darkestInLastRow = 0;
  };
  static Ink ink(const Bitmap& bitmap, int from = 0, int to = 9999) {
    Ink found;
    for (int y = 0; y < bitmap.physicalHeight(); ++y) {
      int darkest = 0;
      for (int x = from; x < std::min(to, bitmap.physicalWidth()); ++x) {
        const int alpha = bitmap.pixel(x, y)[3];
        darkest = std::max(darkest, alpha);
        if (alpha == 0) continue;
        found = {std::min(found.left, x), std::min(found.top, y), std::max(found.right, x + 1), y + 1, 0};
      }
      if (darkest) found.darkestInLastRow = darkest;
    }
    return found;
  }

  std::string error;
  std::shared_ptr<NSBundle> bundle;  // fonts are found in open bundles
};

}  // namespace

TEST_F(Text, TheBaselineStandsOnAWholePixel) {
  const auto text = string("E", 24);
  for (const float scale : {1.0f, 1.5f, 2.0f}) {
    for (const float y : {5.0f, 5.3f, 5.5f, 5.9f}) {
      const Bitmap bitmap = painted({30, 50}, scale, [&] { text.drawAtPoint({3, y}); });
      const Ink drawn = ink(bitmap);
      EXPECT_EQ(drawn.darkestInLastRow, 255) << "scale " << scale << " y " << y;
      const float descent = 24 * 0.211f;
      EXPECT_NEAR(bitmap.physicalHeight() - drawn.bottom, (y + descent) * scale, 0.501)
          << "scale " << scale << " y " << y;
    }
  }
}

TEST_F(Text, RunsOfDifferentFontsShareTheBaselineAndTheLargestMeasures) {
  auto text = string("E", 10);
  const int border = static_cast<int>(4 + NSWidth(text.boundingRect()));
  text.appendAttributedString(string("E", 26, "LucidaGrande-Bold"));
  text.appendAttributedString(string("E", 10, "Futura Medium"));
  const NSRect box = text.boundingRect();
  EXPECT_FLOAT_EQ(NSMinY(box), -26 * 0.211f);
  EXPECT_FLOAT_EQ(NSHeight(box), 26 * (0.967f + 0.211f));
  const Bitmap bitmap = painted({80, 50}, 1, [&] { text.drawAtPoint({4, 6}); });
  EXPECT_EQ(ink(bitmap, 0, border).bottom, ink(bitmap, border + 2, 9999).bottom);
  EXPECT_GT(ink(bitmap, 0, border).top, ink(bitmap, border + 2, 9999).top + 8);
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
      text.drawAtPoint({x, 35 - 13 * (0.967f + 0.211f)});
    });
    EXPECT_EQ(letters(inRect), letters(atPoint)) << indent;
    EXPECT_GT(ink(inRect).right, 0);
  }
}

TEST_F(Text, WrapsBetweenWordsOnlyWhenTheLineIsWider) {
  const float line = 12 * (0.967f + 0.211f);
  const auto linesDrawn = [&](std::string_view words, float width, float height = 80) {
    const auto text = string(words, 12);
    const Bitmap bitmap =
        painted({200, 100}, 1, [&] { text.drawInRect(NSMakeRect(4, 90 - height, width, height)); });
    return static_cast<int>(std::ceil((static_cast<float>(ink(bitmap).bottom) - 10) / line));
  };
  const float whole = NSWidth(string("HHH HHH HH", 12).boundingRect());
  const float word = NSWidth(string("HHH", 12).boundingRect());
  EXPECT_EQ(linesDrawn("HHH HHH HH", whole), 1);
  EXPECT_EQ(linesDrawn("HHH HHH HH", whole - 0.5f), 2);
  EXPECT_EQ(linesDrawn("HHH HHH HH", word), 3);
  EXPECT_EQ(linesDrawn("HHH HHH HH", 1), 3);  // words are not broken
  EXPECT_EQ(linesDrawn("HHHHHHHHH", 1), 1);
  EXPECT_EQ(linesDrawn("HHH HHH HH", word, line + 1), 2);  // a line that starts inside is drawn
  EXPECT_EQ(linesDrawn("HHH HHH HH", word, line - 1), 1);
}

TEST_F(Text, AnUnknownFontIsReplacedAndLoggedOnce) {
  LogLines log;
  for (int again = 0; again < 2; ++again)
    EXPECT_EQ(NSFont::fontWithName_size("Nonesuch", 11)->fontName(), "LucidaGrande");
  EXPECT_EQ(log.count("\"Nonesuch\""), 1);
}
