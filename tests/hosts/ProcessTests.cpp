#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sndfile.hh>

#include "ChildProcess.h"
#include "CommandLine.h"

namespace fs = std::filesystem;

namespace {

struct Sound {
  int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
  int channels = 2;
  int rate = 48000;
  std::vector<int> samples;  // frame by frame, the file's own values in the upper bits
};

Sound makeSound(int format, int channels, size_t frames) {
  std::mt19937 random(3);
  Sound sound{format, channels, 48000, std::vector<int>(frames * static_cast<size_t>(channels))};
  for (int& sample : sound.samples) sample = static_cast<int>(random() & 0xFFFF0000u);
  if (!sound.samples.empty()) {
    sound.samples.front() = std::numeric_limits<int>::min();
    sound.samples.back() = 0x7FFF0000;
  }
  return sound;
}

void write(const std::string& path, const Sound& sound) {
  SndfileHandle file(path, SFM_WRITE, sound.format, sound.channels, sound.rate);
  ASSERT_EQ(file.error(), 0) << file.strError();
  file.write(sound.samples.data(), static_cast<sf_count_t>(sound.samples.size()));
}

Sound read(const std::string& path) {
  SndfileHandle file(path);
  Sound sound{file.format(), file.channels(), file.samplerate(), {}};
  sound.samples.resize(static_cast<size_t>(file.frames() * file.channels()));
  file.read(sound.samples.data(), static_cast<sf_count_t>(sound.samples.size()));
  return sound;
}

}  // namespace

TEST(Process, DelaysAFileExactlyAndKeepsItsFormatAndLength) {
  const std::string folder = testFolder();
  const struct {
    int format;
    int channels;
    size_t frames;
    size_t delay;
  } rows[] = {
      {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 10007, 777}, {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 1, 512, 1},
      {SF_FORMAT_AIFF | SF_FORMAT_FLOAT, 2, 1024, 512},  {SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1, 1025, 0},
      {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 100, 44100}, {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 0, 5}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const std::string in = folder + "/in with 'quotes'.wav";
    const std::string out = folder + "/out.wav";
    const Sound sound = makeSound(row.format, row.channels, row.frames);
    write(in, sound);
    const auto run = runTovin({"process", "sdly", in, out, "--set", "0=" + std::to_string(row.delay)});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");  // no progress bar without a terminal

    const Sound heard = read(out);
    EXPECT_EQ(heard.format, sound.format);
    EXPECT_EQ(heard.channels, sound.channels);
    EXPECT_EQ(heard.rate, sound.rate);
    const size_t silent = std::min(row.delay * static_cast<size_t>(row.channels), sound.samples.size());
    std::vector<int> expected(silent, 0);
    expected.insert(expected.end(), sound.samples.begin(),
                    sound.samples.end() - static_cast<std::ptrdiff_t>(silent));
    EXPECT_TRUE(heard.samples == expected);
  }
}

TEST(Process, LatencyIsTakenOutAndWhatIsTooLoudIsFlattened) {
  const std::string folder = testFolder();
  const std::string in = folder + "/in.wav", out = folder + "/out.wav";
  Sound click{SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 48000, std::vector<int>(5000)};
  click.samples[1000] = 1 << 28;
  write(in, click);
  EXPECT_EQ(runTovin({"process", "lmtr", in, out}).errors, "");
  const Sound heard = read(out);
  EXPECT_EQ(std::max_element(heard.samples.begin(), heard.samples.end()) - heard.samples.begin(), 1000);
  EXPECT_EQ(runTovin({"process", "dcmp", in, out, "--set", "0=20", "--set", "2=1", "--set", "6=40"}).errors,
            "");
  const Sound loud = read(out);
  EXPECT_EQ(loud.samples[1000], 0x7FFF0000);
}

TEST(Process, HalfAFileIsNotLeft) {
  const std::string folder = testFolder();
  const std::string in = folder + "/in.wav", out = folder + "/out.wav";
  write(in, makeSound(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 100000));
  ChildProcess tovin({"sh", "-c", "trap '' XFSZ; ulimit -f 100; exec \"$0\" process sdly \"$1\" \"$2\"",
                      TOVIN_PROGRAM, in, out});
  EXPECT_EQ(tovin.wait(60), 1);
  EXPECT_NE(tovin.errors().find("out.wav"), std::string::npos) << tovin.errors();
  EXPECT_FALSE(fs::exists(out));
}

TEST(Process, NamesWhatIsWrongAndHowItShouldBe) {
  const std::string folder = testFolder();
  const std::string in = folder + "/in.wav";
  const std::string out = folder + "/out.wav";
  const std::string text = folder + "/text.wav";
  const std::string wide = folder + "/wide.wav";
  const std::string link = folder + "/link.wav";
  write(in, makeSound(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 100));
  write(wide, makeSound(SF_FORMAT_WAV | SF_FORMAT_PCM_16, 3, 100));
  std::ofstream(text) << "no sound at all";
  fs::create_symlink(in, link);

  const struct {
    std::vector<std::string> arguments;
    int status;
    std::vector<std::string> said;
  } rows[] = {
      {{"process", "sdlx", in, out}, 2, {"EFFECT", "sdlx", "sdly"}},
      {{"process", "sdly", in}, 2, {"OUT"}},
      {{"process", "sdly", in, out, "--sett", "0=1"}, 2, {"--sett"}},
      {{"process", "sdly", in, out, "--set", "0"}, 2, {"--set 0:", "ID=VALUE"}},
      {{"process", "sdly", in, out, "--set", "=1"}, 2, {"--set =1", "0"}},
      {{"process", "sdly", in, out, "--set", "1=1"}, 2, {"--set 1=1", "no parameter \"1\""}},
      {{"process", "sdly", in, out, "--set", "-1=1"}, 2, {"--set -1=1"}},
      {{"process", "sdly", in, out, "--set", "0=12x"}, 2, {"12x", "0 to 44100 samples"}},
      {{"process", "sdly", in, out, "--set", "0=44100.5"}, 2, {"44100.5", "0 to 44100 samples"}},
      {{"process", "sdly", in, out, "--set", "0=1", "--set", "0=-1"}, 2, {"--set 0=-1"}},
      {{"process", "sdly", in, in}, 2, {"OUT", "same file"}},
      {{"process", "sdly", in, link}, 2, {"OUT", "same file"}},
      {{"process", "sdly", folder + "/none.wav", out}, 1, {"none.wav", "No such file"}},
      {{"process", "sdly", text, out}, 1, {"text.wav"}},
      {{"process", "sdly", wide, out}, 1, {"wide.wav", "3 channels", "1 or 2"}},
      {{"process", "sdly", in, folder + "/none/out.wav"}, 1, {"none/out.wav"}},
      {{"params", "x"}, 2, {"EFFECT", "\"x\"", "sdly"}},
      {{"snapshot", "all", "--set", "0=1", "-o", folder}, 2, {"--set"}},
      {{"snapshot", "lpas", "-o", folder + "/none/x.png"}, 1, {"none/x.png"}},
      {{"measure", "lpas", "-o", folder + "/none/x.csv"}, 1, {"none/x.csv"}},
      {{"dance"}, 2, {"dance"}},
      {{}, 2, {"process"}},
  };
  for (const auto& row : rows) {
    const auto run = runTovin(row.arguments);
    SCOPED_TRACE(run.errors);
    EXPECT_EQ(run.status, row.status) << &row - rows;
    for (const std::string& part : row.said) EXPECT_NE(run.errors.find(part), std::string::npos) << part;
    EXPECT_EQ(run.output, "");
  }
  EXPECT_FALSE(fs::exists(out));
}

TEST(Params, PrintsATableAndHelpIsNoError) {
  const auto table = runTovin({"params", "sdly"});
  EXPECT_EQ(table.status, 0);
  EXPECT_EQ(table.output,
            "Tovin: AUSampleDelay\n"
            "id  name             unit     min    max  default  current\n"
            " 0  in-to-out delay  samples    0  44100        0        0\n");
  for (const std::string command : {"params", "process"}) {
    const auto help = runTovin({command, "--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("EFFECT"), std::string::npos);
  }
}
