#include <gtest/gtest.h>

#include <filesystem>
#include <random>

#include "Canvas.h"
#include "LogLines.h"
#include "NSBezierPath.h"
#include "NSImage.h"

namespace fs = std::filesystem;

namespace {

void draw(const NSImage& image, NSRect target, NSRect source = NSZeroRect, float fraction = 1) {
  image.drawInRect_fromRect_operation_fraction(target, source, NSCompositeSourceOver, fraction);
}

class ImageFiles : public testing::Test {
 protected:
  // A name of its own for each test, since decoded files are kept for the life of the process.
  ImageFiles()
      : folder(fs::path(testing::TempDir()) /
               (std::string("images_") + testing::UnitTest::GetInstance()->current_test_info()->name())) {
    fs::create_directories(folder);
    NSGraphicsContext::setImageScale(1);
  }
  ~ImageFiles() override { fs::remove_all(folder); }

  std::string write(const std::string& name, NSSize size, float scale, const std::function<void()>& paint) {
    painted(size, scale, paint).writePng((folder / name).string());
    return (folder / name).string();
  }
  static void fill(Pixel color, NSRect rect) {
    colorOf(color)->set();
    NSBezierPath::fillRect(rect);
  }

  fs::path folder;
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
  for (const float scale : {1.0f, 1.5f, 2.0f}) {
    const float width = 31.2f, height = 22.7f;
    const Bitmap bitmap = painted({40, 30}, scale, [&] {
      NSGraphicsContext::currentContext()->translate(2.2f, 3.4f);
      const float from[] = {0, 3, 5, 8}, xs[] = {0, 3, width - 3, width}, ys[] = {0, 3, height - 3, height};
      for (size_t x = 0; x < 3; ++x)
        for (size_t y = 0; y < 3; ++y)
          draw(*image, NSMakeRect(xs[x], ys[y], xs[x + 1] - xs[x], ys[y + 1] - ys[y]),
               NSMakeRect(from[x], from[y], from[x + 1] - from[x], from[y + 1] - from[y]));
    });
    // Inside the outline every pixel is one of the pure colours: nothing mixed, nothing transparent.
    const auto rows = letters(bitmap);
    const auto px = [&](float points) { return static_cast<size_t>(std::lround(points * scale)); };
    const size_t left = px(2.2f), right = px(2.2f + width);
    const size_t top = rows.size() - px(3.4f + height), bottom = rows.size() - px(3.4f);
    for (size_t y = 0; y < rows.size(); ++y) {
      const bool inside = y >= top && y < bottom;
      const std::string line = inside ? rows[y].substr(left, right - left) : "";
      ASSERT_EQ(line.find_first_not_of("rgb"), std::string::npos)
          << "scale " << scale << " row " << y << " " << line;
      const std::string outside = inside ? rows[y].substr(0, left) + rows[y].substr(right) : rows[y];
      ASSERT_EQ(outside.find_first_not_of('.'), std::string::npos) << "scale " << scale << " row " << y;
    }
    EXPECT_EQ(at(bitmap, 20, 15), blue);     // the middle piece fills the middle
    EXPECT_EQ(at(bitmap, 20, 4.4f), green);  // lower edge
  }
}

TEST_F(ImageFiles, EqualSizesAreCopiedExactly) {
  for (const int scale : {1, 2}) {
    std::mt19937 random(7);
    Bitmap noise({9, 7}, static_cast<float>(scale));
    {
      const NSGraphicsContext context(noise);
      for (int y = 0; y < 7 * scale; ++y) {
        for (int x = 0; x < 9 * scale; ++x) {
          const auto byte = [&] { return static_cast<uint8_t>(random() % 256); };
          const float s = static_cast<float>(scale);
          fill({byte(), byte(), byte(), byte()},
               NSMakeRect(static_cast<float>(x) / s, static_cast<float>(y) / s, 1 / s, 1 / s));
        }
      }
    }
    const std::string name = "noise" + std::to_string(scale);
    noise.writePng((folder / (name + ".png")).string());
    noise.writePng((folder / (name + "@2x.png")).string());
    if (scale == 2) Bitmap({9, 7}, 1).writePng((folder / (name + ".png")).string());
    const auto image = NSImage::initByReferencingFile((folder / (name + ".png")).string());
    const auto s = static_cast<float>(scale);
    const Bitmap copy = painted({20, 20}, s, [&] {
      draw(*image, NSMakeRect(3, 4, 9, 7));
      draw(*image, NSMakeRect(14, 4, 2, 3), NSMakeRect(5, 2, 2, 3));
    });
    for (int y = 0; y < 7 * scale; ++y)
      for (int x = 0; x < 9 * scale; ++x)
        ASSERT_EQ(copy.pixel(3 * scale + x, 9 * scale + y), noise.pixel(x, y)) << x << ", " << y;
    for (int y = 0; y < 3 * scale; ++y)
      for (int x = 0; x < 2 * scale; ++x)
        ASSERT_EQ(copy.pixel(14 * scale + x, 13 * scale + y), noise.pixel(5 * scale + x, 2 * scale + y));
  }
}

TEST_F(ImageFiles, TheVersionSuitsTheScaleAndFractionMultipliesAlpha) {
  const std::string path = write("scaled.png", {6, 6}, 1, [] { fill(blue, NSMakeRect(0, 0, 6, 6)); });
  write("scaled@2x.png", {6, 6}, 2, [] { fill(red, NSMakeRect(0, 0, 6, 6)); });
  write("scaled@3x.png", {6, 6}, 3, [] { fill(green, NSMakeRect(0, 0, 6, 6)); });
  const auto image = NSImage::initByReferencingFile(path);
  const std::pair<float, Pixel> cases[] = {
      {1.0f, blue}, {1.5f, red}, {2.0f, red}, {2.5f, green}, {4.0f, green}};
  for (const auto& [scale, color] : cases) {
    const Bitmap bitmap = painted({8, 8}, scale, [&] { draw(*image, NSMakeRect(1, 1, 6, 6)); });
    EXPECT_EQ(at(bitmap, 4, 4), color) << scale;
    EXPECT_EQ(at(bitmap, 0.3f, 4), nothing) << scale;
  }
  EXPECT_EQ(image->size(), (NSSize{6, 6}));
  const Bitmap half = painted({6, 6}, 1, [&] { draw(*image, NSMakeRect(0, 0, 6, 6), NSZeroRect, 0.25f); });
  EXPECT_NEAR(at(half, 3, 3)[3], 64, 1);
}

TEST_F(ImageFiles, AMissingFileIsEmptyAndLoggedOnce) {
  LogLines log;
  for (int again = 0; again < 2; ++again) {
    const auto image = NSImage::initByReferencingFile((folder / "nowhere.png").string());
    EXPECT_EQ(log.count("nowhere.png"), again) << "reading is lazy";
    EXPECT_EQ(image->size(), NSSize{});
    const Bitmap bitmap = painted({2, 2}, 2, [&] { draw(*image, NSMakeRect(0, 0, 2, 2)); });
    EXPECT_EQ(at(bitmap, 1, 1), nothing);
  }
  EXPECT_EQ(log.count("nowhere.png"), 1);
}

TEST_F(ImageFiles, DrawingIntoOneImageOfAFileTouchesNoOther) {
  const std::string path = write("shared.png", {4, 2}, 1, [] { fill(blue, NSMakeRect(0, 0, 4, 2)); });
  const auto drawnInto = NSImage::initByReferencingFile(path), other = NSImage::initByReferencingFile(path);
  drawnInto->lockFocus();
  fill(blue, NSMakeRect(0, 0, 4, 2));  // all columns alike
  drawnInto->unlockFocus();
  for (int again = 0; again < 2; ++again) {
    drawnInto->lockFocus();
    fill(red, NSMakeRect(again ? 3 : 0, 0, 1, 2));
    drawnInto->unlockFocus();
  }
  const auto shown = [](const NSImage& image) {
    return letters(painted({4, 2}, 1, [&] { draw(image, NSMakeRect(0, 0, 4, 2)); }))[0];
  };
  EXPECT_EQ(shown(*drawnInto), "rbbr");
  EXPECT_EQ(shown(*other), "bbbb");
  EXPECT_EQ(shown(*NSImage::initByReferencingFile(path)), "bbbb");
}
