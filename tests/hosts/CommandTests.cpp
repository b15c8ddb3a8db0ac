// What the program prints and draws without a display.

#include <algorithm>
#include <fstream>
#include <sstream>

#include "CommandLine.h"

namespace fs = std::filesystem;

namespace {

std::string outputOf(const std::vector<std::string>& words) {
  const CommandLineResult run = runTovin(words);
  EXPECT_EQ(run.status, 0) << run.errors;
  return run.output;
}

std::string contents(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Width and height, as the file's header has them in the last of four bytes each.
std::pair<int, int> pixels(const std::string& png) {
  const auto number = [&](size_t at) {
    return static_cast<unsigned char>(png.at(at)) << 8 | static_cast<unsigned char>(png.at(at + 1));
  };
  return {number(18), number(22)};
}

}  // namespace

TEST(Commands, ListViewsParamsAndHelpPrintText) {
  const std::string list = outputOf({"list"});
  EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 15);
  EXPECT_EQ(list.find(" -\n"), std::string::npos) << "an effect without an editor";
  const std::string views = outputOf({"views", "lpas"});
  EXPECT_TRUE(views.starts_with("lpas_UIView - 0 0 552 260\n")) << views;
  EXPECT_NE(views.find("\n  lpasGraphView graphView "), std::string::npos);
  EXPECT_EQ(outputOf({"params", "sdly"}),
            "Tovin: AUSampleDelay\n"
            "id  name             unit     min    max  default  current\n"
            " 0  in-to-out delay  samples    0  44100        0        0\n");
  EXPECT_NE(outputOf({"process", "--help"}).find("EFFECT"), std::string::npos);
}

TEST(Commands, MeasurePrintsTheResponseOfTheEffectAsItIsSet) {
  std::istringstream lines(
      outputOf({"measure", "lpas", "--set", "0=1000", "--set", "1=0", "--rate", "48000"}));
  std::string line;
  std::getline(lines, line);
  EXPECT_EQ(line, "frequency,dB");
  int count = 0;
  for (double frequency, level; lines >> frequency && lines.ignore() && lines >> level; ++count) {
    EXPECT_NEAR(frequency, count * 48000.0 / 4096, 0.01);
    EXPECT_TRUE(frequency > 100 || std::abs(level) < 0.2) << frequency;
    EXPECT_TRUE(frequency < 8000 || level < -30) << frequency;
  }
  EXPECT_EQ(count, 2048);
}

TEST(Commands, SnapshotDrawsTheSamePictureOfTheSameState) {
  const std::string file = testFolder() + "/picture.png";
  const auto draw = [&](std::vector<std::string> more) {
    more.insert(more.begin(), {"snapshot", "hpas", "--seconds", "0.1", "-o", file});
    outputOf(more);
    return contents(file);
  };
  const std::string once = draw({});
  EXPECT_EQ(pixels(once), std::pair(552, 260));
  EXPECT_EQ(draw({}), once);
  EXPECT_NE(draw({"--set", "0=3000"}), once);
  EXPECT_EQ(pixels(draw({"--scale", "2"})), std::pair(1104, 520));
}

TEST(Commands, SnapshotOfAllDrawsFifteenFilesAndASheet) {
  const std::string folder = testFolder(), sheet = folder + "/sheet.png";
  outputOf({"snapshot", "all", "--seconds", "0.1", "-o", folder + "/all", "--sheet", sheet});
  EXPECT_EQ(std::distance(fs::directory_iterator(folder + "/all"), {}), 15);
  EXPECT_GT(pixels(contents(sheet)).first, pixels(contents(folder + "/all/mcmp.png")).first);
}
