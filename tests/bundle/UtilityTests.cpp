#include "BundleFixture.h"
#include "NSBox.h"
#include "NSGraphicsContext.h"
#include "NSImageUtils.h"
#include "NSViewUtils.h"

namespace {

class UtilityTests : public BundleFixture {};

TEST_F(UtilityTests, numbersAreCutToSixCharactersAndLoseTheirTrailingZeros) {
  const struct {
    float value;
    const char* text;
  } rows[] = {{0.5f, "0.5"},
              {1, "1"},
              {12.3456f, "12.345"},
              {12345.678f, "12345"},
              {-0.25f, "-0.25"},
              {440, "440"},
              {100000, "100000"},
              {0.00004f, "0"},
              {0.00006f, "0.0001"},
              {1234567, "123456"},
              {-12.3456f, "-12.34"},
              {1000.5f, "1000.5"},
              {10, "10"},
              {-0.00001f, "-0"}};
  for (const auto& row : rows)
    EXPECT_EQ(stringWithNiceFloatValue_digits(row.value, 6), row.text) << row.value;
}

TEST_F(UtilityTests, ninePiecesKeepTheirCornersAndLimitThemByTheTarget) {
  // Red grows by 4 a column, green by 4 a row: every pixel tells where it came from.
  const auto image = NSImage::initWithSize({60, 60});
  image->lockFocus();
  for (int y = 0; y < 60; ++y)
    for (int x = 0; x < 60; ++x) {
      vellColor_alpha(static_cast<uint32_t>(x * 4 << 16 | y * 4 << 8), 1)->set();
      NSBezierPath::fillRect(NSMakeRect(static_cast<float>(x), static_cast<float>(y), 1, 1));
    }
  image->unlockFocus();
  const struct { float side, corner; } rows[] = {{30, 14}, {100, 20}};  // 20 asked for
  for (const auto& row : rows) {
    Bitmap target({row.side, row.side}, 1);
    {
      const NSGraphicsContext context(target);
      drawInRect_cornerSizeX_cornerSizeY_operation_fraction(*image, NSMakeRect(0, 0, row.side, row.side), 20,
                                                            20, NSCompositeSourceOver, 1);
    }
    for (float i = 0; i < row.side; ++i) {
      const float far = row.side - 1 - i;  // counted from the other end
      const Rgba column = at(target, i, 2), line = at(target, 2, i);
      EXPECT_EQ(column[1], 8);
      EXPECT_EQ(line[0], 8);
      const bool near = i < row.corner;
      if (near || far < row.corner) {
        const auto expected = static_cast<int>(4 * (near ? i : 59 - far));
        EXPECT_EQ(column[0], expected) << row.side << " at " << i;
        EXPECT_EQ(line[1], expected) << row.side << " at " << i;
      } else {  // stretched: from the middle of the image, evenly
        const float middle =
            row.corner + (i + 0.5f - row.corner) * (60 - 2 * row.corner) / (row.side - 2 * row.corner);
        EXPECT_NEAR(column[0], 4 * (middle - 0.5f), 10) << row.side << " at " << i;
        EXPECT_NEAR(line[1], 4 * (middle - 0.5f), 10) << row.side << " at " << i;
      }
    }
  }
}

class Listener : public NSView {
 public:
  using NSView::NSView;
  const Class& isa() const override { return record(); }
  static const Class& record() {
    static const Class c =
        Class::of<Listener>("Listener", NSView::record()).answers<&Listener::hear>("hear:");
    return c;
  }
  void hear(NSObject* object) { heard.push_back(object); }
  std::vector<NSObject*> heard;
};

/// Draws a slanted line on a translucent ground.
class Ground : public NSView {
 public:
  Ground(NSRect frame, std::shared_ptr<NSColor> color) : NSView(frame), color_(std::move(color)) {}
  void drawRect(NSRect) override {
    color_->colorWithAlphaComponent(0.3f)->set();
    NSBezierPath::fillRect(bounds());
    color_->set();
    const auto line = NSBezierPath::bezierPath();
    line->moveToPoint({3, 1});
    line->lineToPoint({NSWidth(bounds()), NSHeight(bounds())});
    line->stroke();
  }

 private:
  std::shared_ptr<NSColor> color_;
};

TEST_F(UtilityTests, whatLiesBehindAViewIsWhatTheScreenShowsThere) {
  for (const float scale : {1.0f, 2.0f}) {
    const OffscreenDisplay display(scale);
    const auto root = std::make_shared<Ground>(NSMakeRect(0, 0, 120, 90), NSColor::blueColor());
    const auto middle = std::make_shared<Ground>(NSMakeRect(11, 7, 80, 70), vellColor_alpha(0xC04010, 1));
    const auto view = std::make_shared<NSView>(NSMakeRect(13, 5, 40, 50));
    root->addSubview(middle);
    middle->addSubview(view);
    const auto window = show(root);
    const auto image = NSImage::initWithSize(view->frame().size);
    image->lockFocus();
    NSColor::whiteColor()->set();
    NSBezierPath::fillRect(view->bounds());
    drawSuperViewsAsOpaqueBackground(*view);
    image->unlockFocus();

    Bitmap behind({120, 90}, scale);
    {
      const NSGraphicsContext context(behind);
      image->drawInRect_fromRect_operation_fraction(NSMakeRect(24, 12, 40, 50), NSZeroRect,
                                                    NSCompositeSourceOver, 1);
    }
    EXPECT_NE(at(behind, 40, 30), at(behind, 25, 60)) << "nothing was drawn";
    EXPECT_EQ(differences(behind, *window->snapshot(), NSMakeRect(24, 12, 40, 50)), 0) << "scale " << scale;
  }
}

}  // namespace
