#include <gtest/gtest.h>

#include <algorithm>

#include "Canvas.h"
#include "NSBezierPath.h"
#include "NSImage.h"
#include "ScratchBundle.h"

namespace {

void draw(const NSImage& image, NSRect target, NSRect source = NSZeroRect, float fraction = 1) {
  image.drawInRect_fromRect_operation_fraction(target, source, NSCompositeSourceOver, fraction);
}

void fill(Pixel color, NSRect rect) {
  colorOf(color)->set();
  NSBezierPath::fillRect(rect);
}

class ImageFiles : public testing::Test {
 protected:
  std::string file(const std::string& name) const { return folder.file("Resources/" + name); }
  std::string write(const std::string& name, NSSize size, float scale, const std::function<void()>& paint) {
    painted(size, scale, paint).writePng(file(name));
    return file(name);
  }

  ScratchBundle folder;  // of a new name each time: decoded files are kept for the life of the process
};

}  // namespace

TEST_F(ImageFiles, APartIsStretchedWithoutItsNeighboursAndPiecesLeaveNoSeam) {
  // Columns and rows of 3, 2 and 3 points; every piece differs from those beside it.
  const auto image = NSImage::initByReferencingFile(write("nine.png", {8, 8}, 1, [] {
    const Pixel colors[] = {red, green, blue};
    const float starts[] = {0, 3, 5}, lengths[] = {3, 2, 3};
    for (size_t x = 0; x < 3; ++x)
      for (size_t y = 0; y < 3; ++y)
        fill(colors[(x + y) % 3], NSMakeRect(starts[x], starts[y], lengths[x], lengths[y]));
  }));
  const float width = 31.2f, height = 22.7f;
  const float from[] = {0, 3, 5, 8}, xs[] = {0, 3, width - 3, width}, ys[] = {0, 3, height - 3, height};
  for (const float scale : {1.0f, 1.5f, 2.0f}) {
    const Bitmap bitmap = painted({40, 30}, scale, [&] {
      NSGraphicsContext::currentContext()->translate(2.2f, 3.4f);
      for (size_t x = 0; x < 3; ++x)
        for (size_t y = 0; y < 3; ++y)
          draw(*image, NSMakeRect(xs[x], ys[y], xs[x + 1] - xs[x], ys[y + 1] - ys[y]),
               NSMakeRect(from[x], from[y], from[x + 1] - from[x], from[y + 1] - from[y]));
    });
    std::string all;
    for (const std::string& row : letters(bitmap)) all += row;
    EXPECT_EQ(all.find_first_not_of("rgb."), std::string::npos) << "something mixed at scale " << scale;
    const auto px = [&](float points) { return std::lround(points * scale); };
    const auto covered = (px(2.2f + width) - px(2.2f)) * (px(3.4f + height) - px(3.4f));
    EXPECT_EQ(static_cast<long>(all.size()) - std::count(all.begin(), all.end(), '.'), covered) << scale;
    EXPECT_EQ(at(bitmap, 20, 15), blue);     // the middle piece fills the middle
    EXPECT_EQ(at(bitmap, 20, 4.4f), green);  // lower edge
  }
}

TEST_F(ImageFiles, TheVersionSuitsTheScaleAndFractionMultipliesAlpha) {
  const std::string path = write("scaled.png", {6, 6}, 1, [] { fill(blue, NSMakeRect(0, 0, 6, 6)); });
  write("scaled@2x.png", {6, 6}, 2, [] { fill(red, NSMakeRect(0, 0, 6, 6)); });
  write("scaled@3x.png", {6, 6}, 3, [] { fill(green, NSMakeRect(0, 0, 6, 6)); });
  const auto image = NSImage::initByReferencingFile(path);
  const std::pair<float, Pixel> cases[] = {{1.0f, blue}, {1.5f, red}, {2.0f, red}, {4.0f, green}};
  for (const auto& [scale, color] : cases) {
    const Bitmap bitmap = painted({8, 8}, scale, [&] { draw(*image, NSMakeRect(1, 1, 6, 6)); });
    EXPECT_EQ(at(bitmap, 4, 4), color) << scale;
    EXPECT_EQ(at(bitmap, 0.3f, 4), nothing) << scale;
  }
  const Bitmap half = painted({6, 6}, 1, [&] { draw(*image, NSMakeRect(0, 0, 6, 6), NSZeroRect, 0.25f); });
  EXPECT_NEAR(at(half, 3, 3)[3], 64, 1);
}

TEST_F(ImageFiles, DrawingIntoOneImageOfAFileTouchesNoOther) {
  const std::string path = write("shared.png", {4, 2}, 1, [] { fill(blue, NSMakeRect(0, 0, 4, 2)); });
  const auto drawnInto = NSImage::initByReferencingFile(path), other = NSImage::initByReferencingFile(path);
  const auto shown = [](const NSImage& image) {
    return letters(painted({4, 2}, 1, [&] { draw(image, NSMakeRect(0, 0, 4, 2)); }))[0];
  };
  drawnInto->lockFocus([] {});  // all columns are alike
  EXPECT_EQ(shown(*drawnInto), "bbbb");
  for (const float x : {0.0f, 3.0f}) drawnInto->lockFocus([x] { fill(red, NSMakeRect(x, 0, 1, 2)); });
  EXPECT_EQ(shown(*drawnInto), "rbbr");
  EXPECT_EQ(shown(*other), "bbbb");
  EXPECT_EQ(shown(*NSImage::initByReferencingFile(path)), "bbbb");
}
