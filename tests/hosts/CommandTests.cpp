// What the program prints and draws without a display.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include "CommandLine.h"

namespace fs = std::filesystem;

namespace {

std::string contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Width and height, as the file's header has them.
std::pair<int, int> pixels(const std::string& png) {
  const auto number = [&](size_t at) {
    int n = 0;
    for (size_t i = 0; i < 4; ++i) n = n << 8 | static_cast<unsigned char>(png.at(at + i));
    return n;
  };
  return {number(16), number(20)};
}

}  // namespace

TEST(Commands, ListNamesTheEditorOfEachEffect) {
  const CommandLineResult list = runTovin({"list"});
  EXPECT_EQ(list.status, 0) << list.errors;
  std::istringstream lines(list.output);
  std::set<std::string> codes, editors;
  for (std::string line; std::getline(lines, line);) {
    codes.insert(line.substr(0, 4));
    editors.insert(line.substr(line.rfind(' ') + 1));
  }
  EXPECT_EQ(codes.size(), 15u);
  EXPECT_EQ(editors.size(), 11u);
  EXPECT_FALSE(editors.contains("-"));
}

TEST(Commands, MeasurePrintsTheResponseOfTheEffectAsItIsSet) {
  const CommandLineResult measured =
      runTovin({"measure", "lpas", "--set", "0=1000", "--set", "1=0", "--rate", "48000"});
  EXPECT_EQ(measured.status, 0) << measured.errors;
  std::istringstream lines(measured.output);
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "frequency,dB");
  int count = 0;
  for (double frequency, level; lines >> frequency && lines.ignore() && lines >> level; ++count) {
    EXPECT_NEAR(frequency, count * 48000.0 / 4096, 0.01);
    if (frequency < 100) {
      EXPECT_NEAR(level, 0, 0.2);
    }
    if (frequency > 8000) {
      EXPECT_LT(level, -30);
    }
  }
  EXPECT_EQ(count, 2048);
}

TEST(Commands, ViewsShowWhereEachOutletIs) {
  const CommandLineResult views = runTovin({"views", "lpas"});
  EXPECT_EQ(views.status, 0) << views.errors;
  EXPECT_TRUE(views.output.starts_with("lpas_UIView - 0 0 552 260\n")) << views.output;
  EXPECT_NE(views.output.find("\n  lpasGraphView graphView "), std::string::npos);
}

TEST(Commands, SnapshotDrawsTheSamePictureOfTheSameState) {
  const std::string folder = testFolder();
  const auto draw = [&](const std::string& name, std::vector<std::string> more) {
    std::vector<std::string> words{"snapshot", "hpas", "--seconds", "0.1", "-o", folder + "/" + name};
    words.insert(words.end(), more.begin(), more.end());
    const CommandLineResult result = runTovin(words);
    EXPECT_EQ(result.status, 0) << result.errors;
    return contents(folder + "/" + name);
  };
  const std::string once = draw("once.png", {});
  EXPECT_EQ(pixels(once), std::pair(552, 260));
  EXPECT_EQ(draw("again.png", {}), once);
  EXPECT_NE(draw("changed.png", {"--set", "0=3000"}), once);
  EXPECT_EQ(pixels(draw("large.png", {"--scale", "2"})), std::pair(1104, 520));
}

TEST(Commands, SnapshotOfAllDrawsFifteenFilesAndASheet) {
  const std::string folder = testFolder();
  const CommandLineResult result = runTovin(
      {"snapshot", "all", "--seconds", "0.1", "-o", folder + "/all", "--sheet", folder + "/sheet.png"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(std::distance(fs::directory_iterator(folder + "/all"), {}), 15);
  EXPECT_GT(pixels(contents(folder + "/sheet.png")).first, pixels(contents(folder + "/all/mcmp.png")).first);
}
